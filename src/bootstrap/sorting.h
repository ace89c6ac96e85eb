#pragma once
// The sort of the bootstrap lists and the percentile rule.
//
// QuickSort divides the list by means into up to 1024 ranges (values below a range's mean to
// its low side, the rest to its high side), then sorts each range by the exchange sort: for i
// from first to last - 1, for j from i + 1 to last, swap when value(i) > value(j). The sample
// number moves with its value. The order among equal values is what the walking and the
// swapping leave; the percentile rule accepts that.
#include <cstdint>

#include "store/sort_store.h"

namespace korvan {

// Sorts SortInValue / SortInIndex (positions 1..SortCount) into SortValue / SortIndex,
// ascending; sets QuickRangesUsed and the check sum.
void QuickSort(SortStore& s);
// The exchange sort over positions 1..SortCount of the input, without division.
void SelectionSort(SortStore& s);

// The exchange sort over values[0..n-1] with the sample numbers beside them. Long ranges are
// sorted through a tree of minima that repeats the swaps of the plain double loop exactly
// (tree: scratch of at least 2 * 2^ceil(log2 n) entries); short ones by the loop itself.
void ExchangeSortRange(double* values, std::int32_t* index, long n, double* tree);
// The plain double loop (for ranges of a few hundred values, and as the reference).
void ExchangeSortPlain(double* values, std::int32_t* index, long n);

// The percentile rule: index round(m * p), a tie to the even number; 0 holds no value.
long PercentileIndex(long m, double p);
// The rule of the 0.025 and 0.975 values of GRR: round(m * p + 0.5).
long PercentileIndexGRR(long m, double p);

// The rule of the general bootstrap and the sorting of a file: round(m * p + 0.5), a tie going
// up (index 2501 of 100,000 at p = 0.025), kept within 1..m.
long PercentileIndexUp(long m, double p);

// Groups of equal values (within 1e-12 of a group's first) in positions 1..m of the sorted list.
void CountEqualGroups(const SortStore& s, ValueGroups& groups, long m);
// Cumulative frequency of the groups (members over total, added up) and its probit (6
// decimals); the last group's frequency is 1 and its probit 0, for it has none.
void FormCumulativeProbits(const ValueGroups& groups, long total, ZeroList<double, kMaxBootIndex>& frequency,
                           ZeroList<double, kMaxBootIndex>& probit);

// Fills the 15 rows of percentiles and the hundred (p = i / 100 in single precision, labels
// "001" to "100").
void SetPercentileTable(SortStore& s);

// Probit of a cumulative frequency p, 0 < p < 1 (rational approximation of the normal
// quantile, Abramowitz and Stegun 26.2.23): 5 + z. ProbitTransformation rounds its copy to 4
// decimals, ProbitTransformation2 to 6.
struct Probit {
  double value = 0;    // 5 + z
  double rounded = 0;  // to 6 decimals
  double tenth = 0;    // value / 10
};
Probit ProbitTransformation(double p);
Probit ProbitTransformation2(double p);

}  // namespace korvan
