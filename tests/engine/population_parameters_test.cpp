#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "bootstrap/replicate_chain.h"
#include "engine/population_parameters.h"
#include "engine/population_parameters_fixture.h"
#include "store/faults.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {

using test::FakePrompts;
using test::Life;

// One session with a cohort loaded, and the engine on its workspace.
struct Bench {
  test::TempDir dir;  // files of the exits land here
  std::unique_ptr<Session> S = std::make_unique<Session>();
  FakePrompts P;
  ParameterEngine E{*S, P};

  Bench(int m, const std::vector<Life>& cohort, double timeUnit, const char* method = "Calculus") {
    S->options.AnalysisMethod = method;
    S->options.EffectOfFxjFlag = "No";
    S->identity.DataFileBase = dir.file("cohort");
    test::LoadTables(*S, m, cohort, timeUnit);
  }
  ParameterWork& p() { return S->ws.params; }
};

// The exponent of the Euler-Lotka terms per time unit: 0.3 stands for a third.
double Scale(double tu) { return tu == 0.3 ? 1.0 / 3 : tu; }

TEST(PopulationParameters, CalculusMatrixAndProjectionMatrixAgreeOnEveryShapeAndTimeUnit) {
  struct Shape {
    const char* name;
    int m;
    std::vector<Life> cohort;
  };
  const std::vector<Shape> shapes = {{"two-sex", 4, test::TwoSexCohort()},
                                     {"parthenogenetic", 2, test::ParthenogeneticCohort()}};
  for (const Shape& shape : shapes) {
    for (double tu : {1.0, 0.5, 0.3}) {
      SCOPED_TRACE(std::string(shape.name) + " time unit " + std::to_string(tu));
      Bench calc(shape.m, shape.cohort, tu);
      calc.E.Life05();
      const double r = calc.S->params.R_Basic;
      // The Euler-Lotka sum at r is 1 within the precision of the bisection.
      EXPECT_NEAR(test::EulerLotkaSum(*calc.S, r, Scale(tu)), 1.0, 1e-7);
      // r is ln of the dominant eigenvalue of the projection matrix, per rate unit.
      const double perStep = test::ProjectionLambda(*calc.S);
      EXPECT_NEAR(r, std::log(perStep) / Scale(tu), 1e-6);
      EXPECT_NEAR(calc.S->params.Lambda_Basic, std::exp(r), 1e-12);
      EXPECT_EQ(calc.p().StepIntrinsicRate, tu * r);  // 0.3 r, not r / 3
      EXPECT_NEAR(calc.p().StepFiniteRate, std::pow(std::exp(r), Scale(tu)), 1e-12);
      EXPECT_NEAR(calc.S->params.T_Basic, std::log(calc.S->params.R0_Basic) / r, 1e-9);
      EXPECT_NEAR(calc.S->params.DoublingTime, std::log(2.0) / r, 1e-9);

      Bench mat(shape.m, shape.cohort, tu, "Matrix");
      mat.E.Life05();
      EXPECT_NEAR(mat.S->params.R_Basic, r, 2e-5);
      EXPECT_NEAR(mat.S->params.Lambda_Basic, std::exp(r), 2e-5);
      EXPECT_DOUBLE_EQ(mat.S->params.R0_Basic, calc.S->params.R0_Basic);
      EXPECT_DOUBLE_EQ(mat.S->params.GRR_Basic, calc.S->params.GRR_Basic);
      EXPECT_NEAR(mat.S->params.T_Basic, calc.S->params.T_Basic, 1e-3);
      EXPECT_EQ(mat.S->settings.PrecisionMatrix, 1e-06);
    }
  }
}

