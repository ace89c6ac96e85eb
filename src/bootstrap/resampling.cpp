#include "bootstrap/resampling.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "input/data_file_reader.h"
#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {
namespace {

// A 32-bit integer field takes a sum rounded anew after each addition.
std::int32_t AddRounded(std::int32_t sum, double value) { return CInt(static_cast<double>(sum) + value); }

std::string SampleText(double boot) { return FullPrecision(boot); }

}  // namespace

int DrawIndividual(UniformGenerator& gen, int N) {
  if (N < 1) throw ProgramEnd{"The bootstrap pool holds no individual.", "Error in bootstrap"};
  for (;;) {
    const double k = CIntValue(gen.Next() * N + 0.5);
    if (k >= 1 && k <= N) return static_cast<int>(k);
  }
}

void Resampling::cmdBoot03() {
  Flow("cmdBoot03");
  const long b = SampleNo();
  if (S.boot.SameBootstrap == "Yes") {
    BootstrapSameboots();
    // A repeated sample is labelled by the plain test; InfertileCriterion plays no part.
    const bool noEggs = W.boot.SampleFecunditySum == 0;
    bool ineffective = noEggs;
    if (S.options.MatingMode == "Yes") ineffective = S.boot.BootNm(b) == 0 || noEggs;
    S.boot.BootEffectLabel(b) = ineffective ? kLabelIneffective : kLabelEffective;
  } else {
    BootstrapFirstTime();
  }
}

bool Resampling::IsEffectiveDraw() const {
  const long b = SampleNo();
  const int c = S.boot.InfertileCriterion;
  const bool eggs = W.boot.SampleFecunditySum > 0;
  if (S.options.MatingMode == "Yes") return S.boot.BootNf(b) >= c && S.boot.BootNm(b) >= c && eggs;
  return S.boot.BootNf(b) >= c && eggs;
}

void Resampling::BootstrapFirstTime() {
  Flow("BootstrapFirstTime");
  const long b = SampleNo();
  gen_.SeedSample(S.boot.RunSeed, b);
  for (;;) {
    DrawSampleOnce();
    if (IsEffectiveDraw()) {
      S.boot.BootEffectLabel(b) = kLabelEffective;
      S.boot.BootListMark(b) = kMarkEffectiveList;
      PrepareSampleForEngine();
      return;
    }
    if (S.boot.EffectiveOnly != "Yes") {
      S.boot.BootEffectLabel(b) = kLabelIneffective;
      S.boot.BootListMark(b) = kMarkIneffectiveList;
      return;
    }
    // Only effective samples are wanted: the same sample number is drawn again, without end.
  }
}

void PoolSummary::Build(const SessionStore& S) {
  const Pool& pool = S.pool;
  const int N = pool.OriginalCohortSize;
  const int m = S.header.StageCount;
  individuals.assign(static_cast<std::size_t>(std::max(N, 0) + 1), PoolEntry{});
  if (N < 1 || N > kMaxIndividual || m < 1 || m > kMaxStage) return;  // the copy day by day meets the fault
  for (int k = 1; k <= N; ++k) {
    PoolEntry& p = individuals[static_cast<std::size_t>(k)];
    const std::string& sex = pool.OriginalSex(k);
    p.code = sex.size() == 1 ? sex[0] : '?';
    // The longevity as PrepareSampleForEngine sums it, rounded at each stage up to the death.
    try {
      p.longevity = TotalLongevityOf(pool.OriginalStageDuration, k, m);
      p.longevityKnown = true;
    } catch (const OverflowFault&) {
      p.longevityKnown = false;  // the sample's own sum meets the fault
    }
    if (p.code != 'F') {
      p.plain = true;
      continue;
    }
    const double d = pool.OriginalStageDuration(k, m);
    p.critical = d >= S.settings.CriticalFemaleAge;
    // The days of the copy, as its loop counts them (day <= d + 1), within the array.
    int days = 0;
    while (days + 1 <= d + 1) {
      if (days + 1 > kMaxAge) {
        days = -1;
        break;
      }
      ++days;
    }
    if (days < 0) continue;  // an index beyond the bound: the copy day by day ends the run
    p.fecundityDays = days;
    // The sum of her eggs is rounded after each day; whole, non-negative numbers of eggs of
    // moderate size keep every partial sum exact, so it may be added at once.
    bool whole = true;
    double eggs = 0;
    for (int day = 1; day <= days; ++day) {
      const double e = pool.OriginalFecundity(k, day);
      if (e > 0) p.laid = true;
      if (day <= d) {
        if (!(e >= 0 && e <= 2147483647.0 && e == std::floor(e))) whole = false;
        eggs += e;
      }
    }
    p.eggs = eggs;
    p.plain = whole;
  }
}

