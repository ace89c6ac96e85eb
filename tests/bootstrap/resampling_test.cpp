#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "commands/bootstrap_driver.h"
#include "bootstrap/bootstrap_fixture.h"
#include "bootstrap/resampling.h"
#include "store/faults.h"
#include "support/test_support.h"

namespace korvan {
namespace {

using boottest::ListGenerator;
using boottest::ListPrompts;
using boottest::PoolIndividual;

// Two stages (a preadult stage and the adult stage).
std::vector<PoolIndividual> FourIndividuals() {
  return {{"F", {3, 4}, {0, 5, 2, 0}},  // 1: reproductive female, adult 4 days
          {"M", {2, 5}, {}},            // 2
          {"M", {3, 2}, {}},            // 3
          {"N", {-2}, {}}};             // 4: died in the first stage
}

// k = round(u * N + 0.5), a tie to the even number, and 0 or N + 1 drawn again.
TEST(Resampling, DrawRuleEdges) {
  // N = 4: u = 0 gives 0.5, which rounds to 0 and is drawn again; u = 0.5 gives 2.5 -> 2;
  // u = 0.75 gives 3.5 -> 4; u just below 1 gives N; u = 0.125 gives 1.
  ListGenerator g({0.0, 0.5, 0.75, 0.99999999, 0.125});
  EXPECT_EQ(DrawIndividual(g, 4), 2);
  EXPECT_EQ(g.used(), 2u);
  EXPECT_EQ(DrawIndividual(g, 4), 4);
  EXPECT_EQ(DrawIndividual(g, 4), 4);
  EXPECT_EQ(DrawIndividual(g, 4), 1);
  // N = 1: every u gives 1 except u = 0 (0.5 -> 0), drawn again.
  ListGenerator one({0.0, 0.0, 0.3});
  EXPECT_EQ(DrawIndividual(one, 1), 1);
  EXPECT_EQ(one.used(), 3u);
  // An empty pool has nothing to draw and says so instead of drawing for ever.
  ListGenerator none({0.5});
  EXPECT_THROW(DrawIndividual(none, 0), ProgramEnd);

  // The real generator stays in [0, 1) and covers 1..N evenly enough over many draws.
  SampleGenerator sg;
  sg.SeedSample(12345, 7);
  int counts[6] = {0};
  for (int i = 0; i < 60000; ++i) counts[DrawIndividual(sg, 5)]++;
  EXPECT_EQ(counts[0], 0);
  for (int k = 1; k <= 5; ++k) EXPECT_NEAR(counts[k], 12000, 600) << k;
  // The stream of a sample depends on (seed, sample) only.
  SampleGenerator a, b;
  a.SeedSample(99, 3);
  b.SeedSample(99, 4);
  b.Next();
  b.SeedSample(99, 3);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(a.Next(), b.Next());
  a.SeedSample(99, 4);
  b.SeedSample(99, 5);
  EXPECT_NE(a.Next(), b.Next());
}

// A drawn sample copies the records of the individuals drawn, position by position, with
// the counters of the sample and what the engine needs.
TEST(Resampling, DrawnSampleIsCopiedCountedAndPrepared) {
  auto S = boottest::MakePoolStore(2, FourIndividuals(), 5);
  S->settings.CriticalFemaleAge = 4;
  ListPrompts P;
  // Positions draw 1, 2, 1, 4, 3 (u * 4 + 0.5 rounded).
  ListGenerator g({0.1, 0.3, 0.2, 0.9, 0.6});
  Workspace& W = S->ws;
  W.run.Boot = 1;
  Resampling r(*S, P, W, g);
  r.cmdBoot03();
  EXPECT_EQ(g.seeded, std::vector<std::int64_t>{1});
  const BootstrapRecord& R = S->boot;
  const int drawn[5] = {1, 2, 1, 4, 3};
  for (int p = 1; p <= 5; ++p) EXPECT_EQ(R.BootIndividuals(p, 1), drawn[p - 1]);
  EXPECT_EQ(R.BootNf(1), 2);
  EXPECT_EQ(R.BootNm(1), 2);
  EXPECT_EQ(R.BootNn(1), 1);
  EXPECT_EQ(R.BootNfr(1), 2);
  EXPECT_EQ(R.BootNfrReal(1), 2);
  EXPECT_EQ(R.BootCANf(1), 2);  // adult duration 4 >= 4
  EXPECT_EQ(W.boot.SampleFecunditySum, 14);
  EXPECT_EQ(R.BootEffectLabel(1), kLabelEffective);
  EXPECT_DOUBLE_EQ(R.BootF(1), 7.0);  // 14 eggs of 2 females
  // The cohort in hand: position 3 is individual 1 again, position 4 the dead one.
  EXPECT_EQ(W.cohort.CohortSize, 5);
  EXPECT_EQ(W.cohort.IndividualSex(3), "F");
  EXPECT_EQ(W.cohort.StageDuration(3, 2), 4);
  EXPECT_EQ(W.cohort.Fecundity(3, 2), 5);
  EXPECT_EQ(W.cohort.Fecundity(3, 5), -1);
  EXPECT_EQ(W.cohort.IndividualSex(4), "N");
  EXPECT_EQ(W.cohort.StageDuration(4, 1), -2);
  EXPECT_EQ(W.cohort.TotalLongevity(1), 7);
  EXPECT_EQ(W.cohort.TotalLongevity(4), 2);
  EXPECT_EQ(W.cohort.TotalLongevity(2), 7);
  EXPECT_EQ(W.cohort.MaxLongevity, 7);
  EXPECT_EQ(W.tables.LastAge, 6);
  EXPECT_EQ(W.boot.SampleIndividualFecundity(1), 7);
  EXPECT_EQ(W.boot.SampleIndividualFecundity(2), 0);

  // n differs from N: draws still range over 1..N and only n positions are filled.
  S->boot.BootSampleSize = 2;
  S->options.MatingMode = "No";
  ListGenerator g2({0.9, 0.1});
  W.run.Boot = 2;
  Resampling r2(*S, P, W, g2);
  r2.cmdBoot03();
  EXPECT_EQ(R.BootIndividuals(1, 2), 4);
  EXPECT_EQ(R.BootIndividuals(2, 2), 1);
  EXPECT_EQ(R.BootIndividuals(3, 2), 0);
}

// With criterion 2 and one female in the cohort, a two-sex sample is effective only when it
// holds that female twice and two males; other draws are thrown away under the same number.
TEST(Resampling, ClassificationAndRedraws) {
  std::vector<PoolIndividual> pool = FourIndividuals();
  auto S = boottest::MakePoolStore(2, pool, 4);
  S->boot.InfertileCriterion = 2;
  ListPrompts P;
  // Draw 1: 1,2,3,4 (one female: rejected). Draw 2: 1,1,2,2 (two males? only male 2 twice:
  // Nm 2, Nf 2: effective).
  ListGenerator g({0.1, 0.3, 0.6, 0.9, 0.1, 0.2, 0.3, 0.4});
  S->ws.run.Boot = 1;
  Resampling r(*S, P, S->ws, g);
  r.cmdBoot03();
  EXPECT_EQ(g.used(), 8u);
  EXPECT_EQ(S->boot.BootEffectLabel(1), kLabelEffective);
  EXPECT_EQ(S->boot.BootNf(1), 2);
  EXPECT_EQ(S->boot.BootNm(1), 2);
  EXPECT_EQ(S->boot.BootIndividuals(1, 1), 1);
  EXPECT_EQ(S->boot.BootIndividuals(2, 1), 1);

  // Parthenogenetic: males don't count, criterion applies to females only.
  S->options.MatingMode = "No";
  S->boot.InfertileCriterion = 1;
  ListGenerator g2({0.1, 0.3, 0.3, 0.3});  // 1,2,2,2: one female with eggs
  S->ws.run.Boot = 2;
  Resampling r2(*S, P, S->ws, g2);
  r2.cmdBoot03();
  EXPECT_EQ(S->boot.BootEffectLabel(2), kLabelEffective);

  // EffectiveOnly "No": females and males but no eggs makes an ineffective sample, kept and
  // not prepared; the lists are filled in sample order.
  std::vector<PoolIndividual> barren = {{"F", {3, 4}, {0, 0}}, {"M", {2, 5}, {}}};
  auto T = boottest::MakePoolStore(2, barren, 2);
  T->boot.EffectiveOnly = "No";
  T->boot.BootB = 3;
  ListGenerator g3({0.2, 0.8, 0.2, 0.8, 0.2, 0.8});
  for (int b = 1; b <= 3; ++b) {
    T->ws.run.Boot = b;
    Resampling rb(*T, P, T->ws, g3);
    rb.cmdBoot03();
    EXPECT_EQ(T->boot.BootEffectLabel(b), kLabelIneffective);
    EXPECT_EQ(T->boot.BootNf(b), 1);
    EXPECT_EQ(T->boot.BootNm(b), 1);
  }
  EXPECT_EQ(g3.used(), 6u);  // no redraws
  GatherSampleLists(*T);
  EXPECT_EQ(T->boot.EffectiveCount, 0);
  EXPECT_EQ(T->boot.IneffectiveCount, 3);
  EXPECT_EQ(T->boot.IneffectiveList(3), 3);
  EXPECT_EQ(T->boot.BootF(1), 0);  // no analysis: results stay zero
}

// Fractional eggs are summed into a 32-bit integer, rounded after each day: half an egg a day
// rounds to an even sum, and a sample of such eggs can count as without eggs.
TEST(Resampling, FecunditySumIsAnIntegerField) {
  std::vector<PoolIndividual> pool = {{"F", {1, 3}, {0.5, 0.5, 0.5}}, {"M", {1, 3}, {}}};
  auto S = boottest::MakePoolStore(2, pool, 2);
  S->boot.EffectiveOnly = "No";
  ListPrompts P;
  ListGenerator g({0.2, 0.8});
  S->ws.run.Boot = 1;
  Resampling r(*S, P, S->ws, g);
  r.cmdBoot03();
  // 0 + 0.5 -> 0, 0 + 0.5 -> 0, ...: the sum stays 0 and the sample is ineffective.
  EXPECT_EQ(S->ws.boot.SampleFecunditySum, 0);
  EXPECT_EQ(S->boot.BootEffectLabel(1), kLabelIneffective);
  EXPECT_EQ(S->boot.BootNfr(1), 1);
}

// Before the loop the driver sums up each individual of the pool (PoolSummary) and copies the
// plain ones from it; samples drawn with the summary are those drawn day by day without it,
// field for field: whole and fractional eggs (0.5 a day keeps the rounded sum at 0), an
// infertile female, females below and above the critical age, males, deaths, a negative
// adult life of a male, and an egg count beyond the 32-bit sum (the overflow fault, both ways).
TEST(Resampling, PoolSummaryDrawsTheSamplesOfTheDayByDayCopy) {
  const std::vector<PoolIndividual> pool = {
      {"F", {3, 6}, {0, 5, 2, 0, 7, 1}}, {"F", {2, 4}, {0.5, 0.5, 0.5, 0.5}}, {"F", {3, 2}, {0, 0}},
      {"M", {2, 5}, {}},                 {"N", {2, -3}, {}},                  {"M", {4, -2}, {}},
      {"F", {1, 9}, {1, 2, 3, 4, 5, 6, 7, 8, 9}}};
  auto draw = [&](bool summary, long samples, double bigEggs) {
    auto S = boottest::MakePoolStore(2, pool, 9);
    S->settings.CriticalFemaleAge = 5;
    S->boot.EffectiveOnly = "No";
    S->boot.RunSeed = 2024;
    if (bigEggs > 0) S->pool.OriginalFecundity(7, 4) = bigEggs;
    PoolSummary sum;
    sum.Build(*S);
    ListPrompts P;
    SampleGenerator g;
    auto W = std::make_unique<Workspace>(S->ws);
    Resampling r(*S, P, *W, g);
    if (summary) r.UsePoolSummary(&sum);
    std::vector<double> seen;
    for (long b = 1; b <= samples; ++b) {
      W->run.Boot = static_cast<double>(b);
      r.cmdBoot03();
      const BootstrapRecord& R = S->boot;
      for (double v : {double(R.BootNf(b)), double(R.BootNm(b)), double(R.BootNn(b)), double(R.BootNfr(b)),
                       double(R.BootNfrReal(b)), double(R.BootCANf(b)), double(R.BootEffectLabel(b)),
                       double(W->boot.SampleFecunditySum)})
        seen.push_back(v);
      if (R.BootEffectLabel(b) != kLabelEffective) continue;
      seen.push_back(R.BootF(b));
      seen.push_back(W->cohort.MaxLongevity);
      for (int p = 1; p <= 9; ++p) {
        seen.push_back(R.BootIndividuals(p, b));
        seen.push_back(W->cohort.TotalLongevity(p));
        seen.push_back(W->boot.SampleIndividualFecundity(p));
        for (int j = 1; j <= 2; ++j) seen.push_back(W->cohort.StageDuration(p, j));
        if (W->cohort.IndividualSex(p) == "F")
          for (int day = 1; day <= 10; ++day) seen.push_back(W->cohort.Fecundity(p, day));
      }
    }
    return seen;
  };
  const auto plain = draw(false, 300, 0);
  const auto summed = draw(true, 300, 0);
  ASSERT_EQ(plain.size(), summed.size());
  for (std::size_t k = 0; k < plain.size(); ++k) ASSERT_EQ(plain[k], summed[k]) << k;
  // Eggs of 2^31 in one day: the rounded sum leaves the 32-bit range in either copy.
  EXPECT_THROW(draw(false, 300, 2147483648.0), OverflowFault);
  EXPECT_THROW(draw(true, 300, 2147483648.0), OverflowFault);
}

}  // namespace
}  // namespace korvan