TEST(PopulationParameters, NetReproductiveRateGrossRateAndMxByHand) {
  // Two individuals: a female (1 day egg, 3 adult days laying 4, 2, 0) and one dying at age 0.
  Bench s(2, {{"F", {1, 3}, {4, 2, 0}}, {"N", {-1}}}, 1);
  s.E.Life05();
  // l = 1, 0.5, 0.5, 0.5; s(x,2) f(x,2) = 2, 1, 0 at ages 1 to 3, so m = 0, 4, 2, 0.
  EXPECT_EQ(s.p().Mx(1), 4);
  EXPECT_EQ(s.p().Mx(2), 2);
  EXPECT_EQ(s.p().CumLxMx(3), 3);
  EXPECT_EQ(s.S->params.R0_Basic, 3);
  EXPECT_EQ(s.S->params.GRR_Basic, 6);
  EXPECT_EQ(s.p().LastReproductiveAge, 2);
  EXPECT_EQ(s.S->params.BasicRunMx(1), 4);
  // e^-2r * 2 + e^-3r * 1 = 1: with u = e^-r, u = 0.5 solves 2u^2 + u^3 = 1 ... check directly.
  const double r = s.S->params.R_Basic;
  EXPECT_NEAR(2 * std::exp(-2 * r) + std::exp(-3 * r), 1.0, 1e-7);
  EXPECT_EQ(s.P.status["txtNetreproductiverate"], "3");
  EXPECT_EQ(s.P.status["txtIntrinsicrate"], FullPrecision(RoundDisplay(r, 8)));
  EXPECT_EQ(s.P.status["txtMeangenerationtime"], FullPrecision(RoundDisplay(std::log(3.0) / r, 2)));
}

TEST(PopulationParameters, ReproductiveValueAndStableAgeStageDistribution) {
  for (const char* convention : {"x+1", "x"}) {
    SCOPED_TRACE(convention);
    Bench s(4, test::TwoSexCohort(), 1);
    s.S->options.AgeConvention = convention;
    s.E.Life05();
    s.E.Life05a();
    const auto& p = s.p();
    const double r = p.r;
    if (std::string(convention) == "x+1") {
      // A newborn's value is lambda when births at age x count at x+1.
      EXPECT_NEAR(p.Vxj(0, 1), std::exp(r), 2e-7);
      EXPECT_NEAR(p.Vx(0), std::exp(r), 2e-7);
    } else {
      // r changes with the convention but v's exponent doesn't: then a newborn's value is 1.
      EXPECT_NEAR(p.Vxj(0, 1), 1.0, 2e-7);
    }
    // In the last female age the value is the fecundity of that age.
    const int lastF = s.S->ws.lifeTable.StageLastAge(4);
    EXPECT_NEAR(p.Vxj(lastF, 4), s.S->ws.tables.Fxj(lastF, 4), 1e-12);
    // b(x,j) is a percentage of the whole.
    double total = 0;
    for (int x = 0; x <= s.S->ws.tables.LastAge; ++x)
      for (int j = 1; j <= 5; ++j) total += p.Bxj(x, j);
    EXPECT_NEAR(total, 100, 1e-9);
    // Summed over stages it is the stable age distribution from l(x) and lambda.
    for (int x = 0; x <= s.S->ws.tables.LastAge; ++x) {
      double ageSum = 0;
      for (int j = 1; j <= 5; ++j) ageSum += p.Bxj(x, j);
      EXPECT_NEAR(ageSum, 100 * s.S->ws.tables.Lx(x) * std::exp(-r * x) / [&] {
        double sum = 0;
        for (int y = 0; y <= s.S->ws.tables.LastAge; ++y) sum += s.S->ws.tables.Lx(y) * std::exp(-r * y);
        return sum;
      }(), 1e-9);
    }
    double ssd = 0;
    for (int j = 1; j <= 5; ++j) ssd += p.SsdPercent(j);
    EXPECT_NEAR(ssd, 100, 1e-9);
    EXPECT_EQ(p.SsdFirstStageOne(1), 1);
    // Birth, survival and death rates at the stable distribution: lambda = 1 + b - d = s + b.
    EXPECT_NEAR(p.BirthRate, p.lambda * p.Ax(0), 1e-15);
    EXPECT_NEAR(1 + p.BirthRate - p.DeathRate, p.lambda, 1e-12);
    EXPECT_NEAR(p.SurvivalRate + p.BirthRate, p.lambda, 1e-12);
  }
}

