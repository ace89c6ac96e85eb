// Paired bootstrap test: crafted column files, values checked against sums done here.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "bootstrap/bootstrap_run_fixture.h"
#include "commands/paired_test_commands.h"
#include "comparison/paired_test.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"
#include "ui/command_table.h"
#include "ui/multi_ci_table.h"

namespace korvan {
namespace {

using test::FakePrompts;
using test::ReadFile;
using test::TempDir;

// A column file as the bootstrap writes it; the list closes with -1.
std::string ColumnFile(const TempDir& dir, const std::string& name, const std::string& title, int statedB,
                       double original, const std::vector<double>& values) {
  std::string text = "\"" + title + "-r\"\n\"Next line is Bootstrap sample size (n)\"\n30\n"
                     "\"Next line is total effective Bootstrap number (B)\"\n" + std::to_string(statedB) +
                     "\n\"r\",30," + std::to_string(original) + "\n";
  for (double v : values) text += std::to_string(v) + "\n";
  text += "-1\n";
  const std::string path = dir.file(name);
  test::WriteFile(path, text);
  return path;
}

std::vector<double> Values(int B, double centre, double spread, unsigned seed) {
  std::vector<double> v;
  unsigned s = seed;
  for (int k = 0; k < B; ++k) {
    s = s * 1103515245u + 12345u;
    v.push_back(std::stod(std::to_string(centre + spread * (((s >> 8) % 1000) / 1000.0 - 0.5))));  // as written
  }
  return v;
}

// Runs command C in fast mode over the given files from inside dir; returns the report text.
struct CommandRun {
  Session S;
  FakePrompts prompts;
  std::string report;
  void Command(const TempDir& dir, const std::vector<std::string>& files) {
    prompts.Answer("Fast paired bootstrap test?", "Yes")
        .Answer("Read data file one by one for multiple comparison", std::to_string(files.size()))
        .Answer("Task completed", "OK")
        .Answer("Task completed!", "Yes");
    for (std::size_t i = 0; i < files.size(); ++i) prompts.Answer("Input treatment " + std::to_string(i + 1), files[i]);
    const auto here = std::filesystem::current_path();
    std::filesystem::current_path(dir.path());
    PairedTestCommands(S, prompts).cmdPairedBootTest_Click();
    std::filesystem::current_path(here);
    report = ReadFile(dir.file(S.comparison.ReportName));
  }
};

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(PairedBootTest, PairStatisticsAgainstSumsOverTheDifferences) {
  TempDir dir;
  const int B = 40;
  const auto low = Values(B, 0.20, 0.04, 7), high = Values(B, 0.23, 0.05, 11);
  // The smaller mean is read first: the larger one must still become treatment 1.
  const auto f1 = ColumnFile(dir, "low.txt", "Low", B, 0.2, low);
  const auto f2 = ColumnFile(dir, "high.txt", "High", B, 0.23, high);
  CommandRun run;
  run.Command(dir, {f1, f2});
  const auto& c = run.S.comparison;
  ASSERT_EQ(c.TreatmentTitle(1), "High-r");
  EXPECT_EQ(c.BootCount(1), B);

  std::vector<double> d;
  double sum = 0, sumSq = 0;
  int outside = 0;
  double m1 = 0, m2 = 0;
  for (int k = 0; k < B; ++k) m1 += high[k] / B, m2 += low[k] / B;
  for (int k = 0; k < B; ++k) {
    d.push_back(high[k] - low[k]);
    sum += d.back();
    sumSq += d.back() * d.back();
    if (d.back() <= 0 || d.back() >= 2 * (m1 - m2)) ++outside;
  }
  const double mean = sum / B, se = std::sqrt((sumSq - sum * sum / B) / (B - 1));
  EXPECT_NEAR(c.PairMeanDiff(1, 2), mean, 1e-12);
  EXPECT_NEAR(c.PairSE(1, 2), se, 1e-12);
  EXPECT_NEAR(c.PairLower(1, 2), mean - 1.959964 * se, 1e-12);
  EXPECT_NEAR(c.PairUpper(1, 2), mean + 1.959964 * se, 1e-12);
  std::sort(d.begin(), d.end());
  // B = 40: positions round(1.5) = 2 and round(39.5) = 40, a half going to the even one.
  EXPECT_DOUBLE_EQ(c.PairPctLower(1, 2), d[1]);
  EXPECT_DOUBLE_EQ(c.PairPctUpper(1, 2), d[39]);
  EXPECT_DOUBLE_EQ(c.PairP(1, 2), static_cast<double>(outside) / B);
  EXPECT_DOUBLE_EQ(c.PairP(2, 1), c.PairP(1, 2));
  EXPECT_EQ(c.PairNegativeCount(1, 2), std::count_if(d.begin(), d.end(), [](double x) { return x < 0; }));

  // Two treatments: no Sidak lines; B = 40 is none of the four rounded B.
  EXPECT_FALSE(Has(run.report, "Alpha(Sidak)"));
  EXPECT_FALSE(Has(run.report, "Because B is limited"));
  EXPECT_TRUE(Has(run.report, " Comparison between High-r vs Low-r"));
  EXPECT_TRUE(Has(run.report, " Number of bootstrap resamplings (B)= 40 "));

  const MultiCITable grid = ShowMultiCIofDifference(run.S);
  EXPECT_EQ(grid.rows, 3);
  EXPECT_EQ(grid.Cell(0, 1), "High-r");
  EXPECT_EQ(grid.Cell(1, 1), " ----");
  EXPECT_EQ(grid.Cell(2, 1), (c.PairLower(1, 2) > 0 ? "*" : "") + FullPrecision(RoundDisplay(c.PairP(1, 2), 4)));
}

TEST(PairedBootTest, EqualMeansShortListsAndRoundedB) {
  TempDir dir;
  // Equal files: every difference is 0, so no sample is "Different" and P = 1.
  const auto same = Values(100, 0.3, 0.02, 3);
  const auto a = ColumnFile(dir, "a.txt", "A", 100, 0.3, same);
  const auto b = ColumnFile(dir, "b.txt", "B", 100, 0.3, same);
  // A file that states B = 100 but holds 60 values before its -1: B is corrected to 60, and a
  // large gap to the others makes every P 0 (B of treatment 1 is 100: "P < 0.01").
  const auto c3 = ColumnFile(dir, "c.txt", "C", 100, 0.1, Values(60, 0.1, 0.01, 5));
  CommandRun run;
  run.Command(dir, {a, b, c3});
  const auto& c = run.S.comparison;
  EXPECT_EQ(c.TreatmentB(3), 60);
  EXPECT_EQ(c.BootCount(3), 60);
  EXPECT_DOUBLE_EQ(c.PairP(1, 2), 1.0);
  EXPECT_EQ(c.PairInsideCount(1, 2), 0);
  EXPECT_TRUE(Has(run.report, " * No signif. diff. btw. treatments."));
  EXPECT_DOUBLE_EQ(c.PairP(1, 3), 0.0);
  // Pair (2, 3) pairs 100 places of treatment 2 with 60 values and 40 zeros of treatment 3.
  EXPECT_EQ(c.PairOutsideCount(2, 3) + c.PairInsideCount(2, 3), 100);
  EXPECT_TRUE(Has(run.report, "Because B is limited, if P = 0, you can report P < 0.01."));
  EXPECT_TRUE(Has(run.report, " Alpha(Sidak) ="));
  EXPECT_NEAR(c.PairAlphaSidak, 1 - std::pow(0.95, 1.0 / 3), 1e-15);
  // n = 3 letters: 1 and 2 alike, both differ from 3.
  EXPECT_TRUE(Has(run.report, " a\n"));
  EXPECT_TRUE(Has(run.report, " b\n"));
}

// The block of one pair written from a store filled by hand.
std::string PairBlock(double pairLower, double pctLower, double p) {
  TempDir dir;
  Session S;
  FakePrompts prompts;
  auto& c = S.comparison;
  S.identity.DataFileBase = dir.file("edge");
  c.FastPBT = "Yes";
  c.PickedOneByOne = "No";
  c.TreatmentCount = 2;
  c.ParameterName = "r";
  for (int i = 1; i <= 2; ++i) {
    c.TreatmentTitle(i) = i == 1 ? "T1" : "T2";
    c.BootCount(i) = 1000;
    c.TreatmentB(i) = 1000;
    c.BootMean(i) = i == 1 ? 0.3 : 0.2;
  }
  c.RuleTable = std::string(37, '=');
  c.RuleTableThin = std::string(37, '-');
  c.PairLower(1, 2) = pairLower;
  c.PairPctLower(1, 2) = pctLower;
  c.PairP(1, 2) = c.PairP(2, 1) = p;
  prompts.Answer("Task completed", "OK");
  PairedBootTest(S, prompts).PrintMultiCIofDifference();
  return ReadFile(c.ReportName);
}

TEST(PairedBootTest, LimitsOfExactlyZeroAndPOfFiveHundredths) {
  // A t limit of 0 is not significant; a percentile limit of 0 is.
  const std::string zero = PairBlock(0.0, 0.0, 0.05);
  EXPECT_TRUE(Has(zero, " * No signif. diff. btw. T1 and T2."));
  EXPECT_TRUE(Has(zero, " # Signif. diff. btw. T1 and T2."));
  // P = 0.05 in the insignificant branch is inconsistent...
  EXPECT_TRUE(Has(zero, " # This P-value is inconsistent with the results of CI."));
  // ...and consistent in the significant one.
  const std::string sig = PairBlock(0.01, 0.01, 0.05);
  EXPECT_TRUE(Has(sig, " * Signif. diff. btw. T1 and T2."));
  EXPECT_FALSE(Has(sig, "inconsistent with the results of CI"));
  // A P of 0 with B = 1000, and the t and percentile limits that disagree.
  const std::string none = PairBlock(0.01, -0.01, 0.0);
  EXPECT_TRUE(Has(none, "you can report P < 0.001."));
  EXPECT_FALSE(Has(none, "Note well: The lower"));
  const std::string apart = PairBlock(-0.01, 0.01, 0.2);
  EXPECT_FALSE(Has(apart, "Note well: The lower"));
  EXPECT_TRUE(Has(apart, " # Signif. diff. btw. T1 and T2."));
}

}  // namespace
}  // namespace korvan

