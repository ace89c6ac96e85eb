// The cohort in the form of a group-reared life table with two stages: one preadult row that
// sums all preadult stages, the female row and the male row, and the eggs of the females by age.
#include <string>

#include "engine/stage_statistics.h"
#include "text/numbers.h"

namespace korvan {

void StageStatsEngine::WriteGroupedLifeTableFromIndividualData() {
  Flow("WriteGroupedLifeTableFromIndividualData");
  if (S.options.OutputLevel == "Nooutput") return;
  const auto& t = W.tables;
  const auto& w = W.stageStats;
  const int mm = m();
  const long lastAge = t.LastAge;
  auto preadult = [&](long x) {
    double n = 0;
    for (int j = 1; j <= mm - 1; ++j) n += t.Nxj(x, j);
    return n;
  };
  // First and last age with a count in a row; 0 and 0 for a row nobody reached.
  auto range = [&](auto&& count, long& first, long& last) {
    first = last = -1;
    for (long x = 0; x <= lastAge; ++x)
      if (count(x) > 0) {
        if (first < 0) first = x;
        last = x;
      }
    if (first < 0) first = last = 0;
  };
  auto writeRow = [&](TextFile& f, const std::string& code, long first, long last, auto&& value) {
    f.RawText(code + "," + NumberText(static_cast<double>(first)) + "," + NumberText(static_cast<double>(last)));
    for (long x = first; x <= last; ++x) f.RawText("," + NumberText(value(x)));
    f.NewLine();
  };

  TextFile f(OutputName(S, "_A2_Group-reared life table-2 stages.txt"));
  f.Write("Project: " + S.identity.ProjectName + " " + S.identity.VersionStamp);
  f.Write(S.identity.UserName);
  f.Write(S.identity.TreatmentName);
  f.RawText(NumberText(W.cohort.CohortSize));
  f.NewLine();
  f.RawText("3,2");
  f.NewLine();
  f.RawText("F,Preadult,Female\nM,Preadult,Male\nN,Preadult,Unknown\n");
  long first = 0, last = 0;
  range(preadult, first, last);
  writeRow(f, "Preadult", 0, last, preadult);
  auto females = [&](long x) { return t.Nxj(x, mm); };
  range(females, first, last);
  const long femaleFirst = first, femaleLast = last;
  writeRow(f, "Female", first, last, females);
  auto males = [&](long x) { return t.Nxj(x, mm + 1); };
  range(males, first, last);
  writeRow(f, "Male", first, last, males);
  writeRow(f, "Female", femaleFirst, femaleLast, [&](long x) { return w.EggsAtAge(x); });
}

}  // namespace korvan
