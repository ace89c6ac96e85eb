// The command "A3. Bootstrap" and its loop of samples on all cores.
#include "bootstrap/bootstrap_driver.h"

#include <algorithm>
#include <cmath>
#include <atomic>
#include <condition_variable>
#include <cstdio>
#include <ctime>
#include <exception>
#include <limits>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "bootstrap/bootstrap_statistics.h"
#include "bootstrap/cohort_values.h"
#include "bootstrap/replicate_chain.h"
#include "bootstrap/resampling.h"
#include "bootstrap/uniform_random.h"
#include "engine/stage_statistics.h"
#include "input/data_file_reader.h"
#include "store/faults.h"
#include "text/numbers.h"
#include "ui/chart_figures.h"

namespace korvan {
namespace {

// The dialogues of the engine, should a replicate ever ask one, come one at a time.
class SerializedPrompts final : public PromptService {
 public:
  explicit SerializedPrompts(PromptService& inner) : inner_(inner) {}
  int MsgBox(const std::string& text, const std::string& title, int buttons, int defaultButton) override {
    std::lock_guard<std::mutex> lock(m_);
    return inner_.MsgBox(text, title, buttons, defaultButton);
  }
  std::string InputBox(const std::string& text, const std::string& title, const std::string& def) override {
    std::lock_guard<std::mutex> lock(m_);
    return inner_.InputBox(text, title, def);
  }
  std::string ChooseFile(const std::string& title) override {
    std::lock_guard<std::mutex> lock(m_);
    return inner_.ChooseFile(title);
  }
  void Status(const std::string& label, const std::string& text) override {
    std::lock_guard<std::mutex> lock(m_);
    inner_.Status(label, text);
  }
  void Progress(long done, long total) override {
    std::lock_guard<std::mutex> lock(m_);
    inner_.Progress(done, total);
  }
  void Beep() override {
    std::lock_guard<std::mutex> lock(m_);
    inner_.Beep();
  }

 private:
  PromptService& inner_;
  std::mutex m_;
};

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

std::string ClockText(std::time_t t) {
  std::tm tm{};
  localtime_r(&t, &tm);
  char buf[64];
  std::snprintf(buf, sizeof buf, "%d/%d/%d %02d:%02d:%02d", tm.tm_mon + 1, tm.tm_mday, tm.tm_year + 1900,
                tm.tm_hour, tm.tm_min, tm.tm_sec);
  return buf;
}

std::string TwoDecimals(double v) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.2f", v);
  return buf;
}

}  // namespace

void BootstrapDriver::RunSampleLoop() {
  BootstrapRecord& R = S.boot;
  const long B = R.BootB;
  if (B < 1) return;
  int threads = S.runControl.threads > 0 ? S.runControl.threads
                                       : static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
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
            if (b == 1) {
              sampleOneAnalysed = true;
              for (int x = 0; x < kAges; ++x) {
                visitedBySampleOne[static_cast<std::size_t>(x)] = (*acc.LxMin)(x) != kInf;
                visitedBySampleOne[static_cast<std::size_t>(kAges + x)] = (*acc.MxMin)(x) != kInf;
              }
            }
            if (R.MajorPercentileLxMx == "Yes") KeepMajorPercentileColumns(S, ws);
          }
          done.fetch_add(1);
        }
        EndStretch(acc, sums[static_cast<std::size_t>(c)]);
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

void BootstrapDriver::cmdBootstrap04() {
  const long doneSamples = doneSamples_;
  // One step of the estimate: at the first checkpoint reached, the total time is estimated
  // from the time so far.
  const long B = S.boot.BootB;
  if (B <= 100 || estimate_ >= 0) return;
  const long step = B <= 1000 ? 100 : 1000;
  if (doneSamples < step) return;
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - begin_).count();
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

std::string BootstrapDriver::TimeText(double d, const std::string& before) const {
  if (d <= 120) return TwoDecimals(d) + " sec.";
  if (d < 600) return TwoDecimals(d / 60) + " min.";
  if (d > 600) return TwoDecimals(d / 3600) + " hr.";
  return before;  // exactly 600 s: the text stands as it was
}

bool BootstrapDriver::CohortHasFertileFemale() const {
  const Cohort& C = S.ws.cohort;
  const int m = S.header.StageCount;
  const int N = S.header.CohortSizeRead > 0 ? S.header.CohortSizeRead : C.CohortSize;
  for (int i = 1; i <= N; ++i) {
    if (C.IndividualSex(i) != "F") continue;
    const double d = C.StageDuration(i, m);
    for (int day = 1; day <= d + 1; ++day) {
      const double e = C.Fecundity(i, day);
      if (e < 0) break;
      if (e > 0) return true;
    }
  }
  return false;
}

