#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "engine/stage_statistics.h"
#include "support/cohort.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {

// n(x,j) laid out by hand from the durations: each individual spends its days in its stages in
// turn, a male's adult days going to the row after the female's.
void FillNxj(Session& S) {
  auto& c = S.ws.cohort;
  const int m = S.header.StageCount;
  for (long i = 1; i <= c.CohortSize; ++i) {
    long x = 0;
    for (int j = 1; j <= m; ++j) {
      const double d = c.StageDuration(i, j);
      if (d == 0) break;
      const int row = (j == m && c.IndividualSex(i) != "F") ? m + 1 : j;
      for (long k = 0; k < static_cast<long>(d < 0 ? -d : d); ++k) S.ws.tables.Nxj(x++, row) += 1;
      if (d < 0) break;
    }
  }
}

struct RawRun {
  Session S;
  test::OrderedPrompts P;
  StageStatsEngine e{S, P};
  test::TempDir dir;
  RawRun(const std::string& outputLevel, double tu) {
    test::LoadHandCohort(S, test::HandCohort(), tu);
    FillNxj(S);
    S.options.OutputLevel = outputLevel;
    S.identity.DataFileBase = dir.file("c");
    e.CountOvipositionDays();
    e.PreadultMean();
    e.Life10();
    e.APOPandTPOP();
    e.AgeFecundityFromBirth();
    e.CountOvipositionPeriod();
    e.WriteStageRawDataInColumns();
    e.WriteIndivFecundityForAnalysis();
    e.WriteRawDataInRow();
    e.WriteEachStageRawDataInColumn();
    e.WriteStageRawDataInColumnForStatistics();
    e.WriteGroupedLifeTableFromIndividualData();
  }
  std::string File(const std::string& suffix) const { return test::ReadFile(dir.file("c" + suffix)); }
  std::set<std::string> Files() const {
    std::set<std::string> names;
    for (const auto& f : std::filesystem::directory_iterator(dir.path())) names.insert(f.path().filename().string().substr(1));
    return names;
  }
};

// Under "Nooutput" none of these files is written: the run keeps its main output only.
TEST(RawDataFiles, FilesWrittenForEachOutputLevel) {
  const std::set<std::string> always = {"_2c_Fig_Mx_SD_SE.txt", "_2d_Fig_Fxj_SD_SE.txt",
                                        "_A2_Group-reared life table-2 stages.txt"};
  std::set<std::string> all = always;
  for (const char* n :
       {"_StageRawData.txt", "_Fecundity of female individuals.txt", "_Stage-Raw-data-row.txt",
        "_H_Stage duration-Egg.txt", "_H_Stage duration-Larva.txt", "_H_Stage duration-All adult.txt",
        "_H_Stage duration-Male adult.txt", "_H_Stage duration-Female adult.txt",
        "_H_Stage-Begin-End-duration-Egg.txt", "_H_Stage-Begin-End-duration-Larva.txt",
        "_H_Stage-Begin-End-duration-All adult.txt", "_H_Stage-Begin-End-duration-Male adult.txt",
        "_H_Stage-Begin-End-duration-Female adult.txt", "_H_Stage-duration-preadult-all sexes.txt",
        "_H_Stage-duration-preadult-M.txt", "_H_Stage-duration-preadult-F.txt",
        "_H_Stage-duration-Egg to Larva_All sex.txt", "_H_Stage-duration-Egg to Larva_All sex-row.txt",
        "_G_APOP.txt", "_G_TPOP.txt", "_G_total fecundity all females.txt", "_G_total fecundity of rep females.txt",
        "_G_Eggs per Od_for general boot.txt", "_G_Eggs per Od_NOT for general boot.txt",
        "_G_Post-oviposition period.txt", "_G_Egg per day during oviposition period.txt",
        "_G_Oviposition period.txt", "_G_Oviposition days.txt", "_G_Total longevity-all.txt",
        "_G_Total longevity-female.txt", "_G_Total longevity-Male.txt", "_G_Total longevity-N type.txt"})
    all.insert(n);
  EXPECT_EQ(RawRun("Yes", 1).Files(), all);
  EXPECT_EQ(RawRun("No", 1).Files(), all);
  EXPECT_TRUE(RawRun("Nooutput", 1).Files().empty());
}

