#pragma once
// "D. Boot. match" (the matching form) and "E. 3D life table". On the command line the matching
// form is its buttons in the order of use: A1, A2, the two checks, A3 to A6 as input boxes titled
// by their captions, A7, and on request B (a specific life table from a match record).
#include "run/run_context.h"

namespace korvan {

// The dialogues of the matching form that its fields answer on the desktop.
namespace match_titles {
inline constexpr const char* kImmatureFile = "Open immature life table";
inline constexpr const char* kAdultFile = "Open adult life table";
inline constexpr const char* kSampleSize = "A3. Sample size";
inline constexpr const char* kBootB = "A4. Bootstrap B";
inline constexpr const char* kWinter = "A5. Overwinter duration";
inline constexpr const char* kWinterMortality = "A6. Ow ran. max. mortality";
inline constexpr const char* kWinterMortalityTip =
    "If rnd<this Ow ran. max. mortality, adult will  not survive to spring.";
inline constexpr const char* kSameMatch = "B. Read data and match record to write specific life table";
}  // namespace match_titles

class MatchCommands : public Procedures {
 public:
  using Procedures::Procedures;
  void cmdMatchedLifeTable_Click();
  // "B. Read data and match record to write specific life table".
  void cmdSameMatch_Click();
  // "E. 3D life table": the five matrix files, the population and its report.
  void FMNmatrices_Click();
};

}  // namespace korvan