// The copy of an individual of the plain case (see PoolSummary). False: not plain, nothing done.
bool Resampling::CopyPlainIndividual(int position, int k) {
  if (!pool_ || k < 1 || static_cast<std::size_t>(k) >= pool_->individuals.size()) return false;
  const PoolEntry& p = pool_->individuals[static_cast<std::size_t>(k)];
  if (!p.plain) return false;
  const long b = SampleNo();
  BootstrapRecord& R = S.boot;
  Cohort& C = W.cohort;
  const Pool& pool = S.pool;
  const int m = S.header.StageCount;
  R.BootIndividuals(position, b) = static_cast<std::int16_t>(k);
  const std::string& sex = pool.OriginalSex(k);
  C.IndividualNo(position) = position;
  C.RowSource(position) = k;
  if (C.IndividualSex(position) != sex) C.IndividualSex(position) = sex;
  // Rows are stored day after day: the checked first and last entries bound the copy.
  std::memcpy(&C.StageDuration(position, 1), &pool.OriginalStageDuration(k, 1),
              static_cast<std::size_t>(&C.StageDuration(position, m) - &C.StageDuration(position, 1) + 1) *
                  sizeof(double));
  CopyConsumption(position, k);
  if (p.code == 'F') {
    if (p.critical) R.BootCANf(b) += 1;
    if (p.fecundityDays > 0) {
      std::memcpy(&C.Fecundity(position, 1), &pool.OriginalFecundity(k, 1),
                  static_cast<std::size_t>(&C.Fecundity(position, p.fecundityDays) - &C.Fecundity(position, 1) + 1) *
                      sizeof(double));
    }
    W.boot.SampleFecunditySum = AddRounded(W.boot.SampleFecunditySum, p.eggs);
    if (p.laid) {
      R.BootNfr(b) += 1;
      R.BootNfrReal(b) += 1;
    }
    W.boot.SampleIndividualFecundity(position) = pool.OriginalTotalFecundity(k);
    R.BootNf(b) += 1;
  } else {
    W.boot.SampleIndividualFecundity(position) = 0;
    if (p.code == 'M') R.BootNm(b) += 1;
    if (p.code == 'N') R.BootNn(b) += 1;
  }
  return true;
}

void Resampling::DrawSampleOnce() {
  const long b = SampleNo();
  BootstrapRecord& R = S.boot;
  R.BootNm(b) = 0;
  R.BootNn(b) = 0;
  R.BootNf(b) = 0;
  R.BootNfr(b) = 0;
  R.BootNfrReal(b) = 0;
  R.BootCANf(b) = 0;
  W.boot.SampleFecunditySum = 0;
  predation_ = S.options.PredationPresent == "Yes";
  const int N = S.pool.OriginalCohortSize;
  const int n = R.BootSampleSize;
  for (int position = 1; position <= n; ++position) {
    const int k = DrawIndividual(gen_, N);
    if (!CopyPlainIndividual(position, k)) CopyIndividual(position, k, false);
  }
}

// Copies individual k of the pool to a position of the sample in hand and counts it.
void Resampling::CopyIndividual(int position, int k, bool stopAtDeath) {
  const long b = SampleNo();
  BootstrapRecord& R = S.boot;
  Cohort& C = W.cohort;
  const Pool& pool = S.pool;
  const int m = S.header.StageCount;
  // A number from a record beyond the pool's size ends the run as an index beyond a bound.
  if (k < 1 || k > pool.OriginalCohortSize) throw SubscriptFault(pool.OriginalSex.Name());
  R.BootIndividuals(position, b) = static_cast<std::int16_t>(k);
  const std::string& sex = pool.OriginalSex(k);
  const char code = sex.size() == 1 ? sex[0] : '?';  // "F", "M" or "N"
  C.IndividualNo(position) = position;
  C.RowSource(position) = stopAtDeath ? 0 : k;  // a copy cut at the death is not her whole row
  if (C.IndividualSex(position) != sex) C.IndividualSex(position) = sex;
  for (int j = 1; j <= m; ++j) {
    const double d = pool.OriginalStageDuration(k, j);
    C.StageDuration(position, j) = d;
    if (stopAtDeath && d < 0) break;
  }
  CopyConsumption(position, k);
  if (code == 'F') {
    const double d = pool.OriginalStageDuration(k, m);
    if (d >= S.settings.CriticalFemaleAge) R.BootCANf(b) += 1;
    for (int day = 1; day <= d + 1; ++day) {
      const double eggs = pool.OriginalFecundity(k, day);
      C.Fecundity(position, day) = eggs;
      if (day <= d) W.boot.SampleFecunditySum = AddRounded(W.boot.SampleFecunditySum, eggs);
    }
    for (int day = 1; day <= d + 1; ++day) {
      if (pool.OriginalFecundity(k, day) > 0) {
        R.BootNfr(b) += 1;
        if (!stopAtDeath) R.BootNfrReal(b) += 1;
        break;
      }
    }
    W.boot.SampleIndividualFecundity(position) = pool.OriginalTotalFecundity(k);
    R.BootNf(b) += 1;
  } else {
    W.boot.SampleIndividualFecundity(position) = 0;
    if (code == 'M') R.BootNm(b) += 1;
    if (code == 'N') R.BootNn(b) += 1;
  }
}

