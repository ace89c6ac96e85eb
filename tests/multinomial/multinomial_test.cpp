// The multinomial expansion of a small cohort and the counting of bootstrap life tables,
// checked against brute force over every sequence of draws.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <map>
#include <set>
#include <vector>

#include "commands/multinomial_commands.h"
#include "multinomial/expansion.h"
#include "multinomial/life_table_count.h"
#include "multinomial/mnc.h"
#include "multinomial/spec_r0.h"
#include "store/faults.h"
#include "support/cohort.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {

using Composition = std::vector<int>;  // individuals in ascending order

constexpr const char* kExpansionTitle = "Open multinomial expansion data file";

// Every one of the n^n sequences of draws from individuals 1..n, as its composition.
template <class Visit>
void EachSequence(int n, Visit visit) {
  std::vector<int> draw(static_cast<std::size_t>(n), 1);
  for (;;) {
    Composition c = draw;
    std::sort(c.begin(), c.end());
    visit(c);
    int p = 0;
    while (p < n && draw[static_cast<std::size_t>(p)] == n) draw[static_cast<std::size_t>(p++)] = 1;
    if (p == n) return;
    ++draw[static_cast<std::size_t>(p)];
  }
}

// Six individuals: three reproductive females (10, 11 and 5 eggs), two males, one N-type.
std::vector<test::Individual> SixCohort() {
  return {{"F", {2, 3, 4}, {3, 5, 0, 2}},
          {"F", {3, 2, 5}, {0, 4, 6, 1, 0}},
          {"M", {2, 3, 5}},
          {"M", {3, 3, 4}},
          {"N", {2, -1}},
          {"F", {2, 2, 3}, {2, 2, 1}}};
}

// Writes the expansion of the pool's n into dir and reads it back as Command2's Yes route does.
void ReadExpansion(Session& S, const test::TempDir& dir) {
  const std::string path = dir.file("expansion.txt");
  WriteExpansionFile(path, S.pool.OriginalCohortSize);
  test::FakePrompts P;
  P.Answer(kExpansionTitle, path);
  MultinomialExpansion e(S, P);
  e.ReadMultinomialExpansionData();
  e.CalcuFMpairLessthan2();
}

TEST(MultinomialExpansion, ItemsAreTheCompositionsWithTheirSequenceCounts) {
  for (int n : {5, 6}) {
    std::vector<test::Individual> cohort(static_cast<std::size_t>(n), test::Individual{"N", {-1}});
    auto S = test::MakePoolStore(2, cohort, n);
    test::TempDir dir;
    ReadExpansion(*S, dir);
    const MultinomialRecord& M = S->multinomial;
    std::map<Composition, double> sequences;
    EachSequence(n, [&](const Composition& c) { sequences[c] += 1; });
    ASSERT_EQ(M.ItemCount, static_cast<long>(sequences.size())) << n;  // C(2n - 1, n): 126, 462
    EXPECT_EQ(CompositionCount(n), static_cast<double>(sequences.size()));
    std::set<Composition> seen;
    double sum = 0;
    for (long k = 1; k <= M.ItemCount; ++k) {
      Composition c;
      for (int p = 1; p <= n; ++p) c.push_back(S->multinomial.Individual(k, p));
      EXPECT_TRUE(seen.insert(c).second) << "item " << k << " repeats";
      EXPECT_EQ(M.ItemMNC(k), sequences[c]) << "item " << k;
      sum += M.ItemMNC(k);
    }
    EXPECT_EQ(sum, std::pow(n, n));
    EXPECT_EQ(M.MNCSum, std::pow(n, n));
    // The item of all individuals once is the cohort, with MNC n!; the first n items are one
    // individual n times.
    ASSERT_GT(M.OriginalItem, 0);
    EXPECT_EQ(M.ItemMNC(M.OriginalItem), FactorialOf(n));
    for (int p = 1; p <= n; ++p) EXPECT_EQ(S->multinomial.Individual(M.OriginalItem, p), p);
    for (long k = 1; k <= n; ++k) EXPECT_EQ(M.ItemMNC(k), 1);
    EXPECT_EQ(M.ItemMNC(n + 1), n);
  }
}

