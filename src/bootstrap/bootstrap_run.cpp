// The loop of bootstrap samples on all cores, and the steps of the result files after it.
#include "bootstrap/bootstrap_run.h"

#include <algorithm>
#include <cmath>
#include <atomic>
#include <condition_variable>
#include <cstdio>
#include <exception>
#include <limits>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "bootstrap/cohort_values.h"
#include "bootstrap/count_individuals.h"
#include "bootstrap/percentile.h"
#include "bootstrap/replicate_chain.h"
#include "bootstrap/resampling.h"
#include "bootstrap/result_files.h"
#include "bootstrap/sample_records.h"
#include "run/serialized_prompts.h"
#include "text/numbers.h"
#include "text/side_by_side_rows.h"

namespace korvan {
namespace {

constexpr int kAges = static_cast<int>(kMaxAge) + 1;
constexpr double kInf = std::numeric_limits<double>::infinity();

// The running sums of one stretch of consecutive samples. Stretches are fixed by B alone, and
// their sums are added in order, so the totals do not depend on the number of threads.
struct StretchSums {
  std::vector<double> v;  // nine arrays of kAges: the l(x) and m(x) accumulators
  std::int32_t negR = 0, lambdaBelow1 = 0, r0Below1 = 0;
  StretchSums() : v(9 * kAges, 0) {}
};

Vec<double, 0, kMaxAge>& AccArray(AccumulatorRefs& a, int k) {
  Vec<double, 0, kMaxAge>* arrays[9] = {a.LxSum, a.LxSumSquares, a.LxMax, a.LxMin, a.MxSum,
                                        a.MxSum2, a.MxSumSquares, a.MxMax, a.MxMin};
  return *arrays[k];
}
bool IsMaxArray(int k) { return k == 2 || k == 7; }
bool IsMinArray(int k) { return k == 3 || k == 8; }

void StartStretch(AccumulatorRefs& a) {
  for (int k = 0; k < 9; ++k) AccArray(a, k).Fill(IsMaxArray(k) ? -kInf : IsMinArray(k) ? kInf : 0.0);
  *a.NegR = *a.LambdaBelow1 = *a.R0Below1 = 0;
  *a.LxReplicates = 0;
}

void EndStretch(AccumulatorRefs& a, StretchSums& out) {
  for (int k = 0; k < 9; ++k) {
    const double* src = AccArray(a, k).Data();
    std::copy(src, src + kAges, out.v.begin() + static_cast<long>(k) * kAges);
  }
  out.negR = *a.NegR;
  out.lambdaBelow1 = *a.LambdaBelow1;
  out.r0Below1 = *a.R0Below1;
}

std::string TwoDecimals(double v) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.2f", v);
  return buf;
}

}  // namespace