TEST(PopulationParameters, FemaleFiguresAndTheYoungestOfEqualPeaks) {
  // One female whose value is the same on two days: the younger day is the peak.
  Bench s(2, {{"F", {2, 4}, {0, 3, 0, 3}}, {"M", {2, 4}}}, 0.3);
  s.E.Life05();
  const auto& p = s.p();
  // Female days are ages 2..5; v(5) = f(5) = 3 and v(3) = f(3) + later terms > 3.
  EXPECT_EQ(p.FirstFxjAge, 3);
  EXPECT_NEAR(p.FirstVxjAge, 2.0 / 3, 1e-15);  // x / 3 for a time unit of 0.3
  EXPECT_NEAR(p.FirstVxjAgeSteps, 2 * 0.3, 1e-15);
  EXPECT_GT(p.PeakVxj, 0);
}

TEST(PopulationParameters, NetReproductiveRateZeroKeepsTheLastGoodRun) {
  Bench s(4, test::TwoSexCohort(), 1);
  s.E.Life05();
  const double r = s.S->params.R_Basic, lambda = s.S->params.Lambda_Basic, T = s.S->params.T_Basic;
  std::vector<Life> barren = test::TwoSexCohort();
  for (Life& l : barren)
    for (double& e : l.eggs) e = 0;
  test::LoadTables(*s.S, 4, barren, 1);
  s.P.Answer("Net reproductive rate = 0!", "OK");
  s.E.Life05();
  ASSERT_TRUE(s.P.Met("Net reproductive rate = 0!"));
  EXPECT_EQ(s.P.With("Net reproductive rate = 0!")[0].text, "The net reproductive rate = 0.");
  EXPECT_EQ(s.P.status["txtNetreproductiverate"], "0");
  EXPECT_EQ(s.P.status["txtNetreproductiverate.BackColor"], "Red");
  EXPECT_EQ(s.S->params.R_Basic, r);
  EXPECT_EQ(s.S->params.Lambda_Basic, lambda);
  EXPECT_EQ(s.S->params.T_Basic, T);
  EXPECT_EQ(s.p().R0, 0);

  // The same in a replicate goes on into the bisection and halts at 500 evaluations.
  s.S->ws.run.Boot = 1;
  s.S->boot.ResampleKind = "b";
  s.P.Answer("Net reproductive rate = 0!", "OK");
  try {
    s.E.Life05();
    FAIL() << "no halt";
  } catch (const ProgramEnd& e) {
    EXPECT_EQ(e.message, "NO. OF ITERATION= 500   STOP EXECUTION!");
  }
}

TEST(PopulationParameters, NetReproductiveRateOfExactlyOne) {
  // Two newborns; the female lays 2 eggs: R0 is exactly 1.
  const std::vector<Life> cohort = {{"F", {1, 2}, {2, 0}}, {"N", {-1}}};
  Bench s(2, cohort, 1);
  s.S->params.R_Basic = 0.25;  // a value of an earlier run
  s.P.Answer("Net reproductive rate = 1!", "OK");
  s.E.Life05();
  ASSERT_TRUE(s.P.Met("Net reproductive rate = 1!"));
  EXPECT_EQ(s.P.With("Net reproductive rate = 1!")[0].text, "The net reproductive rate = 1.");
  EXPECT_EQ(s.P.status["txtNetreproductiverate"], "1");
  EXPECT_EQ(s.P.status["txtNetreproductiverate.BackColor"], "Red");
  EXPECT_EQ(s.P.status["txtMeangenerationtime"], "2");
  EXPECT_EQ(s.P.status["txtFiniteRate"], "1");
  EXPECT_EQ(s.P.status["txtIntrinsicrate"], "0");
  EXPECT_EQ(s.p().r, 0);
  EXPECT_EQ(s.p().lambda, 1);
  EXPECT_EQ(s.S->params.Lambda_Basic, 1);
  EXPECT_EQ(s.S->params.T_Basic, 2);
  EXPECT_EQ(s.S->params.GRR_Basic, 2);
  EXPECT_EQ(s.S->params.R_Basic, 0.25);  // untouched

  // Neither the Matrix method nor a replicate knows that exit: lambda comes out near 1.
  Bench mat(2, cohort, 1, "Matrix");
  mat.E.Life05();
  EXPECT_FALSE(mat.P.Met("Net reproductive rate = 1!"));
  EXPECT_NEAR(mat.S->params.Lambda_Basic, 1, 1e-6);
  Bench boot(2, cohort, 1);
  boot.S->ws.run.Boot = 2;
  boot.S->boot.ResampleKind = "b";
  boot.E.Life05();
  EXPECT_NEAR(boot.S->boot.BootR(2), 0, 1e-7);
}

