#include <gtest/gtest.h>

#include <cmath>

#include "engine/stage_statistics.h"
#include "support/cohort.h"
#include "support/fake_prompts.h"
#include "input/data_file_reader.h"
#include "support/test_support.h"

namespace korvan {
namespace {

struct Fixture {
  test::TempDir dir;
  Session S;
  test::OrderedPrompts P;
  StageStatsEngine e{S, P};
  explicit Fixture(double timeUnit, const std::vector<test::Individual>& cohort = test::HandCohort()) {
    test::LoadHandCohort(S, cohort, timeUnit);
    S.identity.DataFileBase = dir.file("cohort");
  }
  // The statistics of individuals in the Basic Run's order, as far as the later steps need.
  void Statistics() {
    e.CountOvipositionDays();
    e.PreadultMean();
    e.Life10();
  }
};

// Hand cohort (support/cohort.h), time unit 1.
// Longevity (time units): 10 10 9 11 4 1 6; sum 51, sum of squares 455;
//   mean 51/7 = 7.285714, variance (455 - 51*51/7)/6 = 13.904762.
//   "N": 4 and 1: mean 2.5, variance (17 - 12.5)/1 = 4.5, min 1, max 4. "F": 10 10 9 6.
// Egg: 2 3 2 3 2 2 (the -1 is left out): n 6, mean 14/6, variance (34 - 196/6)/5 = 0.266667.
// Larva: 3 3 4 2 2: n 5, mean 2.8, variance (42 - 39.2)/4 = 0.7.
// Adult: 5 4 3 6 2: mean 4, variance 2.5; females 5 4 3 2: mean 3.5, variance 5/3.
// Egg to larva (preadult): 5 6 6 5 4: mean 5.2, variance 0.7. Span Egg..Larva is the same.
TEST(StageStatistics, DurationsAndLongevityByHandInTimeUnitOne) {
  Fixture f(1);
  f.e.Life10();
  const auto& w = f.S.ws.stageStats;
  EXPECT_NEAR(w.LongevityAll.mean, 51.0 / 7, 1e-12);
  EXPECT_NEAR(w.LongevityAll.variance, 13.904761904761905, 1e-9);
  EXPECT_NEAR(w.LongevityAll.se, std::sqrt(13.904761904761905 / 7), 1e-9);
  EXPECT_EQ(w.LongevityAll.minimum, 1);
  EXPECT_EQ(w.LongevityAll.maximum, 11);
  EXPECT_EQ(w.SexLongevity(kSexN).n, 2);
  EXPECT_NEAR(w.SexLongevity(kSexN).mean, 2.5, 1e-12);
  EXPECT_NEAR(w.SexLongevity(kSexN).variance, 4.5, 1e-12);
  EXPECT_EQ(w.SexLongevity(kSexN).minimum, 1);
  EXPECT_EQ(w.SexLongevity(kSexN).maximum, 4);
  EXPECT_NEAR(w.SexLongevity(kSexF).mean, 35.0 / 4, 1e-12);
  EXPECT_EQ(w.SexLongevity(kSexM).n, 1);
  EXPECT_NEAR(w.SexLongevity(kSexM).mean, 11, 1e-12);

  EXPECT_EQ(w.Stage(1).n, 6);
  EXPECT_NEAR(w.Stage(1).mean, 14.0 / 6, 1e-12);
  EXPECT_NEAR(w.Stage(1).variance, 0.26666666666666666, 1e-9);
  EXPECT_EQ(w.StageMin(1), 2);
  EXPECT_EQ(w.StageMax(1), 3);
  EXPECT_EQ(w.Stage(2).n, 5);
  EXPECT_NEAR(w.Stage(2).mean, 2.8, 1e-12);
  EXPECT_NEAR(w.Stage(2).variance, 0.7, 1e-9);
  EXPECT_NEAR(w.Stage(3).mean, 4, 1e-12);
  EXPECT_NEAR(w.Stage(3).variance, 2.5, 1e-9);
  EXPECT_NEAR(w.SexStage(kSexF, 3).mean, 3.5, 1e-12);
  EXPECT_NEAR(w.SexStage(kSexF, 3).variance, 5.0 / 3, 1e-9);
  EXPECT_NEAR(w.SexStage(kSexF, 3).se, std::sqrt(5.0 / 3 / 4), 1e-9);
  EXPECT_EQ(w.MaxFemaleAdultAge, 5);
  EXPECT_EQ(w.Cumulative(2).n, 5);
  EXPECT_NEAR(w.Cumulative(2).mean, 5.2, 1e-12);
  EXPECT_NEAR(w.Cumulative(2).variance, 0.7, 1e-9);
  EXPECT_EQ(w.SpanFirstStage, 1);
  EXPECT_EQ(w.SpanLastStage, 2);
  EXPECT_NEAR(w.Span.mean, 5.2, 1e-12);
  // One male: the mean stands, the spread keeps what it held (0 in a fresh store).
  EXPECT_EQ(w.SexStage(kSexM, 3).n, 1);
  EXPECT_EQ(w.SexStage(kSexM, 3).sd, 0);
}

// Time unit 0.5: every duration counts half a day, and so do the squares (D * 0.5)^2.
TEST(StageStatistics, DurationsInHalfDays) {
  Fixture f(0.5);
  f.e.Life10();
  const auto& w = f.S.ws.stageStats;
  EXPECT_NEAR(w.LongevityAll.mean, 51.0 / 14, 1e-12);
  EXPECT_NEAR(w.LongevityAll.variance, 13.904761904761905 / 4, 1e-9);
  EXPECT_NEAR(w.Stage(2).mean, 1.4, 1e-12);
  EXPECT_NEAR(w.Stage(2).variance, 0.7 / 4, 1e-9);
  EXPECT_EQ(w.LongevityAll.maximum, 5.5);
  // Ranges stay in time units.
  EXPECT_EQ(w.StageMax(1), 3);
}

// Total fecundity: 12 10 0 3 over the four females (F): mean 6.25, variance
//   (253 - 625/4)/3 = 32.25; over the three that laid eggs (Fr): mean 25/3, variance
//   (253 - 625/3)/2 = 22.333333; largest 12 (no. 1), smallest 3 (no. 7).
// Oviposition units 3 2 0 1. Female 1 lays 4 6 2: daily mean 4, variance (56 - 48)/2 = 4,
//   SE sqrt(4/3). All units together: 25 eggs in 6 units, variance (115 - 625/6)/5.
// By adult age (n = living females, sums = eggs): t=1: 4 alive, 5 eggs, mean 1.25, variance
//   (25 - 25/4)/3 = 6.25; t=2: 7/4; t=3: 11/3 (the peak, adult age 2); t=4: 0; t=5: 2.
TEST(StageStatistics, FecundityOfFemalesByHand) {
  Fixture f(1);
  f.Statistics();
  const auto& w = f.S.ws.stageStats;
  EXPECT_EQ(w.AdultFemaleCount, 4);
  EXPECT_NEAR(w.FecundityF.mean, 6.25, 1e-12);
  EXPECT_NEAR(w.FecundityF.variance, 32.25, 1e-9);
  EXPECT_EQ(w.FecundityFr.n, 3);
  EXPECT_NEAR(w.FecundityFr.mean, 25.0 / 3, 1e-12);
  EXPECT_NEAR(w.FecundityFr.variance, 22.333333333333333, 1e-9);
  EXPECT_EQ(w.FecundityFr.maximum, 12);
  EXPECT_EQ(w.FecundityMaxList, "1");
  EXPECT_EQ(w.FecundityFr.minimum, 3);
  EXPECT_EQ(w.FecundityMinList, "7");
  EXPECT_NEAR(w.DailyFecundityMean(1), 4, 1e-12);
  EXPECT_NEAR(w.DailyFecunditySE(1), std::sqrt(4.0 / 3), 1e-12);
  EXPECT_NEAR(w.DailyFecundityMean(2), 5, 1e-12);
  EXPECT_NEAR(w.EggsPerOviUnit.mean, 25.0 / 6, 1e-12);
  EXPECT_NEAR(w.EggsPerOviUnit.variance, (115 - 625.0 / 6) / 5, 1e-9);
  EXPECT_NEAR(w.OviUnitsStat.mean, 2, 1e-12);

  EXPECT_EQ(w.AdultAgeN(1), 4);
  EXPECT_NEAR(w.AdultAgeMean(1), 1.25, 1e-12);
  EXPECT_NEAR(w.AdultAgeSD(1), 2.5, 1e-12);
  EXPECT_NEAR(w.AdultAgeSE(1), 1.25, 1e-12);
  EXPECT_NEAR(w.AdultAgeMean(2), 1.75, 1e-12);
  EXPECT_EQ(w.AdultAgeN(3), 3);
  EXPECT_NEAR(w.AdultAgeMean(3), 11.0 / 3, 1e-12);
  EXPECT_EQ(w.AdultAgeN(5), 1);
  EXPECT_NEAR(w.AdultAgeMean(5), 2, 1e-12);
  EXPECT_NEAR(w.AdultAgePeakMean, 11.0 / 3, 1e-12);
  EXPECT_EQ(w.AdultAgePeakAge, 2);
  EXPECT_NEAR(w.AdultAgeMeanSum, 1.25 + 1.75 + 11.0 / 3 + 0 + 2, 1e-12);
  EXPECT_EQ(w.MaxDailyFecundity, 6);
  EXPECT_EQ(w.MaxDailyFecundityIndividual, 1);
  // Preadult durations of the females 5 6 6 4: mean 5.25 time units.
  EXPECT_NEAR(w.PreadultMeanFemale, 5.25, 1e-12);
  EXPECT_EQ(w.MaxFemaleLongevity, 10);
}

TEST(StageStatistics, TiedExtremesOfFecundityAreListedInOrder) {
  Fixture f(1, {{"F", {2, 2, 3}, {4, 4}}, {"F", {2, 2, 3}, {1, 1}}, {"F", {2, 2, 2}, {8}},
               {"F", {2, 2, 3}, {2}}, {"F", {2, 2, 3}, {0, 0, 8}}});
  f.Statistics();
  const auto& w = f.S.ws.stageStats;
  EXPECT_EQ(w.FecundityMaxList, "1,3,5");
  EXPECT_EQ(w.FecundityMaxCount, 3);
  EXPECT_EQ(w.FecundityMinList, "2,4");
  EXPECT_EQ(w.FecundityMinCount, 2);
}

// Oviposition days 3 2 1 (female 3 has none): mean 2, variance 1, SE 1/sqrt(3).
// 25 eggs over 6 days. With 0.5 the days halve; with 0.2 they are multiplied, not divided.
TEST(StageStatistics, OvipositionDaysInEachTimeUnit) {
  for (double tu : {1.0, 0.5, 0.2, 0.25}) {
    SCOPED_TRACE(tu);
    Fixture f(tu);
    f.e.CountOvipositionDays();
    const auto& w = f.S.ws.stageStats;
    const double k = tu == 0.25 ? 0.25 : tu;
    EXPECT_EQ(w.ReproductiveFemaleCount, 3);
    EXPECT_EQ(w.OviUnits(1), 3);
    EXPECT_EQ(w.OviUnits(3), 0);
    EXPECT_NEAR(w.OviDays(1), 3 * k, 1e-12);
    EXPECT_NEAR(w.OviDaysStat.mean, 2 * k, 1e-12);
    EXPECT_NEAR(w.OviDaysStat.variance, k * k, 1e-12);
    EXPECT_NEAR(w.OviDaysStat.se, k / std::sqrt(3.0), 1e-12);
    EXPECT_NEAR(w.TotalOviDays, 6 * k, 1e-12);
    EXPECT_NEAR(f.S.stageStats.FecundityPerOviDay, 25 / (6 * k), 1e-9);
    EXPECT_EQ(w.NoOviDaysFlag, "No");
    EXPECT_NEAR(w.ReproductiveFraction, 3.0 / 7, 1e-12);
  }
  // With no female the step does nothing at all.
  Fixture none(1, {{"M", {2, 2, 3}, {}}, {"N", {-2}, {}}});
  none.S.ws.stageStats.ReproductiveFemaleCount = 9;
  none.e.CountOvipositionDays();
  EXPECT_EQ(none.S.ws.stageStats.ReproductiveFemaleCount, 9);
  EXPECT_EQ(none.S.ws.stageStats.NoOviDaysFlag, "");
}

// First eggs at adult day 2, 1 and 2 (females 1, 2, 7), preadult 5, 6, 4.
// APOP 1 0 1: the stored minimum of 0 gives way to the next value, so the minimum is 1.
// TPOP 6 6 5: mean 17/3, variance (97 - 289/3)/2 = 1/3, minimum 5.
TEST(StageStatistics, ApopAndTpopWithTheMinimumRule) {
  Fixture f(1);
  f.Statistics();
  f.e.APOPandTPOP();
  const auto& w = f.S.ws.stageStats;
  EXPECT_EQ(w.ReproductiveFemaleCount, 3);
  EXPECT_EQ(w.Apop(2), 0);
  EXPECT_EQ(w.Tpop(2), 6);
  EXPECT_NEAR(w.ApopStat.mean, 2.0 / 3, 1e-12);
  EXPECT_NEAR(w.ApopStat.variance, 1.0 / 3, 1e-12);
  EXPECT_EQ(w.ApopStat.minimum, 1);
  EXPECT_EQ(w.ApopStat.maximum, 1);
  EXPECT_NEAR(w.TpopStat.mean, 17.0 / 3, 1e-12);
  EXPECT_NEAR(w.TpopStat.variance, 1.0 / 3, 1e-12);
  EXPECT_NEAR(w.TpopStat.se, std::sqrt(1.0 / 9), 1e-12);
  EXPECT_EQ(w.TpopStat.minimum, 5);
  EXPECT_EQ(w.TpopStat.maximum, 6);
  EXPECT_NEAR(w.EggsPerOviDay(1), 4, 1e-12);
  EXPECT_NEAR(f.S.stageStats.ApopBasic, 2.0 / 3, 1e-12);
  EXPECT_NEAR(f.S.stageStats.TpopBasic, 17.0 / 3, 1e-12);

  // A zero APOP met last stands as the minimum.
  Fixture last(1, {{"F", {2, 2, 3}, {0, 0, 4}}, {"F", {2, 2, 3}, {0, 4}}, {"F", {2, 2, 3}, {4}}});
  last.Statistics();
  last.e.APOPandTPOP();
  EXPECT_EQ(last.S.ws.stageStats.ApopStat.minimum, 0);
  EXPECT_EQ(last.S.ws.stageStats.ApopStat.maximum, 2);
}

// Time unit 0.5: APOP 0.5 0 0.5 (minimum 0.5), TPOP 3 3 2.5.
TEST(StageStatistics, ApopAndTpopInHalfDays) {
  Fixture f(0.5);
  f.Statistics();
  f.e.APOPandTPOP();
  const auto& w = f.S.ws.stageStats;
  EXPECT_NEAR(w.ApopStat.mean, 1.0 / 3, 1e-12);
  EXPECT_EQ(w.ApopStat.minimum, 0.5);
  EXPECT_NEAR(w.TpopStat.mean, 8.5 / 3, 1e-12);
  EXPECT_EQ(w.TpopStat.minimum, 2.5);
  EXPECT_NEAR(w.TpopStat.variance, 1.0 / 12, 1e-12);
}

// On the age axis from birth (LastAge 10) female 1 lays at ages 6 7 9, female 2 at 6 8,
// female 7 at 5. Eggs by age: 5: 3, 6: 9, 7: 6, 8: 5, 9: 2.
// Alive at age 6: 1 2 3 4 (4 individuals), of them females 1 2 3.
//   m(6) = 9/4, variance (41 - 81/4)/3; f(6) = 3, variance (41 - 27)/2 = 7.
// Oviposition period: 9-6+1 = 4, 8-6+1 = 3, 1: mean 8/3, variance (26 - 64/3)/2.
// Days after the last egg: 10-9-1 = 0, 10-8-1 = 1, 6-5-1 = 0.
TEST(StageStatistics, FecundityFromBirthAndOvipositionPeriod) {
  Fixture f(1);
  f.Statistics();
  f.e.AgeFecundityFromBirth();
  f.e.CountOvipositionPeriod();
  const auto& w = f.S.ws.stageStats;
  EXPECT_EQ(w.AliveAtAge(0), 7);
  EXPECT_EQ(w.AliveAtAge(5), 5);
  EXPECT_EQ(w.AliveAtAge(6), 4);
  EXPECT_EQ(w.AliveAtAge(10), 1);
  EXPECT_EQ(w.FemalesAtAge(6), 3);
  EXPECT_EQ(w.EggsAtAge(6), 9);
  EXPECT_NEAR(w.MxMean(6), 2.25, 1e-12);
  EXPECT_NEAR(w.MxSD(6), std::sqrt((41 - 81.0 / 4) / 3), 1e-12);
  EXPECT_NEAR(w.FxMean(6), 3, 1e-12);
  EXPECT_NEAR(w.FxSD(6), std::sqrt(7.0), 1e-12);
  EXPECT_NEAR(w.FxMean(5), 1.5, 1e-12);
  EXPECT_EQ(w.FecundityFromBirth(1, 7), 6);
  EXPECT_EQ(w.FirstOviAge(1), 6);
  EXPECT_EQ(w.LastOviAge(1), 9);
  EXPECT_EQ(w.PostOviSteps(2), 1);
  EXPECT_EQ(w.OviPeriod(1), 4);
  EXPECT_EQ(w.OviPeriod(7), 1);
  EXPECT_NEAR(w.OviPeriodStat.mean, 8.0 / 3, 1e-12);
  EXPECT_NEAR(w.OviPeriodStat.variance, (26 - 64.0 / 3) / 2, 1e-12);
  EXPECT_EQ(w.OviPeriodMeanRounded, 3);
  EXPECT_EQ(w.NoOviPeriodFlag, "No");
}

// With 0.5 the ages are halved before the period is formed and the period is halved again:
// (4.5 - 3 + 1)/2 = 1.25, (4 - 3 + 1)/2 = 1, (2.5 - 2.5 + 1)/2 = 0.5.
TEST(StageStatistics, OvipositionPeriodInHalfDaysIsConvertedTwice) {
  Fixture f(0.5);
  f.e.CountOvipositionDays();
  f.e.PreadultMean();
  f.e.AgeFecundityFromBirth();
  f.e.CountOvipositionPeriod();
  const auto& w = f.S.ws.stageStats;
  EXPECT_EQ(w.FirstOviAge(1), 3);
  EXPECT_EQ(w.LastOviAge(1), 4.5);
  EXPECT_EQ(w.OviPeriod(1), 1.25);
  EXPECT_EQ(w.OviPeriod(2), 1);
  EXPECT_EQ(w.OviPeriod(7), 0.5);
  EXPECT_NEAR(w.OviPeriodStat.mean, 2.75 / 3, 1e-12);
}

// The replicate's twins agree with the Basic Run's procedures on the same cohort and file
// their means under the replicate's number.
TEST(StageStatistics, ReplicateTwinsFileTheirMeansUnderBoot) {
  Fixture basic(1);
  basic.Statistics();
  basic.e.AgeFecundityFromBirth();
  basic.e.CountOvipositionPeriod();
  basic.e.APOPandTPOP();

  Fixture rep(1);
  rep.S.ws.run.Boot = 17;
  rep.S.ws.run.IsResamplingFlag = "y";
  rep.e.CountOvipositionDays();
  rep.e.AgeFecundityFromBirthBoot();
  rep.e.CountOvipositionPeriodBoot();
  rep.e.Life10boot();
  rep.e.APOPandTPOPforBoot();
  // Left in the workspace for the replicate chain; the session's lists are not the engine's.
  const auto& b = rep.S.ws.boot.sample;
  EXPECT_NEAR(b.APOP, 2.0 / 3, 1e-12);
  EXPECT_NEAR(b.TPOP, 17.0 / 3, 1e-12);
  EXPECT_EQ(b.ReproductiveFemales, 3);
  EXPECT_NEAR(b.OviDays, 2, 1e-12);
  EXPECT_NEAR(b.OviPeriod, 8.0 / 3, 1e-12);
  EXPECT_NEAR(b.Longevity, 51.0 / 7, 1e-12);
  EXPECT_EQ(rep.S.boot.BootAPOP(17), 0);
  // The count the longevity loop leaves behind: one past the cohort.
  EXPECT_EQ(rep.S.ws.lifeTable.LongevityCount, 8);
  for (long i = 1; i <= 7; ++i) {
    EXPECT_EQ(rep.S.ws.stageStats.FirstOviAge(i), basic.S.ws.stageStats.FirstOviAge(i));
    EXPECT_EQ(rep.S.ws.stageStats.TotalFecundity(i), basic.S.ws.stageStats.TotalFecundity(i));
  }
  // The twin leaves "M" and "N" out of the living.
  EXPECT_EQ(rep.S.ws.stageStats.AliveAtAge(0), 4);
  EXPECT_EQ(basic.S.ws.stageStats.AliveAtAge(0), 7);
}

}  // namespace
}  // namespace korvan
