#pragma once
// Reading a column file of a bootstrap result ("_Effect Boot-...", a ratio, a general
// bootstrap's "results for PT"): treatment and tag, n, B, the name with n and the cohort's
// value, then one value a line (after its serial number in a "with SN" file).
#include <string>
#include <vector>

namespace korvan {

class TextFile;

// Lines 1 to 6 of a column file.
struct ColumnHead {
  std::string tag;  // behind the treatment on line 1, e.g. "-r"
  double line3 = 0;  // n, or the number the file names
  std::string line4 = "Next line is total effective Bootstrap number (B)";
  double line5 = 0;  // E (or B)
  std::string name;  // line 6: name, n, the cohort's value
  double nIn6 = 0, cohortValue = 0;
};

// Writes the head, line 1 being the treatment followed by the tag.
void WriteColumnHead(TextFile& out, const std::string& treatment, const ColumnHead& head);

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