TEST(PopulationParameters, BracketDependsOnLastAgeAndARootOutsideItHalts) {
  // f at age 1 solves e^-2r * 0.5 f = 1 with r = 1; a male sets LastAge.
  const double eggs = 2 * std::exp(2.0);
  auto cohort = [&](int maleDays, double e) {
    return std::vector<Life>{{"F", {1, 2}, {e, 0}}, {"M", {1, maleDays}}};
  };
  Bench at500(2, cohort(500, eggs), 1);
  ASSERT_EQ(at500.S->ws.tables.LastAge, 500);
  at500.E.Life05();
  EXPECT_NEAR(at500.S->params.R_Basic, 1, 1e-6);

  Bench at501(2, cohort(501, eggs), 1);
  ASSERT_EQ(at501.S->ws.tables.LastAge, 501);
  try {
    at501.E.Life05();  // the bracket is -0.5..0.8
    FAIL() << "no halt";
  } catch (const ProgramEnd& e) {
    EXPECT_EQ(e.message, "NO. OF ITERATION= 500   STOP EXECUTION!");
  }
  // r = 1.5 lies above 1.2.
  Bench steep(2, cohort(20, 2 * std::exp(3.0)), 1);
  EXPECT_THROW(steep.E.Life05(), ProgramEnd);
}

TEST(PopulationParameters, MatrixMethodTimeUnitsAndItsHalts) {
  const auto cohort = test::ParthenogeneticCohort();
  Bench two(2, cohort, 2, "Matrix");
  two.E.Life05();
  const double perStep = test::ProjectionLambda(*two.S);
  EXPECT_NEAR(two.S->params.R_Basic, std::log(perStep) / 2, 1e-6);
  EXPECT_NEAR(two.p().StepFiniteRate, std::sqrt(perStep), 1e-6);

  // A time unit outside the table halts the Matrix method; Calculus takes it as a factor.
  Bench odd(2, cohort, 0.33, "Matrix");
  EXPECT_THROW(odd.E.Life05(), ProgramEnd);
  Bench oddCalc(2, cohort, 0.33);
  oddCalc.E.Life05();
  EXPECT_NEAR(test::EulerLotkaSum(*oddCalc.S, oddCalc.S->params.R_Basic, 0.33), 1, 1e-7);
  // A root beyond the bracket 0.2..3.0 of lambda halts without a text.
  Bench steep(2, {{"F", {1, 2}, {40, 0}}, {"M", {1, 3}}}, 1, "Matrix");
  try {
    steep.E.Life05();
    FAIL() << "no halt";
  } catch (const ProgramEnd& e) {
    EXPECT_EQ(e.message, "");
  }
}

TEST(PopulationParameters, ReplicateFilesItsResultsUnderItsNumber) {
  for (double tu : {1.0, 0.5}) {
    SCOPED_TRACE(tu);
    Bench s(4, test::TwoSexCohort(), tu);
    s.E.Life05();
    const double rBasic = s.S->params.R_Basic;
    const double birthBasic = s.S->params.BirthRateStep;
    const double vBasic = s.S->params.VxjBasic(0, 1);
    const auto boxes = s.P.status;
    // A replicate: the cohort without two of its females.
    auto cohort = test::TwoSexCohort();
    cohort.erase(cohort.begin(), cohort.begin() + 2);
    test::LoadTables(*s.S, 4, cohort, tu);
    s.S->ws.run.Boot = 7;
    s.S->ws.run.IsResamplingFlag = "y";
    s.S->ws.run.IsBasicRunFlag = "n";
    s.S->boot.ResampleKind = "b";
    s.E.Life05();
    s.E.Life05a();
    const auto& p = s.p();
    ReplicateChain(*s.S, s.P).FileReplicate();
    EXPECT_EQ(s.S->boot.BootR(7), p.r);
    EXPECT_EQ(s.S->boot.BootLambda(7), std::exp(p.r));
    EXPECT_EQ(s.S->boot.BootR0(7), p.R0);
    EXPECT_EQ(s.S->boot.BootGRR(7), p.GRR);
    EXPECT_EQ(s.S->boot.BootT(7), p.T);
    EXPECT_NE(p.r, rBasic);
    EXPECT_EQ(s.S->params.R_Basic, rBasic);
    EXPECT_EQ(s.S->params.VxjBasic(0, 1), vBasic);
    EXPECT_EQ(s.P.status, boxes);  // a replicate shows nothing
    if (tu == 1) {
      EXPECT_EQ(s.S->boot.BootBirthRate(7), p.lambda * p.Ax(0));
    } else {
      // Away from a time unit of 1 every replicate carries the Basic Run's rates.
      EXPECT_EQ(s.S->boot.BootBirthRate(7), birthBasic);
      EXPECT_NE(p.BirthRateStep, birthBasic);
    }
    double ssd = 0;
    for (int j = 1; j <= 5; ++j) ssd += s.S->boot.BootSsd(j, 7);
    EXPECT_NEAR(ssd, 100, 1e-9);
    EXPECT_EQ(s.S->boot.BootFirstFxjAge(7), s.S->ws.lifeTable.StageFirstAge(4) + 0);
    EXPECT_EQ(s.S->ws.boot.MxSum(10), p.Mx(10));
  }
}

