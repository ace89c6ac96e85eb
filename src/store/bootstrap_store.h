#pragma once
// Settings, counters and per-sample result lists of a bootstrap run.
//
// The per-sample lists have sample index 0..100003 (kMaxBootIndex). They are shared by all
// workers of a run: the replicate in hand writes its results at index Boot (the Workspace's
// run.Boot), and no two workers ever hold the same Boot. Their storage is taken from zero
// pages of the system and only becomes real memory where a run writes, so a store that never
// runs a bootstrap costs nothing and one of B samples costs what B samples need.
//
// Whatever a replicate needs as scratch or as a running sum (the sample's fecundity, the l(x)
// and m(x) accumulators, the counters of negative r and the like) lives in BootstrapWork, one
// per worker; the driver adds the workers' sums together in sample order at the end.
#include <cstdint>

#include <cstddef>
#include <new>
#include <string>
#include <type_traits>

#include "store/bounded.h"
#include "store/limits.h"
#include "store/sort_store.h"
#include "store/zero_pages.h"

namespace korvan {

// A checked array of trivial values, zero at the start, indices (i0, i1, sample) with bounds
// 0..H0, 0..H1 and 0..HS, stored sample by sample.
template <class T, long H0, long H1, long HS>
class SampleArray {
  static_assert(std::is_trivially_copyable_v<T>, "zero pages hold trivial values only");

 public:
  static constexpr long kRow = (H0 + 1) * (H1 + 1);
  static constexpr long kSize = kRow * (HS + 1);
  static constexpr std::size_t kBytes = static_cast<std::size_t>(kSize) * sizeof(T);
  // Mapped straight from the system: calloc would hand back recycled heap, which it must clear,
  // once the allocator has raised its threshold for mapping (after the first store is freed).
  explicit SampleArray(const char* name) : name_(name), p_(static_cast<T*>(MapZeroPages(kBytes))) {}
  ~SampleArray() { UnmapZeroPages(p_, kBytes); }
  SampleArray(const SampleArray&) = delete;
  SampleArray& operator=(const SampleArray&) = delete;

  const char* Name() const { return name_; }
  // Every entry back to zero.
  void Clear() {
    for (long k = 0; k < kSize; ++k) p_[k] = T{};
  }

 protected:
  T& at(long i0, long i1, long s) const {
    if (i0 < 0 || i0 > H0 || i1 < 0 || i1 > H1 || s < 0 || s > HS) throw SubscriptFault(name_);
    return p_[s * kRow + i0 * (H1 + 1) + i1];
  }

 private:
  const char* name_;
  T* p_;
};

// One value per sample: List(b).
template <class T>
class BootList : public SampleArray<T, 0, 0, kMaxBootIndex> {
 public:
  using SampleArray<T, 0, 0, kMaxBootIndex>::SampleArray;
  T& operator()(long b) { return this->at(0, 0, b); }
  const T& operator()(long b) const { return this->at(0, 0, b); }
};

// One value per stage (or position) and sample: List(j, b).
template <class T, long H0 = kMaxStage>
class BootMatList : public SampleArray<T, H0, 0, kMaxBootIndex> {
 public:
  using SampleArray<T, H0, 0, kMaxBootIndex>::SampleArray;
  T& operator()(long j, long b) { return this->at(j, 0, b); }
  const T& operator()(long j, long b) const { return this->at(j, 0, b); }
};

// One value per type, stage and sample: List(t, j, b).
template <class T>
class BootTypeStageList : public SampleArray<T, kMaxType, kMaxStage, kMaxBootIndex> {
 public:
  using SampleArray<T, kMaxType, kMaxStage, kMaxBootIndex>::SampleArray;
  T& operator()(long t, long j, long b) { return this->at(t, j, b); }
  const T& operator()(long t, long j, long b) const { return this->at(t, j, b); }
};

// BootEffectLabel is kept as a code; EffectLabelText gives the label's words.
enum EffectLabel : std::int8_t { kLabelNone = 0, kLabelEffective = 1, kLabelIneffective = 2 };
inline const char* EffectLabelText(std::int8_t code) {
  return code == kLabelEffective ? "Effective" : code == kLabelIneffective ? "Ineffective" : "";
}

// Mean, spread and extremes of one statistic over the samples 1..E.
struct BootSummary {
  double S = 0, Q = 0, max = 0, min = 0, mean = 0, variance = 0, se = 0;
};

// ---------------------------------------------------------------------------------------
// What one replicate leaves for the per-sample lists: the engine's pass fills it in its own
// workspace, and the replicate chain files it into the lists at the sample's number. Cleared
// before every pass, so that a value the pass doesn't reach is 0, as the lists start.
struct ReplicateRecord {
  using StageDbl = Vec<double, 0, kMaxStage>;
  double r = 0, lambda = 0, R0 = 0, T = 0, GRR = 0;
  double BirthRate = 0, SurvivalRate = 0, DeathRate = 0;  // at the stable age-stage distribution
  double FirstVxjAge = 0, FirstFxjAge = 0, PeakVxj = 0;
  std::int16_t PeakVxjAge = 0;
  double APOP = 0, TPOP = 0, ReproductiveFemales = 0;
  double Longevity = 0, OviDays = 0, OviPeriod = 0;
  double ContributionSum = 0;  // the Euler-Lotka sum at the pooled cohort's r of this sample
  double C0 = 0, Qp = 0, Psi = 0, Omega = 0;  // predation rates, with a consumption file
  StageDbl Ssd{"ReplicateSsd"};
  // The life table of the sample.
  StageDbl StageMean{"ReplicateStageMean"}, CumMean{"ReplicateCumMean"};
  double PreadultSurvival = 0;
  Mat<double, kMaxType, kMaxStage> TypeStageMean{"ReplicateTypeStageMean"}, TypeCumMean{"ReplicateTypeCumMean"};
  double LxAtSpecificAge = 0, MedianAge = 0, SpecificSurvivalAge = 0;
  double PreadultDeathProb = 0, PreadultSurvivalByDeaths = 0;
  StageDbl StageDeathProb{"ReplicateStageDeathProb"}, StageToNext{"ReplicateStageToNext"};
  // The share of the sample's individuals that reach each stage 1..m + 1 (both adult stages).
  StageDbl StageEntry{"ReplicateStageEntry"};