namespace korvan {
namespace {

TEST(PairedBootTest, PooledFileOrdersByMeanAndNamesItsReport) {
  TempDir dir;
  // Three treatments in one file, the largest mean last; values close with -1.
  test::WriteFile(dir.file("pool.txt"),
                  "\"Project\"\n\"Desc\"\n\"R0\"\n3\n"
                  "\"Low\",20,1\n1\n2\n0\n-1\n"
                  "\"Mid\",20,5\n5\n6\n4\n-1\n"
                  "\"Top\",20,9\n9\n10\n8\n11\n-1\n");
  Session S;
  FakePrompts prompts;
  prompts.Answer("Do you need flow record?", "No")
      .Answer("Detailed differences", "No")
      .Answer("Open pooled file of treatments for paired bootstrap test", dir.file("pool.txt"))
      .Answer("Task completed", "OK");
  PairedTestCommands(S, prompts).cmdPBTPooled_Click();
  const auto& c = S.comparison;
  EXPECT_EQ(c.TreatmentTitle(1), "Top");
  EXPECT_EQ(c.TreatmentTitle(3), "Low");
  EXPECT_EQ(c.TreatmentB(1), 4);
  EXPECT_DOUBLE_EQ(c.BootMean(1), 9.5);
  EXPECT_DOUBLE_EQ(c.TreatmentOriginal(2), 5);
  // Treatment 1 has a fourth value against a 0 of the others: d = 11 lies beyond 2D.
  EXPECT_EQ(c.PairBeyondTwice(1, 2), 1);
  EXPECT_EQ(c.ReportName, dir.file("pool") + "_0_comparison-R0_result.txt");
  EXPECT_TRUE(Has(ReadFile(c.ReportName), " Project: Project "));
}

}  // namespace
}  // namespace korvan

