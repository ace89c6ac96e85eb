#include "bootstrap/sorting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>
#include <random>
#include <vector>

namespace korvan {
namespace {

// Loads values as samples 1..m, sorts, and checks the result against std::sort: the values
// ascend as std::sort has them, the sample numbers are a permutation, and each sample number
// stands beside its own value.
void SortAndCompare(SortStore& s, const std::vector<double>& values, bool quick) {
  const long m = static_cast<long>(values.size());
  s.SortCount = static_cast<std::int32_t>(m);
  for (long i = 1; i <= m; ++i) {
    s.SortInValue(i) = values[static_cast<std::size_t>(i - 1)];
    s.SortInIndex(i) = static_cast<std::int32_t>(i);
  }
  if (quick)
    QuickSort(s);
  else
    SelectionSort(s);
  std::vector<double> expected = values;
  std::sort(expected.begin(), expected.end());
  std::vector<char> seen(static_cast<std::size_t>(m + 1), 0);
  for (long i = 1; i <= m; ++i) {
    ASSERT_EQ(s.SortValue(i), expected[static_cast<std::size_t>(i - 1)]) << "position " << i;
    const long k = s.SortIndex(i);
    ASSERT_TRUE(k >= 1 && k <= m && !seen[static_cast<std::size_t>(k)]) << "sample " << k;
    seen[static_cast<std::size_t>(k)] = 1;
    ASSERT_EQ(values[static_cast<std::size_t>(k - 1)], s.SortValue(i));
  }
  const double sum = std::accumulate(values.begin(), values.end(), 0.0);
  EXPECT_NEAR(s.SortCheckSum, sum, 1e-12 * std::max(1.0, std::fabs(sum)));
}

TEST(QuickSortTest, AgreesWithStdSortOnRandomTiedEqualAndSkewedLists) {
  auto s = std::make_unique<SortStore>();
  std::mt19937_64 gen(7);
  std::uniform_real_distribution<double> u(0, 1);
  std::vector<double> random(20000), tied(30000), equal(5000, 1.25), skewed(20000);
  for (double& v : random) v = u(gen) * 100 - 30;
  for (double& v : tied) v = static_cast<int>(u(gen) * 6) * 0.1;  // six values, sums not exact
  for (double& v : skewed) v = u(gen) < 0.7 ? 0 : std::exp(8 * u(gen));
  for (const auto* list : {&random, &tied, &equal, &skewed}) {
    SortAndCompare(*s, *list, true);
    EXPECT_EQ(s->QuickRangesUsed, 1024);
  }
  // Lists shorter than the ranges, one value, none.
  SortAndCompare(*s, {3, 1, 2}, true);
  SortAndCompare(*s, {4}, true);
  SortAndCompare(*s, {}, true);
  EXPECT_EQ(s->SortCheckSum, 0);
  // One range wanted: a single division, then the exchange sort over the whole.
  s->QuickRangesWanted = 1;
  SortAndCompare(*s, tied, true);
  EXPECT_EQ(s->QuickRangesUsed, 1);
  SortAndCompare(*s, std::vector<double>(random.begin(), random.begin() + 3000), false);
}

TEST(QuickSortTest, AllEqualValuesGoToTheUpperHalfAndStayInWalkingOrder) {
  // Each division walks its range forward and fills the upper half from the end backward, so
  // ten levels reverse the order ten times; the exchange sort never swaps equal values.
  auto s = std::make_unique<SortStore>();
  s->SortCount = 6;
  for (long i = 1; i <= 6; ++i) {
    s->SortInValue(i) = 2;
    s->SortInIndex(i) = static_cast<std::int32_t>(i);
  }
  QuickSort(*s);
  for (long i = 1; i <= 6; ++i) EXPECT_EQ(s->SortIndex(i), i);  // an even number of reversals
  s->QuickRangesWanted = 512;  // nine levels
  QuickSort(*s);
  for (long i = 1; i <= 6; ++i) EXPECT_EQ(s->SortIndex(i), 7 - i);
}

TEST(ExchangeSortTest, LongRangesRepeatTheSwapsOfThePlainLoop) {
  std::mt19937_64 gen(11);
  std::vector<double> tree(1 << 13);
  for (int distinct : {1, 2, 5, 40, 100000}) {
    std::vector<double> a(3000), b;
    for (double& v : a) v = static_cast<double>(gen() % static_cast<unsigned>(distinct));
    b = a;
    std::vector<std::int32_t> ia(a.size()), ib;
    std::iota(ia.begin(), ia.end(), 1);
    ib = ia;
    ExchangeSortPlain(a.data(), ia.data(), static_cast<long>(a.size()));
    ExchangeSortRange(b.data(), ib.data(), static_cast<long>(b.size()), tree.data());
    EXPECT_EQ(a, b) << distinct;
    EXPECT_EQ(ia, ib) << "order of ties with " << distinct << " distinct values";
  }
  // The loop is not stable: [2a, 2b, 1] ends as [1, 2b, 2a].
  double v[3] = {2, 2, 1};
  std::int32_t ix[3] = {1, 2, 3};
  ExchangeSortPlain(v, ix, 3);
  EXPECT_EQ(ix[1], 2);
  EXPECT_EQ(ix[2], 1);
}

TEST(PercentileRuleTest, IndexRoundsHalfToEvenWithoutInterpolation) {
  EXPECT_EQ(PercentileIndex(1, 0.025), 0);  // no value: the limit reads 0
  EXPECT_EQ(PercentileIndex(1, 0.975), 1);
  EXPECT_EQ(PercentileIndex(100, 0.025), 2);  // 2.5
  EXPECT_EQ(PercentileIndex(140, 0.025), 4);  // 3.5
  EXPECT_EQ(PercentileIndex(19, 0.025), 0);
  EXPECT_EQ(PercentileIndex(20, 0.025), 0);  // 0.5 goes to 0
  EXPECT_EQ(PercentileIndex(1000, 0.025), 25);
  EXPECT_EQ(PercentileIndex(1000, 0.975), 975);
  EXPECT_EQ(PercentileIndex(100000, 0.025), 2500);
  EXPECT_EQ(PercentileIndex(100000, 0.975), 97500);
  // GRR adds 0.5 before rounding, at both ends.
  EXPECT_EQ(PercentileIndexGRR(100, 0.025), 3);
  EXPECT_EQ(PercentileIndexGRR(1000, 0.025), 26);  // 25.5
  EXPECT_EQ(PercentileIndexGRR(1000, 0.975), 976);  // 975.5
  EXPECT_EQ(PercentileIndexGRR(1, 0.025), 1);

  auto s = std::make_unique<SortStore>();
  SetPercentileTable(*s);
  EXPECT_EQ(s->PercentileLabel(3), "0.15866");
  EXPECT_EQ(s->PercentileLabel(12), "0.90");
  EXPECT_EQ(s->Percentile100Label(7), "007");
  EXPECT_EQ(s->Percentile100Label(100), "100");
  EXPECT_EQ(static_cast<double>(s->Percentile100P(7)), static_cast<double>(0.07f));
}

TEST(ProbitTest, NormalQuantilesPlusFive) {
  EXPECT_EQ(ProbitTransformation2(0.5).value, 5);
  // Known quantiles of the normal distribution, within the approximation's 4.5e-4.
  EXPECT_NEAR(ProbitTransformation2(0.975).value, 5 + 1.959964, 4.5e-4);
  EXPECT_NEAR(ProbitTransformation2(0.025).value, 5 - 1.959964, 4.5e-4);
  EXPECT_NEAR(ProbitTransformation2(0.15866).value, 4.0, 4.5e-4);
  const Probit p = ProbitTransformation2(0.9);
  EXPECT_NEAR(p.value, 6.281552, 4.5e-4);
  EXPECT_EQ(p.rounded, std::round(p.value * 1e6) / 1e6);
  EXPECT_DOUBLE_EQ(p.tenth, p.value / 10);
  EXPECT_NEAR(ProbitTransformation2(0.3).value + ProbitTransformation2(0.7).value, 10, 1e-12);
}

}  // namespace
}  // namespace korvan
