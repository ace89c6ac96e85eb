// Life01: statistics of stage durations, whole cohort and by type; cumulative times from
// birth; deaths by stage and the sex rates; LastAge.
#include <cmath>
#include <algorithm>
#include <cstdlib>

#include "engine/life_table_engine.h"
#include "engine/stats_fields.h"
#include "store/rules.h"
#include "text/numbers.h"
#include "text/short_text.h"

namespace korvan {

void LifeTableEngine::Life01() {
  FlowEngine("Life01");
  typeListsStand_ = false;
  Life01Gosub100();
  Life01Gosub290();
  // Both statistics by type run over the same cohort: the second takes the lists of the
  // individuals of each type that the first made.
  if (W.run.IsResamplingFlag == "y") {
    Life01Gosub570boot();
    typeListsStand_ = true;
    Life01Gosub790Boot();
  } else {
    Life01Gosub570();
    typeListsStand_ = true;
    Life01Gosub790();
  }
  typeListsStand_ = false;
}

void LifeTableEngine::Life01Gosub100() {
  FlowEngine("Life01Gosub100");
  auto& L = W.lifeTable;
  const auto& C = W.cohort;
  const int m = S.header.StageCount;
  const int N = C.CohortSize;
  const TimeUnitRule tu(S.settings.TimeUnit);
  const double boot = W.run.Boot;
  for (int j = 1; j <= m; ++j) {
    int count = N;
    double s = 0, q = 0;
    for (int i = 1; i <= N; ++i) {
      const double D = C.StageDuration(i, j);
      if (D > 0) {
        AddDuration(D, tu, s, q);
      } else {
        --count;
      }
    }
    L.StageSurvivors(j) = count;
    if (!ApplyStatistics(s, q, count, L.StageMean(j), L.StageVariance(j), L.StageSD(j))) continue;
    if (boot > 0) {
      W.boot.sample.StageMean(j) = L.StageMean(j);
    } else if (BasicPass()) {
      Keep().lifeTable.OriginalStageMean(j) = L.StageMean(j);
      Keep().lifeTable.OriginalStageSurvivors(j) = count;
    }
  }
}

void LifeTableEngine::Life01Gosub290() {
  FlowEngine("Life01Gosub290");
  auto& L = W.lifeTable;
  const auto& C = W.cohort;
  const int m = S.header.StageCount;
  const int N = C.CohortSize;
  const TimeUnitRule tu(S.settings.TimeUnit);
  const double boot = W.run.Boot;
  // The time from birth to the end of each stage, D(1) + ... + D(j), as far as the durations
  // stay positive (past that, the sum as far as it came), formed once per individual; each
  // stage's sums still take the individuals in their order. A stage count beyond the bounds
  // meets its fault first.
  if (m > kMaxStage) static_cast<void>(L.CumSurvivors(m));
  int counts[kMaxStage + 1] = {};
  double sums[kMaxStage + 1] = {}, squares[kMaxStage + 1] = {};
  for (int i = 1; i <= N; ++i) {
    double c = 0;
    bool whole = true;
    for (int j = 1; j <= m; ++j) {
      if (whole) {
        const double D = C.StageDuration(i, j);
        if (D <= 0)
          whole = false;
        else
          c += D;
      }
      L.CumulativeDuration(i, j) = c;
      if (!whole) continue;
      AddDuration(c, tu, sums[j], squares[j]);
      ++counts[j];
    }
  }
  for (int j = 1; j <= m; ++j) {
    const int count = counts[j];
    const double s = sums[j], q = squares[j];
    L.CumSurvivors(j) = count;
    if (BasicPass()) Keep().lifeTable.OriginalCumSurvivors(j) = count;
    if (!ApplyStatistics(s, q, count, L.CumMean(j), L.CumVariance(j), L.CumSD(j))) continue;
    if (boot > 0) {
      W.boot.sample.CumMean(j) = L.CumMean(j);
    } else if (BasicPass()) {
      Keep().lifeTable.OriginalCumMean(j) = L.CumMean(j);
      if (j == m - 1) Keep().lifeTable.PreadultMeanTime = L.CumMean(j);
    }
  }

  L.PreadultSurvival = static_cast<double>(L.CumSurvivors(m - 1 < 0 ? 0 : m - 1)) / N;
  if (boot > 0)
    W.boot.sample.PreadultSurvival = L.PreadultSurvival;
  else if (BasicPass())
    Keep().lifeTable.PreadultSurvivalOriginal = L.PreadultSurvival;

  // LastAge: MaxLongevity - 1 as a rule, and always in a Basic Run, where the longevity
  // statistics haven't run yet; once their loop has left a count above the cohort, the longest
  // time to the end of the adult stage less 1.
  double longest = 0;
  for (int i = 1; i <= N; ++i) longest = std::max(longest, std::fabs(L.CumulativeDuration(i, m)));
  if (L.LongevityCount > N)
    W.tables.LastAge = CInt(longest) - 1;
  else
    W.tables.LastAge = C.MaxLongevity - 1;
}

// Statistics by type of the duration of each stage, or (cumulative) of the time from birth to
// the end of each stage, over the individuals whose durations there are all positive; the
// cumulative form also notes each one's preadult time at the last preadult stage. The
// replicate's form clears the fields first and files the means under the replicate.
void LifeTableEngine::TypeStatistics(bool cumulative, bool clearFirst) {
  auto& L = W.lifeTable;
  const auto& C = W.cohort;
  const int m = S.header.StageCount;
  const int T = S.header.TypeCount;
  const int N = C.CohortSize;
  const TimeUnitRule tu(S.settings.TimeUnit);
  const double boot = W.run.Boot;
  auto& counts = cumulative ? L.TypeCumCount : L.TypeStageCount;
  auto& means = cumulative ? L.TypeCumMean : L.TypeStageMean;
  auto& variances = cumulative ? L.TypeCumVariance : L.TypeStageVariance;
  auto& sds = cumulative ? L.TypeCumSD : L.TypeStageSD;
  if (clearFirst) {
    counts.Fill(0);
    means.Fill(0);
    variances.Fill(0);
    sds.Fill(0);
  }
  // The cumulative times of each individual, D(1), D(1) + D(2), ... as far as its durations
  // stay positive, are formed once instead of once per type and stage: the same sums.
  static thread_local double runningSum[kMaxIndividual + 1][kMaxStage + 1];
  static thread_local int positiveTo[kMaxIndividual + 1];
  const bool formed = cumulative && N <= kMaxIndividual && m <= kMaxStage;
  if (formed) {
    for (int i = 1; i <= N; ++i) {
      double v = 0;
      positiveTo[i] = 0;
      for (int k = 1; k <= m; ++k) {
        const double D = C.StageDuration(i, k);
        if (D <= 0) break;
        v += D;
        runningSum[i][k] = v;
        positiveTo[i] = k;
      }
    }
  }
  // The individuals of each type, in their order, found once instead of once per stage.
  static thread_local int members[kMaxType + 1][kMaxIndividual + 1];
  static thread_local int memberCount[kMaxType + 1];
  const bool listed = N <= kMaxIndividual && T <= kMaxType;
  if (listed && !typeListsStand_) {
    for (int t = 1; t <= T; ++t) {
      const std::string& code = S.header.TypeCode(t);
      memberCount[t] = 0;
      for (int i = 1; i <= N; ++i)
        if (SameText(C.IndividualSex(i), code)) members[t][memberCount[t]++] = i;
    }
  }
  for (int t = 1; t <= T; ++t) {
    const std::string& code = S.header.TypeCode(t);
    // Each stage's sums run over the individuals in their order; the individuals are taken
    // one after the other and feed all their stages at once.
    int stageCount[kMaxStage + 1] = {};
    double stageSum[kMaxStage + 1] = {}, stageSquares[kMaxStage + 1] = {};
    const int stages = m < kMaxStage ? m : static_cast<int>(kMaxStage);
    auto add = [&](int i) {
      for (int j = 1; j <= stages; ++j) {
        double v = 0;
        if (formed) {
          if (positiveTo[i] < j) break;
          v = runningSum[i][j];
        } else if (!cumulative) {
          v = C.StageDuration(i, j);
          if (v <= 0) continue;
        } else if (!PositiveDurationSum(C, i, 1, j, v)) {
          continue;
        }
        AddDuration(v, tu, stageSum[j], stageSquares[j]);
        ++stageCount[j];
        if (cumulative && j == m - 1) L.PreadultTime(i) = TimeUnitToDays(v, tu);
      }
    };
    if (listed) {
      for (int k = 0; k < memberCount[t]; ++k) add(members[t][k]);
    } else {
      for (int i = 1; i <= N; ++i)
        if (SameText(C.IndividualSex(i), code)) add(i);
    }
    for (int j = 1; j <= m; ++j) {
      const int count = stageCount[j];
      const double s = stageSum[j], q = stageSquares[j];
      counts(t, j) = count;
      ApplyStatistics(s, q, count, means(t, j), variances(t, j), sds(t, j));
      if (boot > 0) {
        auto& rec = W.boot.sample;
        (cumulative ? rec.TypeCumMean : rec.TypeStageMean)(t, j) = means(t, j);
      } else if (BasicPass()) {
        auto& R = Keep().lifeTable;
        (cumulative ? R.OriginalTypeCumCount : R.OriginalTypeStageCount)(t, j) = count;
        (cumulative ? R.OriginalTypeCumMean : R.OriginalTypeStageMean)(t, j) = means(t, j);
      }
    }
  }
}

// Deaths by stage and the sex rates, from the counts of the stage statistics.
void LifeTableEngine::DeathsAndSexRates() {
  auto& L = W.lifeTable;
  const int m = S.header.StageCount;
  const int N = W.cohort.CohortSize;
  const auto& Sv = L.StageSurvivors;
  L.StageDeaths(1) = N - Sv(1);
  L.StageDeathsRest(1) = N - L.StageDeaths(1);
  for (int j = 2; j <= m - 1; ++j) {
    L.StageDeaths(j) = Sv(j - 1) - Sv(j);
    L.StageDeathsRest(j) = Sv(j - 1) - L.StageDeaths(j);
  }
  L.FemaleCount = L.TypeStageCount(1, m);
  L.MaleCountAdult = L.TypeStageCount(2, m);
  L.NTypeCountAdult = N - L.FemaleCount - L.MaleCountAdult;
  L.FemaleRate = static_cast<double>(L.FemaleCount) / N;
  L.MaleRate = static_cast<double>(L.MaleCountAdult) / N;
  L.NTypeRate = static_cast<double>(L.NTypeCountAdult) / N;
  if (L.FemaleCount != 0) {
    const double f = L.FemaleCount, males = L.MaleCountAdult;
    L.MalesPerFemale = males / f;
    L.FemaleShare = f / (f + males);
    L.MaleShare = males / (f + males);
  }
  L.StageDeaths(m) = L.FemaleCount;
  L.StageDeaths(m + 1) = L.MaleCountAdult;
  L.StageDeathsRest(m) = 0;
  L.StageDeathsRest(m + 1) = 0;
}

void LifeTableEngine::Life01Gosub570() {
  FlowEngine("Life01Gosub570");
  TypeStatistics(false, false);
  DeathsAndSexRates();
}

void LifeTableEngine::Life01Gosub570boot() {
  FlowEngine("Life01Gosub570boot");
  TypeStatistics(false, true);
  DeathsAndSexRates();
}

void LifeTableEngine::Life01Gosub790() {
  FlowEngine("Life01Gosub790");
  TypeStatistics(true, false);
}

void LifeTableEngine::Life01Gosub790Boot() {
  FlowEngine("Life01Gosub790Boot");
  TypeStatistics(true, true);
}

}  // namespace korvan
