#include <gtest/gtest.h>

#include "bootstrap/bootstrap_driver.h"
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

}  // namespace
}  // namespace korvan