TEST(MultinomialExpansion, ExactR0DistributionAndCriteriaMatchAllSequences) {
  auto S = test::MakePoolStore(3, SixCohort(), 6);
  test::TempDir dir;
  ReadExpansion(*S, dir);
  const MultinomialRecord& M = S->multinomial;
  // Brute force: each sequence's eggs, females and males.
  std::map<double, double> expected;
  double twoPairs = 0, twoFemales = 0;
  const double eggs[] = {0, 10, 11, 0, 0, 0, 5};
  const char* sex = " FFMMNF";
  EachSequence(6, [&](const Composition& c) {
    int f = 0, m = 0;
    double e = 0;
    for (int i : c) {
      f += sex[i] == 'F';
      m += sex[i] == 'M';
      e += eggs[i];
    }
    expected[f > 0 && m > 0 ? e / 6 : 0] += 1;
    twoPairs += std::min(f, m) >= 2;
    twoFemales += f >= 2;
  });
  std::map<double, double> got;
  for (long k = 1; k <= M.ItemCount; ++k) got[M.ItemR0(k)] += M.ItemMNC(k);
  EXPECT_EQ(got, expected);
  EXPECT_EQ(M.TwoPairs.fertileMNC, twoPairs);
  EXPECT_EQ(M.TwoFemales.fertileMNC, twoFemales);
  EXPECT_EQ(M.OneFemale.fertileMNC, std::pow(6, 6) - std::pow(3, 6));  // all but the draws of no female
  EXPECT_EQ(M.OnePair.fertileMNC + M.OnePair.infertileMNC, std::pow(6, 6));

  // The sorted and grouped files: the groups' MNC add up to n^n, one group per value of R0.
  test::FakePrompts P;
  MultinomialExpansion e(*S, P);
  e.AllMNCitemsSortedonRo();
  for (long r = 2; r <= M.ItemCount; ++r) EXPECT_LE(M.ItemR0(M.SortedItem(r - 1)), M.ItemR0(M.SortedItem(r)));
  e.WriteAllitem4R0MNCgrouped();
  // The files stand beside the expansion read.
  const auto lines = test::Lines(dir.file("expansion_0_MNT_4-R0_Grouped.txt"));
  ASSERT_EQ(lines.size(), 3 + expected.size());
  double groupSum = 0;
  for (std::size_t l = 3; l < lines.size(); ++l) {
    const auto a = lines[l].find(',', lines[l].find(',') + 1);
    groupSum += std::stod(lines[l].substr(a + 1));
  }
  EXPECT_EQ(groupSum, std::pow(6, 6));
}

TEST(MultinomialExpansion, TwoSexCohortWithoutMalesHasNoFertileItem) {
  auto cohort = SixCohort();
  cohort[2] = cohort[3] = test::Individual{"N", {2, -1}};
  auto S = test::MakePoolStore(3, cohort, 6);
  test::TempDir dir;
  ReadExpansion(*S, dir);
  const MultinomialRecord& M = S->multinomial;
  EXPECT_EQ(M.OnePair.fertileItems, 0);
  EXPECT_EQ(M.OnePair.infertileMNC, std::pow(6, 6));
  for (long k = 1; k <= M.ItemCount; ++k) ASSERT_EQ(M.ItemR0(k), 0);
  // A parthenogenetic population needs no male.
  S->options.MatingMode = "No";
  test::FakePrompts P;
  MultinomialExpansion(*S, P).CalcuFMpairLessthan2();
  EXPECT_EQ(M.OnePair.fertileMNC, std::pow(6, 6) - std::pow(3, 6));
}