void BootstrapDriver::AskHistogramAndNormalCurves() {
  BootstrapRecord& R = S.boot;
  const std::string title = "More bars for histogram chart?";
  const std::string text =
      "Do you want to see more classes (Yes=50 bars, No=20 bars)?\n"
      "(In most cases, you can choose \"Yes\")\n\n"
      "Yes: show 50 bars.\n"
      "No: 20 bars.\n"
      "Cancel: End the program.";
  const int a = P.MsgBox(text, title, kYesNoCancel);
  if (a == kCancel) throw ProgramEnd{"The program ends here (Cancel at \"" + title + "\").", title};
  R.HistogramBars = a == kYes ? 50 : 20;
  R.HistogramBarsPlus1 = a == kYes ? 51 : 21;
  S.console.Enable("cmdBootLx");
  S.console.Enable("cmdBootMx");
  const std::string ntitle = "Normal density curve?";
  const std::string ntext =
      "Do you need bootstrap frequency file and normal curves?\n"
      "(In most cases, you can choose \"No\".)";
  if (P.MsgBox(ntext, ntitle, kYesNo) == kYes) R.BootNormalCurves = "Yes";
}

void BootstrapDriver::SetResamplingMarkers() {
  S.boot.ResampleKind = "b";
  W.run.ResampleKind = "b";
  W.run.IsResamplingFlag = "y";
  W.run.IsBasicRunFlag = "n";
  W.run.Boot = 0;
}

void BootstrapDriver::cmdBootstrap_Click() {
  Flow("cmdBootstrap_Click");
  BootstrapRecord& R = S.boot;
  R.BootSessionFlag = "Yes";
  cmdBootstrap01();
  if (R.BootFastRun != "Yes") {
    if (R.BootstrapCompleted == "yes") {  // a second press only shows the chart again
      P.ShowChart(ShowFreqR0(S));
      return;
    }
    cmdBootstrap02();
  }
  if (R.BootFastRest != "Yes") AskHistogramAndNormalCurves();
  if (!CohortHasFertileFemale()) {
    S.console.Disable("cmdJackknife");
    throw ProgramEnd{"Because there is no fertile female, you cannot run bootstrap.",
                     "No female reproduced offspring."};
  }
  S.console.Enable("cmdReadDataA1");
  SetResamplingMarkers();

  DataFileReader reader(S, P, W);
  reader.InputdataBoot();
  if (R.BootFastRun == "Yes") {
    R.BootSampleSize = R.BootFastRunAnswer == std::to_string(kYes) ? S.pool.OriginalCohortSize : 10;
    W.cohort.CohortSize = R.BootSampleSize;
  } else if (R.SameBootstrap != "Yes") {
    BeginBootstrap();
  }

  ShowRunningText();
  begin_ = std::chrono::steady_clock::now();
  const std::time_t beginClock = std::time(nullptr);
  R.BootBeginText = "Bootstrap began at: " + ClockText(beginClock);
  R.BootDateText = ClockText(beginClock);
  RunSampleLoop();

  BootstrapStatistics stats(S, P, W);
  stats.Boot01Partial();

  const double d = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin_).count();
  R.LoopSeconds = d;
  R.BootEndText = "Bootstrap ended at: " + ClockText(std::time(nullptr));
  R.BootTotalTimeText = TimeText(d, R.BootTotalTimeText);
  P.Status("lblBootBegin", R.BootBeginText);
  P.Status("lblBootEnd", R.BootEndText + "\nTotal time = " + R.BootTotalTimeText);
  std::string writing = "Writing output files. Please wait for the R0 bar chart.\nFor B <= 100000, it will take about 2 sec ~10 min.";
  if (R.BootB >= 1000000) writing += "\nFor B = 1 million, it will take 30 min or longer.";
  P.Status("lblBootMsg", writing);

  P.Beep();
  WriteSampleRecord();
  bool sortStep = true;
  AskPercentileWork(sortStep);
  if (sortStep) SortAndWritePercentiles();

  StageStatsEngine(S, P, W).Life08();
  LxMxConfidenceLimits();
  stats.Boot01();
  WriteColumnFiles();
  P.ShowChart(ShowFreqR0(S));
  S.console.Disable("Command27");
  S.console.Disable("Command28");

  R.BootstrapCompleted = "yes";
  S.console.Enable("showBootandJackResult");
  const auto filesBegin = std::chrono::steady_clock::now();
  const double total = std::chrono::duration<double>(filesBegin - begin_).count();
  P.Status("lblBootEnd", "Total time = " + TimeText(total, R.BootTotalTimeText));
  S.console.Disable("cmdJackknife");
  S.console.Enable("cmdBootLx");
  S.console.Enable("cmdBootMx");
  if (R.BootNormalCurves == "Yes") WriteNormalCurveFiles();
  S.console.Enable("cmdShowCumuFreqinProbit");
  CountIndividualFrequencies();

  P.Beep();
  const double t = std::chrono::duration<double>(std::chrono::steady_clock::now() - filesBegin).count();
  std::string printing = "Total time for printing and sorting =";
  if (t < 120)
    printing += TwoDecimals(t) + " sec.";
  else if (t < 3600)
    printing += TwoDecimals(t / 60) + " min.";
  else
    printing += TwoDecimals(t / 3600) + " hr.";
  P.Beep();
  P.MsgBox("Analysis completed! Congratulation!\n" + printing + "\n\nPlease read " + S.identity.DataFileBase +
               "_0A_Life Table_Output.txt.\n\nRecord of bootstrap samples are saved in " + R.RecordFilePath + ".",
           "Task completed", kOKOnly);
  S.console.Enable("cmdSortAndCountLT");
  S.console.Disable("cmdReadDataA1");
}