namespace korvan {
namespace {

// Bootstraps of three cohorts that differ in their eggs, compared from the r column files
// the bootstrap wrote: two of them, then all three.
TEST(PairedBootTest, ColumnFilesOfBootstrapRunsCompare) {
  TempDir dir;
  std::vector<std::string> files;
  std::vector<double> meanR;
  for (double factor : {0.5, 1.0, 2.0}) {
    auto cohort = boottest::SmallCohort();
    for (auto& a : cohort)
      for (double& e : a.eggs) e = std::round(e * factor);
    const std::string name = "f" + std::to_string(files.size());
    std::filesystem::create_directory(dir.file(name));
    FakePrompts P;
    auto S = boottest::BasicRunOf(dir.file(name + "/c.txt"), 3, cohort, P);
    boottest::AnswerDetailedRun(P, 40, 24, true);
    BootstrapDriver(*S, P).cmdBootstrap_Click();
    files.push_back(dir.file(name + "/c_Effect Boot-A2a-r.txt"));
    double sum = 0;
    for (long k = 1; k <= 40; ++k) sum += S->boot.BootR(k);
    meanR.push_back(sum / 40);
  }
  for (std::size_t n : {2u, 3u}) {
    CommandRun run;
    run.Command(dir, std::vector<std::string>(files.begin(), files.begin() + static_cast<long>(n)));
    const auto& c = run.S.comparison;
    ASSERT_EQ(c.TreatmentCount, static_cast<int>(n));
    // The most eggs, the largest r: the last file read stands first.
    for (std::size_t i = 1; i <= n; ++i) {
      EXPECT_EQ(c.BootCount(static_cast<long>(i)), 40);
      EXPECT_NEAR(c.BootMean(static_cast<long>(i)), meanR[n - i], 1e-12);
    }
    EXPECT_EQ(c.TreatmentN(1), 24);
    EXPECT_TRUE(Has(run.report, " Number of treatments =" + PrintNumber(static_cast<double>(n))));
  }
}

}  // namespace
}  // namespace korvan

