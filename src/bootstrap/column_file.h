#pragma once
// Reading a column file of a bootstrap result ("_Effect Boot-...", a ratio, a general
// bootstrap's "results for PT"): treatment and tag, n, B, the name with n and the cohort's
// value, then one value a line (after its serial number in a "with SN" file).
#include <string>
#include <vector>

namespace korvan {

struct ColumnFile {
  std::string treatment, name;
  double n = 0, nInLine6 = 0, cohort = 0;
  long B = 0;
  std::vector<double> serial;  // only when read with serial numbers
  std::vector<double> values;
};

// The head and up to B values: fewer when the file ends first or closes its list with -1. A
// head without a whole B, or a value that isn't a number, ends the command with a message
// under title (ProgramEnd).
ColumnFile ReadColumnFile(const std::string& path, bool serialNumbers, const std::string& title);

}  // namespace korvan
