// Stage-duration statistics, spans and fecundity statistics of a cohort.
#include <gtest/gtest.h>

#include <cmath>

#include "support/cohort.h"
#include "support/fake_prompts.h"
#include "engine/life_table_engine.h"

namespace korvan {
namespace {

using test::LoadCohort;

TEST(StageStatistics, HandCohortInTheBasicRun) {
  Session S;
  test::OrderedPrompts P;
  LifeTableEngine E(S, P);
  LoadCohort(S, 3, test::WalkCohort());
  E.Life01();
  E.Life02();
  const auto& L = S.ws.lifeTable;
  // S1: 2, 2, 1 -> mean 5/3, variance (9 - 25/3)/2 = 1/3.
  EXPECT_EQ(L.StageSurvivors(1), 3);
  EXPECT_DOUBLE_EQ(L.StageMean(1), 5.0 / 3);
  EXPECT_NEAR(L.StageVariance(1), 1.0 / 3, 1e-15);
  EXPECT_EQ(L.StageSurvivors(2), 2);
  EXPECT_DOUBLE_EQ(L.StageMean(2), 2.5);
  EXPECT_DOUBLE_EQ(L.StageMean(3), 3.5);
  // Birth to the end of S2: 5 and 4 (individual 3 died in S2 and drops out).
  EXPECT_EQ(L.CumSurvivors(2), 2);
  EXPECT_DOUBLE_EQ(L.CumMean(2), 4.5);
  EXPECT_DOUBLE_EQ(L.CumMean(3), 8);
  EXPECT_DOUBLE_EQ(L.CumulativeDuration(3, 3), 1);  // as far as it came
  EXPECT_DOUBLE_EQ(L.PreadultSurvival, 0.5);
  EXPECT_DOUBLE_EQ(S.lifeTable.PreadultMeanTime, 4.5);
  EXPECT_EQ(S.lifeTable.OriginalStageSurvivors(1), 3);
  EXPECT_DOUBLE_EQ(S.lifeTable.OriginalCumMean(1), 5.0 / 3);
  EXPECT_EQ(S.ws.tables.LastAge, 8);

  // Deaths by stage, sexes of the adults.
  EXPECT_EQ(L.StageDeaths(1), 1);
  EXPECT_EQ(L.StageDeaths(2), 1);
  EXPECT_EQ(L.StageDeathsRest(2), 2);
  EXPECT_EQ(L.StageDeaths(3), 1);
  EXPECT_EQ(L.StageDeaths(4), 1);
  EXPECT_EQ(L.FemaleCount, 1);
  EXPECT_EQ(L.MaleCountAdult, 1);
  EXPECT_EQ(L.NTypeCountAdult, 2);
  EXPECT_DOUBLE_EQ(L.FemaleRate, 0.25);
  EXPECT_DOUBLE_EQ(L.MalesPerFemale, 1);
  EXPECT_DOUBLE_EQ(L.FemaleShare, 0.5);
  EXPECT_DOUBLE_EQ(L.TypeStageMean(1, 3), 4);
  EXPECT_DOUBLE_EQ(L.TypeCumMean(2, 2), 4);
  EXPECT_DOUBLE_EQ(L.PreadultTime(1), 5);

  // Span S1..S2: individuals 1 and 2, 5 and 4 days.
  EXPECT_EQ(L.SpanFirstStage, 1);
  EXPECT_EQ(L.SpanLastStage, 2);
  EXPECT_EQ(L.SpanCount, 2);
  EXPECT_DOUBLE_EQ(L.SpanMean, 4.5);
  EXPECT_EQ(L.SpanIndividual(2), 2);
  EXPECT_DOUBLE_EQ(L.SpanValue(1), 5);
  EXPECT_EQ(L.TypeSpanCount(1), 1);

  // Fecundity: one female with 8 eggs; more than one type in the cohort.
  EXPECT_EQ(L.FemaleFecundityCount, 1);
  EXPECT_DOUBLE_EQ(L.FemaleFecundityMean, 8);
  EXPECT_EQ(L.ReproductiveCount, 1);
  EXPECT_DOUBLE_EQ(S.lifeTable.OriginalMeanFecundity, 8);
  EXPECT_EQ(S.options.SingleType, "No");
  ASSERT_FALSE(P.status.empty());
  EXPECT_EQ(P.status.back().first, "txtMeanfecundity");
  EXPECT_EQ(P.status.back().second, "8.0000");
}

TEST(StageStatistics, TimeUnitRuleAndValuesKeptWhereNothingIsComputed) {
  Session S;
  test::OrderedPrompts P;
  LifeTableEngine E(S, P);
  LoadCohort(S, 3, test::WalkCohort());
  S.settings.TimeUnit = 0.3;  // a fraction: days are D / 3, squares (0.3 D)^2
  S.ws.lifeTable.TypeStageMean(2, 1) = 99;
  E.Life01();
  const auto& L = S.ws.lifeTable;
  EXPECT_DOUBLE_EQ(L.StageMean(1), 5.0 / 9);
  // Q = 0.09 * (4 + 4 + 1) = 0.81 is below S*S/n = 25/27: the variance is raised to 0.
  EXPECT_EQ(L.StageVariance(1), 0);
  // One value: the mean only; the variance stands as it was.
  EXPECT_DOUBLE_EQ(L.TypeStageMean(1, 3), 4.0 / 3);
  EXPECT_DOUBLE_EQ(L.TypeStageVariance(1, 3), 0);

  // A span whose second stage has no name in the file drops every individual.
  S.header.SpecialGroup(2) = "Adult";
  S.ws.lifeTable.SpanMean = 7;
  E.Life02Gosub80();
  EXPECT_EQ(L.SpanFirstStage, 0);
  EXPECT_EQ(L.SpanCount, 0);
  EXPECT_EQ(L.SpanMean, 7);

  // No males: the Basic form keeps a stale mean of an empty type, the replicate form clears.
  LoadCohort(S, 3, {{"F", {1, 1, 1}, {1}}, {"N", {-1}, {}}});
  S.settings.TimeUnit = 1;
  S.ws.lifeTable.TypeStageMean(2, 1) = 99;
  E.Life01();
  EXPECT_EQ(L.TypeStageMean(2, 1), 99);
  S.ws.run.IsResamplingFlag = "y";
  S.ws.run.Boot = 2;
  E.Life01();
  EXPECT_EQ(L.TypeStageMean(2, 1), 0);
  // The replicate's means are left in its workspace for the replicate chain to file.
  const auto& rec = S.ws.boot.sample;
  EXPECT_DOUBLE_EQ(rec.StageMean(1), 1);
  EXPECT_DOUBLE_EQ(rec.TypeStageMean(1, 3), 1);
  EXPECT_DOUBLE_EQ(rec.PreadultSurvival, 0.5);
  EXPECT_DOUBLE_EQ(rec.CumMean(3), 3);
  EXPECT_FALSE(S.lifeTable.HasBootLists());
  // The Basic Run's values (of the second cohort) stand.
  EXPECT_DOUBLE_EQ(S.lifeTable.OriginalStageMean(1), 1);
  EXPECT_EQ(S.lifeTable.OriginalStageSurvivors(1), 1);
}

TEST(StageStatistics, FecundityOfFemalesWithoutEggsAndOfAReplicate) {
  Session S;
  test::OrderedPrompts P;
  LifeTableEngine E(S, P);
  // Two females, one without eggs: all females 2 (mean 3), reproductive 1 (mean 6).
  LoadCohort(S, 2, {{"F", {1, 3}, {2, 4}}, {"F", {1, 2}, {}}});
  E.Life01();
  E.Life02();
  const auto& L = S.ws.lifeTable;
  EXPECT_EQ(L.FemaleFecundityCount, 2);
  EXPECT_DOUBLE_EQ(L.FemaleFecundityMean, 3);
  EXPECT_DOUBLE_EQ(L.FemaleFecunditySD, std::sqrt(18.0));
  EXPECT_EQ(L.ReproductiveCount, 1);
  EXPECT_DOUBLE_EQ(L.ReproductiveMean, 6);
  EXPECT_EQ(S.options.SingleType, "");  // all read individuals are females

  // In a replicate nothing is kept as the original and the console isn't touched.
  const auto shown = P.status.size();
  S.ws.run.IsResamplingFlag = "y";
  S.ws.run.Boot = 1;
  LoadCohort(S, 2, {{"F", {1, 3}, {2, 4}}, {"F", {1, 3}, {2, 4}}});
  E.Life02();
  EXPECT_DOUBLE_EQ(L.FemaleFecundityMean, 6);
  EXPECT_DOUBLE_EQ(S.lifeTable.OriginalMeanFecundity, 3);
  EXPECT_EQ(P.status.size(), shown);
}

// LastAge is MaxLongevity - 1 until the longevity statistics have run; after them (a later
// pass in the session) it is the longest time to the end of the adult stage less 1, which
// leaves out the days an individual lived in the stage of its death.
TEST(StageStatistics, LastAgeBeforeAndAfterTheLongevityStatistics) {
  Session S;
  test::OrderedPrompts P;
  LifeTableEngine E(S, P);
  LoadCohort(S, 2, {{"N", {3, -5}, {}}, {"F", {1, 1}, {}}});
  E.Life01();
  EXPECT_EQ(S.ws.tables.LastAge, 7);
  S.ws.lifeTable.LongevityCount = 3;
  E.Life01();
  EXPECT_EQ(S.ws.tables.LastAge, 2);
}

}  // namespace
}  // namespace korvan
