#include "commands/harvest_command.h"

#include <cmath>
#include <string>

#include "analyses/contribution.h"
#include "analyses/harvest.h"
#include "text/numbers.h"

namespace korvan {

namespace {

// A number of a form's field: an empty field reads as 0; text that is not a number ends the
// run with a message naming the field.
double FieldNumber(const std::string& answer, const std::string& field) {
  if (answer.empty()) return 0;
  const auto value = NumberAnswer(answer);
  if (!value) throw ProgramEnd{"\"" + answer + "\" is not a number (" + field + ").", field};
  return *value;
}

}  // namespace

void FurtherAnalysisForms::cmdHarvest_Click() {
  Flow("cmdHarvest_Click");
  MassRearingHarvest harvest(S, P);
  auto& h = S.harvest;
  const int m = S.header.StageCount;
  harvest.SaveOriginalMatrices();
  P.Status("lstLifeTable", HarvestLifeTableInformation(S));

  std::string stages;
  for (int j = 1; j <= m + 1; ++j) stages += "\n" + std::to_string(j) + " = " + S.header.StageName(1, j);
  const std::string stageTitle = form_titles::kTargetStage;
  const double stage = FieldNumber(P.InputBox("Target stage (the number of the stage to harvest):" + stages,
                                              stageTitle, "1"),
                                   stageTitle);
  if (stage != std::floor(stage) || stage < 1 || stage > m + 1)
    throw ProgramEnd{"The target stage must be a stage number from 1 to " + std::to_string(m + 1) + ".", stageTitle};
  h.HarvestStage = static_cast<int>(stage);
  P.Status("txtHarvestStage", std::to_string(h.HarvestStage) + " " + S.header.StageName(1, h.HarvestStage));

  const int lastAge = S.ws.tables.LastAge;
  const std::string ageTitle = form_titles::kLastHarvestAge;
  const double age = FieldNumber(
      P.InputBox("Enter the last age into the pink box.  It is the last age of the life table to be used in "
                 "mass-rearing system. Individuals older than that age will be discarded.",
                 ageTitle, std::to_string(lastAge)),
      ageTitle);
  const double rounded = CIntValue(age);
  if (!(rounded >= 0 && rounded <= lastAge))
    throw ProgramEnd{"The last harvest age must be from 0 to " + std::to_string(lastAge) + ", the last age of the life table.",
                     ageTitle};
  h.LastHarvestAge = static_cast<int>(rounded);

  const std::string expectTitle = form_titles::kExpectedHarvest;
  h.ExpectedHarvest = FieldNumber(P.InputBox(expectTitle, expectTitle, "1000"), expectTitle);
  const std::string costTitle = form_titles::kHarvestCost;
  h.HarvestCost = FieldNumber(P.InputBox(costTitle, costTitle, "0"), costTitle);

  const std::string levelTitle = form_titles::kConservationLevel;
  std::string levels;
  for (const char* caption : kConservationLevels) levels += std::string(levels.empty() ? "" : ", ") + caption;
  const std::string level = P.InputBox("Conservation level (one of " + levels + "):", levelTitle, "Ro(original)");
  bool known = false;
  for (const char* caption : kConservationLevels) known = known || level == caption;
  if (!known) throw ProgramEnd{"The conservation level must be one of " + levels + ".", levelTitle};
  h.ConservationLevel = level;
  if (ConservationNeedsSEFile(level)) {
    const std::string fileTitle = form_titles::kSEFile;
    const std::string path = P.ChooseFile(fileTitle);
    if (path.empty() || !harvest.ReadRoAndSEFile(path))
      throw ProgramEnd{"The conservation level \"" + level +
                           "\" needs the file \"_Z-R0 and boot SE for harvest.txt\" of a bootstrap. Nothing was "
                           "calculated.",
                       fileTitle};
    if (level == "Other") {
      h.ConservationOther =
          FieldNumber(P.InputBox("Enter the expected R0 after harvest.", form_titles::kOtherR0, "2"), form_titles::kOtherR0);
    }
  }
  harvest.Command1();
}

void FurtherAnalysisForms::ContributionPartition_Click() {
  Flow("ContributionPartition_Click");
  OffspringContribution contribution(S, P);
  auto& c = S.contribution;
  const std::string path = P.ChooseFile(form_titles::kPooledFile);
  if (!path.empty()) {
    if (!contribution.ReadPooledParameters(path)) return;
  } else if (c.PooledRead != "Yes") {
    const std::string rTitle = form_titles::kPooledR;
    const std::string r0Title = form_titles::kPooledR0;
    c.PooledR = FieldNumber(P.InputBox(rTitle, rTitle, FullPrecision(S.params.R_Basic)), rTitle);
    c.PooledR0 = FieldNumber(P.InputBox(r0Title, r0Title, FullPrecision(S.params.R0_Basic)), r0Title);
  }
  contribution.Command1();
}

}  // namespace korvan
