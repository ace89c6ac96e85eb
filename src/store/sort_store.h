#pragma once
// The sort workspace and what the sorting of a bootstrap run keeps: the percentile samples,
// the groups of equal values, the quantities by B.
//
// The working lists have the fixed index range 0..1000005. Their storage comes from zero pages
// of the system, taken once when the store is made: a sort allocates nothing, and only the
// entries a sort touches become real memory.
#include <cstdint>
#include <cstdlib>
#include <new>
#include <string>

#include "store/bounded.h"
#include "store/limits.h"

namespace korvan {

inline constexpr long kMaxSortIndex = 1000005;

// A checked list of trivial values, index 0..Hi, zero at the start.
template <class T, long Hi = kMaxSortIndex>
class ZeroList {
 public:
  static constexpr long kHi = Hi;
  explicit ZeroList(const char* name) : name_(name), v_(static_cast<std::size_t>(Hi + 1)) {}
  ZeroList(const ZeroList&) = delete;
  ZeroList& operator=(const ZeroList&) = delete;

  T& operator()(long i) { return v_[static_cast<std::size_t>(Index(i))]; }
  const T& operator()(long i) const { return v_[static_cast<std::size_t>(Index(i))]; }
  // Raw storage for loops whose bounds have been checked once (CheckRange).
  T* Data() { return v_.data(); }
  const T* Data() const { return v_.data(); }
  void CheckRange(long first, long last) const {
    if (first <= last) {
      Index(first);
      Index(last);
    }
  }
  const char* Name() const { return name_; }

 private:
  long Index(long i) const {
    if (i < 0 || i > Hi) throw SubscriptFault(name_);
    return i;
  }
  const char* name_;
  detail::Storage<T> v_;  // on zero pages of the system: a store with these lists is cheap to make
};

// Bounds of the ranges of one level of the division: first and last position and mean.
struct SortRanges {
  Vec<std::int32_t, 0, 1024> first{"SortRangeFirst"}, last{"SortRangeLast"};
  Vec<double, 0, 1024> mean{"SortRangeMean"};
  // Per range: members and sum of the lower and the upper half.
  Vec<std::int32_t, 0, 1024> countLow{"SortRangeCountLow"}, countHigh{"SortRangeCountHigh"};
  Vec<double, 0, 1024> sumLow{"SortRangeSumLow"}, sumHigh{"SortRangeSumHigh"};
};

// Groups of equal values in a sorted list: the value of each group and its members.
struct ValueGroups {
  std::int32_t Count = 0;
  ZeroList<double, kMaxBootIndex> Value;
  ZeroList<std::int32_t, kMaxBootIndex> Members;
  explicit ValueGroups(const char* value, const char* members) : Value(value), Members(members) {}
};

struct SortStore {
  // --- the workspace of QuickSort and SelectionSort (positions 1..SortCount)
  std::int32_t SortCount = 0;
  ZeroList<double> SortInValue{"SortInValue"}, SortValue{"SortValue"};
  ZeroList<std::int32_t> SortInIndex{"SortInIndex"}, SortIndex{"SortIndex"};
  ZeroList<double> SortValueA{"SortValueA"}, SortValueB{"SortValueB"};
  ZeroList<std::int32_t> SortIndexA{"SortIndexA"}, SortIndexB{"SortIndexB"};
  int QuickRangesWanted = 0;  // 0: not set up, taken as 1024
  int QuickRangesUsed = 0;
  SortRanges ranges, nextRanges;
  double SortCheckSum = 0;
  // Scratch of the exchange sort over a long range (a tree of minima over its positions).
  ZeroList<double, (1L << 21)> ExchangeTree{"ExchangeTree"};

  // --- percentiles
  Vec<double, 0, 14> PercentileP{"PercentileP"};
  Vec<std::string, 0, 14> PercentileLabel{"PercentileLabel"};
  Vec<std::int32_t, 0, 14> PercentileSample{"PercentileSample"};
  Vec<float, 1, 100> Percentile100P{"Percentile100P"};
  Vec<std::string, 1, 100> Percentile100Label{"Percentile100Label"};
  Vec<std::int32_t, 1, 100> Percentile100Sample{"Percentile100Sample"};
  std::int32_t Lambda025Sample = 0, Lambda500Sample = 0, Lambda975Sample = 0;
  std::int32_t R025Sample = 0, R500Sample = 0, R975Sample = 0;
  std::int32_t R0025Sample = 0, R0500Sample = 0, R0975Sample = 0;
  std::int32_t T025Sample = 0, T500Sample = 0, T975Sample = 0;
  // The 0.025 and 0.975 values of GRR (their own rule, with 0.5 added before rounding).
  double GRR025 = 0, GRR975 = 0;

  // --- the sorted fecundity of reproductive females (the other sorted lists are in
  // BootstrapRecord), and the permutation of the last sort of each list
  ZeroList<double, kMaxBootIndex> SortedFNfr{"SortedFNfr"};
  std::int32_t SortedFNfrCount = 0;

  // --- groups of equal values
  ValueGroups R0Groups{"R0GroupValue", "R0GroupMembers"};
  ValueGroups LambdaGroups{"LambdaGroupValue", "LambdaGroupMembers"};
  ValueGroups RGroups{"RGroupValue", "RGroupMembers"};
  ValueGroups OtherGroups{"OtherGroupValue", "OtherGroupMembers"};  // the fecundity lists
  // Cumulative frequency of the R0 groups and its probit.
  ZeroList<double, kMaxBootIndex> R0CumulativeFrequency{"R0CumulativeFrequency"};
  ZeroList<double, kMaxBootIndex> R0Probit{"R0Probit"};
  // The same of the groups of a list sorted from a file ("N. Normality").
  ZeroList<double, kMaxBootIndex> OtherCumulativeFrequency{"OtherCumulativeFrequency"};
  ZeroList<double, kMaxBootIndex> OtherProbit{"OtherProbit"};
  std::string OtherName;  // the variable of that list

  // --- the entries at B * 0.025, B * 0.5 and B * 0.975 of the sorted lists, for the figures
  Vec<double, 0, 2> R0ByB{"R0ByB"}, FByB{"FByB"}, FNfrByB{"FNfrByB"};
};

}  // namespace korvan
