#pragma once
// Fields of the comparison of treatments on their bootstrap results: the treatments read from
// a file of several treatments, their values, order and rule strings.
#include <cstdint>
#include <string>

#include "store/bootstrap_store.h"
#include "store/bounded.h"
#include "store/limits.h"

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
};

}  // namespace korvan
