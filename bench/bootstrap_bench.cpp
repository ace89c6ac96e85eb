// "A3. Bootstrap" with B = 100,000 on a cohort of 100 individuals in 6 stages with about 60
// days of life: the whole command with its files, on all cores. Counters: the seconds of the
// loop and of the rest (statistics and files), and the peak memory of the process.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <atomic>
#include <cstdlib>
#include <new>

#include "commands/bootstrap_driver.h"
#include "commands/basic_run_driver.h"
#include "run/run_context.h"

namespace {

using namespace korvan;

class BenchPrompts : public PromptService {
 public:
  std::map<std::string, std::string> answers;
  int MsgBox(const std::string&, const std::string& title, int, int) override {
    const std::string& a = answers[title];
    return a == "Yes" ? kYes : a == "No" ? kNo : a == "Cancel" ? kCancel : kOK;
  }
  std::string InputBox(const std::string&, const std::string& title, const std::string& def) override {
    auto it = answers.find(title);
    return it == answers.end() ? def : it->second;
  }
  std::string ChooseFile(const std::string&) override { return ""; }
};

// The reference cohort: 100 individuals in 6 stages with about 60 days of life
// (bench/beetle.txt, written by bench/make_beetle.py).
std::string CohortText() {
  std::ifstream in(std::string(KORVAN_BENCH_DIR) + "/beetle.txt");
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

// Allocations made on the workers of the loop (every thread but the one that runs the
// command): the loop is to allocate nothing per replicate.
std::atomic<long> gWorkerAllocations{0};
std::atomic<bool> gCounting{false};
std::thread::id gCommandThread;

long PeakKiB() {
  std::ifstream in("/proc/self/status");
  std::string line;
  while (std::getline(in, line))
    if (line.rfind("VmHWM:", 0) == 0) return std::stol(line.substr(6));
  return 0;
}

void BM_BootstrapCommand(benchmark::State& state) {
  const auto dir = std::filesystem::temp_directory_path() / "korvan_bootstrap_bench";
  std::filesystem::create_directories(dir);
  const std::string path = (dir / "cohort.txt").string();
  std::ofstream(path) << CohortText();
  for (auto _ : state) {
    state.PauseTiming();
    BenchPrompts P;
    P.answers["Task completed"] = "OK";
    auto S = std::make_unique<Session>();
    S->StartUp();
    S->identity.DataFilePath = path;
    S->identity.DataFileBase = path.substr(0, path.size() - 4);
    S->header.RegularLifeTable = "Yes";
    S->options.MatingMode = "Yes";
    S->options.FastRun = "Yes";
    S->options.OutputLevel = "No";
    BasicRunDriver(*S, P).cmdBasicRunA2_Click();
    S->runControl.hasSeed = true;
    S->runControl.seed = 1;
    S->runControl.threads = static_cast<int>(state.range(0));
    S->runControl.quiet = true;
    S->boot.MaxBootB = static_cast<double>(state.range(1));  // the B of a fast run
    P.answers = {{"Fast run for bootstrap?", "Yes"}, {"More bars for histogram chart?", "Yes"},
                 {"Normal density curve?", "No"}};
    state.ResumeTiming();
    gCommandThread = std::this_thread::get_id();
    gWorkerAllocations = 0;
    gCounting = true;
    const auto t0 = std::chrono::steady_clock::now();
    BootstrapDriver(*S, P).cmdBootstrap_Click();
    gCounting = false;
    const double total = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    state.counters["B"] = S->boot.BootB;
    state.counters["loop_s"] = S->boot.LoopSeconds;
    state.counters["after_loop_s"] = total - S->boot.LoopSeconds;
    state.counters["worker_allocs"] = static_cast<double>(gWorkerAllocations.load());
  }
  state.counters["peak_MiB"] = static_cast<double>(PeakKiB()) / 1024.0;
}
BENCHMARK(BM_BootstrapCommand)->Args({2, 100000})->Args({1, 100000})->Args({2, 10000})->Iterations(1)->Unit(benchmark::kSecond)->UseRealTime();

}  // namespace

// Every allocation of the program goes through here; those of the loop's workers are counted.
void* operator new(std::size_t n) {
  if (gCounting.load(std::memory_order_relaxed) && std::this_thread::get_id() != gCommandThread) ++gWorkerAllocations;
  if (void* p = std::malloc(n == 0 ? 1 : n)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
