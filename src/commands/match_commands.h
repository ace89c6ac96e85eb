#pragma once
// "D. Boot. match" (the matching form) and "E. 3D life table". On the command line the matching
// form is its buttons in the order of use: A1, A2, the two checks, A3 to A6 as input boxes titled
// by their captions, A7, and on request B (a specific life table from a match record).
#include "run/run_context.h"

namespace korvan {

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
