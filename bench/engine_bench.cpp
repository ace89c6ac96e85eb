// Time of the engine's per-replicate steps on a cohort of 390 individuals (the largest a data
// file holds), as a bootstrap replicate runs them: stage statistics, the walk into n(x,j),
// f(x,j) and s(x,j), survival and l(x), and life expectancy.
#include <benchmark/benchmark.h>

#include <cmath>

#include "engine/life_table_engine.h"
#include "run/run_context.h"
#include "run/prompt_service.h"

namespace {

using namespace korvan;

class NoPrompts : public PromptService {
 public:
  int MsgBox(const std::string&, const std::string&, int, int) override { return kYes; }
  std::string InputBox(const std::string&, const std::string&, const std::string& d) override { return d; }
  std::string ChooseFile(const std::string&) override { return ""; }
};

// 390 individuals in 5 stages made by a fixed rule: about a fifth die as immatures, the
// adults split into females with a few eggs a day and males; adult lives up to 30 days.
void LoadCohort(SessionStore& S) {
  auto& H = S.header;
  auto& C = S.ws.cohort;
  const int m = 5;
  H.StageCount = m;
  H.TypeCount = 2;
  H.TypeCode(1) = "F";
  H.TypeCode(2) = "M";
  const char* names[] = {"", "Egg", "Larva", "Protonymph", "Deutonymph", "Female"};
  for (int j = 1; j <= m; ++j) {
    H.StageName(1, j) = names[j];
    H.StageName(2, j) = j < m ? names[j] : "Male";
  }
  H.StageName(1, m + 1) = "Male";
  H.SpecialGroup(1) = "Egg";
  H.SpecialGroup(2) = "Female";
  H.RegularLifeTable = "Yes";
  const int n = 390;
  C.CohortSize = n;
  H.CohortSizeRead = n;
  unsigned seed = 2024;
  auto next = [&](int range) {
    seed = seed * 1103515245u + 12345u;
    return static_cast<int>((seed >> 16) % static_cast<unsigned>(range));
  };
  C.MaxLongevity = 0;
  for (int i = 1; i <= n; ++i) {
    C.IndividualNo(i) = i;
    double life = 0;
    const int fate = next(10);
    if (fate < 2) {
      C.IndividualSex(i) = "N";
      const int stage = 1 + next(m - 1);
      for (int j = 1; j < stage; ++j) life += C.StageDuration(i, j) = 2 + next(3);
      C.StageDuration(i, stage) = -(1 + next(3));
      life += -C.StageDuration(i, stage);
    } else {
      C.IndividualSex(i) = fate < 7 ? "F" : "M";
      for (int j = 1; j < m; ++j) life += C.StageDuration(i, j) = 2 + next(3);
      const int adult = 5 + next(25);
      C.StageDuration(i, m) = adult;
      life += adult;
      if (C.IndividualSex(i) == "F") {
        for (int d = 1; d <= adult; ++d) C.Fecundity(i, d) = next(12);
        C.Fecundity(i, adult + 1) = -1;
      }
    }
    C.TotalLongevity(i) = static_cast<int>(life);
    if (C.TotalLongevity(i) > C.MaxLongevity) C.MaxLongevity = C.TotalLongevity(i);
  }
}

struct Replicate {
  Session S;
  NoPrompts P;
  LifeTableEngine E{S, P};
  Replicate() {
    LoadCohort(S);
    S.ws.run.IsResamplingFlag = "y";
    S.ws.run.ResampleKind = "b";
    S.ws.run.Boot = 1;
    S.lifeTable.BootLists();  // made once, before the loop
  }
};

void BM_StageStatistics(benchmark::State& state) {
  Replicate r;
  for (auto _ : state) {
    r.E.Life01();
    r.E.Life02();
    benchmark::DoNotOptimize(r.S.ws.lifeTable.StageMean(1));
  }
}
BENCHMARK(BM_StageStatistics);

void BM_WalkAndMatrices(benchmark::State& state) {
  Replicate r;
  r.E.Life01();
  for (auto _ : state) {
    r.E.Life03();
    benchmark::DoNotOptimize(r.S.ws.tables.Nxj(1, 1));
  }
}
BENCHMARK(BM_WalkAndMatrices);

void BM_SurvivalAndLx(benchmark::State& state) {
  Replicate r;
  r.E.Life01();
  r.E.Life03();
  long b = 1;
  for (auto _ : state) {
    r.S.ws.run.Boot = static_cast<double>(b);
    b = b % 100000 + 1;
    r.E.Life04();
    benchmark::DoNotOptimize(r.S.ws.tables.Lx(1));
  }
}
BENCHMARK(BM_SurvivalAndLx);

void BM_LifeExpectancy(benchmark::State& state) {
  Replicate r;
  r.E.Life01();
  r.E.Life03();
  r.E.Life04();
  for (auto _ : state) {
    r.E.AgeStageLifeExpectancy();
    benchmark::DoNotOptimize(r.S.ws.lifeTable.Exj(0, 1));
  }
}
BENCHMARK(BM_LifeExpectancy);

// The whole of one replicate's share of this family.
void BM_OneReplicate(benchmark::State& state) {
  Replicate r;
  long b = 1;
  for (auto _ : state) {
    r.S.ws.run.Boot = static_cast<double>(b);
    b = b % 100000 + 1;
    r.E.Life01();
    r.E.Life02();
    r.E.Life03();
    r.E.Life04();
    r.E.AgeStageLifeExpectancy();
    benchmark::DoNotOptimize(r.S.ws.lifeTable.Exj(0, 1));
  }
}
BENCHMARK(BM_OneReplicate);

}  // namespace
