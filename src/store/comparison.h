#pragma once
// Fields of the comparison of treatments on their bootstrap results: the treatments read from
// a file of several treatments, their values, order and rule strings.
#include <cstdint>
#include <string>

#include "store/bootstrap_store.h"
#include "store/bounded.h"
#include "store/limits.h"
#include "store/sort_store.h"

namespace korvan {

inline constexpr long kMaxTreatmentIndex = 11;  // treatments 0..11 in the comparison tables

// BootValue(k, i): value k (0..100003) of treatment i (0..11), zero until written.
template <class T>
class TreatmentValues : public SampleArray<T, kMaxTreatmentIndex, 0, kMaxBootIndex> {
 public:
  using SampleArray<T, kMaxTreatmentIndex, 0, kMaxBootIndex>::SampleArray;
  T& operator()(long k, long i) { return this->at(i, 0, k); }
  const T& operator()(long k, long i) const { return this->at(i, 0, k); }
};

// Kept for the session (lives in SessionStore).
struct ComparisonRecord {
  int TreatmentCount = 0;  // n, 16-bit
  std::string ParameterName;
  Vec<std::string, 0, kMaxTreatmentIndex> TreatmentTitle{"TreatmentTitle"}, SortedTitle{"SortedTitle"};
  Vec<std::int32_t, 0, kMaxTreatmentIndex> TreatmentN{"TreatmentN"}, TreatmentB{"TreatmentB"};
  Vec<double, 0, kMaxTreatmentIndex> FirstPassMean{"FirstPassMean"}, OriginalOrder{"OriginalOrder"};
  Vec<int, 0, kMaxTreatmentIndex> TreatmentOrderIndex{"TreatmentOrderIndex"};
  TreatmentValues<double> BootValue{"BootValue"};
  TreatmentValues<std::int16_t> BootValueSeen{"BootValueSeen"};
  int PairCount = 0;  // n(n-1)/2, 16-bit
  double PairAlphaSidak = 0;
  std::string RuleWide, RuleWideThin, RuleEighty, RuleEightyThin, RuleShort, RuleShortThin, RuleTable,
      RuleTableThin;

  // --- the paired bootstrap test and its report
  std::string FastPBT, DetailedDifferences = "No", Transformation = "No", UseQuickSort, PickedOneByOne,
      CartesianRun;
  int TableNumber = 0;
  std::string ProjectTitle, Description;  // head of a pooled file
  std::int32_t BootB = 0, LargestB = 0;
  Vec<std::string, 0, kMaxTreatmentIndex> TreatmentFile{"TreatmentFile"}, TreatmentFileSorted{"TreatmentFileSorted"},
      TreatmentParameter{"TreatmentParameter"};
  Vec<double, 0, kMaxTreatmentIndex> TreatmentOriginal{"TreatmentOriginal"};
  Vec<std::int32_t, 0, kMaxTreatmentIndex> BootCount{"BootCount"};
  Vec<double, 0, kMaxTreatmentIndex> BootSum{"BootSum"}, BootSumSq{"BootSumSq"}, BootMean{"BootMean"},
      BootScaled{"BootScaled"}, BootVar1{"BootVar1"}, BootVar2{"BootVar2"}, BootSE{"BootSE"};
  // One-way table on the bootstrap means.
  double GrandMean = 0, SSB = 0, SSW = 0, MSB = 0, MSW = 0, FValue = 0;
  double dfB = 0, dfW = 0;
  // Pair results (i < j unless noted).
  using PairTable = Mat<double, kMaxTreatmentIndex, kMaxTreatmentIndex>;
  using PairCounter = Mat<std::int32_t, kMaxTreatmentIndex, kMaxTreatmentIndex>;
  PairTable PairMeanDiff{"PairMeanDiff"}, PairVar{"PairVar"}, PairSE{"PairSE"}, PairLower{"PairLower"},
      PairUpper{"PairUpper"}, PairPctLower{"PairPctLower"}, PairPctUpper{"PairPctUpper"}, PairP{"PairP"},
      MeanDifference{"MeanDifference"};
  PairCounter PairBelowZero{"PairBelowZero"}, PairBeyondTwice{"PairBeyondTwice"},
      PairInsideCount{"PairInsideCount"}, PairOutsideCount{"PairOutsideCount"},
      PairNegativeCount{"PairNegativeCount"};
  Mat<std::string, kMaxTreatmentIndex, kMaxTreatmentIndex> PairTails{"PairTails"};
  // The paired differences of the pair in hand, positions 1..B.
  ZeroList<double, kMaxBootIndex> PairDifference{"PairDifference"};
  double CurveMean = 0, CurveSE = 0;
  int CurveFirst = 0, CurveSecond = 0;  // the pair whose curve is written
  // The Cartesian paired test: every difference of the two treatments' values, C = B_i * B_j of
  // them; the bound allows C = 1,000,000 (B = 1,000 for both) and a little over.
  std::int32_t CartesianLimit = 1000000;
  Vec<double, 0, kMaxTreatmentIndex> TreatmentBootCount{"TreatmentBootCount"};
  ZeroList<double, kMaxSortIndex> DifferenceForward{"DifferenceForward"}, DifferenceBackward{"DifferenceBackward"};
  PairTable CartMeanDiff{"CartMeanDiff"}, CartVar{"CartVar"}, CartSE{"CartSE"};
  // The Tukey-Kramer table of bootstrap results: q(0.05; k, df) for k = 2..10 and df = 1..120,
  // df 121 standing for infinity; any other place stays 0.
  Mat<double, kMaxTreatmentIndex, 121> TukeyQ{"TukeyQ"};
  int Alpha = 0;  // percent
  double MSE = 0, SSTotal = 0, SSAmong = 0, SSWithin = 0, MSAmong = 0;
  PairTable TukeySE{"TukeySE"}, MSD{"MSD"}, TukeyDiff{"TukeyDiff"};
  // Run clock.
  std::string BootBeginTime, BootEndTime, BeginsAtText;
  double BeginSeconds = 0, ElapsedSeconds = 0;
  std::string ReportName;
};

}  // namespace korvan
