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
#include <random>
#include <string>

#include "bootstrap/bootstrap_driver.h"
#include "engine/basic_run_driver.h"
#include "store/session_store.h"

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

// 100 individuals: egg, three larval instars, pupa, adult; a fifth die before the adult stage.
std::string CohortText() {
  std::mt19937 gen(20240507);
  auto pick = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(gen); };
  std::string t = "\"Project: Bench\"\n\"Bench\"\n\"25 C\"\n100\n2,6\n";
  t += "F,Egg,L1,L2,L3,Pupa,Female\nM,Egg,L1,L2,L3,Pupa,Male\nEgg,Pupa\n";
  for (int i = 1; i <= 100; ++i) {
    const int pre[5] = {pick(3, 4), pick(2, 3), pick(2, 3), pick(2, 4), pick(3, 5)};
    std::string line = std::to_string(i);
    if (i % 5 == 0) {
      const int dies = pick(1, 5);
      line += ",N";
      for (int j = 1; j < dies; ++j) line += "," + std::to_string(pre[j - 1]);
      line += ",-" + std::to_string(pre[dies - 1]);
      t += line + "\n";
      continue;
    }
    const bool female = i % 2 == 1;
    const int adult = pick(25, 45);
    line += female ? ",F" : ",M";
    for (int p : pre) line += "," + std::to_string(p);
    t += line + "," + std::to_string(adult) + "\n";
    if (!female) continue;
    std::string eggs;
    for (int d = 1; d <= adult; ++d) eggs += std::to_string(d < 3 ? 0 : pick(0, 9)) + (d % 20 == 0 ? "\n" : ",");
    t += eggs + "-1\n";
  }
  return t;
}

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
    auto S = std::make_unique<SessionStore>();
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
    const auto t0 = std::chrono::steady_clock::now();
    BootstrapDriver(*S, P).cmdBootstrap_Click();
    const double total = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    state.counters["B"] = S->boot.BootB;
    state.counters["loop_s"] = S->boot.LoopSeconds;
    state.counters["after_loop_s"] = total - S->boot.LoopSeconds;
  }
  state.counters["peak_MiB"] = static_cast<double>(PeakKiB()) / 1024.0;
}
BENCHMARK(BM_BootstrapCommand)->Args({2, 100000})->Args({1, 100000})->Args({2, 10000})->Iterations(1)->Unit(benchmark::kSecond)->UseRealTime();

}  // namespace
