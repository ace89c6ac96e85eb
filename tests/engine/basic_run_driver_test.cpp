// "A2. Basic Run": its dialogues in order, the settings they make, and the files of a run.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "commands/basic_run_driver.h"
#include "support/cohort.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {


// The bundled example copied into a fresh folder, as "A1. Read data" leaves the store.
struct Bench {
  test::TempDir dir;
  Session S;
  test::OrderedPrompts P;
  Bench() {
    const std::string data = dir.file("mite.txt");
    std::filesystem::copy_file(std::string(KORVAN_EXAMPLES) + "/mite.txt", data);
    S.StartUp();
    S.identity.DataFilePath = data;
    S.identity.DataFileBase = dir.file("mite");
    S.header.RegularLifeTable = "Yes";
    S.options.MatingMode = "Yes";
    S.options.OutputLevel = "Yes";
  }
  void Run() { BasicRunDriver(S, P).cmdBasicRunA2_Click(); }
  bool Has(const std::string& suffix) const { return std::filesystem::exists(dir.file("mite" + suffix)); }
};

TEST(BasicRun, FastRunAsksNothingAndWritesTheMainOutputAndFigureFiles) {
  Bench s;
  s.S.options.FastRun = "Yes";
  s.Run();
  EXPECT_TRUE(s.P.titles.empty()) << s.P.titles.front();
  const std::string main = test::ReadFile(s.dir.file("mite_0A_Life Table_Output.txt"));
  EXPECT_NE(main.find("Age-stage-specific survival - Actual number (Matrix N)"), std::string::npos);
  EXPECT_NE(main.find("Age-stage specific life expectancy (matrix E)"), std::string::npos);
  EXPECT_FALSE(s.S.channels.MainOutput.IsOpen());
  EXPECT_EQ(s.S.basic.BasicRunDone, "yes");
  EXPECT_TRUE(s.S.console.IsEnabled("cmdBootstrap"));
  EXPECT_FALSE(s.S.console.IsEnabled("cmdReadDataA1"));
  EXPECT_FALSE(s.S.console.IsEnabled("cmdHarvest"));
  EXPECT_FALSE(s.S.console.IsEnabled("Command44"));
  EXPECT_TRUE(s.S.console.IsVisible("Frame1"));
  // The specific age by rule: LastAge / 2, rounded; l(x) and e(0,1) of 100 individuals.
  const auto& T = s.S.ws.tables;
  EXPECT_EQ(s.S.settings.SpecificAge, CInt(T.LastAge / 2.0));
  EXPECT_EQ(s.S.ws.cohort.CohortSize, 100);
  EXPECT_DOUBLE_EQ(T.Lx(0), 1);
  EXPECT_NEAR(s.S.ws.lifeTable.Exj(0, 1), s.S.ws.lifeTable.SumNxj / 100, 1e-9);

  // A second click writes only the raw-data files again; the tables stand.
  s.S.ws.tables.Nxj(5, 2) = -7;
  std::filesystem::remove(s.dir.file("mite_1_Fig_Sxj.txt"));
  s.Run();
  EXPECT_EQ(T.Nxj(5, 2), -7);
  EXPECT_FALSE(s.Has("_1_Fig_Sxj.txt"));
  EXPECT_TRUE(s.P.titles.empty());
}

