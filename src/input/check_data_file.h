#pragma once
// The check of a life-table data file, run once by "A1. Read data" before anything is computed.
//
// CheckDataFile2 reads the chosen file field by field, stores what it reads in the cohort
// fields of the store (InputData reads them again at Basic Run) and stops at the first fault:
// a ProgramEnd with the message naming the individual. It also asks what only the file's user
// can tell: whether the file has rearing costs, and which kind of reproduction is assumed.
#include <optional>
#include <string>

#include "input/field_reader.h"
#include "run/run_context.h"

namespace korvan {

// The address of the help line in the messages of the check.
inline constexpr const char* kHelpAddress = "korvan-support@example.org";

class CheckDataFile : public Procedures {
 public:
  using Procedures::Procedures;

  void CheckDataFile2();

  // The kind of reproduction is asked (and rule 15 applied) for an analysis; a transform of the
  // file, which analyses nothing, checks the file without it.
  bool AskReproduction = true;

 private:
  void CheckHead();             // project, user, treatment, N, T, m, type lines (rule 1)
  void AskRearingCost();        // "Rearing cost for each stage?" and the costs
  void CheckSpecialGroup();     // rules 2 and 3
  void CheckIndividuals();      // rules 4 to 14
  void CheckIndividual(int i);  // one record
  void CheckFecundity(int i);   // rules 11 to 14 for a female
  void AskKindOfReproduction(); // "General analysis or 3D analysis?" and rule 15
  void CheckEndOfFile();        // "Are there more data?"

  std::optional<FieldReader> in_;
};

}  // namespace korvan
