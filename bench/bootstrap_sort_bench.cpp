// Sorting of bootstrap lists of 100,000 values (an even spread, a skewed R0-like list with many
// equal values, all values equal), and the files written after a run of B = 100,000.
#include <benchmark/benchmark.h>

#include <cmath>
#include <filesystem>
#include <memory>
#include <random>

#include "bootstrap/percentile.h"
#include "bootstrap/result_files.h"
#include "bootstrap/sample_records.h"
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

// The files written after a loop of B = 100,000 samples of 100 individuals: the record no. 11,
// the sorts with their files, the column files.
namespace {

class NoPrompts final : public korvan::PromptService {
 public:
  int MsgBox(const std::string&, const std::string&, int, int) override { return korvan::kYes; }
  std::string InputBox(const std::string&, const std::string&, const std::string& d) override { return d; }
  std::string ChooseFile(const std::string&) override { return ""; }
};

std::unique_ptr<korvan::Session> LargeRun(const std::string& base) {
  using namespace korvan;
  auto S = std::make_unique<Session>();
  S->StartUp();
  S->identity.DataFileBase = base;
  S->identity.ProjectName = "Bench";
  S->identity.TreatmentName = "Control";
  S->header.StageCount = 2;
  S->pool.OriginalCohortSize = 100;
  for (int i = 1; i <= 100; ++i) {
    S->pool.OriginalSex(i) = i % 2 ? "F" : "M";
    S->pool.OriginalStageDuration(i, 1) = 5;
    S->pool.OriginalStageDuration(i, 2) = 10;
    S->pool.OriginalFecundity(i, 11) = -1;
  }
  BootstrapRecord& R = S->boot;
  const long B = 100000;
  R.BootB = R.EffectiveCount = B;
  R.BootSampleSize = 100;
  R.EffectiveOnly = "Yes";
  R.BootFastRun = "Yes";
  R.PercentileTables025975 = "Yes";
  std::mt19937_64 gen(5);
  std::uniform_real_distribution<double> u(0, 1);
  for (long b = 1; b <= B; ++b) {
    R.EffectiveList(b) = static_cast<std::int32_t>(b);
    R.BootEffectLabel(b) = kLabelEffective;
    for (int p = 1; p <= 100; ++p) R.BootIndividuals(p, b) = static_cast<std::int16_t>(1 + gen() % 100);
    // R0 of small samples: many equal values.
    R.BootR0(b) = static_cast<int>(20 + 10 * u(gen)) / 2.0;
    R.BootR(b) = std::log(R.BootR0(b)) / 20;
    R.BootLambda(b) = std::exp(R.BootR(b));
    R.BootT(b) = 20 + u(gen);
    R.BootGRR(b) = 2 * R.BootR0(b);
    R.BootNf(b) = 40 + static_cast<int>(gen() % 20);
    R.BootNfr(b) = R.BootNf(b) - 2;
    R.BootF(b) = 50 * u(gen);
  }
  return S;
}

void BM_FilesAtB100000(benchmark::State& state) {
  const auto dir = std::filesystem::temp_directory_path() / "korvan_bench_files";
  std::filesystem::create_directories(dir);
  auto S = LargeRun((dir / "bench").string());
  NoPrompts P;
  for (auto _ : state) {
    korvan::SampleRecords(*S, P).WriteSampleRecord();
    korvan::BootPercentiles(*S, P).SortAndWritePercentileTables();
    korvan::BootResultFiles(*S, P).WriteColumnFiles();
  }
  std::filesystem::remove_all(dir);
}
BENCHMARK(BM_FilesAtB100000)->Unit(benchmark::kSecond)->Iterations(1);

}  // namespace