  void Clear() {
    r = lambda = R0 = T = GRR = 0;
    BirthRate = SurvivalRate = DeathRate = 0;
    FirstVxjAge = FirstFxjAge = PeakVxj = 0;
    PeakVxjAge = 0;
    APOP = TPOP = ReproductiveFemales = 0;
    Longevity = OviDays = OviPeriod = ContributionSum = 0;
    C0 = Qp = Psi = Omega = 0;
    PreadultSurvival = LxAtSpecificAge = MedianAge = SpecificSurvivalAge = 0;
    PreadultDeathProb = PreadultSurvivalByDeaths = 0;
    for (StageDbl* v : {&Ssd, &StageMean, &CumMean, &StageDeathProb, &StageToNext, &StageEntry}) v->Fill(0);
    TypeStageMean.Fill(0);
    TypeCumMean.Fill(0);
  }
};

// ---------------------------------------------------------------------------------------
// Overwritten by every pass of the engine (lives in a Workspace, one per worker).
struct BootstrapWork {
  // The replicate in hand, for the per-sample lists.
  ReplicateRecord sample;

  // The sample in hand: each position's total eggs (0 for a non-female) and their sum.
  Vec<double, 0, kMaxIndividual> SampleIndividualFecundity{"SampleIndividualFecundity"};
  std::int32_t SampleFecunditySum = 0;

  // Running sums of m(x) over the replicates this worker ran since the driver last cleared
  // them (those of l(x) are in LifeTableWork). At Boot = 1 the extremes start from the
  // replicate's values; the driver starts a worker's other stretches with max = -infinity and
  // min = +infinity.
  Vec<double, 0, kMaxAge> MxSum{"MxSum"}, MxSum2{"MxSum2"}, MxSumSquares{"MxSumSquares"};
  Vec<double, 0, kMaxAge> MxMax{"MxMax"}, MxMin{"MxMin"};

