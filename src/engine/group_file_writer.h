#pragma once
// The group-reared file with two stages: one preadult row, the female and the male row, and
// the eggs of the female group by age. The Basic Run writes it from a cohort of individuals,
// the reading of N and F from the counts of a file with more stages; "B. Read N, F" reads it.
#include <functional>
#include <string>

#include "text/text_file.h"

namespace korvan {

struct GroupFileRow {
  long first = 0, last = 0;  // ages of the row
  std::function<double(long)> value;
};

struct TwoStageGroupFile {
  std::string projectLine, user, treatment;
  int cohortSize = 0;
  GroupFileRow preadult, female, male, eggs;
};

// First and last age up to lastAge with a count above 0; 0 and 0 for a row nobody reached.
void CountedRange(const std::function<double(long)>& count, long lastAge, long& first, long& last);

// The head (three quoted lines, the cohort, "3,2", the lines of the types F, M and N), the
// three rows and the fecundity block, numbers at full precision.
void WriteTwoStageGroupFile(TextFile& f, const TwoStageGroupFile& file);

}  // namespace korvan
