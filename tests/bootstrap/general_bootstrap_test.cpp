// "G. Gen. boot", "L. Sort+count" and "N. Normality" on crafted lists: the ages of half survival
// and the percentiles recomputed here from the samples the record lists, the demonstration that
// writes nothing, decimals and cumulative frequencies worked by hand.
#include "bootstrap/general_bootstrap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "bootstrap/sort_file.h"
#include "bootstrap/sorting.h"
#include "commands/general_bootstrap_command.h"
#include "store/faults.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"
#include "text/numbers.h"

namespace korvan {
namespace {

// 40 total longevities with serial numbers, as a Basic Run's "_G_" file has them.
std::string LongevityFile() {
  std::string text = "\"Total longevity\"\n\"Ind. no.\",\"Total longevity\"\n";
  for (int i = 1; i <= 40; ++i) text += std::to_string(i) + "," + std::to_string(5 + (i * 7) % 23) + "\n";
  return text;
}

// The age at which l(x) first is 0.5 or less, by walking the ages one by one.
double HalfAgeByHand(const std::vector<double>& v) {
  for (int x = 0;; ++x) {
    long alive = 0;
    for (double a : v) alive += a > x;
    if (2 * alive <= static_cast<long>(v.size())) return x;
  }
}

std::vector<double> Numbers(const std::string& text) {
  std::vector<double> out;
  std::stringstream in(text);
  std::string item;
  while (std::getline(in, item, ',')) out.push_back(std::stod(item));
  return out;
}

TEST(GeneralBootstrap, ReadsBothFormsAndMultipliesRows) {
  test::TempDir dir;
  test::WriteFile(dir.file("a.txt"), "\"T1\"\n\"Ind. no.\",\"Eggs\"\n1,34\n2,28\n");
  const GeneralData d = ReadGeneralData(dir.file("a.txt"), true);
  EXPECT_EQ(d.treatment, "T1");
  EXPECT_EQ(d.variable, "Eggs");
  EXPECT_EQ(d.values, (std::vector<double>{34, 28}));
  const std::string out = MultiplyGeneralData(dir.file("a.txt"), d, 3);
  EXPECT_EQ(out, dir.file("a-new.txt"));
  const auto lines = test::Lines(out);
  ASSERT_EQ(lines.size(), 8u);
  EXPECT_EQ(lines[1], "\"Ind. No.\",\"Eggs\"");
  EXPECT_EQ(lines[4], "3,34");
  EXPECT_EQ(lines[5], "4,28");

  test::WriteFile(dir.file("b.txt"), "T2\nWeight\n1.5\n2.5\n");
  EXPECT_EQ(ReadGeneralData(dir.file("b.txt"), false).values, (std::vector<double>{1.5, 2.5}));
  test::WriteFile(dir.file("c.txt"), "T2\nWeight\n1.5\nnone\n");
  EXPECT_THROW(ReadGeneralData(dir.file("c.txt"), false), ProgramEnd);
  test::WriteFile(dir.file("d.txt"), "T2\nWeight\n");
  EXPECT_THROW(ReadGeneralData(dir.file("d.txt"), false), ProgramEnd);
}

TEST(GeneralBootstrap, AgeOfHalfSurvivalOfTinyLists) {
  EXPECT_EQ(AgeOfHalfSurvival({1, 2, 3, 4}), 2);  // l(1) = 3/4, l(2) = 2/4
  EXPECT_EQ(AgeOfHalfSurvival({5, 5, 1}), 5);     // l(4) = 2/3, l(5) = 0
  EXPECT_EQ(AgeOfHalfSurvival({0.5, 3}), 0);      // one dead in age 0: l(0) = 1/2
}

TEST(GeneralBootstrap, PercentilesAtTheirPositionsTieGoingUp) {
  EXPECT_EQ(PercentileIndexUp(100000, 0.025), 2501);
  EXPECT_EQ(PercentileIndexUp(100000, 0.975), 97501);
  EXPECT_EQ(PercentileIndexUp(2010, 0.025), 51);
  EXPECT_EQ(PercentileIndexUp(2010, 0.975), 1960);
}

class GeneralRun : public ::testing::Test {
 protected:
  void Run(int threads) {
    S = std::make_unique<Session>();
    S->runControl.threads = threads;
    S->boot.RunSeed = 11;
    S->boot.SerialNumbersInData = "Yes";
    S->boot.AgeOfHalfSurvival = "Yes";
    S->boot.ProbitOn = "No";
    S->identity.DataFileBase = dir.file("long");
    GeneralBootstrap gb(*S, P);
    gb.data = ReadGeneralData(dir.file("long.txt"), true);
    gb.DataStatistics();
    gb.SampleSize = 40;
    gb.B = 2010;
    gb.Run();
    lower = gb.Lower;
    upper = gb.Upper;
    data = gb.data.values;
  }
  test::TempDir dir;
  std::unique_ptr<Session> S;
  test::FakePrompts P;
  double lower = 0, upper = 0;
  std::vector<double> data;
};

TEST_F(GeneralRun, SamplesOfTheRecordGiveTheMeansAgesAndPercentiles) {
  test::WriteFile(dir.file("long.txt"), LongevityFile());
  Run(2);
  std::vector<double> means2(2011);
  for (long i = 1; i <= 2010; ++i) means2[i] = S->boot.GeneralMean(i);

  // Each sample of the record no. 11B, by its individuals: its mean and its age of 0.5 l(x).
  std::string record;
  for (const auto& e : std::filesystem::directory_iterator(dir.file("")))
    if (e.path().filename().string().find("_11B_Gen Boot samples-") != std::string::npos) record = e.path().string();
  ASSERT_FALSE(record.empty());
  const auto lines = test::Lines(record);
  EXPECT_EQ(lines[2], "\"No condition for general bootstrap\"");
  EXPECT_EQ(lines[3], "\"Total number of  bootstrap =\",2010");
  const auto ages = test::Lines(dir.file("long_0_GB_8_Age X 0.5 Lx for PT 1 by 1.txt"));
  EXPECT_EQ(ages[5], "\"Age of 0.5 lx\",40," + std::to_string(static_cast<int>(HalfAgeByHand(data))));
  for (long i : {1L, 2L, 1000L, 2010L}) {
    const std::size_t at = 7 + (i - 1) * 7;
    ASSERT_EQ(lines[at], "\"Bootstrap Sample: \"," + std::to_string(i));
    const std::vector<double> picks = Numbers(lines[at + 1] + "," + lines[at + 2]);
    ASSERT_EQ(picks.size(), 40u);
    std::vector<double> sample;
    double sum = 0;
    for (double k : picks) sample.push_back(data[static_cast<std::size_t>(k) - 1]), sum += sample.back();
    EXPECT_NEAR(S->boot.GeneralMean(i), sum / 40, 1e-12);
    EXPECT_EQ(std::stod(ages[6 + i - 1]), HalfAgeByHand(sample)) << "sample " << i;
  }
  // The 51st and 1960th of the sorted means.
  std::vector<double> sorted(means2.begin() + 1, means2.end());
  std::sort(sorted.begin(), sorted.end());
  EXPECT_EQ(lower, sorted[50]);
  EXPECT_EQ(upper, sorted[1959]);
  const auto ci = test::Lines(dir.file("long_0_GB_5_95CI percentile.txt"));
  EXPECT_EQ(ci[6], "\"0.025 percentile =\"," + FullPrecision(sorted[50]));

  // The same samples on one thread.
  Run(1);
  for (long i = 1; i <= 2010; ++i) ASSERT_EQ(S->boot.GeneralMean(i), means2[i]);
}

TEST(GeneralBootstrapCommand, DemonstrationAndRefusalsWriteNothing) {
  test::TempDir dir;
  test::WriteFile(dir.file("long.txt"), LongevityFile());
  auto count = [&] {
    return std::distance(std::filesystem::directory_iterator(dir.file("")), std::filesystem::directory_iterator{});
  };
  for (const std::string B : {"5", "100001", "ten"}) {
    auto S = std::make_unique<Session>();
    test::FakePrompts P;
    P.Answer("Do you need flow record?", "No").Answer("Multiplicate a data file?", "No");
    P.Answer("General bootstrapping and finding the age of lx <= 0.5?", "No").Answer("Data formate", "Yes");
    P.Answer("Transformation?", "0").Answer("Open life table data file", dir.file("long.txt"));
    P.Answer("Sample size =?", "40").Answer("Save original frequency", "No").Answer("Pause?", "No");
    P.Answer("Bootstrap", B);
    for (int i = 0; i < 4; ++i) P.Answer("Next one?", "Yes");
    P.Answer("Demonstration completed", "OK").Answer("Bootstrap", "OK");
    GeneralBootstrapCommand(*S, P).cmdGeneralBootstrap_Click();
    EXPECT_EQ(count(), 1) << "B = " << B;
    EXPECT_EQ(P.With("Next one?").size(), B == "5" ? 4u : 0u);
  }
}

TEST(GeneralBootstrap, ProbitOfAMeanOutsideZeroToOneIsRefused) {
  test::TempDir dir;
  test::WriteFile(dir.file("p.txt"), "T\nHatched\n0\n1\n1\n");
  auto S = std::make_unique<Session>();
  test::FakePrompts P;
  S->boot.ProbitOn = "Yes";
  GeneralBootstrap gb(*S, P);
  gb.data = ReadGeneralData(dir.file("p.txt"), false);
  gb.DataStatistics();
  EXPECT_NEAR(S->boot.GeneralDataMean, 5 + 0.4307, 1e-3);  // probit of 2/3
  S->identity.DataFileBase = dir.file("p");
  gb.SampleSize = 3;
  gb.B = 200;  // some sample draws no 1 or only 1s
  EXPECT_THROW(gb.Run(), ProgramEnd);
}

TEST(SortFile, DecimalsCountsAndCumulativeFrequency) {
  test::TempDir dir;
  test::WriteFile(dir.file("r.txt"),
                  "\"T-r\"\n\"Next line is Bootstrap sample size (n)\"\n30\n"
                  "\"Next line is total effective Bootstrap number (B)\"\n5\n\"r\",30,0.2\n"
                  "0.26\n0.14\n0.249\n0.31\n0.21\n-1\n");
  auto S = std::make_unique<Session>();
  test::FakePrompts P;
  SortFile f(*S, P);
  f.Kind = SortFileKind::Boot;
  f.Path = dir.file("r.txt");
  f.Decimals = 1;
  f.SortForBootstrapResults();
  // 0.3, 0.1, 0.2, 0.3, 0.2: groups 0.1 (1), 0.2 (2), 0.3 (2).
  const ValueGroups& g = S->boot.sort.OtherGroups;
  ASSERT_EQ(g.Count, 3);
  EXPECT_EQ(g.Members(2), 2);
  EXPECT_DOUBLE_EQ(S->boot.sort.OtherCumulativeFrequency(2), 0.6);
  EXPECT_EQ(S->boot.sort.OtherCumulativeFrequency(3), 1);
  const auto sorted = test::Lines(dir.file("r-2_Sorted.txt"));
  EXPECT_EQ(sorted[3], "\"Original mean =\",0.2");
  EXPECT_EQ(sorted[7], "1,2,0.1");
  const auto counts = test::Lines(dir.file("r-3_Counts.txt"));
  EXPECT_EQ(counts.back(), "0.3,2,1");
  EXPECT_TRUE(std::filesystem::exists(dir.file("r-1_0.025, 0.5 and 0.975 r.txt")));

  EXPECT_EQ(LimitDecimals(2.5, 0), 3);
  EXPECT_EQ(LimitDecimals(-2.5, 0), -2);
  EXPECT_EQ(LimitDecimals(7.26, -1), 7.26);
}

}  // namespace
}  // namespace korvan
