#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "bootstrap/bootstrap_run_fixture.h"
#include "bootstrap/resampling.h"
#include "engine/stage_statistics.h"
#include "store/faults.h"

namespace korvan {
namespace {

using boottest::AnswerDetailedRun;
using boottest::BasicRunOf;
using boottest::ListPrompts;
using boottest::SmallCohort;

std::unique_ptr<Session> RunBootstrap(const test::TempDir& dir, int threads, std::uint64_t seed, int B,
                                           bool effectiveOnly = true) {
  ListPrompts P;
  auto S = BasicRunOf(dir.file("cohort.txt"), 3, SmallCohort(), P);
  AnswerDetailedRun(P, B, 24, effectiveOnly);
  S->runControl.hasSeed = true;
  S->runControl.seed = seed;
  S->runControl.threads = threads;
  BootstrapDriver(*S, P).cmdBootstrap_Click();
  return S;
}

// The report without the lines that tell the clock.
std::string ReportWithoutClock(const std::string& path) {
  std::istringstream in(test::ReadFile(path));
  std::string line, out;
  while (std::getline(in, line))
    if (line.find("Bootstrap began") == std::string::npos && line.find("Analyzed on") == std::string::npos) out += line + "\n";
  return out;
}

// The same seed gives the same samples, results and files on one thread and on two.
TEST(BootstrapDriver, OneAndTwoThreadsGiveTheSameRun) {
  test::TempDir d1, d2;
  auto one = RunBootstrap(d1, 1, 4242, 300);
  auto two = RunBootstrap(d2, 2, 4242, 300);
  EXPECT_EQ(one->boot.ThreadsUsed, 1);
  EXPECT_EQ(two->boot.ThreadsUsed, 2);
  const BootstrapRecord& a = one->boot;
  const BootstrapRecord& b = two->boot;
  ASSERT_EQ(a.EffectiveCount, 300);
  ASSERT_EQ(b.EffectiveCount, 300);
  auto& la = one->lifeTable.BootLists();
  auto& lb = two->lifeTable.BootLists();
  for (long s = 1; s <= 300; ++s) {
    for (int p = 1; p <= 24; ++p) ASSERT_EQ(a.BootIndividuals(p, s), b.BootIndividuals(p, s)) << s << " " << p;
    EXPECT_EQ(a.BootF(s), b.BootF(s));
    EXPECT_EQ(a.BootLongevity(s), b.BootLongevity(s));
    EXPECT_EQ(a.BootAPOP(s), b.BootAPOP(s));
    EXPECT_EQ(a.BootOviDays(s), b.BootOviDays(s));
    EXPECT_EQ(a.BootR(s), b.BootR(s));
    EXPECT_EQ(a.BootR0(s), b.BootR0(s));
    for (int j = 1; j <= 4; ++j) EXPECT_EQ(la.BootStageMean(j, s), lb.BootStageMean(j, s));
    EXPECT_EQ(la.BootPreadultSurvival(s), lb.BootPreadultSurvival(s));
  }
  for (int x = 0; x <= one->ws.tables.LastAge + 1; ++x) {
    EXPECT_EQ(a.LxSum(x), b.LxSum(x)) << x;
    EXPECT_EQ(a.LxSumSquares(x), b.LxSumSquares(x)) << x;
    EXPECT_EQ(a.LxMax(x), b.LxMax(x)) << x;
    EXPECT_EQ(a.LxMin(x), b.LxMin(x)) << x;
    EXPECT_EQ(a.MxSum(x), b.MxSum(x)) << x;
  }
  for (const char* name : {"_0B_Bootstrap_Output.txt", "_0C_Bootstrap_Stage mean_Output.txt",
                           "_0D_Bootstrap_APOP and TPOP_Output.txt",
                           "_0E_Bootstrap_Distrib. of stage mortality_Output.txt"}) {
    EXPECT_EQ(ReportWithoutClock(d1.file(std::string("cohort") + name)),
              ReportWithoutClock(d2.file(std::string("cohort") + name)))
        << name;
  }
  EXPECT_EQ(test::ReadFile(d1.file("cohort_Effect Boot-X0_SSD_1_S1.txt")),
            test::ReadFile(d2.file("cohort_Effect Boot-X0_SSD_1_S1.txt")));
  // Another seed draws other samples.
  test::TempDir d3;
  auto other = RunBootstrap(d3, 2, 4243, 20);
  int differ = 0;
  for (int p = 1; p <= 24; ++p) differ += other->boot.BootIndividuals(p, 1) != a.BootIndividuals(p, 1);
  EXPECT_GT(differ, 0);
}

// The l(x) sums over the samples agree with l(x) recounted in the test from each sample's
// individuals, and the extremes are those of the samples.
TEST(BootstrapDriver, LxSumsAreThoseOfTheSamples) {
  test::TempDir dir;
  auto S = RunBootstrap(dir, 2, 77, 60);
  const BootstrapRecord& R = S->boot;
  const auto cohort = SmallCohort();
  const int last = S->ws.tables.LastAge;
  for (int x = 0; x <= last; ++x) {
    double sum = 0, sq = 0, mx = -1, mn = 2;
    for (long b = 1; b <= 60; ++b) {
      int alive = 0;
      for (int p = 1; p <= 24; ++p) {
        const auto& ind = cohort[static_cast<std::size_t>(R.BootIndividuals(p, b) - 1)];
        double life = 0;
        for (double d : ind.durations) life += std::fabs(d);
        alive += life > x;
      }
      const double l = alive / 24.0;
      sum += l;
      sq += l * l;
      mx = std::max(mx, l);
      mn = std::min(mn, l);
    }
    EXPECT_NEAR(R.LxSum(x), sum, 1e-9) << x;
    EXPECT_NEAR(R.LxSumSquares(x), sq, 1e-9) << x;
    EXPECT_DOUBLE_EQ(R.LxMax(x), mx) << x;
    EXPECT_DOUBLE_EQ(R.LxMin(x), mn) << x;
    // Limits centred on the cohort's l(x), within 0..1.
    EXPECT_GE(R.LxLower(x), 0);
    EXPECT_LE(R.LxUpper(x), 1);
    EXPECT_LE(R.LxLower(x), S->basic.OriginalLx(x) + 1e-12);
    // m(x): limits centred on the cohort's m(x), the lower one not below 0.
    const double mx0 = S->params.BasicRunMx(x);
    EXPECT_NEAR(R.MxUpper(x) - mx0, 1.959964 * R.MxSE(x), 1e-9) << x;
    EXPECT_NEAR(R.MxLower(x), std::max(0.0, mx0 - 1.959964 * R.MxSE(x)), 1e-9) << x;
    EXPECT_NEAR(R.MxMean(x), R.MxSum(x) / 60, 1e-12) << x;
    EXPECT_LE(R.MxMin(x), R.MxMean(x) + 1e-12);
    EXPECT_GE(R.MxMax(x), R.MxMean(x) - 1e-12);
  }
  double mxTotal = 0;
  for (int x = 0; x <= last; ++x) mxTotal += R.MxSum(x);
  EXPECT_GT(mxTotal, 0);
}

// For a few samples, the engine's results in the loop equal those of a Basic Run of the same
// sample written out as a data file of its own.
TEST(BootstrapDriver, ReplicateEqualsBasicRunOfItsSample) {
  test::TempDir dir;
  auto S = RunBootstrap(dir, 2, 9, 12);
  const auto cohort = SmallCohort();
  auto& L = S->lifeTable.BootLists();
  for (long b : {1L, 7L, 12L}) {
    std::vector<boottest::PoolIndividual> sample;
    for (int p = 1; p <= 24; ++p) sample.push_back(cohort[static_cast<std::size_t>(S->boot.BootIndividuals(p, b) - 1)]);
    test::TempDir own;
    ListPrompts P;
    auto T = BasicRunOf(own.file("sample.txt"), 3, sample, P);
    EXPECT_GT(S->boot.BootLongevity(b), 5);
    EXPECT_GT(S->boot.BootOviDays(b), 1);
    EXPECT_NEAR(S->boot.BootLongevity(b), T->ws.stageStats.LongevityAll.mean, 1e-12) << b;
    EXPECT_NEAR(S->boot.BootOviDays(b), T->ws.stageStats.OviDaysStat.mean, 1e-12) << b;
    for (int j = 1; j <= 3; ++j) EXPECT_NEAR(L.BootStageMean(j, b), T->lifeTable.OriginalStageMean(j), 1e-12) << b;
    EXPECT_NEAR(L.BootPreadultSurvival(b), T->lifeTable.PreadultSurvivalOriginal, 1e-12) << b;
    EXPECT_NEAR(S->boot.BootF(b), T->lifeTable.OriginalMeanFecundity, 1e-12) << b;
    EXPECT_GT(S->boot.BootR0(b), 1);
    EXPECT_NEAR(S->boot.BootR0(b), T->params.R0_Basic, 1e-12) << b;
    EXPECT_NEAR(S->boot.BootGRR(b), T->params.GRR_Basic, 1e-12) << b;
    EXPECT_NEAR(S->boot.BootR(b), T->params.R_Basic, 1e-12) << b;
    EXPECT_NEAR(S->boot.BootLambda(b), T->params.Lambda_Basic, 1e-12) << b;
    EXPECT_NEAR(S->boot.BootT(b), T->params.T_Basic, 1e-9) << b;

  }
}

}  // namespace
}  // namespace korvan