void BootstrapRun::RunSampleLoop() {
  BootstrapRecord& R = S.boot;
  const long B = R.BootB;
  if (B < 1) return;
  int threads = RunThreads(S.runControl.threads);
  if (S.options.FlowMode != "No") threads = 1;  // the flow record is written in sample order
  threads = static_cast<int>(std::min<long>(threads, B));
  R.ThreadsUsed = threads;

  const long stretches = std::min<long>(B, 256);
  std::vector<StretchSums> sums(static_cast<std::size_t>(stretches));
  auto firstOf = [&](long c) { return 1 + c * B / stretches; };
  std::vector<char> visitedBySampleOne(kAges * 2, 0);  // l(x), then m(x)
  bool sampleOneAnalysed = false;

  S.lifeTable.BootLists();  // the engine's per-sample lists are made here, on one thread
  PoolSummary poolSummary;  // what each individual of the pool brings to a sample
  poolSummary.Build(S);
  std::vector<std::unique_ptr<Workspace>> spaces;
  for (int w = 0; w < threads; ++w) spaces.push_back(std::make_unique<Workspace>(W));

  SerializedPrompts prompts(P);
  std::atomic<long> nextStretch{0};
  std::atomic<long> done{0};
  std::atomic<long> firstFailure{std::numeric_limits<long>::max()};
  std::mutex failMutex;
  std::exception_ptr failure;
  std::mutex waitMutex;
  std::condition_variable finished;
  int running = threads;

  auto work = [&](int w) {
    Workspace& ws = *spaces[static_cast<std::size_t>(w)];
    SampleGenerator gen;
    Resampling resampling(S, prompts, ws, gen);
    resampling.UsePoolSummary(&poolSummary);
    ReplicateChain chain(S, prompts, ws);
    AccumulatorRefs acc = AccumulatorsOf(ws);
    long b = 0;
    try {
      for (;;) {
        const long c = nextStretch.fetch_add(1);
        if (c >= stretches || firstOf(c) >= firstFailure.load()) break;
        StartStretch(acc);
        const long last = firstOf(c + 1) - 1;
        for (b = firstOf(c); b <= last && b < firstFailure.load(); ++b) {
          ws.run.Boot = static_cast<double>(b);
          resampling.cmdBoot03();
          const std::int8_t label = R.BootEffectLabel(b);
          if (label == kLabelEffective) {
            chain.RunEngine();
            chain.FileReplicate();
            if (b == 1) {
              sampleOneAnalysed = true;
              for (int x = 0; x < kAges; ++x) {
                visitedBySampleOne[static_cast<std::size_t>(x)] = (*acc.LxMin)(x) != kInf;
                visitedBySampleOne[static_cast<std::size_t>(kAges + x)] = (*acc.MxMin)(x) != kInf;
              }
            }
            if (R.MajorPercentileLxMx == "Yes") KeepMajorPercentileColumns(S, ws);
          }
        }
        EndStretch(acc, sums[static_cast<std::size_t>(c)]);
        done.fetch_add(last - firstOf(c) + 1);  // the count of the progress, once a stretch
      }
    } catch (...) {
      std::lock_guard<std::mutex> lock(failMutex);
      if (b < firstFailure.load()) {
        firstFailure.store(b);
        failure = std::current_exception();
      }
    }
    std::lock_guard<std::mutex> lock(waitMutex);
    if (--running == 0) finished.notify_all();
  };

  std::vector<std::thread> pool;
  for (int w = 0; w < threads; ++w) pool.emplace_back(work, w);
  {
    std::unique_lock<std::mutex> lock(waitMutex);
    while (running > 0) {
      finished.wait_for(lock, std::chrono::milliseconds(200));
      lock.unlock();
      P.Progress(done.load(), B);
      doneSamples_ = done.load();
      cmdBootstrap04();
      lock.lock();
    }
  }
  for (auto& t : pool) t.join();
  if (failure) std::rethrow_exception(failure);
  P.Progress(B, B);

  // The totals, stretch by stretch in sample order.
  for (int k = 0; k < 9; ++k) {
    Vec<double, 0, kMaxAge>& total = k == 0   ? R.LxSum
                                     : k == 1 ? R.LxSumSquares
                                     : k == 2 ? R.LxMax
                                     : k == 3 ? R.LxMin
                                     : k == 4 ? R.MxSum
                                     : k == 5 ? R.MxSum2
                                     : k == 6 ? R.MxSumSquares
                                     : k == 7 ? R.MxMax
                                              : R.MxMin;
    const bool isLx = k < 4;
    for (int x = 0; x < kAges; ++x) {
      double v = IsMaxArray(k) ? -kInf : IsMinArray(k) ? kInf : 0.0;
      for (const StretchSums& s : sums) {
        const double part = s.v[static_cast<std::size_t>(k * kAges + x)];
        if (IsMaxArray(k))
          v = std::max(v, part);
        else if (IsMinArray(k))
          v = std::min(v, part);
        else
          v += part;
      }
      // The extremes start from the first sample's values where it reached the age, and from
      // zero elsewhere.
      const bool fromSampleOne =
          sampleOneAnalysed && visitedBySampleOne[static_cast<std::size_t>((isLx ? 0 : kAges) + x)];
      if (IsMaxArray(k) && (!fromSampleOne || v == -kInf)) v = std::max(v, 0.0);
      if (IsMinArray(k) && (!fromSampleOne || v == kInf)) v = std::min(v, 0.0);
      total(x) = v;
    }
  }
  for (const StretchSums& s : sums) {
    R.BootNegRCount += s.negR;
    R.BootLambdaBelow1Count += s.lambdaBelow1;
    R.BootR0Below1Count += s.r0Below1;
  }
  GatherSampleLists(S);
}

