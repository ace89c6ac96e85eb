// The walk of the cohort into n(x,j), g(x,j), d(x,j), and f(x,j), s(x,j) after it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include "support/cohort.h"
#include "support/fake_prompts.h"
#include "engine/life_table_engine.h"
#include "engine/stage_statistics.h"

namespace korvan {
namespace {

using test::LoadCohort;

struct Engine {
  Session S;
  test::OrderedPrompts P;
  LifeTableEngine E{S, P};
};

// The walk cohort of support/cohort.h, by hand: g(0,1)=2/4, g(1,2)=1/1, g(2,2)=2/3,
// g(3,2)=1/2, g(4,male)=1, g(5..7,F)=1, g(5,male)=1; d(0,1)=1/4, d(1,1)=2/2, d(4,2)=1/1 (to the
// female stage), d(3,3)=1/2 (to the male stage, kept on row m). The female became adult at
// age 5, so her eggs 0, 5, 3, 0 fall on ages 5..8.
TEST(Walk, HandCohortGivesTheCountsAndTransitionsWorkedOutByHand) {
  Engine e;
  LoadCohort(e.S, 3, test::WalkCohort());
  e.E.Life01();
  e.E.Life03();
  const auto& T = e.S.ws.tables;
  ASSERT_EQ(T.LastAge, 8);

  const double n[9][5] = {{0, 4, 0, 0, 0}, {0, 2, 1, 0, 0}, {0, 0, 3, 0, 0}, {0, 0, 2, 0, 0}, {0, 0, 1, 0, 1},
                          {0, 0, 0, 1, 1}, {0, 0, 0, 1, 1}, {0, 0, 0, 1, 0}, {0, 0, 0, 1, 0}};
  for (int x = 0; x <= 8; ++x)
    for (int j = 1; j <= 4; ++j) EXPECT_EQ(T.Nxj(x, j), n[x][j]) << "n(" << x << "," << j << ")";

  EXPECT_DOUBLE_EQ(T.Gxj(0, 1), 0.5);
  EXPECT_DOUBLE_EQ(T.Gxj(1, 2), 1);
  EXPECT_DOUBLE_EQ(T.Gxj(2, 2), 2.0 / 3);
  EXPECT_DOUBLE_EQ(T.Gxj(3, 2), 0.5);
  EXPECT_DOUBLE_EQ(T.Gxj(4, 4), 1);
  EXPECT_DOUBLE_EQ(T.Gxj(7, 3), 1);
  EXPECT_DOUBLE_EQ(T.Gxj(8, 3), 0);  // the female's last day
  EXPECT_DOUBLE_EQ(T.Dxj(0, 1), 0.25);
  EXPECT_DOUBLE_EQ(T.Dxj(1, 1), 1);
  EXPECT_DOUBLE_EQ(T.Dxj(4, 2), 1);
  EXPECT_DOUBLE_EQ(T.Dxj(3, 3), 0.5);
  EXPECT_DOUBLE_EQ(T.Dxj(3, 2), 0);

  // Total individual-days equal the sum of the longevities 9 + 7 + 3 + 1.
  EXPECT_EQ(e.S.ws.lifeTable.SumNxj, 20);

  // Fecundity moves to ages 5..8; f is per female alive, the total kept beside it.
  const auto& L = e.S.ws.lifeTable;
  EXPECT_EQ(T.Fxj(6, 3), 5);
  EXPECT_EQ(T.Fxj(7, 3), 3);
  EXPECT_EQ(T.Fxj(5, 3), 0);
  EXPECT_EQ(L.FxjCumulative(7), 8);
  EXPECT_EQ(L.StageFecundityTotal(3), 8);
  for (int x = 0; x <= 8; ++x) {
    EXPECT_EQ(T.Fxj(x, 1), 0);
    EXPECT_EQ(T.Fxj(x, 4), 0);
  }

  // s(x,j) = n(x,j)/N, the age ranges of the stages, the mean longevity.
  EXPECT_DOUBLE_EQ(T.Sxj(2, 2), 0.75);
  EXPECT_DOUBLE_EQ(T.Sxj(4, 4), 0.25);
  EXPECT_EQ(L.StageFirstAge(1), 0);
  EXPECT_EQ(L.StageLastAge(1), 1);
  EXPECT_EQ(L.StageFirstAge(2), 1);
  EXPECT_EQ(L.StageLastAge(2), 4);
  EXPECT_EQ(L.StageFirstAge(3), 5);
  EXPECT_EQ(L.StageLastAge(3), 8);
  EXPECT_EQ(L.StageFirstAge(4), 4);
  EXPECT_EQ(L.StageLastAge(4), 6);
  EXPECT_DOUBLE_EQ(L.MeanLongevitySum, 5);
  EXPECT_DOUBLE_EQ(L.StageSxSum(3), 1);
}

TEST(Walk, SingleIndividualsCountTheirDaysWhereTheyLivedThem) {
  // Durations 2, 3, 4 with m = 3: n(0,1), n(1,1), n(2..4,2), n(5..8,3), nine days in all.
  {
    Engine e;
    LoadCohort(e.S, 3, {{"F", {2, 3, 4}, {}}});
    e.E.Life01();
    e.E.Life03();
    const auto& T = e.S.ws.tables;
    const int stage[9] = {1, 1, 2, 2, 2, 3, 3, 3, 3};
    double total = 0;
    for (int x = 0; x <= 8; ++x) {
      for (int j = 1; j <= 4; ++j) {
        EXPECT_EQ(T.Nxj(x, j), j == stage[x] ? 1 : 0) << x << "," << j;
        total += T.Nxj(x, j);
      }
    }
    EXPECT_EQ(total, e.S.ws.cohort.TotalLongevity(1));
  }
  // "1,N,-1": only age 0, no count in S1's survivors. An adult of duration 1 counts one day
  // in its adult row, and g of the adult row gets nothing for it.
  {
    Engine e;
    LoadCohort(e.S, 2, {{"N", {-1}, {}}, {"F", {2, 1}, {4}}, {"M", {2, 1}, {}}});
    e.E.Life01();
    e.E.Life03();
    const auto& T = e.S.ws.tables;
    EXPECT_EQ(T.Nxj(0, 1), 3);
    EXPECT_EQ(T.Nxj(1, 1), 2);
    EXPECT_EQ(e.S.ws.lifeTable.StageSurvivors(1), 2);
    EXPECT_EQ(T.Nxj(2, 2), 1);  // the female on her one adult day
    EXPECT_EQ(T.Nxj(2, 3), 1);  // the male on his
    for (int x = 0; x <= 2; ++x) {
      EXPECT_EQ(T.Gxj(x, 2), 0);
      EXPECT_EQ(T.Gxj(x, 3), 0);
    }
    EXPECT_EQ(T.Nxj(3, 2) + T.Nxj(3, 3), 0);
    EXPECT_EQ(T.Fxj(2, 2), 4);
  }
}

TEST(Walk, OneStageCohortOnlyWalksTheAdultStage) {
  // m = 1: every individual is adult from birth; the female's eggs fall from age 0 on, and
  // the row of the second adult stage stays empty in a cohort of females.
  Engine e;
  LoadCohort(e.S, 1, {{"F", {3}, {2, 0, 1}}, {"F", {1}, {6}}});
  e.E.Life01();
  e.E.Life03();
  const auto& T = e.S.ws.tables;
  EXPECT_EQ(T.LastAge, 2);
  EXPECT_EQ(T.Nxj(0, 1), 2);
  EXPECT_EQ(T.Nxj(1, 1), 1);
  EXPECT_EQ(T.Nxj(2, 1), 1);
  EXPECT_DOUBLE_EQ(T.Gxj(0, 1), 0.5);
  for (int x = 0; x <= 3; ++x) EXPECT_EQ(T.Nxj(x, 2), 0);
  EXPECT_DOUBLE_EQ(T.Fxj(0, 1), 4);  // (2 + 6) / 2
  EXPECT_DOUBLE_EQ(T.Fxj(2, 1), 1);
  EXPECT_DOUBLE_EQ(e.S.ws.lifeTable.FxjCumulative(2), 9);
}

TEST(Walk, RepeatedPassesStartFromClearedTablesAndAStageNobodyReachedKeepsItsRange) {
  Engine e;
  LoadCohort(e.S, 3, test::WalkCohort());
  e.E.Life01();
  e.E.Life03();
  // A second cohort with no male: the male stage keeps the range 4..6 of the first pass,
  // while its counts are gone.
  LoadCohort(e.S, 3, {{"F", {1, 1, 2}, {1, 1}}, {"N", {1, -1}, {}}});
  e.E.Life01();
  e.E.Life03();
  const auto& T = e.S.ws.tables;
  const auto& L = e.S.ws.lifeTable;
  EXPECT_EQ(T.LastAge, 3);
  EXPECT_EQ(L.StageFirstAge(4), 4);
  EXPECT_EQ(L.StageLastAge(4), 6);
  double male = 0, all = 0;
  for (int x = 0; x <= 4; ++x) {
    male += T.Nxj(x, 4);
    for (int j = 1; j <= 4; ++j) all += T.Nxj(x, j);
  }
  EXPECT_EQ(male, 0);
  EXPECT_EQ(all, 4 + 2);
  EXPECT_DOUBLE_EQ(T.Gxj(0, 1), 0);
  EXPECT_DOUBLE_EQ(T.Dxj(0, 1), 1);
}

// An independent route: from s(0,1) = 1, project forward with g and d only (female stage
// entered from m-1 by d(x,m-1), male stage from m-1 by d(x,m)); every cell must come back to
// n(x,j)/N. Checked on a cohort of 60 individuals made by a fixed rule.
TEST(Walk, SurvivalRebuiltFromGrowthAndDevelopmentEqualsCountsOverN) {
  std::vector<test::Individual> members;
  unsigned seed = 12345;
  auto next = [&](int range) {
    seed = seed * 1103515245u + 12345u;
    return static_cast<int>((seed >> 16) % static_cast<unsigned>(range));
  };
  const int m = 4;
  for (int i = 0; i < 60; ++i) {
    test::Individual mb;
    const int fate = next(10);
    if (fate < 3) {  // dies in a preadult stage
      const int stage = 1 + next(m - 1);
      for (int j = 1; j < stage; ++j) mb.durations.push_back(1 + next(4));
      mb.durations.push_back(-(1 + next(3)));
      mb.sex = "N";
    } else {
      for (int j = 1; j < m; ++j) mb.durations.push_back(1 + next(4));
      mb.durations.push_back(1 + next(8));
      mb.sex = fate < 7 ? "F" : "M";
      if (mb.sex == "F")
        for (int d = 0; d < mb.durations.back(); ++d) mb.eggs.push_back(next(6));
    }
    members.push_back(mb);
  }
  Session S;
  test::OrderedPrompts P;
  LifeTableEngine E(S, P);
  LoadCohort(S, m, members);
  E.Life01();
  E.Life03();
  const auto& T = S.ws.tables;
  const int last = T.LastAge;
  const int N = S.ws.cohort.CohortSize;
  std::vector<std::vector<double>> s(static_cast<std::size_t>(last + 1), std::vector<double>(m + 2, 0));
  s[0][1] = 1;
  for (int x = 1; x <= last; ++x) {
    auto& now = s[static_cast<std::size_t>(x)];
    const auto& before = s[static_cast<std::size_t>(x - 1)];
    for (int j = 1; j <= m + 1; ++j) {
      double v = T.Gxj(x - 1, j) * before[static_cast<std::size_t>(j)];
      if (j >= 2 && j <= m - 1) v += T.Dxj(x - 1, j - 1) * before[static_cast<std::size_t>(j - 1)];
      if (j == m) v += T.Dxj(x - 1, m - 1) * before[static_cast<std::size_t>(m - 1)];
      if (j == m + 1) v += T.Dxj(x - 1, m) * before[static_cast<std::size_t>(m - 1)];
      now[static_cast<std::size_t>(j)] = v;
    }
  }
  for (int x = 0; x <= last; ++x)
    for (int j = 1; j <= m + 1; ++j)
      EXPECT_NEAR(s[static_cast<std::size_t>(x)][static_cast<std::size_t>(j)], T.Nxj(x, j) / N, 1e-12)
          << "x=" << x << " j=" << j;
}

// 150 individuals of three stages with odd durations: fractions that never run out, negative
// adult days, deaths on the day of entry.
std::vector<test::Individual> OddCohort() {
  std::vector<test::Individual> cohort;
  unsigned seed = 7;
  auto next = [&](unsigned range) {
    seed = seed * 1103515245u + 12345u;
    return static_cast<int>((seed >> 16) % range);
  };
  for (int i = 0; i < 150; ++i) {
    const int kind = next(10);
    std::vector<double> d;
    if (kind == 0) {
      d = {static_cast<double>(1 + next(3)), -static_cast<double>(1 + next(2))};
    } else if (kind == 1) {
      d = {2, 2.5, 1};  // a fraction: the larva never leaves its stage
    } else if (kind == 2) {
      d = {-1};  // dead on the day of hatching
    } else {
      d = {static_cast<double>(1 + next(4)), static_cast<double>(1 + next(3)),
           static_cast<double>(kind == 3 ? -(1 + next(3)) : 1 + next(20))};
    }
    cohort.push_back({kind == 0 || kind == 2 ? "N" : kind == 3 ? "M" : kind % 2 ? "F" : "M", d, {1, 0, 3, 2}});
  }
  return cohort;
}

bool SameBits(double u, double v) { return std::memcmp(&u, &v, sizeof u) == 0; }

// The walk goes individual by individual with the sums of g and d added after it, or age by
// age through the steps that record themselves when a flow record is on (Boot = 2 with
// FlowMode "Yes" records nothing but takes that way). Both give every table bit for bit, on a
// cohort with odd durations: fractions that never run out, negative adult days, deaths on the
// day of entry, and many individuals in one cell (sums of many 1/n).
TEST(Walk, AgeByAgeAndIndividualByIndividualAgreeBitForBit) {
  const std::vector<test::Individual> cohort = OddCohort();
  auto walk = [&](const char* flowMode) {
    auto e = std::make_unique<Engine>();
    LoadCohort(e->S, 3, cohort);
    e->S.ws.run.Boot = 2;
    e->E.Life01();
    e->S.options.FlowMode = flowMode;
    e->E.Life03();
    return e;
  };
  const auto a = walk("No");
  const auto b = walk("Yes");
  const auto& Ta = a->S.ws.tables;
  const auto& Tb = b->S.ws.tables;
  ASSERT_EQ(Ta.LastAge, Tb.LastAge);
  ASSERT_GT(Ta.LastAge, 20);
  for (int x = 0; x <= Ta.LastAge + 1; ++x) {
    for (int j = 1; j <= 4; ++j) {
      EXPECT_TRUE(SameBits(Ta.Nxj(x, j), Tb.Nxj(x, j))) << "n(" << x << "," << j << ")";
      EXPECT_TRUE(SameBits(Ta.Gxj(x, j), Tb.Gxj(x, j))) << "g(" << x << "," << j << ")";
      EXPECT_TRUE(SameBits(Ta.Dxj(x, j), Tb.Dxj(x, j))) << "d(" << x << "," << j << ")";
      EXPECT_TRUE(SameBits(Ta.Sxj(x, j), Tb.Sxj(x, j))) << "s(" << x << "," << j << ")";
    }
  }
  const auto& La = a->S.ws.lifeTable;
  const auto& Lb = b->S.ws.lifeTable;
  for (int i = 1; i <= 150; ++i) {
    EXPECT_EQ(La.CurrentStage(i), Lb.CurrentStage(i)) << i;
    for (int j = 1; j <= 3; ++j) EXPECT_TRUE(SameBits(La.RemainingDuration(i, j), Lb.RemainingDuration(i, j))) << i;
  }
  EXPECT_EQ(La.WalkAge, Lb.WalkAge);
  EXPECT_EQ(La.WalkIndividual, Lb.WalkIndividual);
  EXPECT_EQ(La.SumNxj, Lb.SumNxj);
  // The first cell is shared by all 150: g(0,1) + d(0,1) is 1/150 added once per individual
  // that lived past age 0.
  double sum = 0;
  for (int c = 0; c < 150 - static_cast<int>(std::count_if(cohort.begin(), cohort.end(), [](const test::Individual& a) {
                        return a.durations[0] == -1;
                      }));
       ++c)
    sum += 1.0 / 150;
  EXPECT_NEAR(Ta.Gxj(0, 1) + Ta.Dxj(0, 1), sum, 1e-12);
}


// In a bootstrap each place of a sample knows the individual of the pool whose rows it holds;
// what depends on her rows alone (her walk, longevity, preadult time, days before her closing
// mark) is kept in the workspace and used again when she is drawn again. Samples walked so
// give every table and figure of a walk afresh, bit for bit: nothing kept yet, all kept, a
// smaller sample with repeats and a last age cut short (kept walks past it are walked anew),
// and another mixture.
TEST(Walk, KeptValuesOfPoolIndividualsGiveTheFiguresOfAFreshWalk) {
  const std::vector<test::Individual> pool = OddCohort();
  struct Pass {
    Session S;
    test::OrderedPrompts P;
    LifeTableEngine E{S, P};
    StageStatsEngine F{S, P};
    void Run(const std::vector<test::Individual>& pool, const std::vector<int>& drawn, bool kept, int cut) {
      std::vector<test::Individual> sample;
      for (int k : drawn) sample.push_back(pool[static_cast<std::size_t>(k - 1)]);
      LoadCohort(S, 3, sample);
      S.pool.OriginalCohortSize = static_cast<int>(pool.size());
      for (std::size_t p = 0; p < drawn.size(); ++p)
        S.ws.cohort.RowSource(static_cast<long>(p) + 1) = kept ? drawn[p] : 0;
      S.ws.run.Boot = 2;
      E.Life01();
      S.ws.tables.LastAge -= cut;  // walks cut short at the last age
      F.AgeFecundityFromBirthBoot();
      E.Life03();
    }
  };
  const auto keeper = std::make_unique<Pass>();
  Pass& kept = *keeper;
  auto sample = [](int n, int a, int b) {
    std::vector<int> drawn;
    for (int p = 1; p <= n; ++p) drawn.push_back(1 + (p * a + p * p * b) % 150);
    return drawn;
  };
  int pass = 0;
  for (const auto& drawn : {sample(150, 37, 0), sample(150, 37, 0), sample(60, 11, 1), sample(150, 7, 3)}) {
    const int cut = ++pass == 3 ? 12 : 0;
    kept.Run(pool, drawn, true, cut);
    auto fresh = std::make_unique<Pass>();
    fresh->Run(pool, drawn, false, cut);
    const auto& Ta = kept.S.ws.tables;
    const auto& Tb = fresh->S.ws.tables;
    ASSERT_EQ(Ta.LastAge, Tb.LastAge);
    for (int x = 0; x <= Ta.LastAge + 1; ++x) {
      for (int j = 1; j <= 4; ++j) {
        for (auto table : {&AgeStageTables::Nxj, &AgeStageTables::Gxj, &AgeStageTables::Dxj, &AgeStageTables::Fxj,
                           &AgeStageTables::Sxj})
          ASSERT_TRUE(SameBits((Ta.*table)(x, j), (Tb.*table)(x, j))) << x << "," << j;
      }
      const auto& wa = kept.S.ws.stageStats;
      const auto& wb = fresh->S.ws.stageStats;
      ASSERT_TRUE(SameBits(wa.FemalesAtAge(x), wb.FemalesAtAge(x))) << x;
      ASSERT_TRUE(SameBits(wa.EggsAtAge(x), wb.EggsAtAge(x))) << x;
      ASSERT_TRUE(SameBits(wa.MxMean(x), wb.MxMean(x))) << x;
    }
    for (std::size_t i = 1; i <= drawn.size(); ++i) {
      const auto& wa = kept.S.ws.stageStats;
      const auto& wb = fresh->S.ws.stageStats;
      EXPECT_TRUE(SameBits(wa.Longevity(i), wb.Longevity(i))) << i;
      EXPECT_TRUE(SameBits(wa.PreadultDuration(i), wb.PreadultDuration(i))) << i;
      if (pool[static_cast<std::size_t>(drawn[i - 1] - 1)].sex == "F") {  // set for females alone
        EXPECT_TRUE(SameBits(wa.LastOviAge(i), wb.LastOviAge(i))) << i;
      }
    }
    EXPECT_EQ(kept.S.ws.lifeTable.WalkIndividual, fresh->S.ws.lifeTable.WalkIndividual);
    EXPECT_EQ(kept.S.ws.lifeTable.SumNxj, fresh->S.ws.lifeTable.SumNxj);
  }
  // The walks were kept: the pool individuals that died before the last age have their events.
  int known = 0;
  for (const WalkScript& w : kept.S.ws.cohort.WalkScripts) known += w.known;
  EXPECT_GT(known, 100);
}

}  // namespace
}  // namespace korvan