TEST(MultinomialExpansion, BadFilesEndWithAMessageAndLeaveFilesAlone) {
  auto S = test::MakePoolStore(3, SixCohort(), 6);
  S->basic.BasicRunDone = "yes";
  test::TempDir dir;
  const std::string data = dir.file("six.txt");
  test::WriteFile(data, test::DataFileText(3, SixCohort()));
  S->identity.DataFilePath = data;
  S->identity.DataFileBase = dir.file("six");
  S->header.RegularLifeTable = "Yes";
  const std::string five = dir.file("five.txt");
  WriteExpansionFile(five, 5);
  const std::string kept = dir.file("five_0_MNT_1-Expansion.txt");
  test::WriteFile(kept, "earlier\n");
  auto run = [&](const std::string& expansion) -> ProgramEnd {
    test::FakePrompts P;
    P.Answer("Read the file with all MNC or create the file of MNC?", "Yes").Answer(kExpansionTitle, expansion);
    try {
      MultinomialCommands(*S, P).Command2_Click();
    } catch (const ProgramEnd& e) {
      return e;
    }
    return {};
  };
  // An expansion of another n.
  EXPECT_NE(run(five).message.find("n = 5, and the cohort has 6"), std::string::npos);
  EXPECT_EQ(test::ReadFile(kept), "earlier\n");
  // Text where an individual belongs; a file cut short.
  const std::string six = dir.file("sixexp.txt");
  WriteExpansionFile(six, 6);
  std::string body = test::ReadFile(six);
  test::WriteFile(six, body.substr(0, body.size() / 2) + "x,y\n");
  const ProgramEnd cut = run(six);
  EXPECT_EQ(cut.title, kExpansionTitle);
  EXPECT_NE(cut.message.find("No result file was written."), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(dir.file("sixexp_0_MNT_1-Expansion.txt")));
  // A female without eggs is refused before any dialogue.
  auto barren = SixCohort();
  barren[5].eggs = {0, 0};
  test::WriteFile(data, test::DataFileText(3, barren));
  const ProgramEnd refused = run(six);
  EXPECT_EQ(refused.title, "There is non-reproductive female.");
}

// Nine samples of three individuals, R0 set by hand: two of them differ by 5e-11 only.
struct CountStore {
  std::unique_ptr<Session> S = test::MakePoolStore(2, {{"F", {1, 2}, {3, 3}}, {"M", {1, 2}}, {"F", {1, 1}, {2}}}, 3);
  test::TempDir dir;
  CountStore(const std::vector<Composition>& samples, const std::vector<double>& r0) {
    BootstrapRecord& R = S->boot;
    R.BootB = R.EffectiveCount = static_cast<std::int32_t>(samples.size());
    for (std::size_t b = 0; b < samples.size(); ++b) {
      for (int p = 0; p < 3; ++p)
        R.BootIndividuals(p + 1, static_cast<long>(b + 1)) =
            static_cast<std::int16_t>(samples[b][static_cast<std::size_t>(p)]);
      R.BootR0(static_cast<long>(b + 1)) = r0[b];
    }
    S->identity.DataFileBase = dir.file("c");
    S->identity.ProjectName = "Count";
  }
};

TEST(LifeTableCount, GroupsLifeTablesAndCoefficients) {
  CountStore c({{1, 2, 3}, {3, 2, 1}, {2, 2, 1}, {1, 1, 1}, {2, 1, 2}, {3, 1, 2}, {1, 3, 3}, {3, 3, 1}, {1, 2, 2}},
               {2, 2, 1, 0, 1 + 5e-11, 2, 2, 2, 1});
  test::FakePrompts P;
  P.Answer("Task completed", "OK");
  LifeTableCount(*c.S, P).SortAndCountLifeTable();
  const MultinomialRecord& M = c.S->multinomial;
  // Groups: R0 0 {4}; R0 1 {3, 5, 9}, 1 + 5e-11 with them; R0 2 {1, 2, 6, 7, 8}.
  ASSERT_EQ(M.GroupCount, 3);
  EXPECT_EQ(M.GroupSamples(1) + M.GroupSamples(2) + M.GroupSamples(3), 9);
  EXPECT_EQ(M.GroupSamples(2), 3);
  EXPECT_EQ(M.GroupLifeTables(2), 1);  // 1,2,2 three times
  EXPECT_EQ(M.GroupLifeTables(3), 2);  // 1,2,3 three times and 1,3,3 twice
  EXPECT_EQ(M.LifeTableCount, 4);
  // MNC: 1,1,1 -> 1; 1,2,2 -> 3; 1,2,3 -> 3! = 6.
  EXPECT_EQ(M.SampleMNC(4), 1);
  EXPECT_EQ(M.SampleMNC(3), 3);
  EXPECT_EQ(M.SampleMNC(6), 6);
  EXPECT_EQ(M.GroupMNC(3), 3 * 6 + 2 * 3);
  EXPECT_EQ(M.GroupLifeTableMNC(3), 6 + 3);
  EXPECT_DOUBLE_EQ(M.GroupProbability(3), 24.0 / 27);
  // The simple table: one row per group; the samples same as the cohort: 1, 2 and 6.
  EXPECT_EQ(test::Lines(c.dir.file("c_00_H_Sorted R0_counts-simple.txt")).size(), 4u);
  const auto same = test::Lines(c.dir.file("c_00_C_Life table same as original.txt"));
  EXPECT_EQ(same.back(), "\"Number of bootstrap samples same as the original cohort =\",3");
  // The cumulative frequency: 1/9, then 4/9, then 1.
  EXPECT_DOUBLE_EQ(c.S->boot.sort.R0CumulativeFrequency(2), 4.0 / 9);
}