// A predator's daily consumption goes with it into the sample, for the days it lived.
void Resampling::CopyConsumption(int position, int k) {
  if (!predation_) return;
  const std::int32_t days = TotalLongevityOf(S.pool.OriginalStageDuration, k, S.header.StageCount);
  if (days < 1) return;
  if (days > kMaxAge + 1) throw SubscriptFault(S.pool.OriginalConsumption.Name());
  std::memcpy(&W.cohort.Consumption(position, 0), &S.pool.OriginalConsumption(k, 0),
              static_cast<std::size_t>(days) * sizeof(double));
}

void Resampling::PrepareSampleForEngine() {
  const long b = SampleNo();
  BootstrapRecord& R = S.boot;
  Cohort& C = W.cohort;
  const int n = R.BootSampleSize;
  const int m = S.header.StageCount;
  C.CohortSize = n;
  C.MaxLongevity = 0;
  double eggs = 0;
  for (int position = 1; position <= n; ++position) {
    std::int32_t total = 0;
    const PoolEntry* known = nullptr;
    if (pool_) {
      const long k = R.BootIndividuals(position, b);
      if (k >= 1 && static_cast<std::size_t>(k) < pool_->individuals.size() &&
          pool_->individuals[static_cast<std::size_t>(k)].longevityKnown)
        known = &pool_->individuals[static_cast<std::size_t>(k)];
    }
    // Her durations stand in the sample as in the pool, whose summary knows her longevity.
    total = known ? known->longevity : TotalLongevityOf(C.StageDuration, position, m);
    C.TotalLongevity(position) = total;
    if (total > C.MaxLongevity) C.MaxLongevity = total;
    eggs += W.boot.SampleIndividualFecundity(position);
  }
  W.tables.LastAge = C.MaxLongevity - 1;
  if (R.BootNf(b) == 0) {
    throw ProgramEnd{"Error in bootstrap " + SampleText(b) +
                         ". No female in sample (R0 = 0).\nRe-run program by using larger n.",
                     "No female in this bootstrapped sample."};
  }
  R.BootF(b) = eggs / R.BootNf(b);
}

void Resampling::BootstrapSameboots() {
  Flow("BootstrapSameboots");
  const long b = SampleNo();
  BootstrapRecord& R = S.boot;
  W.boot.SampleFecunditySum = 0;
  predation_ = S.options.PredationPresent == "Yes";
  const int n = R.BootSampleSize;
  for (int position = 1; position <= n; ++position) {
    const int k = R.SavedBootIndividuals(position, b);
    CopyIndividual(position, k, true);
  }
  const bool twoSex = S.options.MatingMode == "Yes";
  const bool eggs = W.boot.SampleFecunditySum > 0;
  if (R.EffectiveOnly == "Yes") {
    const std::string title = "Error in bootstrap. (Perhaps you cannot use the same bootstrap samples.)";
    const std::string wrong = "But the bootstrap sample " + SampleText(b) + " was a wrong sample for that.";
    if (twoSex && !(R.BootNm(b) > 0 && eggs))
      throw ProgramEnd{"You selected \"Effective bootstrap\" and \"Two-sex mating\".\n" + wrong, title};
    if (!twoSex && !eggs) throw ProgramEnd{"You selected \"Effective bootstrap\".\n" + wrong, title};
  }
  std::int8_t mark = kMarkEffectiveList;
  if (R.EffectiveOnly == "No" && !eggs) mark |= kMarkIneffectiveList;
  R.BootListMark(b) = mark;
  PrepareSampleForEngine();
  // The life table of a sample asked for by number is written by the writer of sample life
  // tables once it is there (WriteSpecificSampleLifeTable in the result files).
}

void GatherSampleLists(SessionStore& S) {
  BootstrapRecord& R = S.boot;
  for (long b = 1; b <= R.BootB; ++b) {
    const std::int8_t mark = R.BootListMark(b);
    if (mark & kMarkEffectiveList) R.EffectiveList(++R.EffectiveCount) = static_cast<std::int32_t>(b);
    if (mark & kMarkIneffectiveList) R.IneffectiveList(++R.IneffectiveCount) = static_cast<std::int32_t>(b);
  }
}

}  // namespace korvan
