// Shared rules of the stage statistics, the preadult duration, oviposition days, fecundity by
// age from birth and the oviposition period.
#include "engine/stage_statistics.h"

#include <cmath>
#include <cstring>

#include "engine/female_days.h"
#include "store/rules.h"
#include "text/numbers.h"
#include "text/short_text.h"

namespace korvan {

double ReportNumber(double v) { return std::fabs(v) >= 10000 ? CIntValue(v) : RoundDisplay(v, 4); }

long SexIndex(const std::string& sex) {
  if (sex == "F") return kSexF;
  if (sex == "M") return kSexM;
  if (sex == "N") return kSexN;
  return 0;
}

void ApplyStatisticsRule(RoutineStat& s, double sum, double sumSquares, double n) {
  s.n = n;
  s.sum = sum;
  s.sumSquares = sumSquares;
  if (n <= 0) return;
  s.mean = sum / n;
  if (n <= 1) return;
  const StatResult r = StatisticsRule(sum, sumSquares, n);
  s.variance = r.variance;
  s.sd = r.sd;
  s.se = r.se;
}

namespace {

// females[k] += 1, eggs[k] += f[k], squares[k] += f[k] * f[k] for k < days, two ages at a
// time: each lane is the addition of its own age, rounded as one addition alone is.
void AddFemaleDays(const double* f, long days, double* females, double* eggs, double* squares) {
  using Pair = double __attribute__((vector_size(16)));
  const Pair one = {1.0, 1.0};
  long k = 0;
  for (; k + 2 <= days; k += 2) {
    Pair e, n, s, q;
    std::memcpy(&e, f + k, sizeof e);
    std::memcpy(&n, females + k, sizeof n);
    std::memcpy(&s, eggs + k, sizeof s);
    std::memcpy(&q, squares + k, sizeof q);
    n += one;
    s += e;
    const Pair ee = e * e;
    q += ee;
    std::memcpy(females + k, &n, sizeof n);
    std::memcpy(eggs + k, &s, sizeof s);
    std::memcpy(squares + k, &q, sizeof q);
  }
  for (; k < days; ++k) {
    females[k] += 1;
    eggs[k] += f[k];
    squares[k] += f[k] * f[k];
  }
}

}  // namespace

int StageStatsEngine::m() const { return S.header.StageCount; }

// The longevity of individual i: its durations up to the stage of its death, in time units
// and in rate units.
double StageStatsEngine::FormLongevity(long i) {
  auto& w = W.stageStats;
  auto& c = W.cohort;
  DurationSums* kept = KeptDurations(i);
  if (kept && kept->longevityKnown) {
    w.LongevitySteps(i) = kept->steps;
    w.Longevity(i) = kept->longevity;
    return kept->steps;
  }
  double steps = 0;
  for (long j = 1; j <= m(); ++j) {
    const double d = c.StageDuration(i, j);
    steps += std::fabs(d);
    if (d < 0) break;
  }
  w.LongevitySteps(i) = steps;
  w.Longevity(i) = TimeUnitToDays(steps, TimeUnit());
  if (kept) {
    kept->steps = steps;
    kept->longevity = w.Longevity(i);
    kept->longevityKnown = true;
  }
  return steps;
}

// The sums of the durations of the pool individual whose rows stand at place i of a sample,
// kept in the workspace, or nullptr.
DurationSums* StageStatsEngine::KeptDurations(long i) {
  auto& c = W.cohort;
  const int poolSize = S.pool.OriginalCohortSize;
  if (i < 1 || i > kMaxIndividual) return nullptr;
  const int k = c.RowSource(i);
  if (k < 1 || k > poolSize || poolSize > kMaxIndividual) return nullptr;
  if (c.DurationsKept.size() != static_cast<std::size_t>(poolSize) + 1)
    c.DurationsKept.assign(static_cast<std::size_t>(poolSize) + 1, DurationSums{});  // once a workspace
  return &c.DurationsKept[static_cast<std::size_t>(k)];
}
double StageStatsEngine::TimeUnit() const { return S.settings.TimeUnit; }

// Nf: the individuals that reached the adult female stage.
void StageStatsEngine::CountAdultFemales() {
  auto& w = W.stageStats;
  w.AdultFemaleCount = 0;
  for (long i = 1; i <= W.cohort.CohortSize; ++i)
    if (IsText(W.cohort.IndividualSex(i), 'F')) ++w.AdultFemaleCount;
}

// The time spent before the adult stage: positive durations of the preadult stages, and the
// magnitude of the one in which the individual died.
void StageStatsEngine::PreadultDurations() {
  auto& w = W.stageStats;
  const auto& c = W.cohort;
  for (long i = 1; i <= c.CohortSize; ++i) {
    DurationSums* kept = KeptDurations(i);
    if (kept && kept->preadultKnown) {
      w.PreadultDuration(i) = kept->preadult;
      continue;
    }
    double p = 0;
    for (long j = 1; j <= m() - 1; ++j) {
      const double d = c.StageDuration(i, j);
      if (d > 0) {
        p += d;
      } else {
        p += std::fabs(d);
        break;
      }
    }
    w.PreadultDuration(i) = p;
    if (kept) {
      kept->preadult = p;
      kept->preadultKnown = true;
    }
  }
}

void StageStatsEngine::PreadultMean() {
  Flow("PreadultMean");
  auto& w = W.stageStats;
  const auto& c = W.cohort;
  CountAdultFemales();
  PreadultDurations();
  double sum = 0;
  w.MaxFemaleLongevity = 0;
  for (long i = 1; i <= c.CohortSize; ++i) {
    if (!IsText(c.IndividualSex(i), 'F')) continue;
    sum += w.PreadultDuration(i);
    // The adult duration enters with its sign as it stands in the record.
    w.FemaleLongevity(i) = c.StageDuration(i, m()) + w.PreadultDuration(i);
    if (w.FemaleLongevity(i) > w.MaxFemaleLongevity) w.MaxFemaleLongevity = w.FemaleLongevity(i);
  }
  if (w.AdultFemaleCount != 0) w.PreadultMeanFemale = sum / w.AdultFemaleCount;
}

void StageStatsEngine::CountOvipositionDays() {
  FlowEngine("CountOvipositionDays");
  auto& w = W.stageStats;
  const auto& c = W.cohort;
  CountAdultFemales();
  if (w.AdultFemaleCount == 0) return;
  const double tu = TimeUnit();
  double sum = 0, sumSquares = 0, eggs = 0;
  w.ReproductiveFemaleCount = 0;
  for (long i = 1; i <= c.CohortSize; ++i) {
    if (!IsText(c.IndividualSex(i), 'F')) continue;
    // Her eggs go into the running sum one by one, or at once when every partial sum is a
    // whole number either way.
    FemaleDaySums own;
    FemaleDaySums* known = KeptDaySums(W.cohort, static_cast<int>(i));
    if (known && known->oviKnown && known->wholeEggs && WholeAndModerate(eggs))
      eggs += known->eggs;
    else
      WalkOviDays(c, static_cast<int>(i), m(), eggs, known ? *known : own);
    const long units = known ? known->units : own.units;
    w.OviUnits(i) = units;
    // Only three time units count as fractions here; 0.2 is a plain factor.
    double days;
    if (tu == 0.3)
      days = units / 3.0;
    else if (tu == 0.16)
      days = units / 6.0;
    else if (tu == 0.25)
      days = units / 4.0;
    else
      days = units * tu;
    w.OviDays(i) = days;
    if (days > 0) {
      ++w.ReproductiveFemaleCount;
      sum += days;
      sumSquares += days * days;
    }
  }
  w.TotalOviDays = sum;
  w.TotalFemaleEggs = eggs;
  if (w.TotalOviDays != 0 && BasicPass()) Keep().stageStats.FecundityPerOviDay = eggs / w.TotalOviDays;
  w.NoOviDaysFlag = w.ReproductiveFemaleCount == 0 ? "Yes" : "No";
  ApplyStatisticsRule(w.OviDaysStat, sum, sumSquares, w.ReproductiveFemaleCount);
  W.boot.sample.OviDays = w.OviDaysStat.mean;
  if (c.CohortSize != 0) w.ReproductiveFraction = static_cast<double>(w.ReproductiveFemaleCount) / c.CohortSize;
}

void StageStatsEngine::AgeFecundityFromBirth() {
  Flow("AgeFecundityFromBirth");
  AgeFecundityFromBirthCore(true);
  WriteSDandSEofMx();
}

void StageStatsEngine::AgeFecundityFromBirthBoot() {
  FlowEngine("AgeFecundityFromBirthBoot");
  PreadultDurations();
  AgeFecundityFromBirthCore(false);
}

// Fecundity moved from each female's adult calendar to the age axis from birth, the ages of
// her first and last oviposition, and per age the mean eggs over the living individuals (m(x))
// and over the living females (f(x,female)) with their SD and SE. The whole-cohort form also
// counts "M" and "N" among the living and keeps each female's row by age for the report.
void StageStatsEngine::AgeFecundityFromBirthCore(bool wholeCohort) {
  auto& w = W.stageStats;
  const auto& c = W.cohort;
  const double tu = TimeUnit();
  const long lastAge = W.tables.LastAge;
  for (long x = 0; x <= lastAge + 1; ++x) {
    w.AliveAtAge(x) = 0;
    w.FemalesAtAge(x) = 0;
    w.EggsAtAge(x) = 0;
    w.EggSquaresAtAge(x) = 0;
    w.MxMean(x) = w.MxSD(x) = w.MxSE(x) = 0;
    w.FxMean(x) = w.FxSD(x) = w.FxSE(x) = 0;
  }
  // The living by age: each individual is alive from age 0 to its last age; the counts of
  // the ages are added once all lives are known (whole numbers: the same sums).
  static thread_local int endsAt[kMaxAge + 2];
  long oldest = -1;
  for (long i = 1; i <= c.CohortSize; ++i) {
    const double steps = FormLongevity(i);
    const bool female = IsText(c.IndividualSex(i), 'F');
    if (!female && !wholeCohort) continue;
    const long lastAlive = CInt(w.Longevity(i) / tu - 1);
    if (lastAlive > kMaxAge) {
      for (long x = 0; x <= lastAlive; ++x) w.AliveAtAge(x) += 1;  // beyond the ages: the bound ends the run
    } else if (lastAlive >= 0) {
      for (; oldest < lastAlive; ++oldest) endsAt[oldest + 1] = 0;
      endsAt[lastAlive] += 1;
    }
    if (!female) continue;

    if (wholeCohort)
      for (long x = 0; x <= lastAge + 1; ++x) w.FecundityFromBirth(i, x) = 0;
    const long start = CInt(w.PreadultDuration(i));
    const long adult = CInt(c.StageDuration(i, m()));
    long first = -1, last = -1;
    if (!wholeCohort && start >= 0 && adult >= 1 && adult <= kMaxAge && start + adult - 1 <= kMaxAge + 1) {
      // Her days and the ages they fall on are within the rows: the days before the closing
      // mark are found first, then added age by age in one sweep (each age's sums take the
      // females in their order as before).
      const double* f = &c.Fecundity(i, 1);
      const long days = DaysBeforeMark(W.cohort, static_cast<int>(i), m(), adult);
      double* females = &w.FemalesAtAge(start);
      double* eggs = &w.EggsAtAge(start);
      double* squares = &w.EggSquaresAtAge(start);
      AddFemaleDays(f, days, females, eggs, squares);
      for (long k = 0; k < days; ++k)
        if (f[k] > 0) {
          first = start + k;
          break;
        }
      for (long k = days - 1; first >= 0 && k >= 0; --k)
        if (f[k] > 0) {
          last = start + k;
          break;
        }
    } else {
      for (long t = 1; t <= adult; ++t) {
        const double f = c.Fecundity(i, t);
        if (f < 0) break;
        const long x = start + t - 1;
        w.FemalesAtAge(x) += 1;
        if (wholeCohort) w.FecundityFromBirth(i, x) = f;
        w.EggsAtAge(x) += f;
        w.EggSquaresAtAge(x) += f * f;
        if (f > 0) {
          if (first < 0) first = x;
          last = x;
        }
      }
    }
    if (first < 0) {
      w.FirstOviAgeSteps(i) = w.LastOviAgeSteps(i) = 0;
      w.FirstOviAge(i) = w.LastOviAge(i) = 0;
      w.PostOviSteps(i) = 0;
      continue;
    }
    w.FirstOviAgeSteps(i) = static_cast<double>(first);
    w.LastOviAgeSteps(i) = static_cast<double>(last);
    w.PostOviSteps(i) = steps - static_cast<double>(last) - 1;
    w.FirstOviAge(i) = TimeUnitToDays(static_cast<double>(first), tu);
    w.LastOviAge(i) = TimeUnitToDays(static_cast<double>(last), tu);
  }
  for (long x = oldest, alive = 0; x >= 0; --x) {
    alive += endsAt[x];
    w.AliveAtAge(x) += static_cast<double>(alive);
  }
  for (long x = 0; x <= lastAge; ++x) {
    if (w.EggsAtAge(x) <= 0) continue;
    RoutineStat mx, fx;
    ApplyStatisticsRule(mx, w.EggsAtAge(x), w.EggSquaresAtAge(x), w.AliveAtAge(x));
    ApplyStatisticsRule(fx, w.EggsAtAge(x), w.EggSquaresAtAge(x), w.FemalesAtAge(x));
    w.MxMean(x) = mx.mean, w.MxSD(x) = mx.sd, w.MxSE(x) = mx.se;
    w.FxMean(x) = fx.mean, w.FxSD(x) = fx.sd, w.FxSE(x) = fx.se;
  }
}

// "_2c_Fig_Mx_SD_SE.txt" and "_2d_Fig_Fxj_SD_SE.txt"; none under "Nooutput", which keeps the
// main output only.
void StageStatsEngine::WriteSDandSEofMx() {
  Flow("WriteSDandSEofMx");
  if (S.options.OutputLevel == "Nooutput") return;
  const auto& w = W.stageStats;
  const double tu = TimeUnit();
  const long lastAge = W.tables.LastAge;
  {
    TextFile f(OutputName(S, "_2c_Fig_Mx_SD_SE.txt"));
    f.Write("Data of age-specific fecundity m(x), SD and SE of m(x)");
    f.RawText("age, individuals, m(x), SD of m(x), SE of m(x)\n");
    for (long x = 0; x <= lastAge; ++x)
      f.Write(TimeUnitToDays(static_cast<double>(x), tu), w.AliveAtAge(x), w.MxMean(x), w.MxSD(x), w.MxSE(x));
    f.Write(TimeUnitToDays(static_cast<double>(lastAge + 1), tu), 0, 0, 0, 0);
  }
  TextFile f(OutputName(S, "_2d_Fig_Fxj_SD_SE.txt"));
  f.Write("Data of age-specific f(x,j), SD and SE of f(x,j)");
  f.RawText("age, females, f(x,j), SD of f(x,j), SE of f(x,j)\n");
  for (long x = 0; x <= lastAge; ++x)
    if (w.FemalesAtAge(x) > 0)
      f.Write(TimeUnitToDays(static_cast<double>(x), tu), w.FemalesAtAge(x), w.FxMean(x), w.FxSD(x), w.FxSE(x));
  f.Write(TimeUnitToDays(static_cast<double>(lastAge + 1), tu), 0, 0, 0, 0);
}

void StageStatsEngine::CountOvipositionPeriod() {
  Flow("CountOvipositionPeriod");
  CountOvipositionPeriodCore();
}

void StageStatsEngine::CountOvipositionPeriodBoot() {
  FlowEngine("CountOvipositionPeriodBoot");
  CountOvipositionPeriodCore();
}

// From the first to the last oviposition, both ends counted. The two ages are in rate units
// already and the length is converted once more, so with a time unit of 0.5 it is
// (difference in days + 1) / 2.
void StageStatsEngine::CountOvipositionPeriodCore() {
  auto& w = W.stageStats;
  const auto& c = W.cohort;
  if (w.ReproductiveFemaleCount == 0) return;
  const double tu = TimeUnit();
  double sum = 0, sumSquares = 0, n = 0;
  for (long i = 1; i <= c.CohortSize; ++i) {
    if (!IsText(c.IndividualSex(i), 'F') || w.OviUnits(i) <= 0) continue;
    const double span = w.LastOviAge(i) - w.FirstOviAge(i) + 1;
    double period;
    if (tu == 0.5)
      period = span / 2;
    else if (tu == 0.3)
      period = span / 3;
    else if (tu == 0.16)
      period = span / 6;
    else if (tu == 0.25)
      period = span / 4;
    else
      period = span * tu;
    w.OviPeriod(i) = period;
    if (period > 0) {
      sum += period;
      sumSquares += period * period;
      n += 1;
    }
  }
  w.NoOviPeriodFlag = n == 0 ? "Yes" : "No";
  ApplyStatisticsRule(w.OviPeriodStat, sum, sumSquares, n);
  W.boot.sample.OviPeriod = w.OviPeriodStat.mean;
  w.OviPeriodMeanRounded = static_cast<std::int16_t>(CInt(w.OviPeriodStat.mean));
}

}  // namespace korvan