TEST(LifeTableCount, SampleBeyondTheCohortIsRefused) {
  CountStore c({{1, 2, 3}, {1, 4, 2}}, {2, 2});
  test::FakePrompts P;
  try {
    LifeTableCount(*c.S, P).SortAndCountLifeTable();
    FAIL() << "a sample holding individual 4 of 3 was counted";
  } catch (const ProgramEnd& e) {
    EXPECT_NE(e.message.find("holds individual 4, but the cohort has 3"), std::string::npos);
  }
  EXPECT_TRUE(std::filesystem::is_empty(c.dir.path()));
}

// A5 on a hand-made record: four samples of R0 2, three of one composition.
TEST(MncForSpecR0, CountsOfTheRecordsR0) {
  test::TempDir dir;
  const std::string path = dir.file("rec.txt");
  std::string t =
      "\"Project: Test\"\n\"Control\"\n\"EffectBoot-Yes and KorvanMating-Yes\"\n"
      "\"Total number of effective bootstrap =\",5\n5\n\"Bootstrap sample size =\",3\n3\n";
  const std::vector<std::pair<std::string, double>> samples = {
      {"1,2,3", 2}, {"3,1,2", 2}, {"1,1,2", 3}, {"2,3,1", 2}, {"1,2,2", 2}};
  for (std::size_t b = 0; b < samples.size(); ++b) {
    const std::string k = std::to_string(b + 1);
    t += "\"Bootstrap Sample: \"," + k + "\n" + samples[b].first + "\n\"Net reproductive rate \"," + k + "\n " +
         FullPrecision(samples[b].second) + "\n\"Finite rate \"," + k + "\n 1.1\n";
  }
  test::WriteFile(path, t);
  Session S;
  test::FakePrompts P;
  P.Answer("Find life tables of a specific net reproductive rate and calculate their multinomial coefficients.", "Yes")
      .Answer("Open bootstrap record file (In general, it is file no. 11).", path)
      .Answer("", "2");
  MncForSpecR0 a5(S, P);
  a5.CalculateMNCforSpecRo();
  EXPECT_EQ(a5.Picked.size(), 4u);
  ASSERT_EQ(a5.Different.size(), 2u);
  EXPECT_EQ(a5.Repeats[0], 1);          // 1,2,2 (sample 5)
  EXPECT_EQ(a5.Repeats[1], 3);          // 1,2,3 (samples 1, 2, 4)
  EXPECT_EQ(a5.SumMNCOfR0, 6 + 3);      // D: 1,2,3 and 1,2,2 once each
  EXPECT_EQ(a5.SumMNC, 6 * 3 + 3 + 3);  // C over the five samples
  const auto report = test::Lines(dir.file("rec_R02_5_MNC_A5.txt"));
  EXPECT_EQ(report.back(), "Observed counts of this R0 = 4 ");
  EXPECT_NE(std::find(report.begin(), report.end(), "There are  3  life tables with same composition of individuals."),
            report.end());
  EXPECT_EQ(report[report.size() - 2], "Expected counts of this R0 = H = G*B = " + PrintNumber(5.0 * 9 / 24).substr(1));
}

}  // namespace
}  // namespace korvan