void BootstrapRun::cmdBootstrap04() {
  const long doneSamples = doneSamples_;
  // One step of the estimate: at the first checkpoint reached, the total time is estimated
  // from the time so far.
  const long B = S.boot.BootB;
  if (B <= 100 || estimate_ >= 0) return;
  const long step = B <= 1000 ? 100 : 1000;
  if (doneSamples < step) return;
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  if (seconds <= 0) return;
  estimateCount_ = doneSamples;
  estimate_ = static_cast<double>(B) / static_cast<double>(doneSamples) * seconds;
  std::string estimate;
  if (estimate_ < 120)
    estimate = TwoDecimals(estimate_) + " sec.";
  else if (estimate_ < 3600)
    estimate = TwoDecimals(estimate_ / 60) + " min.";
  else
    estimate = TwoDecimals(estimate_ / 3600) + " hr.";
  P.Status("lblBootMsg", "Running bootstrap\n(Bb1=" + FullPrecision(B) + ").\n" + S.boot.BootBeginText +
                             "\nPlease wait! Don't touch me!\nBoot = " + std::to_string(doneSamples) +
                             "\nEstimated total time: " + estimate);
}

void BootstrapRun::LxMxConfidenceLimits() {
  BootstrapRecord& R = S.boot;
  const double D = R.EffectiveCount;
  const int lastAge = S.ws.tables.LastAge;
  for (int x = 0; x <= lastAge + 1; ++x) {
    const double lxS = R.LxSum(x), lxQ = R.LxSumSquares(x);
    const double mxS = R.MxSum(x), mxQ = R.MxSumSquares(x);
    R.LxMean(x) = lxS / D;
    R.MxMean(x) = mxS / D;
    double lxVar = (lxQ - lxS * lxS / D) / (D - 1);
    double mxVar = (mxQ - mxS * mxS / D) / (D - 1);
    if (mxVar < 0) mxVar = 0;
    if (lxVar < 0) lxVar = 0;  // only rounding drives it below 0
    R.LxSE(x) = std::sqrt(lxVar);
    R.MxSE(x) = std::sqrt(mxVar);
    const double lx = S.basic.OriginalLx(x), mx = CohortMx(S, x);
    R.LxLower(x) = std::max(0.0, lx - 1.959964 * R.LxSE(x));
    R.LxUpper(x) = std::min(1.0, lx + 1.959964 * R.LxSE(x));
    R.MxLower(x) = std::max(0.0, mx - 1.959964 * R.MxSE(x));
    R.MxUpper(x) = mx + 1.959964 * R.MxSE(x);
  }
}

void BootstrapRun::WriteSampleRecord() {
  WriteMajorPercentileLxMx();
  SampleRecords(S, P, W).WriteSampleRecord();
  if (S.boot.SameBootstrap == "Yes") BootPercentiles(S, P, W).WriteSpecificSampleLifeTables();
}
void BootstrapRun::SortAndWritePercentiles() { BootPercentiles(S, P, W).SortAndWritePercentileTables(); }
void BootstrapRun::WriteColumnFiles() { BootResultFiles(S, P, W).WriteColumnFiles(); }
void BootstrapRun::WriteNormalCurveFiles() { BootResultFiles(S, P, W).WriteNormalCurveFiles(); }
void BootstrapRun::WriteContributionFiles() { BootResultFiles(S, P, W).WriteBootContributionToR(); }
void BootstrapRun::CountIndividualFrequencies() { BootIndividualCounts(S, P, W).CountBootstrapIndFreq(); }


}  // namespace korvan
