#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "analyses/curtailed_tailed.h"
#include "engine/population_parameters.h"
#include "engine/population_parameters_fixture.h"
#include "store/faults.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {

using test::Life;

struct Cut {
  std::unique_ptr<Session> S = std::make_unique<Session>();
  test::FakePrompts P;
  ParameterEngine E{*S, P};
  explicit Cut(int m, const std::vector<Life>& cohort, const char* effect = "Yes") {
    S->options.EffectOfFxjFlag = effect;
    test::LoadTables(*S, m, cohort, 1);
  }
  // r, then the cut tables as a Basic Run follows it with them.
  bool Run() {
    if (S->options.AnalysisMethod == "Matrix")
      E.Life05ForMatrix();
    else
      E.Life05();
    return CurtailedTailedRates(*S, P).CurtailedAndTailedAfterR();
  }
};

TEST(CurtailedTailed, CutTablesAgainstTheirOwnEquations) {
  Cut run(2, test::ParthenogeneticCohort());
  EXPECT_TRUE(run.Run());
  const auto& c = run.S->params;
  const auto& t = run.S->ws.tables;
  const auto& p = run.S->ws.params;
  const int last = t.LastAge;
  EXPECT_EQ(c.CurtailedDone, "Yes");
  // Cut at the last age the table is whole: r within the coarser tolerance.
  EXPECT_NEAR(c.CurtailedRate(last), p.r, 1e-5);
  // No fecundity before age a: 0 below it, and at a the table holds one age only, whose root
  // is ln(l m) / (a + 1).
  int a = 0;
  while (p.Mx(a) == 0) ++a;
  for (int x = 0; x < a; ++x) EXPECT_EQ(c.CurtailedRate(x), 0);
  EXPECT_NEAR(c.CurtailedRate(a), std::log(t.Lx(a) * p.Mx(a)) / (a + 1), 1e-5);
  // Tailed: the remaining R0, the whole table at 0, and -1 after the last fecund age.
  double tail = 0;
  for (int x = last; x >= 0; --x) {
    tail += p.Mx(x) * t.Lx(x);
    if (x <= p.LastReproductiveAge) {
      EXPECT_NEAR(c.TailedR0(x), tail, 1e-12);
    }
  }
  EXPECT_NEAR(c.TailedRate(0), p.r, 1e-5);
  int z = last;
  while (p.Mx(z) == 0) --z;
  EXPECT_EQ(c.TailedR0(z + 1), 0);
  EXPECT_EQ(c.TailedRate(z + 1), -1);

  // The figure files: the tailed r stops at the mark, the tailed R0 goes on.
  test::TempDir dir;
  run.S->identity.DataFileBase = dir.file("aphid");
  CurtailedTailedRates(*run.S, run.P).WriteGraphDataTailedR0andR();
  const std::string rFile = test::ReadFile(dir.file("aphid_Fig_Tailed r.txt"));
  const std::string r0File = test::ReadFile(dir.file("aphid_Fig_Tailed R0.txt"));
  EXPECT_EQ(rFile.rfind("age, Tailed r\n0,", 0), 0u);
  EXPECT_EQ(std::count(rFile.begin(), rFile.end(), '\n'), z + 2);
  EXPECT_EQ(std::count(r0File.begin(), r0File.end(), '\n'), last + 2);
  EXPECT_EQ(rFile.find("-1"), std::string::npos);
}

TEST(CurtailedTailed, RunOnlyInABasicRunThatAsksForThem) {
  for (const char* effect : {"No", "NO", "no"}) {
    Cut run(2, test::ParthenogeneticCohort(), effect);
    EXPECT_FALSE(run.Run());
    EXPECT_EQ(run.S->params.CurtailedDone, "");
  }
  Cut resampling(2, test::ParthenogeneticCohort());
  resampling.S->ws.run.IsBasicRunFlag = "n";
  EXPECT_FALSE(resampling.Run());
  EXPECT_EQ(resampling.S->params.CurtailedDone, "");
  Cut matrix(2, test::ParthenogeneticCohort());
  matrix.S->options.AnalysisMethod = "Matrix";
  EXPECT_TRUE(matrix.Run());
  EXPECT_EQ(matrix.S->params.CurtailedDone, "Yes");
}

TEST(CurtailedTailed, RootsBelowTheBracketEndTheRun) {
  // Cut at age 1 only a tiny l(1)m(1) is left: its root ln(0.02)/2 lies below -1.2.
  Cut curtailed(2, {{"F", {1, 6}, {0.04, 0, 0, 9, 8, 7}}, {"N", {-2}}});
  try {
    curtailed.Run();
    FAIL() << "no end";
  } catch (const ProgramEnd& e) {
    EXPECT_EQ(e.title, "Special case!");
    EXPECT_EQ(e.message,
              "Special case encountered! Please re-run KORVAN and when you see \"Do you want to see more "
              "options?\", you have to choose Yes.  Then you choose \"No\" at the next step");
  }
  // From age 5 on only a tiny tail is left.
  Cut tailed(2, {{"F", {1, 6}, {9, 8, 7, 0, 0.0002, 0}}, {"N", {-2}}});
  try {
    tailed.Run();
    FAIL() << "no halt";
  } catch (const ProgramEnd& e) {
    EXPECT_EQ(e.message, "NO. OF ITERATION= 500   STOP EXECUTION !");
  }
}

TEST(CurtailedTailed, ResidualTimeRuleDividesForHalfAndMultipliesForAFifth) {
  EXPECT_EQ(ConvertCurtailedExponent(-3, 0.5), -1.5);
  EXPECT_EQ(ConvertCurtailedExponent(-3, 0.3), -1);
  EXPECT_EQ(ConvertCurtailedExponent(-3, 0.16), -0.5);
  EXPECT_EQ(ConvertCurtailedExponent(-3, 0.2), -3 * 0.2);  // the engine's rule divides by 5
  EXPECT_EQ(ConvertExponent(-3, 0.2), -3 / 5.0);
  EXPECT_EQ(ConvertExponent(-3, 0.5), -3 * 0.5);
  EXPECT_EQ(ConvertExponentFull(-3, 0.5), -3 / 2.0);
}

}  // namespace
}  // namespace korvan