TEST(BasicRun, DialoguesInTheirOrderAndTheSettingsTheyMake) {
  Bench s;
  s.P.answers = {"3",       // critical female adult age
                 "No",      // matrix
                 "0.5",     // fecundity coefficient
                 "0.3",     // time unit
                 "Yes",     // more options
                 "No",      // effect of reduced f(x,j)
                 "Yes",     // submatrix
                 "2",       // its age
                 "1",       // its stage
                 "1",       // Euler-Lotka with x
                 "0.01",    // precision of lambda: too coarse
                 "12.6",    // specific age
                 "0.25",    // specific survival
                 "No",      // no 3D analysis
                 "Yes"};    // life table only
  s.Run();
  const std::vector<std::string> expected = {
      "Critical female adult age X",
      "Claculus or matrix technique?",
      "Fecundity coefficeint",
      "Each time unit =?",
      "More option (Yes or No)?",
      "Effect of reduced f(x,j) on population parameters (r and lambda).",
      "Do you need submatrix S?",
      "Age of submatrix S?",
      "Stage of submatrix S?",
      "Age index from zero or 1?",
      "Precision level",
      "Save bootstrap survival rates for specific age (time unit).",
      "Save age (time unit) for specific bootstrap survival rate.",
      "Yes = 3D analysis. No = routine life table.",
      "Life table only?"};
  EXPECT_EQ(s.P.titles, expected);
  const auto& o = s.S.options;
  const auto& n = s.S.settings;
  EXPECT_EQ(n.CriticalFemaleAge, 3);
  EXPECT_EQ(o.CountOldFemales, "Yes");
  EXPECT_EQ(o.AnalysisMethod, "Matrix");
  EXPECT_EQ(n.FecundityFactor, 0.5);
  EXPECT_EQ(n.TimeUnit, 0.3);
  EXPECT_EQ(o.MoreOptions, "Yes");
  EXPECT_EQ(o.EffectOfFxjFlag, "No");
  EXPECT_EQ(o.WriteSubMatrix, "Yes");
  EXPECT_EQ(o.SubMatrixAge, 2);
  EXPECT_EQ(o.SubMatrixStage, 1);
  EXPECT_EQ(o.AgeConvention, "x");
  EXPECT_EQ(n.PrecisionMatrix, 1e-06);
  EXPECT_EQ(n.SpecificAge, 13);
  EXPECT_EQ(n.SpecificSurvival, 0.25);
  EXPECT_EQ(o.Analysis3D, "No");
  EXPECT_EQ(o.ConsumptionRead, "No");
  // The texts that carry the submatrix's age.
  EXPECT_NE(s.P.texts[8].find("E.g., \"3\" means the submatrix S(2,3) will be printed."), std::string::npos);
  EXPECT_TRUE(s.Has("_Sub_Sxj_age2 and stage1.txt"));
}

TEST(BasicRun, MinimalOutputThreeDimensionsAndNoFecundity) {
  // Minimal output: the critical age and the method aren't asked, ModifyFxj still is.
  {
    Bench s;
    s.S.options.MinimalOutput = "Yes";
    s.S.options.OutputLevel = "Nooutput";
    s.P.answers = {"0", "1", "No", "", "", "Yes"};  // coefficient 0: nobody reproduces
    s.Run();
    ASSERT_GE(s.P.titles.size(), 3u);
    EXPECT_EQ(s.P.titles[0], "Fecundity coefficeint");
    EXPECT_EQ(s.P.titles[2], "More option (Yes or No)?");
    EXPECT_EQ(s.S.options.AnalysisMethod, "Calculus");
    EXPECT_EQ(s.S.settings.FecundityFactor, 0);
    EXPECT_EQ(s.S.ws.lifeTable.ReproductiveCount, 0);
    EXPECT_FALSE(s.S.console.IsVisible("Frame4"));
    EXPECT_FALSE(s.Has("_1_Fig_Sxj.txt"));
    EXPECT_TRUE(s.Has("_0A_Life Table_Output.txt"));
  }
  // 3D: neither the method question nor ModifyFxj; Analysis3D is "Yes", no bootstrap after.
  {
    Bench s;
    s.S.options.MatingMode = "3D";
    s.P.answers = {"OK", "Yes"};  // the FMN message, life table only
    s.Run();
    for (const auto& t : s.P.titles) {
      EXPECT_NE(t, "Claculus or matrix technique?");
      EXPECT_NE(t, "Fecundity coefficeint");
    }
    EXPECT_EQ(s.S.options.Analysis3D, "Yes");
    EXPECT_EQ(s.S.settings.PrecisionCalculus, 1e-08);
    EXPECT_EQ(s.S.options.EffectOfFxjFlag, "Yes");
    EXPECT_FALSE(s.S.console.IsEnabled("cmdBootstrap"));
    // The cohort has both sexes: the FMN matrices can't be written.
    EXPECT_NE(std::find(s.P.titles.begin(), s.P.titles.end(), "More than one type."), s.P.titles.end());
  }
}

}  // namespace
}  // namespace korvan
