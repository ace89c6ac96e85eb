#include "bootstrap/sorting.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <utility>

#include "text/numbers.h"

namespace korvan {
namespace {

constexpr long kPlainLimit = 160;  // ranges up to this length take the plain double loop
constexpr double kNoValue = std::numeric_limits<double>::infinity();

// A tree of minima over positions 0..n-1 (leaves from `size`), in which a NaN counts as no
// value: it is never below anything, as in the comparisons of the exchange sort.
class MinTree {
 public:
  MinTree(double* t, const double* values, long n) : t_(t), n_(n) {
    size_ = 1;
    while (size_ < n) size_ <<= 1;
    for (long i = 0; i < size_; ++i) t_[size_ + i] = i < n && !std::isnan(values[i]) ? values[i] : kNoValue;
    for (long k = size_ - 1; k >= 1; --k) t_[k] = std::min(t_[2 * k], t_[2 * k + 1]);
  }
  void Set(long i, double v) {
    long k = size_ + i;
    t_[k] = std::isnan(v) ? kNoValue : v;
    for (k >>= 1; k >= 1; k >>= 1) t_[k] = std::min(t_[2 * k], t_[2 * k + 1]);
  }
  // The first position >= lo whose value is below x, or -1.
  long FirstBelow(long lo, double x) const { return Find(1, 0, size_ - 1, lo, x); }

