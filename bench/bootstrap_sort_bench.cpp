// Sorting of bootstrap lists of 100,000 values: an even spread, a skewed R0-like list with many
// equal values, and all values equal.
#include <benchmark/benchmark.h>

#include <memory>
#include <random>

#include "bootstrap/sorting.h"

namespace {

using korvan::SortStore;

enum Shape { kEven, kSkewedTies, kAllEqual };

void Load(SortStore& s, Shape shape, long m) {
  std::mt19937_64 gen(3);
  std::uniform_real_distribution<double> u(0, 1);
  s.SortCount = static_cast<std::int32_t>(m);
  for (long i = 1; i <= m; ++i) {
    double v = 1;
    if (shape == kEven) v = u(gen) * 40;
    // R0 of small samples: many equal values, a long upper tail of a few hundred levels.
    if (shape == kSkewedTies) v = u(gen) < 0.3 ? 0 : static_cast<int>(std::exp(6 * u(gen))) / 7.0;
    s.SortInValue(i) = v;
    s.SortInIndex(i) = static_cast<std::int32_t>(i);
  }
}

void BM_QuickSort(benchmark::State& state) {
  auto s = std::make_unique<SortStore>();
  const Shape shape = static_cast<Shape>(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    Load(*s, shape, 100000);
    state.ResumeTiming();
    korvan::QuickSort(*s);
    benchmark::DoNotOptimize(s->SortCheckSum);
  }
}
BENCHMARK(BM_QuickSort)->Arg(kEven)->Arg(kSkewedTies)->Arg(kAllEqual)->Unit(benchmark::kMillisecond);

}  // namespace
