// The cohort in the form of a group-reared life table with two stages: one preadult row that
// sums all preadult stages, the female row and the male row, and the eggs of the females by age.
#include <string>

#include "engine/group_file_writer.h"
#include "engine/stage_statistics.h"
#include "text/numbers.h"

namespace korvan {

void CountedRange(const std::function<double(long)>& count, long lastAge, long& first, long& last) {
  first = last = -1;
  for (long x = 0; x <= lastAge; ++x)
    if (count(x) > 0) {
      if (first < 0) first = x;
      last = x;
    }
  if (first < 0) first = last = 0;
}

void WriteTwoStageGroupFile(TextFile& f, const TwoStageGroupFile& file) {
  auto writeRow = [&](const std::string& code, const GroupFileRow& row) {
    f.RawText(code + "," + NumberText(static_cast<double>(row.first)) + "," + NumberText(static_cast<double>(row.last)));
    for (long x = row.first; x <= row.last; ++x) f.RawText("," + NumberText(row.value(x)));
    f.NewLine();
  };
  f.Write(file.projectLine);
  f.Write(file.user);
  f.Write(file.treatment);
  f.RawText(NumberText(file.cohortSize));
  f.NewLine();
  f.RawText("3,2");
  f.NewLine();
  f.RawText("F,Preadult,Female\nM,Preadult,Male\nN,Preadult,Unknown\n");
  writeRow("Preadult", file.preadult);
  writeRow("Female", file.female);
  writeRow("Male", file.male);
  writeRow("Female", file.eggs);
}

void StageStatsEngine::WriteGroupedLifeTableFromIndividualData() {
  Flow("WriteGroupedLifeTableFromIndividualData");
  if (S.options.OutputLevel == "Nooutput") return;
  const auto& t = W.tables;
  const auto& w = W.stageStats;
  const int mm = m();
  const long lastAge = t.LastAge;
  TwoStageGroupFile file;
  file.projectLine = "Project: " + S.identity.ProjectName + " " + S.identity.VersionStamp;
  file.user = S.identity.UserName;
  file.treatment = S.identity.TreatmentName;
  file.cohortSize = W.cohort.CohortSize;
  file.preadult.value = [&](long x) {
    double n = 0;
    for (int j = 1; j <= mm - 1; ++j) n += t.Nxj(x, j);
    return n;
  };
  file.female.value = [&](long x) { return t.Nxj(x, mm); };
  file.male.value = [&](long x) { return t.Nxj(x, mm + 1); };
  file.eggs.value = [&](long x) { return w.EggsAtAge(x); };
  CountedRange(file.preadult.value, lastAge, file.preadult.first, file.preadult.last);
  file.preadult.first = 0;
  CountedRange(file.female.value, lastAge, file.female.first, file.female.last);
  CountedRange(file.male.value, lastAge, file.male.first, file.male.last);
  file.eggs.first = file.female.first;
  file.eggs.last = file.female.last;
  TextFile f(OutputName(S, "_A2_Group-reared life table-2 stages.txt"));
  WriteTwoStageGroupFile(f, file);
}

}  // namespace korvan