  // Counters of the engine: r below 0, lambda below 1, 0 < R0 < 1.
  std::int32_t BootNegRCount = 0, BootLambdaBelow1Count = 0, BootR0Below1Count = 0;
};

// ---------------------------------------------------------------------------------------
// Kept for the session (lives in SessionStore).
struct BootstrapRecord {
  // --- settings and counters of the run
  std::int32_t BootB = 0;
  double BootBReal = 0;
  double MaxBootB = 100000;
  std::int32_t BootSampleSize = 0;
  int InfertileCriterion = 1;
  std::string EffectiveOnly;
  std::string SameBootstrap;
  std::string SaveSamplesAgain;
  std::int32_t FirstBootNumber = 1;
  std::string BootConditionLine;
  std::int32_t EffectiveCount = 0, IneffectiveCount = 0;
  BootList<std::int32_t> EffectiveList{"EffectiveList"}, IneffectiveList{"IneffectiveList"};
  std::int32_t SpecificSampleCount = 0;
  Vec<std::int32_t, 0, 1000> SpecificSample{"SpecificSample"};
  // How often each individual of the cohort was drawn over all samples of the run.
  Vec<long, 0, kMaxIndividual> IndividualDraws{"IndividualDraws"};
  std::string BootSessionFlag;     // "Yes" while "A3. Bootstrap" runs: where a record is read
  std::string RecordFilePath;      // the record file read, or the one written
  std::string BootstrapCompleted;  // "yes" once a run of the session has ended
  std::string ResampleKind;        // "b" in a bootstrap, "j" a jackknife, "g" a general bootstrap

  // --- the driver's settings
  std::string BootFastRun = "No", BootFastRunAnswer, BootFastRest = "No";
  int HistogramBars = 50, HistogramBarsPlus1 = 51;
  std::string BootNormalCurves = "No", MajorPercentileLxMx = "No";
  std::string PercentileTables025975 = "No", PercentileTables15 = "No", PercentileTables100 = "No";
  std::string DetailedBootResults = "No", MajorFilesOnly = "No";
  int R0Precision = 0;
  bool R0PrecisionSettled = false;
  std::string UseQuickSort = "Yes";
  int QuickRangesWanted = 1024;
  // The 15 samples read for the l(x) and m(x) of the major percentiles: percentile and number.
  Vec<double, 0, 14> MajorPercentileP{"MajorPercentileP"};
  Vec<std::int32_t, 0, 14> MajorPercentileSample{"MajorPercentileSample"};
  std::string MajorPercentileFile;  // "_0Ac_lx mx of major percentiles in col.txt"
  // Their l(x) and m(x) columns as the loop meets them, and the last age of each.
  Mat<double, 14, kMaxAge> MajorPercentileLx{"MajorPercentileLx"}, MajorPercentileMx{"MajorPercentileMx"};
  Vec<int, 0, 14> MajorPercentileLastAge{"MajorPercentileLastAge"};
  // Seed of the run (stated in the report) and the number of workers it ran on; the seed and
  // the threads asked for from outside the dialogue stand in the store's runControl.
  std::uint64_t RunSeed = 0;
  int ThreadsUsed = 1;
  // Texts of the clock: begin, end and total time of the loop.
  std::string BootBeginText, BootEndText, BootTotalTimeText, BootDateText;
  double LoopSeconds = 0;

  // --- the samples
  BootMatList<std::int16_t, kMaxIndividual> BootIndividuals{"BootIndividuals"};
  BootMatList<std::int16_t, kMaxIndividual> SavedBootIndividuals{"SavedBootIndividuals"};
  BootList<std::int8_t> BootEffectLabel{"BootEffectLabel"};
  // Which of EffectiveList and IneffectiveList a sample joins (bits 1 and 2); the lists are
  // filled from these marks in sample order after the loop.
  BootList<std::int8_t> BootListMark{"BootListMark"};
  BootList<std::int32_t> BootNf{"BootNf"}, BootNm{"BootNm"}, BootNn{"BootNn"}, BootNfr{"BootNfr"};
  BootList<double> BootNfrReal{"BootNfrReal"}, BootCANf{"BootCANf"}, BootF{"BootF"};
  // R0 and finite rate of each sample as read from a record file (used by nothing here).
  BootList<double> RecordR0{"RecordR0"}, RecordLambda{"RecordLambda"};

  // --- the engine's results at index Boot
  BootList<double> BootContributionSum{"BootContributionSum"};
  BootList<double> BootR{"BootR"}, BootLambda{"BootLambda"}, BootR0{"BootR0"}, BootT{"BootT"},
      BootGRR{"BootGRR"};
  BootList<double> BootLongevity{"BootLongevity"};
  BootList<double> BootAPOP{"BootAPOP"}, BootTPOP{"BootTPOP"};
  BootList<double> BootOviDays{"BootOviDays"}, BootOviPeriod{"BootOviPeriod"};
  BootList<double> BootReproductiveFemales{"BootReproductiveFemales"};  // of APOPandTPOPforBoot
  // Stage means, l(x) at ages, mortality by stage and the like are in LifeTableBootLists.
  BootList<double> BootBirthRate{"BootBirthRate"}, BootDeathRate{"BootDeathRate"},
      BootSurvivalRate{"BootSurvivalRate"};  // at the stable age-stage distribution
  BootList<double> BootFirstVxjAge{"BootFirstVxjAge"}, BootFirstFxjAge{"BootFirstFxjAge"},
      BootPeakVxj{"BootPeakVxj"};
  BootList<std::int16_t> BootPeakVxjAge{"BootPeakVxjAge"};
  BootMatList<double> BootSsd{"BootSsd"};
  // Predation: net (C0), transformation (Qp), stable (Psi) and finite (Omega) rate.
  BootList<double> BootC0{"BootC0"}, BootQp{"BootQp"}, BootPsi{"BootPsi"}, BootOmega{"BootOmega"};