namespace korvan {
namespace {

// "Q. CartesianPT" over the given files from inside dir; detailed or not.
struct CartesianRun {
  Session S;
  FakePrompts prompts;
  std::string report;
  void Command(const TempDir& dir, const std::vector<std::string>& files, bool detailed = false) {
    SetStartUpConsole(S.console);
    prompts.Answer("Do you need detailed info?", detailed ? "Yes" : "No")
        .Answer("Do you need flow record?", "No")
        .Answer("Detailed differences", detailed ? "Yes" : "No")
        .Answer("Read data file one by one for paired comparison using Cartesian Product",
                std::to_string(files.size()))
        .Answer("Transformation?", "0")
        .Answer("Add a code to the output filename?", "1")
        .Answer("Task completed", "OK");
    for (std::size_t i = 0; i < files.size(); ++i) prompts.Answer("Input treatment " + std::to_string(i + 1), files[i]);
    const auto here = std::filesystem::current_path();
    std::filesystem::current_path(dir.path());
    try {
      PairedTestCommands(S, prompts).cmdCartesianDifference_Click();
    } catch (...) {
      std::filesystem::current_path(here);
      throw;
    }
    std::filesystem::current_path(here);
    report = ReadFile(dir.file(S.comparison.ReportName));
  }
};

std::vector<double> Counting(int from, int to) {
  std::vector<double> v;
  for (int k = from; k <= to; ++k) v.push_back(k);
  return v;
}

TEST(CartesianTest, EveryDifferenceCountedAndPOverThePairsOwnC) {
  TempDir dir;
  // High {1, 3} (mean 2) against Low {1, 1, 1} (mean 1, D = 1): the differences are 0 and 2,
  // exactly 0 and 2D, none of them "different": P = 6/6. Mid {1.5, 1.5} (mean 1.5).
  const auto high = ColumnFile(dir, "high.txt", "High", 2, 2, {1, 3});
  const auto low = ColumnFile(dir, "low.txt", "Low", 3, 1, {1, 1, 1});
  const auto mid = ColumnFile(dir, "mid.txt", "Mid", 4, 1.5, {1.5, 1.5, 1.5, 1.5});
  CartesianRun run;
  run.Command(dir, {low, mid, high});
  const auto& c = run.S.comparison;
  ASSERT_EQ(c.TreatmentTitle(1), "High-r");
  ASSERT_EQ(c.TreatmentTitle(3), "Low-r");
  EXPECT_EQ(c.TreatmentBootCount(2), 4);
  EXPECT_EQ(c.PairOutsideCount(1, 3), 6);
  EXPECT_EQ(c.PairP(1, 3), 1);
  EXPECT_EQ(c.PairP(3, 1), 1);
  // High - Mid: four of -0.5 and four of 1.5 with D = 0.5, 2D = 1: all eight outside. Mid - Low:
  // twelve of 0.5, all inside: P = 0 over C = 12, whatever the B of treatment 1.
  EXPECT_EQ(c.PairOutsideCount(1, 2), 8);
  EXPECT_EQ(c.PairInsideCount(2, 3), 12);
  EXPECT_EQ(c.PairP(2, 3), 0);
  EXPECT_DOUBLE_EQ(c.CartMeanDiff(1, 3), 1);
  EXPECT_DOUBLE_EQ(c.CartVar(1, 3), 6.0 / 5);  // three 0s and three 2s about their mean 1
  EXPECT_EQ(c.PairPctLower(1, 3), 0);
  EXPECT_EQ(c.PairPctUpper(1, 3), 2);
  EXPECT_TRUE(Has(run.report, " Number of Cartesian products (C)= 6 "));
  EXPECT_TRUE(Has(run.report, " # P-value (based on 12  Cartesian differences) =  0 "));
  EXPECT_TRUE(Has(run.report, "Table 4 . Differences between treatments (Cartesian product test)"));
  EXPECT_FALSE(Has(run.report, " Bootstrap number (B) ="));
  // The console is closed but for Q (and Quit); the grid is shown.
  EXPECT_TRUE(run.S.console.IsEnabled("cmdCartesianDifference"));
  EXPECT_FALSE(run.S.console.IsEnabled("cmdPairedBootTest"));
  EXPECT_FALSE(run.S.console.IsVisible("Frame1"));
  EXPECT_TRUE(run.S.console.IsVisible("MSFlexGrid1"));

  // Equal means: D = 0, every difference counts as none, P = 1.
  CartesianRun same;
  same.Command(dir, {high, high});
  EXPECT_EQ(same.S.comparison.PairP(1, 2), 1);
  EXPECT_TRUE(Has(same.report, " * No signif. diff. btw. treatments."));
}

TEST(CartesianTest, PercentilePlacesOfAMillionDifferences) {
  TempDir dir;
  // 1..1000 against a thousand zeros: each value a appears 1000 times, at places 1000(a-1)+1 to
  // 1000a of the ascending list. Places 25000 and 975000 (25000.5 and 975000.5 rounded to even)
  // hold 25 and 975; one place further would give 26 and 976.
  const auto up = ColumnFile(dir, "up.txt", "Up", 1000, 500, Counting(1, 1000));
  const auto zero = ColumnFile(dir, "zero.txt", "Zero", 1000, 0, std::vector<double>(1000, 0.0));
  CartesianRun run;
  run.Command(dir, {zero, up});
  const auto& c = run.S.comparison;
  EXPECT_EQ(c.PairPctLower(1, 2), 25);
  EXPECT_EQ(c.PairPctUpper(1, 2), 975);
  EXPECT_DOUBLE_EQ(c.CartMeanDiff(1, 2), 500.5);
  // Variance of 1..1000 each taken 1000 times, over C - 1.
  EXPECT_NEAR(c.CartVar(1, 2), (1000.0 * 1000 * (1000.0 * 1000 - 1) / 12) / (1e6 - 1), 1e-6);
  EXPECT_EQ(c.PairP(1, 2), 0);
  EXPECT_TRUE(Has(run.report, " # Because B is limited, if P = 0, you can report P < 0.001."));
}

TEST(CartesianTest, AProductBeyondTheBoundEndsWithEarlierFilesWhole) {
  TempDir dir;
  // Big (B = 1001, the largest mean), Two (B = 2), Small (B = 1000): the pair Big-Two is
  // written in detail; Big-Small has 1,001,000 products.
  const auto big = ColumnFile(dir, "big.txt", "Big", 1001, 2000, Counting(1000, 2000));
  const auto two = ColumnFile(dir, "two.txt", "Two", 2, 500, {500, 500});
  const auto small = ColumnFile(dir, "small.txt", "Small", 1000, 0, std::vector<double>(1000, 0.0));
  CartesianRun run;
  try {
    run.Command(dir, {two, small, big}, true);
    FAIL() << "no fault";
  } catch (const SubscriptFault& fault) {
    EXPECT_EQ(fault.array, "DifferenceForward");
  }
  const std::string all = ReadFile(dir.file("25A-Cartesian diff_5-r-1 to 2_diff-All (for N. sort).txt"));
  EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 7 + 2002);
  EXPECT_TRUE(Has(all, "\"Treatment sample sizes are 30 and 30\"\n2002\n"));
  const std::string insig = ReadFile(dir.file("25A-Cartesian diff_11-r-1 to 2_diff-inSigB.txt"));
  EXPECT_TRUE(Has(insig, "\"Cart. prod. number\",\"Insig. difference\"\n"));
  EXPECT_FALSE(std::filesystem::exists(dir.file("25A-Cartesian diff_5-r-1 to 3_diff-All (for N. sort).txt")));
}

}  // namespace
}  // namespace korvan
