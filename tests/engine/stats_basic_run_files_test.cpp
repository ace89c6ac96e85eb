// The files of a whole Basic Run of a reference cohort (tests/data/stats_hand.txt), for each
// extent of the output: exactly these, no more and no fewer.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

#include "commands/basic_run_driver.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {

// A Fast Run of the hand cohort, as "A1. Read data" leaves the store; the names of the files
// in its folder less the data file's base.
std::set<std::string> FilesOfRun(const std::string& outputLevel, std::string* mainOutput = nullptr) {
  test::TempDir dir;
  Session S;
  test::FakePrompts P;
  const std::string data = dir.file("hand.txt");
  std::filesystem::copy_file(test::DataPath("stats_hand.txt"), data);
  S.StartUp();
  S.identity.DataFilePath = data;
  S.identity.DataFileBase = dir.file("hand");
  S.header.RegularLifeTable = "Yes";
  S.options.MatingMode = "Yes";
  S.options.OutputLevel = outputLevel;
  S.options.FastRun = "Yes";
  BasicRunDriver(S, P).cmdBasicRunA2_Click();
  if (mainOutput) *mainOutput = test::ReadFile(dir.file("hand_0A_Life Table_Output.txt"));
  std::set<std::string> names;
  for (const auto& f : std::filesystem::directory_iterator(dir.path())) {
    const std::string name = f.path().filename().string();
    if (name != "hand.txt") names.insert(name.substr(4));
  }
  return names;
}

TEST(BasicRunFiles, ExactlyTheFilesOfEachOutputLevel) {
  // Written under "Yes" and "No".
  const std::set<std::string> major = {
      "_0A_Life Table_Output.txt",
      "_0A3_Group-reared life table-3 stages.txt",
      "_1_Fig_Sx.txt",
      "_1_Fig_Sxj.txt",
      "_1a_Fig_Nxj.txt",
      "_21A_Adult Age-spec life table with preadult mortality.txt",
      "_21B_Adult Age-spec life table without preadult mortality.txt",
      "_21C_Age-life table with preA time and lx.txt",
      "_2_Fig_Lx-Fxf-Mx-LxMx.txt",
      "_2a_Fig_Lx-Mx-LxMx.txt",
      "_2c_Fig_Mx_SD_SE.txt",
      "_2d_Fig_Fxj_SD_SE.txt",
      "_3_Fig_Exj.txt",
      "_6_Fig_Pxj.txt",
      "_6a_Fig_Qxj.txt",
      "_6b_Fig_Uxj.txt",
      "_9_Fig_Rx_R0-ratio_Cumu-r_r-Ratio.txt",
      "_A2_Group-reared life table-2 stages.txt",
      "_Fecundity of female individuals.txt",
      "_Fig_CumuR0-and-IntrinR.txt",
      "_Fig_Tailed R0.txt",
      "_Fig_Tailed r.txt",
      "_G_APOP.txt",
      "_G_Egg per day during oviposition period.txt",
      "_G_Eggs per Od_NOT for general boot.txt",
      "_G_Eggs per Od_for general boot.txt",
      "_G_Oviposition days.txt",
      "_G_Oviposition period.txt",
      "_G_Post-oviposition period.txt",
      "_G_TPOP.txt",
      "_G_Total longevity-Male.txt",
      "_G_Total longevity-N type.txt",
      "_G_Total longevity-all.txt",
      "_G_Total longevity-female.txt",
      "_G_total fecundity all females.txt",
      "_G_total fecundity of rep females.txt",
      "_H_Stage duration-All adult.txt",
      "_H_Stage duration-Egg.txt",
      "_H_Stage duration-Female adult.txt",
      "_H_Stage duration-Larva.txt",
      "_H_Stage duration-Male adult.txt",
      "_H_Stage-Begin-End-duration-All adult.txt",
      "_H_Stage-Begin-End-duration-Egg.txt",
      "_H_Stage-Begin-End-duration-Female adult.txt",
      "_H_Stage-Begin-End-duration-Larva.txt",
      "_H_Stage-Begin-End-duration-Male adult.txt",
      "_H_Stage-duration-Egg to Larva_All sex-row.txt",
      "_H_Stage-duration-Egg to Larva_All sex.txt",
      "_H_Stage-duration-preadult-F.txt",
      "_H_Stage-duration-preadult-M.txt",
      "_H_Stage-duration-preadult-all sexes.txt",
      "_Stage-Raw-data-row.txt",
      "_StageRawData.txt",
      "_ZZ-population parameters.txt",
  };
  // Written under "Yes" only.
  const std::set<std::string> minor = {
      "_21_Lewis Sx and Fx.txt",
      "_2b_Fig_Fxj.txt",
      "_4_Fig_Vxj.txt",
      "_5_Fig_SASD_in proportion.txt",
      "_5_Fig_SASD_in_percentage.txt",
      "_5a_Fig_SSD_in proportion.txt",
      "_5b_Fig_SSD_in percentage.txt",
      "_Fig_Age_lx_Kx_qx.txt",
      "_Fig_Dxj.txt",
      "_Fig_Ex.txt",
      "_Fig_Exj.txt",
      "_Fig_Gxj.txt",
      "_Fig_Lx.txt",
      "_Fig_Mx.txt",
      "_Fig_SAD_in percentage.txt",
      "_Fig_SAD_in proportion.txt",
      "_Fig_Vx.txt",
      "_Fig_age-specific total fecundity.txt",
  };
  std::set<std::string> all = major;
  all.insert(minor.begin(), minor.end());
  EXPECT_EQ(FilesOfRun("Yes"), all);
  EXPECT_EQ(FilesOfRun("No"), major);
  EXPECT_EQ(FilesOfRun("Nooutput"), std::set<std::string>{"_0A_Life Table_Output.txt"});
}

// The main output opens with the individuals' tables and closes with the basic statistics and
// the time the run took.
TEST(BasicRunFiles, MainOutputInTheOrderOfTheRun) {
  std::string r;
  FilesOfRun("Nooutput", &r);
  const char* inOrder[] = {
      "Table 1. Number of time units spent by each individual in each",
      "Table 2. Age-specific fecundity of each individual based on \"adult age\".",
      "Table 3. APOP (or APRP) and TPOP (or TPRP) of each reproduced female",
      "Table 4. Age-specific fecundity of each female individual from age 0",
      "Age-stage-specific survival - Actual number (Matrix N)",
      "Basic Statistics of Life History Data",
      "Time used for this run:",
  };
  std::size_t at = 0;
  for (const char* text : inOrder) {
    const std::size_t found = r.find(text, at);
    ASSERT_NE(found, std::string::npos) << text;
    at = found;
  }
  EXPECT_LT(r.rfind("Table"), r.find("Basic Statistics of Life History Data"));
  EXPECT_NE(r.find("F : M : N = 4:1:2"), std::string::npos);
}

}  // namespace
}  // namespace korvan