void BootstrapDriver::ShowRunningText() {
  P.Status("lblBootMsg", "I am running bootstrap. \n(B =" + PrintNumber(S.boot.BootB) +
                             ").\nPlease wait!\nDon't touch me!");
}

void BootstrapDriver::AskPercentileWork(bool& sortStep) {
  BootstrapRecord& R = S.boot;
  sortStep = true;
  if (R.BootFastRun == "Yes" || R.MajorFilesOnly == "Yes") return;
  if (ReadCohortValues(S).R0 <= 1) {
    R.PercentileTables15 = "No";
    R.PercentileTables025975 = "No";
    sortStep = false;
    return;
  }
  const std::string fastText =
      "Do you want to run fast steps?\nFast step offers:\n1. 0.025 and 0.975 percentiles files.\n"
      "   You can use them to show the uncertainty of ZELTOM.\n2. No detaied 0.1, 0.2, 0.3 files.\n"
      "3. Precision of R0 = 0 (exact).\n   (In general, you choose \"Yes\".)\n\nYes: Fast step.\n"
      "No: You can make your decision for each one.\n\n"
      "If you are not sure, you can choose \"No\" to make your decision later.";
  if (P.MsgBox(fastText, "Fast steps?", kYesNo) == kYes) {
    R.PercentileTables15 = "No";
    R.PercentileTables025975 = "Yes";
    R.R0Precision = 0;
    R.R0PrecisionSettled = true;
    R.BootFastRun = "Yes";
    return;
  }
  const std::string t2 =
      "Do you need life tables of 0.025 and 0.975 percentiles?\n\n"
      "The 0.025 and 0.975 percentile life tables can be used to show the uncertainty of simulation. \n"
      "You should copy these files to new folders and run KORVAN again to get ZELTOM data files. \n"
      "In general, you choose \"Yes\".\n"
      "Yes: I need life table files of 0.025 and 0.975 percentiles.\n"
      "No: I don't need them.";
  R.PercentileTables025975 = P.MsgBox(t2, "Percentile life tables?", kYesNo) == kYes ? "Yes" : "No";
  const std::string t3 =
      "Do you need life tables of 0.025, 0.05, 0.1, 0.15866, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.84135, 0.9, "
      "0.95, and 0.975 percentiles?\n"
      "There will be in total 15 life tables.\n"
      "If you want to prepare l(x) and m(x) for major bootstrap percentiles, you have to choose Yes.\n"
      "If you choose \"Yes\", it may take a few seconds longer.\n"
      "You can use these percentile life tables to prepare 15 ZELTOM files.\n"
      "These 15 ZELTOM files can be used to get the 15 simulation results.\n"
      "The 15 population sizes at specific date can be used to run \"Gen. boot\" to get the bootstrap "
      "results.\n"
      "Then you can compare the simulated population sizes of different treatments to see whether the "
      "difference is significant.\n"
      "In you don't want to run ZELTOM, you can choose \"No\".";
  R.PercentileTables15 = P.MsgBox(t3, "Percentile life tables?", kYesNo) == kYes ? "Yes" : "No";
  const std::string t4 =
      "Do you need 100 life tables (0.01, 0.02, ....., .98, and 0.99 percentiles? (There will be 100 life "
      "tables.)\n"
      "If you choose \"Yes\", it may take a few seconds longer.\n"
      "You can use these 100 percentile life tables to prepare 100 ZELTOM files.\n"
      "These 100 ZELTOM files can be used to get the 100 simulation results.\n"
      "The 100 population sizes at specific date can be used to run \"Gen. boot\" to get the bootstrap "
      "results.\n"
      "Then you can compare the simulated population sizes of different treatments to see whether the "
      "difference is significant.\n"
      "In you don't want to run ZELTOM, you can choose \"No\".";
  R.PercentileTables100 = P.MsgBox(t4, "100 life tables for every percentile?", kYesNo) == kYes ? "Yes" : "No";
  if (R.BootFastRun != "Yes" && !R.R0PrecisionSettled) {
    const std::string t5 =
        "Enter the precision for grouping Ro: 0 = Exact, 1 = 10^(-10), 2 = 10^(-11), 3 = 10^(-12), 4 = "
        "10^(-13), 5 = 10^(-14),6 = 10^(-15).";
    const std::string a = P.InputBox(t5, "Enter precision level", "0");
    if (a.empty()) throw ProgramEnd{"The program ends here (Cancel at \"Enter precision level\").", "Enter precision level"};
    R.R0Precision = CInt16(NumberOfText(a));
    R.R0PrecisionSettled = true;
  }
}

void BootstrapDriver::LxMxConfidenceLimits() {
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

}  // namespace korvan