 private:
  long Find(long k, long nl, long nr, long lo, double x) const {
    if (nr < lo || !(t_[k] < x)) return -1;
    if (nl == nr) return nl < n_ ? nl : -1;
    const long mid = (nl + nr) / 2;
    const long left = Find(2 * k, nl, mid, lo, x);
    return left >= 0 ? left : Find(2 * k + 1, mid + 1, nr, lo, x);
  }
  double* t_;
  long n_;
  long size_ = 1;
};

// Divides the ranges of `from` (in src) around their means into dst; `to` gets the ranges of
// the next level, two for each.
void DivideLevel(long rangeCount, SortRanges& from, SortRanges& to, const double* srcV, const std::int32_t* srcI,
                 double* dstV, std::int32_t* dstI) {
  for (long r = 0; r < rangeCount; ++r) {
    const long first = from.first(r), last = from.last(r);
    const double mean = from.mean(r);
    long lo = first, hi = last;
    double sumLow = 0, sumHigh = 0;
    for (long p = first; p <= last; ++p) {
      const double v = srcV[p];
      if (v < mean) {
        dstV[lo] = v;
        dstI[lo] = srcI[p];
        ++lo;
        sumLow += v;
      } else {
        dstV[hi] = v;
        dstI[hi] = srcI[p];
        --hi;
        sumHigh += v;
      }
    }
    const long countLow = lo - first, countHigh = last - hi;
    from.countLow(r) = static_cast<std::int32_t>(countLow);
    from.countHigh(r) = static_cast<std::int32_t>(countHigh);
    from.sumLow(r) = sumLow;
    from.sumHigh(r) = sumHigh;
    to.first(2 * r) = static_cast<std::int32_t>(first);
    to.last(2 * r) = static_cast<std::int32_t>(first + countLow - 1);
    to.mean(2 * r) = countLow > 0 ? sumLow / static_cast<double>(countLow) : 0;
    to.first(2 * r + 1) = static_cast<std::int32_t>(first + countLow);
    to.last(2 * r + 1) = static_cast<std::int32_t>(last);
    to.mean(2 * r + 1) = countHigh > 0 ? sumHigh / static_cast<double>(countHigh) : 0;
  }
}

// Whether the n values hold so few distinct ones that the tree is sure to beat the double
// loop (scratch: n entries).
bool FewDistinctValues(const double* values, long n, double* scratch) {
  std::copy(values, values + n, scratch);
  std::sort(scratch, scratch + n, [](double a, double b) { return a < b || (!std::isnan(a) && std::isnan(b)); });
  long distinct = 1;
  for (long i = 1; i < n; ++i)
    if (!(scratch[i] == scratch[i - 1])) ++distinct;
  const double log2n = std::log2(static_cast<double>(n));
  return static_cast<double>(distinct + 1) * log2n * 4 < static_cast<double>(n);
}

void FormCheckSum(SortStore& s) {
  double sum = 0;
  const double* v = s.SortValue.Data();
  for (long i = 1; i <= s.SortCount; ++i) sum += v[i];
  s.SortCheckSum = sum;
}

void CopyList(const double* v, const std::int32_t* ix, double* toV, std::int32_t* toI, long first, long last) {
  for (long p = first; p <= last; ++p) {
    toV[p] = v[p];
    toI[p] = ix[p];
  }
}

}  // namespace

void ExchangeSortPlain(double* values, std::int32_t* index, long n) {
  for (long i = 0; i + 1 < n; ++i) {
    for (long j = i + 1; j < n; ++j) {
      if (values[i] > values[j]) {
        std::swap(values[i], values[j]);
        std::swap(index[i], index[j]);
      }
    }
  }
}

// In the pass of position i the double loop swaps exactly at the positions j where a value
// below the one then held at i stands; each swap leaves the larger value at j. The tree finds
// these positions one after the other, so a pass costs its swaps, not the length of the range.
//
// A pass swaps at most once per distinct value below the one it starts with, so the tree pays
// where a long range holds few distinct values (ties); otherwise the double loop is cheaper.
void ExchangeSortRange(double* values, std::int32_t* index, long n, double* tree) {
  if (n <= kPlainLimit || !FewDistinctValues(values, n, tree)) {
    ExchangeSortPlain(values, index, n);
    return;
  }
  MinTree t(tree, values, n);
  for (long i = 0; i + 1 < n; ++i) {
    long from = i + 1;
    for (;;) {
      const long j = t.FirstBelow(from, values[i]);
      if (j < 0) break;
      std::swap(values[i], values[j]);
      std::swap(index[i], index[j]);
      t.Set(j, values[j]);
      from = j + 1;
    }
  }
}

void SelectionSort(SortStore& s) {
  const long m = s.SortCount;
  s.SortInValue.CheckRange(1, m);
  CopyList(s.SortInValue.Data(), s.SortInIndex.Data(), s.SortValue.Data(), s.SortIndex.Data(), 1, m);
  if (m > 1) ExchangeSortRange(s.SortValue.Data() + 1, s.SortIndex.Data() + 1, m, s.ExchangeTree.Data());
  s.QuickRangesUsed = 1;
  FormCheckSum(s);
}

void QuickSort(SortStore& s) {
  const long m = s.SortCount;
  s.SortInValue.CheckRange(1, m);  // every list has the same bounds
  if (s.QuickRangesWanted < 1) s.QuickRangesWanted = 1024;
  int levels = 0;
  while (levels < 10 && (2L << levels) <= s.QuickRangesWanted) ++levels;

  double total = 0;
  for (long p = 1; p <= m; ++p) total += s.SortInValue(p);
  s.ranges.first(0) = 1;
  s.ranges.last(0) = static_cast<std::int32_t>(m);
  s.ranges.mean(0) = m > 0 ? total / static_cast<double>(m) : 0;

  // Level 1 reads the input; each later level reads what the one before wrote.
  double* values[2] = {s.SortValueA.Data(), s.SortValueB.Data()};
  std::int32_t* index[2] = {s.SortIndexA.Data(), s.SortIndexB.Data()};
  const double* srcV = s.SortInValue.Data();
  const std::int32_t* srcI = s.SortInIndex.Data();
  SortRanges* from = &s.ranges;
  SortRanges* to = &s.nextRanges;
  const int levelsRun = levels == 0 ? 1 : levels;
  for (int level = 1; level <= levelsRun; ++level) {
    const int k = (level - 1) % 2;
    DivideLevel(1L << (level - 1), *from, *to, srcV, srcI, values[k], index[k]);
    srcV = values[k];
    srcI = index[k];
    std::swap(from, to);
  }
  CopyList(srcV, srcI, s.SortValue.Data(), s.SortIndex.Data(), 1, m);

  double* outV = s.SortValue.Data();
  std::int32_t* outI = s.SortIndex.Data();
  if (levels == 0) {
    // One range wanted: the exchange sort over the whole list as level 1 left it.
    if (m > 1) ExchangeSortRange(outV + 1, outI + 1, m, s.ExchangeTree.Data());
    s.QuickRangesUsed = 1;
  } else {
    const long rangeCount = 1L << levels;
    for (long r = 0; r < rangeCount; ++r) {
      const long first = from->first(r), last = from->last(r);
      if (last > first) ExchangeSortRange(outV + first, outI + first, last - first + 1, s.ExchangeTree.Data());
    }
    s.QuickRangesUsed = static_cast<int>(rangeCount);
  }
  // Keep the ranges of the last level where the workspace names them.
  if (from != &s.ranges) {
    for (long r = 0; r <= 1024; ++r) {
      s.ranges.first(r) = from->first(r);
      s.ranges.last(r) = from->last(r);
      s.ranges.mean(r) = from->mean(r);
    }
  }
  FormCheckSum(s);
}

long PercentileIndex(long m, double p) { return static_cast<long>(CIntValue(static_cast<double>(m) * p)); }

long PercentileIndexUp(long m, double p) {
  const long i = static_cast<long>(std::floor(static_cast<double>(m) * p + 0.5 + 0.5));
  return std::clamp(i, 1L, std::max(m, 1L));
}

void CountEqualGroups(const SortStore& s, ValueGroups& groups, long m) {
  constexpr double kSameGroup = 1e-12;
  groups.Count = 0;
  double first = 0;
  for (long i = 1; i <= m; ++i) {
    const double v = s.SortValue(i);
    if (groups.Count == 0 || !(std::fabs(v - first) < kSameGroup)) {
      first = v;
      ++groups.Count;
      groups.Value(groups.Count) = v;
      groups.Members(groups.Count) = 0;
    }
    ++groups.Members(groups.Count);
  }
}

void FormCumulativeProbits(const ValueGroups& groups, long total, ZeroList<double, kMaxBootIndex>& frequency,
                           ZeroList<double, kMaxBootIndex>& probit) {
  long cumulative = 0;
  for (long k = 1; k <= groups.Count; ++k) {
    cumulative += groups.Members(k);
    if (k == groups.Count) {
      frequency(k) = 1;
      probit(k) = 0;
    } else {
      frequency(k) = static_cast<double>(cumulative) / static_cast<double>(total);
      probit(k) = ProbitTransformation2(frequency(k)).rounded;
    }
  }
}

long PercentileIndexGRR(long m, double p) {
  return static_cast<long>(CIntValue(static_cast<double>(m) * p + 0.5));
}

void SetPercentileTable(SortStore& s) {
  static const double kP[15] = {0.025, 0.05, 0.1, 0.15866, 0.2, 0.3, 0.4, 0.5,
                                0.6,   0.7,  0.8, 0.84135, 0.9, 0.95, 0.975};
  static const char* const kLabel[15] = {"0.025", "0.05", "0.10", "0.15866", "0.20", "0.30", "0.40", "0.50",
                                         "0.60",  "0.70", "0.80", "0.84135", "0.90", "0.95", "0.975"};
  for (int i = 0; i < 15; ++i) {
    s.PercentileP(i) = kP[i];
    s.PercentileLabel(i) = kLabel[i];
  }
  for (int i = 1; i <= 100; ++i) {
    s.Percentile100P(i) = static_cast<float>(i / 100.0);
    char buf[8];
    std::snprintf(buf, sizeof buf, "%03d", i);
    s.Percentile100Label(i) = buf;
  }
}

namespace {

// 5 + z of a cumulative frequency, with its copy rounded to the given decimals.
Probit ProbitOf(double p, int decimals) {
  const double q = p <= 0.5 ? p : 1 - p;
  const double t2 = std::log(1 / (q * q));
  const double t = std::sqrt(t2);
  const double z = t - (2.515517 + 0.802853 * t + 0.010328 * t2) / (1 + 1.432788 * t + 0.189269 * t2 + 0.001308 * t * t2);
  Probit r;
  if (p > 0.5)
    r.value = 5 + std::fabs(z);
  else if (p == 0.5)
    r.value = 5;
  else
    r.value = 5 - std::fabs(z);
  r.rounded = std::isfinite(r.value) ? RoundDisplay(r.value, decimals) : r.value;
  r.tenth = r.value / 10;
  return r;
}

}  // namespace

Probit ProbitTransformation(double p) { return ProbitOf(p, 4); }
Probit ProbitTransformation2(double p) { return ProbitOf(p, 6); }

}  // namespace korvan
