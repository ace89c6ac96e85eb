// Life07: the age-specific life table for graphs, the survival figure, and the files for the
// sibling simulators.
#include <string>

#include "engine/stage_statistics.h"
#include "store/rules.h"
#include "text/numbers.h"

namespace korvan {

// "_1_Fig_Sx.txt": s(x,j) by age for every stage, both adult stages included.
void StageStatsEngine::WriteSxFig() {
  Flow("WriteSxFig");
  const int mm = m();
  const double tu = TimeUnit();
  const long lastAge = W.tables.LastAge;
  TextFile f(OutputName(S, "_1_Fig_Sx.txt"));
  f.Write("Age-stage survival rate");
  std::string head = "Age,";
  for (int j = 1; j <= mm + 1; ++j) head += S.header.StageName(1, j) + (j <= mm ? "," : "");
  f.RawText(head);
  f.NewLine();
  for (long x = 0; x <= lastAge; ++x) {
    f.RawText(NumberText(TimeUnitToDays(static_cast<double>(x), tu)));
    for (int j = 1; j <= mm + 1; ++j) f.RawText("," + NumberText(W.tables.Sxj(x, j)));
    f.NewLine();
  }
  f.RawText(NumberText(TimeUnitToDays(static_cast<double>(lastAge + 1), tu)) + ",");
  for (int j = 1; j <= mm; ++j) f.RawText(" 0,");
  f.RawText(" 0");
  f.NewLine();
}

}  // namespace korvan