TEST(PopulationParameters, CountersAndMxExtremesOverReplicates) {
  Bench s(2, test::ParthenogeneticCohort(), 1);
  s.S->boot.ResampleKind = "b";
  s.S->ws.run.IsResamplingFlag = "y";
  s.S->ws.run.IsBasicRunFlag = "n";
  // Replicate 1: the cohort; replicate 2: a declining one (r < 0, lambda < 1, R0 < 1).
  s.S->ws.run.Boot = 1;
  s.E.Life05();
  const double m6 = s.p().Mx(6);
  test::LoadTables(*s.S, 2, {{"F", {4, 9}, {0, 0.3, 0.2, 0, 0, 0, 0, 0, 0}}, {"N", {-3}}, {"N", {-5}}}, 1);
  s.S->ws.run.Boot = 2;
  s.E.Life05();
  EXPECT_LT(s.S->ws.boot.sample.r, 0);
  EXPECT_EQ(s.S->ws.boot.BootNegRCount, 1);
  EXPECT_EQ(s.S->ws.boot.BootLambdaBelow1Count, 1);
  EXPECT_EQ(s.S->ws.boot.BootR0Below1Count, 1);
  EXPECT_EQ(s.S->ws.boot.MxMax(6), m6);
  EXPECT_EQ(s.S->ws.boot.MxMin(6), s.p().Mx(6));
  EXPECT_EQ(s.S->ws.boot.MxSumSquares(6), m6 * m6 + s.p().Mx(6) * s.p().Mx(6));
}

TEST(PopulationParameters, JackknifePassFilesPseudoValues) {
  Bench s(4, test::TwoSexCohort(), 1);
  s.E.Life05();
  const double rBasic = s.S->params.R_Basic, tBasic = s.S->params.T_Basic;
  auto cohort = test::TwoSexCohort();
  cohort.erase(cohort.begin() + 2);  // individual 3 left out
  test::LoadTables(*s.S, 4, cohort, 1);
  s.p().JackNo = 3;
  s.S->ws.run.ResampleKind = "j";
  s.S->ws.run.IsResamplingFlag = "y";
  s.S->ws.run.IsBasicRunFlag = "n";
  s.E.Life05();
  s.E.Life05a();
  const double r = s.p().r;
  const double n = 9;  // the cohort less one
  EXPECT_EQ(s.S->params.JackR(3), r);
  EXPECT_DOUBLE_EQ(s.S->params.JackPseudoR(3), (n + 1) * rBasic - n * r);
  EXPECT_EQ(s.S->params.JackR0(3), s.p().R0);
  EXPECT_EQ(s.S->params.JackLambda(3), std::exp(r));
  EXPECT_EQ(s.S->params.JackT(3), s.p().T);
  EXPECT_EQ(s.S->params.R_Basic, rBasic);
  EXPECT_EQ(s.S->params.T_Basic, tBasic);
  // A jackknife pass shows T at 4 decimals when r is above 0.
  EXPECT_EQ(s.P.status["txtMeangenerationtime"], FullPrecision(RoundDisplay(s.p().T, 4)));
  EXPECT_EQ(s.S->boot.BootR(0), 0);
}

}  // namespace
}  // namespace korvan
