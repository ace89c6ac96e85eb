// Consumption of a predator cohort: the file and its faults, c(x,j), C0, Qp, the stable and
// finite predation rates of a Basic Run, and their bootstrap on one thread and on two.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "bootstrap/bootstrap_run_fixture.h"
#include "commands/basic_run_driver.h"
#include "commands/bootstrap_driver.h"
#include "input/consumption_file_reader.h"
#include "input/data_file_reader.h"
#include "store/faults.h"
#include "support/cohort.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"
#include "ui/chart_figures.h"
#include "ui/chart_regression.h"

namespace korvan {
namespace {

// Four individuals of one preadult stage and the adult stage, with what each ate by age:
//   1 F  2, 3  eggs 0, 4, 2   eats 1 1 | 5 6 4    (17)
//   2 M  2, 2                 eats 0 2 | 3 3      (8)
//   3 N  -1                   eats 1              (1)
//   4 F  3, 2  eggs 2, 0      eats 0 0 2 | 5 3    (10)
// By hand: Ct(0,1) = 2, n 4; Ct(1,1) = 3, n 3; Ct(2,1) = 2, n 1; Ct(2,F) = 5, n 1; Ct(2,M) = 3,
// n 1; Ct(3,F) = 11, n 2; Ct(3,M) = 3, n 1; Ct(4,F) = 7, n 2. So c = .5; 1; 2, 5, 3; 5.5, 3; 3.5.
// C0 = sum Ct / N = 36 / 4 = 9, the mean lifetime consumption. R0 = 8 / 4 = 2, Qp = 4.5.
std::vector<test::Individual> Predators() {
  return {{"F", {2, 3}, {0, 4, 2}}, {"M", {2, 2}}, {"N", {-1}}, {"F", {3, 2}, {2, 0}}};
}
const char* kEaten = " 1, 1, 1, 5, 6, 4,-1\n 2, 0, 2, 3, 3,-1\n 3, 1,-1\n 4, 0, 0, 2, 5, 3,-1\n";

std::string ConsumptionText(const std::string& records, int n = 4) {
  return "\"Project: Test\"\n\"Tester\"\n\"Control\"\n" + std::to_string(n) + "\n" + records;
}

// A Basic Run of the cohort above that reads its consumption file.
struct PredatorRun {
  test::TempDir dir;
  Session S;
  test::FakePrompts P;
  explicit PredatorRun(const std::string& eaten = kEaten, const std::string& fecundityFactor = "1") {
    const std::string data = dir.file("predator.txt");
    test::WriteFile(data, test::DataFileText(2, Predators()));
    test::WriteFile(dir.file("eaten.txt"), ConsumptionText(eaten));
    S.StartUp();
    S.identity.DataFilePath = data;
    S.identity.DataFileBase = dir.file("predator");
    S.header.RegularLifeTable = "Yes";
    S.options.MatingMode = "Yes";
    S.options.OutputLevel = "Yes";
    S.options.MinimalOutput = "Yes";
    P.Answer("Fecundity coefficeint", fecundityFactor)
        .Answer("Each time unit =?", "1")
        .Answer("More option (Yes or No)?", "No")
        .Answer("Save bootstrap survival rates for specific age (time unit).", "2")
        .Answer("Save age (time unit) for specific bootstrap survival rate.", "0.5")
        .Answer("Life table only?", "No")
        .Answer(kConsumptionFileTitle, dir.file("eaten.txt"));
  }
  void Run() { BasicRunDriver(S, P).cmdBasicRunA2_Click(); }
};

// lambda of the cohort above by the Euler-Lotka equation with weights lambda^-(x+1):
// l(3)m(3) = 1.5, l(4)m(4) = .5, so lambda^5 = 1.5 lambda + .5; found by bisection.
double HandLambda() {
  double lo = 1, hi = 2;
  for (int k = 0; k < 200; ++k) {
    const double mid = (lo + hi) / 2;
    (std::pow(mid, 5) - 1.5 * mid - 0.5 < 0 ? lo : hi) = mid;
  }
  return lo;
}

TEST(Predation, BasicRunRatesWorkedByHand) {
  PredatorRun run;
  run.Run();
  const Session& S = run.S;
  EXPECT_EQ(S.options.ConsumptionRead, "Yes");
  EXPECT_EQ(S.options.PredationPresent, "Yes");
  const auto& c = S.ws.predation;
  const int F = 2, M = 3;
  const double hand[][3] = {{0, 1, 0.5}, {1, 1, 1},   {2, 1, 2}, {2, F, 5},
                            {2, M, 3},   {3, F, 5.5}, {3, M, 3}, {4, F, 3.5}};
  for (const auto& h : hand) EXPECT_DOUBLE_EQ(c.Cxj(static_cast<long>(h[0]), static_cast<long>(h[1])), h[2]);
  EXPECT_DOUBLE_EQ(c.Ctxj(3, F), 11);
  EXPECT_DOUBLE_EQ(c.C0, 9);
  EXPECT_DOUBLE_EQ(c.Qp, 4.5);
  // C0 by a second route: the mean of the individuals' lifetime consumption.
  double sum = 0;
  for (int i = 1; i <= 4; ++i) sum += S.ws.stageStats.TotalConsumption(i);
  EXPECT_DOUBLE_EQ(sum / 4, c.C0);

  // The stable age-stage distribution relative to the newborn is a(x,j) = s(x,j) lambda^-x,
  // whatever the stage: psi is the mean of c(x,j) under it, omega = lambda psi.
  const double L = HandLambda();
  EXPECT_NEAR(S.params.Lambda_Basic, L, 1e-6);
  const double w[] = {1, 0.75 / L, 0.25 / (L * L), 1 / (L * L * L), 1 / (L * L * L * L)};
  const double num = 0.5 * w[0] + 1 * w[1] + (2 + 5 + 3) * w[2] + (0.5 * 5.5 + 0.25 * 3) * w[3] + 0.5 * 3.5 * w[4];
  const double den = w[0] + w[1] + 3 * w[2] + 0.75 * w[3] + 0.5 * w[4];
  EXPECT_NEAR(c.Psi, num / den, 1e-6);
  EXPECT_NEAR(c.Omega, L * num / den, 1e-6);
  EXPECT_EQ(S.predation.C0_Basic, c.C0);
  EXPECT_EQ(S.predation.Omega_Basic, c.Omega);

  // The report carries the four lines; the tables, figures and raw data are written.
  const std::string main = test::ReadFile(run.dir.file("predator_0A_Life Table_Output.txt"));
  EXPECT_NE(main.find(" The net predation rate (Co) = 9 "), std::string::npos);
  EXPECT_NE(main.find(" The transformation rate (Conversion rate) Qp = 4.5 "), std::string::npos);
  EXPECT_NE(main.find(" The stable predation rate ="), std::string::npos);
  EXPECT_NE(main.find(" The finite predation rate ="), std::string::npos);
  EXPECT_NE(main.find("Age-stage-specific total consumption Ct(x,j) (Matrix Ct)"), std::string::npos);
  const std::string fig = test::ReadFile(run.dir.file("predator_Fig_Cxjb.txt"));
  EXPECT_EQ(fig.substr(0, fig.find('\n', fig.find('\n') + 1)), "\"Age-stage consumption rate\"\nAge,S1,Female,Male");
  EXPECT_NE(fig.find("\n3,0,5.5,3\n"), std::string::npos);
  EXPECT_NE(fig.find("\n5,0,0,0\n"), std::string::npos);  // the closing row
  EXPECT_TRUE(test::ReadFile(run.dir.file("predator_Fig_Cxja.txt")).rfind("\"Predation rate matrix (C)\"", 0) == 0);
  EXPECT_NE(test::ReadFile(run.dir.file("predator_G_Total consumption-all.txt")).find("4,10"), std::string::npos);

  // The console's figures: c(x,j) by stage, and fecundity against the females' consumption.
  const ChartPanel cxj = BuildFigure(S, "ShowCxj");
  ASSERT_EQ(cxj.series.size(), 3u);
  EXPECT_EQ(cxj.series[1].values[3], 5.5);
  const ChartPanel reg = BuildFigure(S, "ShowFRegOnConsumption");
  EXPECT_EQ(reg.xValues, (std::vector<double>{10, 17}));  // females 4 and 1, 2 and 6 eggs
  EXPECT_TRUE(HasConsumptionData(S));
}

TEST(Predation, NothingEatenOrNoOffspringGiveZerosNotFaults) {
  {
    PredatorRun run(" 1, 0, 0, 0, 0, 0,-1\n 2, 0, 0, 0, 0,-1\n 3, 0,-1\n 4, 0, 0, 0, 0, 0,-1\n");
    run.Run();
    const auto& c = run.S.ws.predation;
    EXPECT_EQ(c.C0, 0);
    EXPECT_EQ(c.Qp, 0);
    EXPECT_EQ(c.Psi, 0);
    EXPECT_EQ(c.Omega, 0);
  }
  {
    PredatorRun run(kEaten, "0");  // fecundity coefficient 0: R0 = 0
    run.P.Answer("Net reproductive rate = 0!", "OK").Answer("Net reproductive rate = 0!", "OK");
    run.Run();
    const auto& c = run.S.ws.predation;
    EXPECT_EQ(run.S.params.R0_Basic, 0);
    EXPECT_DOUBLE_EQ(c.C0, 9);
    EXPECT_EQ(c.Qp, 0);
    EXPECT_EQ(c.Omega, 0);
    EXPECT_TRUE(std::isfinite(c.Psi));
  }
  {
    // No file chosen: the run goes on with the life table alone, as if "Yes" had been answered.
    PredatorRun run;
    run.P = test::FakePrompts();
    run.P.Answer("Fecundity coefficeint", "1")
        .Answer("Each time unit =?", "1")
        .Answer("More option (Yes or No)?", "No")
        .Answer("Save bootstrap survival rates for specific age (time unit).", "2")
        .Answer("Save age (time unit) for specific bootstrap survival rate.", "0.5")
        .Answer("Life table only?", "No")
        .Answer(kConsumptionFileTitle, "");
    run.Run();
    EXPECT_EQ(run.S.options.ConsumptionRead, "No");
    EXPECT_NE(run.S.options.PredationPresent, "Yes");
    EXPECT_EQ(test::ReadFile(run.dir.file("predator_0A_Life Table_Output.txt")).find("predation"), std::string::npos);
  }
}

// Faults of the file end the run with a message naming the individual and the day.
TEST(Predation, FileFaultsNameTheIndividualAndDay) {
  struct Case {
    std::string text;
    std::string message;
  };
  const std::vector<Case> cases = {
      {ConsumptionText(kEaten, 5), "The consumption file gives N = 5, but the life table has 4 individuals."},
      {ConsumptionText(" 1, 1, 1, 5, 6,-1\n"), "individual no. 1 ends after 4 days, but it lived 5 days."},
      {ConsumptionText(" 1, 1, 1, 5, 6, 4, 2,-1\n"), "individual no. 1 has more values than the 5 days"},
      {ConsumptionText(" 1, 1, 1, 5, 6, 4,-1\n 2, 0,-2, 3, 3,-1\n"), "individual no. 2 on day 2 is negative (-2)."},
      {ConsumptionText(" 1, 1, 1, 5, 6, 4,-1\n 2, 0, 2, x, 3,-1\n"), "individual no. 2 on day 3 is not a number"},
      {ConsumptionText(" 1, 1, 1, 5, 6, 4,-1\n 3, 1,-1\n"), "Check consumption of individual no. 1 or 2."},
      {ConsumptionText(" 1, 1, 1"), "Input past end of file"},
  };
  for (const Case& k : cases) {
    test::TempDir dir;
    Session S;
    test::FakePrompts P;
    test::LoadCohort(S, 2, Predators());
    test::WriteFile(dir.file("eaten.txt"), k.text);
    try {
      ConsumptionFileReader(S, P).ReadConsumptionFile(dir.file("eaten.txt"));
      ADD_FAILURE() << "no fault for: " << k.text;
    } catch (const ProgramEnd& e) {
      EXPECT_NE(e.message.find(k.message), std::string::npos) << e.message;
    }
    EXPECT_NE(S.options.PredationPresent, "Yes");
  }
}

// Each sample carries its individuals' consumption: the C0 of a sample is the mean lifetime
// consumption of the individuals drawn, and the columns do not depend on the threads.
TEST(Predation, BootstrapCarriesConsumptionAndIsTheSameOnOneAndTwoThreads) {
  auto run = [](int threads) {
    auto r = std::make_unique<PredatorRun>();
    r->Run();
    boottest::AnswerDetailedRun(r->P, 200, 4, true);
    r->S.runControl.hasSeed = true;
    r->S.runControl.seed = 99;
    r->S.runControl.threads = threads;
    BootstrapDriver(r->S, r->P).cmdBootstrap_Click();
    return r;
  };
  auto one = run(1);
  auto two = run(2);
  const BootstrapRecord& a = one->S.boot;
  const BootstrapRecord& b = two->S.boot;
  ASSERT_EQ(a.EffectiveCount, 200);
  const double lifetime[5] = {0, 17, 8, 1, 10};
  for (long s = 1; s <= 200; ++s) {
    double eaten = 0;
    for (int p = 1; p <= 4; ++p) eaten += lifetime[a.BootIndividuals(p, s)];
    ASSERT_DOUBLE_EQ(a.BootC0(s), eaten / 4) << s;
    EXPECT_EQ(a.BootC0(s), b.BootC0(s));
    EXPECT_EQ(a.BootOmega(s), b.BootOmega(s));
    EXPECT_GT(a.BootOmega(s), 0);
  }
  EXPECT_EQ(a.C0.se, b.C0.se);
  EXPECT_GT(a.C0.se, 0);
  const auto column = [](const PredatorRun& r) { return test::ReadFile(r.dir.file("predator_Effect Boot-C0.txt")); };
  EXPECT_EQ(column(*one), column(*two));
  EXPECT_EQ(column(*one).substr(0, column(*one).find("\n")), "\"Control-C0\"");
  EXPECT_NE(column(*one).find("\"C0\",4,9\n"), std::string::npos);
  const std::string table = test::ReadFile(one->dir.file("predator_0C_Bootstrap_C0 and Omega_Output.txt"));
  EXPECT_NE(table.find("0.975 PCI"), std::string::npos);
}

}  // namespace
}  // namespace korvan
