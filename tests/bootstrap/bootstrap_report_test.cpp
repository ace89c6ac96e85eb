#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "bootstrap/bootstrap_run_fixture.h"
#include "text/numbers.h"

namespace korvan {
namespace {

using boottest::ListPrompts;
using boottest::PoolIndividual;

constexpr int kColumns[8] = {15, 25, 38, 50, 60, 70, 80, 90};

// The eight values of a row of the report's first table, read at their columns.
std::vector<double> RowValues(const std::string& report, const std::string& label) {
  std::istringstream in(report);
  std::string line;
  while (std::getline(in, line)) {
    if (line.compare(0, label.size(), label) != 0 || (line.size() > label.size() && line[label.size()] != ' ')) continue;
    std::vector<double> v;
    for (int c = 0; c < 8; ++c) {
      const std::size_t from = static_cast<std::size_t>(kColumns[c] - 1);
      const std::size_t to = c < 7 ? static_cast<std::size_t>(kColumns[c + 1] - 1) : line.size();
      v.push_back(from < line.size() ? std::atof(line.substr(from, to - from).c_str()) : -999);
    }
    return v;
  }
  return {};
}

struct Moments {
  double mean = 0, variance = 0, max = -1e300, min = 1e300;
};
Moments Of(const std::vector<double>& x) {
  Moments m;
  double s = 0;
  for (double v : x) {
    s += v;
    m.max = std::max(m.max, v);
    m.min = std::min(m.min, v);
  }
  m.mean = s / x.size();
  double q = 0;
  for (double v : x) q += (v - m.mean) * (v - m.mean);
  m.variance = q / (x.size() - 1);
  return m;
}

double Life(const PoolIndividual& p) {
  double life = 0;
  for (double d : p.durations) life += std::fabs(d);
  return life;
}

// The rows of F, Nf/N and longevity agree with the same figures recounted in the test from
// the individuals of each sample.
TEST(BootstrapReport, RowsAgreeWithSumsOverTheSamples) {
  test::TempDir dir;
  ListPrompts P;
  auto S = boottest::BasicRunOf(dir.file("cohort.txt"), 3, boottest::SmallCohort(), P);
  boottest::AnswerDetailedRun(P, 40, 24, true);
  S->runControl.hasSeed = true;
  S->runControl.seed = 11;
  BootstrapDriver(*S, P).cmdBootstrap_Click();
  const auto cohort = boottest::SmallCohort();
  std::vector<double> F, NfN, longevity;
  for (long b = 1; b <= 40; ++b) {
    double eggs = 0, females = 0, life = 0;
    for (int p = 1; p <= 24; ++p) {
      const PoolIndividual& ind = cohort[static_cast<std::size_t>(S->boot.BootIndividuals(p, b) - 1)];
      life += Life(ind);
      if (ind.sex != "F") continue;
      females += 1;
      for (double e : ind.eggs) eggs += e;
    }
    F.push_back(eggs / females);
    NfN.push_back(females / 24);
    longevity.push_back(life / 24);
  }
  const std::string report = test::ReadFile(dir.file("cohort_0B_Bootstrap_Output.txt"));
  const Moments f = Of(F), nfn = Of(NfN), lon = Of(longevity);
  const auto mean = RowValues(report, "Boot. mean");
  const auto var = RowValues(report, "Variance");
  const auto se = RowValues(report, "S.E.");
  const auto mx = RowValues(report, "Boot. max");
  const auto mn = RowValues(report, "Boot. min");
  const auto B = RowValues(report, "B");
  const auto n = RowValues(report, "Original n");
  ASSERT_EQ(mean.size(), 8u) << report;
  EXPECT_NEAR(mean[5], f.mean, 0.005 + 1e-9);
  EXPECT_NEAR(mean[6], nfn.mean, 0.00005 + 1e-9);
  EXPECT_NEAR(mean[7], lon.mean, 0.005 + 1e-9);
  EXPECT_NEAR(var[5], f.variance, 0.005 + 1e-9);
  EXPECT_NEAR(var[6], nfn.variance, 0.00005 + 1e-9);
  EXPECT_NEAR(var[7], lon.variance, 0.005 + 1e-9);
  EXPECT_NEAR(se[5], std::sqrt(f.variance), 0.0005 + 1e-9);
  EXPECT_NEAR(se[7], std::sqrt(lon.variance), 0.0005 + 1e-9);
  EXPECT_NEAR(mx[7], lon.max, 0.0005 + 1e-9);
  EXPECT_NEAR(mn[5], f.min, 0.005 + 1e-9);
  for (double v : B) EXPECT_EQ(v, 40);
  EXPECT_EQ(n[5], 9);  // female adults of the cohort
  EXPECT_EQ(n[0], 24);
  // The cohort's row and the bias-adjusted row: 2 * cohort - bootstrap mean.
  const auto orig = RowValues(report, "ORIGINAL");
  const auto bias = RowValues(report, "Bias-adj.");
  double cohortEggs = 0, cohortLife = 0;
  for (const auto& p : cohort) {
    cohortLife += Life(p);
    for (double e : p.eggs) cohortEggs += e;
  }
  EXPECT_NEAR(orig[5], cohortEggs / 9, 0.005 + 1e-9);
  EXPECT_NEAR(orig[6], 9.0 / 24, 0.00005 + 1e-9);
  EXPECT_NEAR(orig[7], cohortLife / 24, 0.005 + 1e-9);
  EXPECT_NEAR(bias[5], 2 * cohortEggs / 9 - f.mean, 0.01);
  // Percentile rows read the sorted lists; TCI rows are the cohort's value -/+ 1.96 SE.
  const auto tciLow = RowValues(report, "0.025 TCI");
  EXPECT_NEAR(tciLow[7], cohortLife / 24 - 1.96 * std::sqrt(lon.variance), 0.0005 + 1e-9);
  EXPECT_NE(report.find("Seed of the random generator: 11\n"), std::string::npos);
  EXPECT_NE(report.find("Orig. boot no."), std::string::npos);
}

// With ineffective samples kept, the sums run over the first E sample numbers, whichever
// they are, the extremes and the interval rows are left out, and both counts are told.
TEST(BootstrapReport, KeptIneffectiveSamples) {
  test::TempDir dir;
  ListPrompts P;
  auto S = boottest::BasicRunOf(dir.file("cohort.txt"), 3, boottest::SmallCohort(), P);
  boottest::AnswerDetailedRun(P, 60, 2, false);
  S->runControl.hasSeed = true;
  S->runControl.seed = 5;
  BootstrapDriver(*S, P).cmdBootstrap_Click();
  const BootstrapRecord& R = S->boot;
  ASSERT_GT(R.IneffectiveCount, 0);
  ASSERT_GT(R.EffectiveCount, 1);
  EXPECT_EQ(R.EffectiveCount + R.IneffectiveCount, 60);
  const long E = R.EffectiveCount;
  double sum = 0;
  for (long b = 1; b <= E; ++b) sum += R.BootF(b);  // ineffective ones among them count as 0
  const std::string report = test::ReadFile(dir.file("cohort_0B_Bootstrap_Output.txt"));
  EXPECT_NEAR(RowValues(report, "Boot. mean")[5], sum / E, 0.005 + 1e-9);
  EXPECT_TRUE(RowValues(report, "Boot. max").empty());
  EXPECT_TRUE(RowValues(report, "0.025 PCI").empty());
  EXPECT_TRUE(RowValues(report, "0.975 TCI").empty());
  EXPECT_NE(report.find("Total number of bootstrap: 60 \n"), std::string::npos);
  EXPECT_NE(report.find("Total number of effective bootstrap: " + std::to_string(E) + " \n"), std::string::npos);
  // The lists hold the samples in order of their numbers.
  for (long i = 2; i <= E; ++i) EXPECT_LT(R.EffectiveList(i - 1), R.EffectiveList(i));
  for (long i = 1; i <= R.IneffectiveCount; ++i) EXPECT_EQ(R.BootEffectLabel(R.IneffectiveList(i)), kLabelIneffective);
  // n differs from N: the box of the table of APOP and TPOP says so.
  const std::string apop = test::ReadFile(dir.file("cohort_0D_Bootstrap_APOP and TPOP_Output.txt"));
  EXPECT_NE(apop.find("** Original sample size = 24 "), std::string::npos);
  EXPECT_NE(apop.find("**      Bootstrap sample size = 2 "), std::string::npos);
  EXPECT_EQ(apop.find("Boot. max"), std::string::npos);
}

}  // namespace
}  // namespace korvan