TEST(RawDataFiles, ValuesOfIndividualsInDays) {
  RawRun run("Yes", 1);
  EXPECT_EQ(run.File("_Stage-Raw-data-row.txt"),
            "Egg\n2,3,2,3,2,2,-1\nLarva\n3,3,4,2,2,-1\nAdult (All sexes)\n5,4,3,6,2,-1\nMale adult\n6,-1\n"
            "Female adult\n5,4,3,2,-1\nAdult preoviposition period (APOP)\n1,0,1,-1\n"
            "Total preoviposition period (TPOP)\n6,6,5,-1\nFecundity\n12,10,0,3,-1\n");
  const std::string table = run.File("_StageRawData.txt");
  EXPECT_NE(table.find("Indiv.,Sex,Egg,Larva,Adult-F,Adult-M,Adult-all,Preadult, Longevity\n"), std::string::npos);
  EXPECT_NE(table.find(" 4 ,M, 3 , 2 ,-, 6 , 6 , 5 , 11 \n"), std::string::npos);
  EXPECT_NE(table.find(" 5 ,N, 2 , 2 d,-,-,-,-, 4 \n"), std::string::npos);
  EXPECT_EQ(run.File("_G_Eggs per Od_NOT for general boot.txt"),
            "\"eggs per Od (unweighed)\"\n\"Ind. no.\",\"eggs per Od (unweighed)\"\n1,4\n2,5\n3,\"This individual "
            "didn't lay egg.\"\n7,3\n");
  EXPECT_EQ(run.File("_G_Eggs per Od_for general boot.txt"),
            "\"Eggs per Od (weighted)\"\n\"Ind. no. and age (the last 2 digits)\",\"Eggs\"\n"
            "102,4\n103,6\n105,2\n201,5\n203,5\n702,3\n");
  EXPECT_EQ(run.File("_H_Stage-Begin-End-duration-Larva.txt"),
            "\"Duration of Larva\"\n\"Ind. no.\",\"Begin\",\"End\",\"Duration\"\n1,2,5,3\n2,3,6,3\n3,2,6,4\n4,3,5,2\n"
            "7,2,4,2\n");
  EXPECT_EQ(run.File("_H_Stage-duration-Egg to Larva_All sex-row.txt"), "\"Duration of Egg to Larva\"\n5,6,6,5,4,-1\n");
  EXPECT_EQ(run.File("_G_Post-oviposition period.txt"),
            "\"Post-oviposition period\"\n\"Ind. no.\",\"Post-oviposition period\"\n1,0\n2,1\n7,0\n");

  // With 0.5 every duration is halved; the individual file keeps preadult and adult times
  // multiplied by the time unit.
  RawRun half("Yes", 0.5);
  EXPECT_EQ(half.File("_G_Total longevity-N type.txt"),
            "\"N-type total longevity\"\n\"Ind. no.\",\"N-type total longevity\"\n5,2\n6,0.5\n");
  EXPECT_NE(half.File("_Fecundity of female individuals.txt").find("\n1,12,2.5,1.5,2.5,5\n"), std::string::npos);
  EXPECT_NE(half.File("_G_Oviposition period.txt").find("\n1,1.25\n2,1\n7,0.5\n"), std::string::npos);
}

// The group-reared form: the preadult stages summed by age, the adult rows and the eggs by age,
// each row with its first and last age (counts laid out by hand from the durations).
TEST(RawDataFiles, GroupedLifeTableOfTwoStages) {
  RawRun run("No", 1);
  EXPECT_EQ(run.File("_A2_Group-reared life table-2 stages.txt"),
            "\"Project: Hand cohort Ver. 5/7/2024\"\n\"tester\"\n\"25C\"\n7\n3,2\n"
            "F,Preadult,Female\nM,Preadult,Male\nN,Preadult,Unknown\n"
            "Preadult,0,5,7,6,6,6,4,2\nFemale,4,9,1,2,3,3,3,2\nMale,5,10,1,1,1,1,1,1\nFemale,4,9,0,3,9,6,5,2\n");
}

}  // namespace
}  // namespace korvan
