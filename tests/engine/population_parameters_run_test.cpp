// Basic Runs of the bundled example through the driver: the parameters against the tables
// the walk made, and the files of the run.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <memory>

#include "commands/basic_run_driver.h"
#include "engine/population_parameters_fixture.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {

struct ExampleRun {
  test::TempDir dir;
  std::unique_ptr<Session> S = std::make_unique<Session>();
  test::FakePrompts P;
  ExampleRun() {
    const std::string data = dir.file("mite.txt");
    std::filesystem::copy_file(std::string(KORVAN_EXAMPLES) + "/mite.txt", data);
    S->StartUp();
    S->identity.DataFilePath = data;
    S->identity.DataFileBase = dir.file("mite");
    S->header.RegularLifeTable = "Yes";
    S->options.MatingMode = "Yes";
    S->options.OutputLevel = "Yes";
  }
  void Run() { BasicRunDriver(*S, P).cmdBasicRunA2_Click(); }
  std::string File(const std::string& suffix) const { return test::ReadFile(dir.file("mite" + suffix)); }
};

TEST(ParameterRun, FastRunOfTheExample) {
  ExampleRun run;
  run.S->options.FastRun = "Yes";
  run.Run();
  const auto& b = run.S->params;
  // The walk's own tables: r solves Euler-Lotka and is ln of the projection matrix's lambda.
  EXPECT_NEAR(test::EulerLotkaSum(*run.S, b.R_Basic, 1), 1, 1e-7);
  EXPECT_NEAR(b.R_Basic, std::log(test::ProjectionLambda(*run.S, 5000)), 1e-6);
  EXPECT_GT(b.R0_Basic, 1);
  const std::string main = run.File("_0A_Life Table_Output.txt");
  for (const char* text : {"Age-stage specific reproductive value (Matrix V)", ". Age-specific life table",
                           " The net reproductive rate (R0) =", ". Stable stage distribution (First stage = 1)",
                           ". Cumulative reproductive rate, cumulative contribution to r, and curtailed r",
                           "Because you used \"Fast run\", r(dalta) and r(delta)/r (%) were not calculated."})
    EXPECT_NE(main.find(text), std::string::npos) << text;
  // The main table comes after the stable tables, the cumulative table after it.
  EXPECT_LT(main.find("(Matrix B2)"), main.find(". Age-specific life table"));
  EXPECT_LT(main.find(". Age-specific life table"), main.find(". Cumulative reproductive rate"));
  EXPECT_EQ(run.P.status["txtNetreproductiverate"], FullPrecision(RoundDisplay(b.R0_Basic, 4)));
}

TEST(ParameterRun, MatrixRunWithCurtailedRatesAgreesWithCalculus) {
  ExampleRun calc;
  calc.S->options.FastRun = "Yes";
  calc.Run();

  ExampleRun run;
  run.P.Answer("Critical female adult age X", "0")
      .Answer("Claculus or matrix technique?", "No")
      .Answer("Fecundity coefficeint", "1")
      .Answer("Each time unit =?", "1")
      .Answer("More option (Yes or No)?", "Yes")
      .Answer("Effect of reduced f(x,j) on population parameters (r and lambda).", "Yes")
      .Answer("Do you need submatrix S?", "No")
      .Answer("Age index from zero or 1?", "2")
      .Answer("Precision level", "0.000001")
      .Answer("Save bootstrap survival rates for specific age (time unit).", "10")
      .Answer("Save age (time unit) for specific bootstrap survival rate.", "0.5")
      .Answer("Yes = 3D analysis. No = routine life table.", "No")
      .Answer("Life table only?", "Yes");
  run.Run();
  EXPECT_EQ(run.S->options.AnalysisMethod, "Matrix");
  const int last = run.S->ws.tables.LastAge;
  ASSERT_GT(run.S->ws.params.Mx(last), 0);  // the oldest female lays eggs on her last day
  EXPECT_NEAR(run.S->params.R_Basic, calc.S->params.R_Basic, 1e-5);
  EXPECT_NEAR(run.S->params.Lambda_Basic, calc.S->params.Lambda_Basic, 1e-5);
  EXPECT_EQ(run.S->params.CurtailedDone, "Yes");
  EXPECT_NEAR(run.S->params.CurtailedRate(last), run.S->ws.params.r, 1e-4);
  const std::string cumu = run.File("_Fig_CumuR0-and-IntrinR.txt");
  EXPECT_EQ(cumu.find("Because you used"), std::string::npos);
  const std::string main = run.File("_0A_Life Table_Output.txt");
  EXPECT_NE(main.find("and the total cohort is 100."), std::string::npos);
  EXPECT_NE(main.find(" r(delta)  r(delta)/r (%)"), std::string::npos);
}

}  // namespace
}  // namespace korvan