  // --- the general bootstrap: a list of numbers resampled (not a life table)
  std::string GeneralBootFlag;  // "Yes" once it has run: the record is no. 11B
  std::string SerialNumbersInData, AgeOfHalfSurvival, ProbitOn;
  std::string VariableName, GeneralTreatment;
  // Per sample: the mean (probit when asked), its SE, the age at which l(x) falls to 0.5.
  BootList<double> GeneralMean{"GeneralMean"}, GeneralSE{"GeneralSE"}, GeneralHalfAge{"GeneralHalfAge"};
  // Of the list itself: size, mean (probit when asked), variance, SD, SE, age of 0.5.
  double GeneralN = 0, GeneralDataMean = 0, GeneralDataVariance = 0, GeneralDataSD = 0, GeneralDataSE = 0,
         GeneralDataHalfAge = 0;
  BootSummary General;  // of the samples' means

  // --- totals of the run, added together from the workers' BootstrapWork
  Vec<double, 0, kMaxAge> LxSum{"LxSum"}, LxSumSquares{"LxSumSquares"};
  Vec<double, 0, kMaxAge> LxMax{"LxMax"}, LxMin{"LxMin"};
  Vec<double, 0, kMaxAge> MxSum{"MxSum"}, MxSum2{"MxSum2"}, MxSumSquares{"MxSumSquares"};
  Vec<double, 0, kMaxAge> MxMax{"MxMax"}, MxMin{"MxMin"};
  std::int32_t BootNegRCount = 0, BootLambdaBelow1Count = 0, BootR0Below1Count = 0;
  // Confidence limits of l(x) and m(x), centred on the cohort's values.
  Vec<double, 0, kMaxAge> LxMean{"LxMean"}, LxSE{"LxSE"}, LxLower{"LxLower"}, LxUpper{"LxUpper"};
  Vec<double, 0, kMaxAge> MxMean{"MxMean"}, MxSE{"MxSE"}, MxLower{"MxLower"}, MxUpper{"MxUpper"};

  // --- sorted lists (index 1..m) from which the percentile rows are read
  BootList<double> SortedR{"SortedR"}, SortedLambda{"SortedLambda"}, SortedR0{"SortedR0"},
      SortedT{"SortedT"}, SortedGRR{"SortedGRR"}, SortedF{"SortedF"}, SortedNfToN{"SortedNfToN"},
      SortedLongevity{"SortedLongevity"};
  // The sort workspace, the percentile samples and the groups of equal values.
  SortStore sort;

  // --- summaries over the samples 1..E
  BootSummary R, Lambda, R0, T, GRR, F, Longevity, APOP, TPOP, Sa, Nf, Nm, Nn, Nfr, NfToN, NfrToNf,
      OviDays, C0, Omega, Qp, Psi;
  Vec<BootSummary, 0, kMaxStage> StageMeanSummary{"StageMeanSummary"};
  Vec<BootSummary, 0, kMaxStage> StageMortalitySummary{"StageMortalitySummary"};
  BootSummary PreadultMeanSummary, PreadultMortalitySummary;
  double RDoubleCheckSE = 0;
  // Frequency classes of r and R0 (index 0..HistogramBarsPlus1 + 2).
  Vec<double, 0, 60> RClassEdge{"RClassEdge"}, RClassCentre{"RClassCentre"}, RClassCount{"RClassCount"};
  Vec<double, 0, 60> R0ClassEdge{"R0ClassEdge"}, R0ClassCentre{"R0ClassCentre"},
      R0ClassCount{"R0ClassCount"};
  double RClassWidth = 0, R0ClassWidth = 0;
  int ReportPage = 0, ReportTable = 0;
};

}  // namespace korvan
