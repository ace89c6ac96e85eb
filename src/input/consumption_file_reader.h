#pragma once
// The consumption file of a predator cohort: what every individual of the life table ate on
// each day of its life.
//
// It is read as the data file is, field by field (quoted strings, commas, records across
// lines): the project, user and treatment lines, the number of individuals N (that of the life
// table), then for each individual its number and its consumption on every day of its life
// from age 0, as many values as days it lived, closed by -1 (0 for a day without feeding).
// A fault ends the program with a message that names the individual and the day.
#include <string>

#include "run/run_context.h"

namespace korvan {

inline constexpr const char* kConsumptionFileTitle = "Open consumption rate file (file 17)";
inline constexpr const char* kConsumptionErrorTitle = "Error in consumption file";

class ConsumptionFileReader : public Procedures {
 public:
  using Procedures::Procedures;

  // Asks for the consumption file and reads it; with no file chosen nothing is read and the
  // run goes on with the life table alone (ConsumptionRead "No").
  void ReadCxjNewSub();
  // Reads the file at path for the cohort in hand (read before it): every individual's daily
  // consumption goes to the pool and to the cohort; PredationPresent becomes "Yes".
  void ReadConsumptionFile(const std::string& path);
};

}  // namespace korvan
