// Life10: the statistics of durations, longevity and fecundity of the individuals.
#include <cmath>
#include <string>

#include "engine/stage_statistics.h"
#include "engine/stats_fields.h"
#include "store/rules.h"
#include "text/numbers.h"
#include "text/short_text.h"

namespace korvan {

namespace {

// Sums of one group before the statistics rule.
struct Sums {
  double sum = 0, sumSquares = 0, n = 0;
};

}  // namespace

void StageStatsEngine::Life10() {
  Flow("Life10");
  auto& w = W.stageStats;
  const auto& c = W.cohort;
  const double tu = TimeUnit();
  const long n = c.CohortSize;
  const int mm = m();
  CountAdultFemales();

  // Longevity of every individual, of all, by sex.
  Sums all, bySex[4];
  w.LongevityAll.minimum = w.LongevityAll.maximum = 0;
  for (long s = 1; s <= 3; ++s) w.SexLongevity(s).minimum = w.SexLongevity(s).maximum = 0;
  bool firstOfSex[4] = {true, true, true, true};
  for (long i = 1; i <= n; ++i) {
    const double steps = FormLongevity(i);
    const double v = w.Longevity(i);
    AddDuration(steps, tu, all.sum, all.sumSquares);
    all.n += 1;
    if (i == 1 || v < w.LongevityAll.minimum) w.LongevityAll.minimum = v;
    if (v > w.LongevityAll.maximum) w.LongevityAll.maximum = v;
    const long s = SexIndex(c.IndividualSex(i));
    if (s == 0) continue;
    AddDuration(steps, tu, bySex[s].sum, bySex[s].sumSquares);
    bySex[s].n += 1;
    RoutineStat& st = w.SexLongevity(s);
    if (firstOfSex[s] || v < st.minimum) st.minimum = v;
    if (v > st.maximum) st.maximum = v;
    firstOfSex[s] = false;
  }
  W.lifeTable.LongevityCount = static_cast<int>(n + 1);
  ApplyStatisticsRule(w.LongevityAll, all.sum, all.sumSquares, all.n);
  for (long s = 1; s <= 3; ++s) ApplyStatisticsRule(w.SexLongevity(s), bySex[s].sum, bySex[s].sumSquares, bySex[s].n);

  // Stage durations: statistics over positive durations, ranges in time units.
  for (long j = 1; j <= mm; ++j) {
    Sums st, sx[4];
    bool firstPositive = true;
    for (long i = 1; i <= n; ++i) {
      const double d = c.StageDuration(i, j);
      if (d <= 0) continue;
      AddDuration(d, tu, st.sum, st.sumSquares);
      st.n += 1;
      if (firstPositive || d > w.StageMax(j)) w.StageMax(j) = d;
      if (firstPositive || d < w.StageMin(j)) w.StageMin(j) = d;
      firstPositive = false;
      const long s = SexIndex(c.IndividualSex(i));
      if (s == 0) continue;
      AddDuration(d, tu, sx[s].sum, sx[s].sumSquares);
      sx[s].n += 1;
    }
    ApplyStatisticsRule(w.Stage(j), st.sum, st.sumSquares, st.n);
    w.Stage(j).maximum = w.StageMax(j);
    w.Stage(j).minimum = w.StageMin(j);
    for (long s = 1; s <= 3; ++s) ApplyStatisticsRule(w.SexStage(s, j), sx[s].sum, sx[s].sumSquares, sx[s].n);
  }
  w.AdultMaxBySex(kSexF) = w.AdultMaxBySex(kSexM) = 0;
  for (long i = 1; i <= n; ++i) {
    const long s = SexIndex(c.IndividualSex(i));
    const double d = c.StageDuration(i, mm);
    if ((s == kSexF || s == kSexM) && d > w.AdultMaxBySex(s)) w.AdultMaxBySex(s) = d;
  }
  w.MaxFemaleAdultAge = CInt(w.AdultMaxBySex(kSexF));

  // Time over the stages a..b of those whose durations there are all positive, of all and by
  // sex (no stage a: nobody).
  auto stretchStatistics = [&](long a, long b, RoutineStat& all, auto&& bySex) {
    Sums st, sx[4];
    for (long i = 1; i <= n && a > 0; ++i) {
      double v = 0;
      if (!PositiveDurationSum(c, static_cast<int>(i), static_cast<int>(a), static_cast<int>(b), v)) continue;
      AddDuration(v, tu, st.sum, st.sumSquares);
      st.n += 1;
      const long s = SexIndex(c.IndividualSex(i));
      if (s == 0) continue;
      AddDuration(v, tu, sx[s].sum, sx[s].sumSquares);
      sx[s].n += 1;
    }
    ApplyStatisticsRule(all, st.sum, st.sumSquares, st.n);
    for (long s = 1; s <= 3; ++s) ApplyStatisticsRule(bySex(s), sx[s].sum, sx[s].sumSquares, sx[s].n);
  };

  // Time from birth to the end of each stage.
  for (long j = 1; j <= mm; ++j)
    stretchStatistics(1, j, w.Cumulative(j), [&](long s) -> RoutineStat& { return w.SexCumulative(s, j); });

  // The span between the two special stages.
  {
    int first = 0, last = 0;
    FindSpanStages(S, first, last);
    w.SpanFirstStage = first;
    w.SpanLastStage = last;
    stretchStatistics(first, last, w.Span, [&](long s) -> RoutineStat& { return w.SexSpan(s); });
  }

  // Fecundity by adult age: n counts every living female, the sums only eggs laid.
  w.MaxDailyFecundity = 0;
  w.MaxDailyFecundityIndividual = 0;
  w.AdultAgePeakMean = 0;
  w.AdultAgePeakAge = 0;
  w.AdultAgeMeanSum = 0;
  for (long t = 1; t <= w.MaxFemaleAdultAge; ++t) {
    double alive = 0, sum = 0, sumSquares = 0;
    for (long i = 1; i <= n; ++i) {
      if (!IsText(c.IndividualSex(i), 'F') || c.StageDuration(i, mm) < t) continue;
      alive += 1;
      const double f = c.Fecundity(i, t);
      if (f <= 0) continue;
      if (f > w.MaxDailyFecundity) {
        w.MaxDailyFecundity = f;
        w.MaxDailyFecundityIndividual = c.IndividualNo(i);
      }
      sum += f;
      sumSquares += f * f;
    }
    w.AdultAgeN(t) = alive;
    w.AdultAgeMean(t) = w.AdultAgeSD(t) = w.AdultAgeSE(t) = 0;
    if (alive >= 1) {
      w.AdultAgeMean(t) = sum / alive;
      if (w.AdultAgeMean(t) > w.AdultAgePeakMean) {
        w.AdultAgePeakMean = w.AdultAgeMean(t);
        w.AdultAgePeakAge = static_cast<int>(t - 1);
      }
      w.AdultAgeMeanSum += w.AdultAgeMean(t);
    }
    if (alive > 1) {
      const double D = sumSquares - sum * sum / alive;
      if (D >= 0) {
        const double variance = D / (alive - 1);
        w.AdultAgeSD(t) = std::sqrt(variance);
        w.AdultAgeSE(t) = w.AdultAgeSD(t) / std::sqrt(alive);
      }
    }
  }
  w.AdultAgeN(w.MaxFemaleAdultAge + 1) = 0;

  // Life-long fecundity of each female: all females (F), reproductive females (Fr).
  Sums fAll, fRep, units, daily;
  w.FecundityMaxList.clear();
  w.FecundityMinList.clear();
  w.FecundityMaxCount = w.FecundityMinCount = 0;
  bool firstRep = true;
  for (long i = 1; i <= n; ++i) {
    if (!IsText(c.IndividualSex(i), 'F')) continue;
    double total = 0, sq = 0;
    const long adult = CInt(c.StageDuration(i, mm));
    for (long t = 1; t <= adult; ++t) {
      const double f = c.Fecundity(i, t);
      if (f < 0) break;
      total += f;
      sq += f * f;
    }
    w.TotalFecundity(i) = total;
    fAll.sum += total;
    fAll.sumSquares += total * total;
    fAll.n += 1;
    daily.sum += total;
    daily.sumSquares += sq;
    if (total <= 0) continue;

    fRep.sum += total;
    fRep.sumSquares += total * total;
    fRep.n += 1;
    const std::string number = std::to_string(c.IndividualNo(i));
    if (firstRep || total > w.FecundityFr.maximum) {
      w.FecundityFr.maximum = total;
      w.FecundityMaxList = number;
      w.FecundityMaxCount = 1;
    } else if (total == w.FecundityFr.maximum) {
      w.FecundityMaxList += "," + number;
      ++w.FecundityMaxCount;
    }
    if (firstRep || total < w.FecundityFr.minimum) {
      w.FecundityFr.minimum = total;
      w.FecundityMinList = number;
      w.FecundityMinCount = 1;
    } else if (total == w.FecundityFr.minimum) {
      w.FecundityMinList += "," + number;
      ++w.FecundityMinCount;
    }
    firstRep = false;

    const double ou = static_cast<double>(w.OviUnits(i));
    if (ou > 0) w.DailyFecundityMean(i) = total / ou;
    w.DailyFecunditySE(i) = 0;
    if (ou > 1) {
      double variance = (sq - total * total / ou) / (ou - 1);
      if (variance < 0) variance = 0;
      w.DailyFecunditySE(i) = std::sqrt(variance / ou);
    }
    units.sum += ou;
    units.sumSquares += ou * ou;
    units.n += 1;
  }
  ApplyStatisticsRule(w.FecundityF, fAll.sum, fAll.sumSquares, fAll.n);
  ApplyStatisticsRule(w.FecundityFr, fRep.sum, fRep.sumSquares, fRep.n);
  ApplyStatisticsRule(w.OviUnitsStat, units.sum, units.sumSquares, units.n);
  if (daily.sum > 0) ApplyStatisticsRule(w.EggsPerOviUnit, daily.sum, daily.sumSquares, units.sum);
}

// The replicate's part: longevity of each individual and its mean, filed under the replicate.
void StageStatsEngine::Life10boot() {
  FlowEngine("Life10boot");
  auto& w = W.stageStats;
  const auto& c = W.cohort;
  const TimeUnitRule tu(TimeUnit());
  double sum = 0, sumSquares = 0;
  for (long i = 1; i <= c.CohortSize; ++i) {
    const double steps = FormLongevity(i);
    AddDuration(steps, tu, sum, sumSquares);
  }
  W.lifeTable.LongevityCount = c.CohortSize + 1;
  ApplyStatisticsRule(w.LongevityAll, sum, sumSquares, c.CohortSize);
  W.boot.sample.Longevity = w.LongevityAll.mean;
}

}  // namespace korvan
