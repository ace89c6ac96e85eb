// The Cartesian paired test: for a pair of treatments every value of one is set against every
// value of the other, C = B_i * B_j differences in all, where the paired test takes only the
// B differences of the k-th values. Counted, summed and reported like the paired differences;
// the P of a pair is over its own C.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <string>

#include "bootstrap/sorting.h"
#include "comparison/pair_differences.h"
#include "comparison/paired_test.h"
#include "store/faults.h"

namespace korvan {

void PairedBootTest::CartesianDifference2() {
  Flow("CartesianDifference2");
  auto& c = S.comparison;
  StartClock("Cartesian paired test begins at:");
  P.Status("lblBootMsg", "I am running Cartesian paired test.\nPlease wait!\nDon't touch me!");
  TreatmentStatistics();
  const int n = c.TreatmentCount;
  for (int i = 1; i <= n - 1; ++i)
    for (int j = i + 1; j <= n; ++j) CartesianPairStep(i, j);
}

void PairedBootTest::CartesianPairStep(int i, int j) {
  auto& c = S.comparison;
  const long Bi = c.BootCount(i), Bj = c.BootCount(j);
  const bool iLarger = c.BootMean(i) > c.BootMean(j);
  // The differences of the pair in hand; one list for each direction.
  ZeroList<double, kMaxSortIndex>& list = iLarger ? c.DifferenceForward : c.DifferenceBackward;
  const double product = static_cast<double>(Bi) * static_cast<double>(Bj);
  if (product > static_cast<double>(kMaxSortIndex))
    throw SubscriptFault(list.Name(), "Treatments " + std::to_string(i) + " and " + std::to_string(j) + " give " +
                                          std::to_string(Bi) + " x " + std::to_string(Bj) +
                                          " Cartesian products; at most " + std::to_string(kMaxSortIndex) +
                                          " fit (B = 1000 for both).");
  const long C = static_cast<long>(product);
  list.CheckRange(1, C);
  double* d = list.Data();

  DetailFiles files;
  const bool detailed = c.DetailedDifferences == "Yes";
  if (detailed) OpenCartesianDetailFiles(files, S, i, j);
  P.Status("lblBootMsg", "I am running Cartesian paired test.\nPlease wait!\nDon't touch me!\n(Comparing " +
                             std::to_string(i) + " with " + std::to_string(j) + ")");

  const double D = iLarger ? c.BootMean(i) - c.BootMean(j) : c.BootMean(j) - c.BootMean(i);
  c.PairTails(i, j) = (c.BootMean(i) == 0 || D / c.BootMean(i) > 0.25) ? "One" : "Two";
  DifferenceTally tally(D);
  long negatives = 0, k = 0;
  for (long a = 1; a <= Bi; ++a) {
    const double x = c.BootValue(a, i);
    for (long b = 1; b <= Bj; ++b) {
      const double y = c.BootValue(b, j);
      const double v = iLarger ? x - y : y - x;
      d[++k] = v;
      const bool different = tally.Add(v);
      negatives += v < 0;
      if (detailed) files.Record(k, v, D, different);
    }
  }
  KeepTally(i, j, tally, C);
  // One difference has no variance.
  if (C == 1) c.PairVar(i, j) = c.PairSE(i, j) = 0;
  c.PairNegativeCount(i, j) = static_cast<std::int32_t>(negatives);
  c.CartMeanDiff(i, j) = c.PairMeanDiff(i, j);
  c.CartVar(i, j) = c.PairVar(i, j);
  c.CartSE(i, j) = c.PairSE(i, j);

  // Only the two percentile places of the ascending list are wanted: each is found in linear
  // time, the value there being the one a full sort would put there.
  const long lower = std::clamp(PercentileIndexGRR(C, 0.025), 1L, C);
  const long upper = std::clamp(PercentileIndexGRR(C, 0.975), lower, C);
  std::nth_element(d + 1, d + lower, d + C + 1);
  c.PairPctLower(i, j) = d[lower];
  if (upper > lower) std::nth_element(d + lower + 1, d + upper, d + C + 1);
  c.PairPctUpper(i, j) = d[upper];

  SetPairLimits(i, j, static_cast<double>(c.PairOutsideCount(i, j)) / static_cast<double>(C));
  P.Status("lblBootMsg", "Treat " + std::to_string(i) + " to treat " + std::to_string(j) + "\n" + DateTimeText());
}

}  // namespace korvan
