// Life03: the day-by-day walk of every individual through its stages into n(x,j), with the
// growth and development probabilities g(x,j) and d(x,j) built as sums of 1/n; then the
// female fecundity on the age axis, s(x,j), the stage age ranges and the cohort's cost.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "engine/age_stage_rows.h"
#include "engine/female_days.h"
#include "engine/life_table_engine.h"
#include "text/short_text.h"
#include "text/numbers.h"

namespace korvan {

void LifeTableEngine::Life03() {
  FlowEngine("Life03");
  auto& T = W.tables;
  auto& L = W.lifeTable;
  const int m = S.header.StageCount;
  if (T.LastAge + 1 >= 0 && m >= 0) {
    // Each row's cells 1..m+1 cleared at once, once the last of them is found within the
    // bounds: beyond them its fault ends the run, as clearing cell by cell would.
    static_cast<void>(T.Nxj(T.LastAge + 1, m + 1));
    double* const arrays[] = {&T.Nxj(0, 1), &T.Gxj(0, 1), &T.Dxj(0, 1), &T.Fxj(0, 1), &T.Sxj(0, 1),
                              &T.Pxj(0, 1), &T.Qxj(0, 1), &T.Mxj(0, 1), &L.FxjTotal(0, 1)};
    const long stride = &T.Nxj(1, 1) - &T.Nxj(0, 1);
    ClearAgeStageRows(arrays, 9, stride, m + 1, T.LastAge + 2);
  }
  for (long x = 0; x <= T.LastAge + 1; ++x) {
    T.NAge(x) = 0;
    T.Lx(x) = 0;
    L.FxjCumulative(x) = 0;
  }
  T.Nxj(0, 1) = W.cohort.CohortSize;
  Life03Gosub120();
  Life03Gosub1050();
}

namespace {

// One individual in the walk: its stage, the days left of that stage (carried in hand), and
// its row of days left by stage, which gets `left` back whenever the stage is left. While the
// individual is in a stage up to m, `left` stands for row[stage].
struct Walker {
  int stage;
  double left;
  double* row;
};

// Enters the next stage and takes the day of entry off its duration; a negative duration that
// runs out marks the individual dead.
inline void EnterNext(Walker& v, int next, int dead) {
  v.stage = next;
  v.left = v.row[next];
  if (v.left > 0) {
    v.left -= 1;
  } else {
    v.left += 1;
    if (v.left == 0) {
      v.row[next] = v.left;
      v.stage = dead;
    }
  }
}

// The steps of the walk of an individual at age x. They hand the sink one more individual in
// n(x,row), Count(T, x, row), and the events of g and d: Stay(x, k), one more 1/n(x-1,k) for g(x-1,k); Move(x, cell, from), one
// more 1/n(x-1,from) for d(x-1,cell). Every addition to a cell of g or d adds the same value,
// 1/n of one row at age x-1, which is complete before age x is walked.

// A preadult stage: stay, or move to the next stage. A male leaving the last preadult stage
// (toMale) goes on to the male adult stage, one row further: the move to the female stage is
// kept in d(x,m-1), the move to the male stage in d(x,m).
template <class Sink>
inline void WalkPreadult(AgeStageTables& T, Walker& v, bool toMale, int m, int x, Sink& sink) {
  const int k = v.stage;
  if (v.left != 0) {
    sink.Count(T, x, k);
    sink.Stay(x, k);
    if (v.left > 0) {
      v.left -= 1;
    } else {
      v.left += 1;
      if (v.left == 0) {
        v.row[k] = v.left;
        v.stage = m + 1;
      }
    }
  } else {
    v.row[k] = v.left;
    const int past = toMale ? 1 : 0;
    sink.Move(x, k + past, k);
    sink.Count(T, x, k + 1 + past);
    EnterNext(v, k + 1, m + 1);
  }
}

// The adult stage: females count in row m, every other sex in row m + 1.
template <class Sink>
inline void WalkAdult(AgeStageTables& T, Walker& v, bool female, int m, int x, Sink& sink) {
  if (v.left == 0) {
    v.row[v.stage] = v.left;
    v.stage += 1;  // its last day was the day before
    return;
  }
  const int row = female ? m : m + 1;
  sink.Count(T, x, row);
  sink.Stay(x, row);
  v.left -= 1;
  if (v.left == 0) {
    v.row[v.stage] = v.left;
    v.stage = m + 1;
  }
}

template <class Sink>
inline void WalkStep(AgeStageTables& T, Walker& v, bool female, int m, int x, Sink& sink) {
  if (v.stage < m)
    WalkPreadult(T, v, v.stage == m - 1 && !female, m, x, sink);
  else
    WalkAdult(T, v, female, m, x, sink);
}

// The walker of individual i, in a stage up to m, from the workspace; Done puts it back.
inline Walker TakeWalker(LifeTableWork& L, int i, int m) {
  L.RemainingDuration(i, m);  // the row holds stages up to m
  Walker v{L.CurrentStage(i), 0, &L.RemainingDuration(i, 0)};
  v.left = L.RemainingDuration(i, v.stage);
  return v;
}
inline void PutWalker(LifeTableWork& L, int i, int m, const Walker& v) {
  if (v.stage <= m) v.row[v.stage] = v.left;
  L.CurrentStage(i) = v.stage;
}

// The sum 1/n + 1/n + ... (count terms, from 0, one addition after the other), for the n and
// counts of a cohort; computed once, on first use.
double RepeatedInverseSum(int n, int count) {
  constexpr int kN = static_cast<int>(kMaxIndividual) + 1;
  static const std::vector<double> table = [] {
    std::vector<double> t(static_cast<std::size_t>(kN) * kN, 0.0);
    for (int a = 1; a < kN; ++a) {
      const double inverse = 1 / static_cast<double>(a);
      double v = 0;
      for (int c = 1; c < kN; ++c) t[static_cast<std::size_t>(a) * kN + c] = v += inverse;
    }
    return t;
  }();
  return table[static_cast<std::size_t>(n) * kN + count];
}

// The events added to g and d at once, as the walk meets them.
struct AddingSink {
  AgeStageTables& T;
  void Count(AgeStageTables& tables, int x, int row) { tables.Nxj(x, row) += 1; }
  void Stay(int x, int k) { T.Gxj(x - 1, k) += 1 / T.Nxj(x - 1, k); }
  void Move(int x, int cell, int from) { T.Dxj(x - 1, cell) += 1 / T.Nxj(x - 1, from); }
};

// The events counted, to be added once the walk is over. The male move (cell m, from m - 1)
// is the only one whose cell and row differ, and the only one into d(x,m): it has its own count.
struct CountingSink {
  static constexpr int kRows = static_cast<int>(kMaxStage) + 2;
  std::uint16_t stay[kMaxAge + 1][kRows];
  std::uint16_t move[kMaxAge + 1][kRows];
  std::uint16_t maleMove[kMaxAge + 1];
  // Runs of days in a row: +1 at the first age of a run, -1 past its last; summed up by
  // AddRuns into n(x,row) and the stays.
  std::int16_t runEdge[kMaxAge + 2][kRows];
  void Clear(int lastAge) {
    for (int a = 0; a < lastAge && a <= kMaxAge; ++a) {
      for (int k = 0; k < kRows; ++k) stay[a][k] = move[a][k] = 0;
      maleMove[a] = 0;
    }
    for (int a = 0; a <= lastAge + 1 && a <= kMaxAge + 1; ++a)
      for (int k = 0; k < kRows; ++k) runEdge[a][k] = 0;
  }
  void Count(AgeStageTables& T, int x, int row) { T.Nxj(x, row) += 1; }
  void Stay(int x, int k, int times = 1) { stay[x - 1][k] = static_cast<std::uint16_t>(stay[x - 1][k] + times); }
  // Stays in row k at ages x..x+days-1, each counted in n(., k) too.
  void StayRun(int x, int days, int k, int times = 1) {
    runEdge[x][k] = static_cast<std::int16_t>(runEdge[x][k] + times);
    runEdge[x + days][k] = static_cast<std::int16_t>(runEdge[x + days][k] - times);
  }
  // The runs into n (whole counts: their order of addition does not matter) and the stays.
  void AddRuns(AgeStageTables& T, int m, int lastAge) {
    for (int k = 1; k <= m + 1 && k < kRows; ++k) {
      int inRun = 0;
      for (int x = 1; x <= lastAge; ++x) {
        inRun += runEdge[x][k];
        if (inRun == 0) continue;
        T.Nxj(x, k) += inRun;
        stay[x - 1][k] = static_cast<std::uint16_t>(stay[x - 1][k] + inRun);
      }
    }
  }
  void Move(int x, int cell, int from, int times = 1) {
    if (cell == from)
      move[x - 1][cell] = static_cast<std::uint16_t>(move[x - 1][cell] + times);
    else
      maleMove[x - 1] = static_cast<std::uint16_t>(maleMove[x - 1] + times);
  }
  // Adds 1/n(a,row) `count` times to a cell, one addition after the other as the walk did.
  static void AddRepeated(double& cell, int count, double n) {
    if (count == 0) return;
    if (cell == 0 && !std::signbit(cell) && n >= 1 && n <= kMaxIndividual && n == std::floor(n) &&
        count <= kMaxIndividual) {
      cell = RepeatedInverseSum(static_cast<int>(n), count);
      return;
    }
    const double inverse = 1 / n;
    double v = cell;
    for (int c = 0; c < count; ++c) v += inverse;
    cell = v;
  }
  void AddTo(AgeStageTables& T, int m, int lastAge) {
    for (int x = 1; x <= lastAge; ++x) {
      for (int k = 1; k <= m + 1 && k < kRows; ++k) {
        if (stay[x - 1][k]) AddRepeated(T.Gxj(x - 1, k), stay[x - 1][k], T.Nxj(x - 1, k));
        if (move[x - 1][k]) AddRepeated(T.Dxj(x - 1, k), move[x - 1][k], T.Nxj(x - 1, k));
      }
      if (maleMove[x - 1]) AddRepeated(T.Dxj(x - 1, m), maleMove[x - 1], T.Nxj(x - 1, m - 1));
    }
  }
};

// Hands the events on to the counting sink and notes them in a script (none: script null).
// A script that would run past its room is dropped and marked too long.
struct RecordingSink {
  CountingSink& sink;
  WalkScript* script;
  void Note(WalkEvent::Kind kind, int x, int days, int row, int from) {
    if (!script) return;
    if (script->count == WalkScript::kMaxEvents) {
      script->tooLong = true;
      script = nullptr;
      return;
    }
    WalkEvent& e = script->events[script->count++];
    e.kind = kind;
    e.x = static_cast<std::int16_t>(x);
    e.days = static_cast<std::int16_t>(days);
    e.row = static_cast<std::uint8_t>(row);
    e.from = static_cast<std::uint8_t>(from);
  }
  void Count(AgeStageTables& T, int x, int row) {
    sink.Count(T, x, row);
    Note(WalkEvent::kCount, x, 0, row, 0);
  }
  void Stay(int x, int k) {
    sink.Stay(x, k);
    Note(WalkEvent::kStay, x, 0, k, 0);
  }
  void StayRun(int x, int days, int k) {
    sink.StayRun(x, days, k);
    Note(WalkEvent::kRun, x, days, k, 0);
  }
  void Move(int x, int cell, int from) {
    sink.Move(x, cell, from);
    Note(WalkEvent::kMove, x, 0, cell, from);
  }
};

// Puts the events of a finished script in order of kind (whole counts: the order of their
// additions does not matter).
void SortByKind(WalkScript& script) {
  WalkEvent sorted[WalkScript::kMaxEvents];
  int at = 0;
  for (int kind = 0; kind < 4; ++kind) {
    for (int n = 0; n < script.count; ++n)
      if (script.events[n].kind == kind) sorted[at++] = script.events[n];
    script.ends[kind] = at;
  }
  std::copy(sorted, sorted + at, script.events);
}

// The events of a script, for `times` individuals who walked it (whole counts: the same as
// adding them one individual after the other).
void Replay(const WalkScript& script, int times, CountingSink& sink, AgeStageTables& T) {
  const WalkEvent* e = script.events;
  int n = 0;
  for (; n < script.ends[WalkEvent::kRun]; ++n) sink.StayRun(e[n].x, e[n].days, e[n].row, times);
  for (; n < script.ends[WalkEvent::kCount]; ++n) T.Nxj(e[n].x, e[n].row) += times;
  for (; n < script.ends[WalkEvent::kStay]; ++n) sink.Stay(e[n].x, e[n].row, times);
  for (; n < script.ends[WalkEvent::kMove]; ++n) sink.Move(e[n].x, e[n].row, e[n].from, times);
}

// The script kept for the pool individual whose rows stand at place i, or nullptr.
WalkScript* KeptWalk(Cohort& C, int i, int poolSize) {
  const int k = C.RowSource(i);
  if (k < 1 || k > poolSize || poolSize > kMaxIndividual) return nullptr;
  if (C.WalkScripts.size() != static_cast<std::size_t>(poolSize) + 1)
    C.WalkScripts.assign(static_cast<std::size_t>(poolSize) + 1, WalkScript{});  // once a workspace
  return &C.WalkScripts[static_cast<std::size_t>(k)];
}

// Age 0 of individual i: it is in stage 1 and n(0,1) = N stands; the day is taken off.
inline void StartWalk(LifeTableWork& L, int i, int m) {
  double& w = L.RemainingDuration(i, 1);
  L.CurrentStage(i) = 1;
  if (w > 0) {
    w -= 1;
  } else if (w < 0) {
    w += 1;
    if (w >= 0) L.CurrentStage(i) = m + 1;  // its only day was age 0
  }
}

}  // namespace

void LifeTableEngine::Life03Gosub120() {
  FlowEngine("Life03Gosub120");
  auto& T = W.tables;
  auto& L = W.lifeTable;
  auto& C = W.cohort;
  const int m = S.header.StageCount;
  const int N = C.CohortSize;

  // With a flow record the walk goes age by age through the procedures that record
  // themselves. Otherwise it goes individual by individual, each one's days in a row (an
  // individual's steps depend on nobody else's), and the sums of g and d follow.
  const std::string& flowMode = S.options.FlowMode;
  const bool recorded = !(flowMode.empty() || flowMode[0] == 'N');
  if (recorded || m + 1 >= CountingSink::kRows || T.LastAge > kMaxAge || N > kMaxIndividual) {
    for (int i = 1; i <= N; ++i)
      for (int j = 1; j <= m; ++j) L.RemainingDuration(i, j) = C.StageDuration(i, j);
    for (int i = 1; i <= N; ++i) StartWalk(L, i, m);
    for (int x = 1; x <= T.LastAge; ++x) {
      L.WalkAge = x;
      for (int i = 1; i <= N; ++i) {
        const int k = L.CurrentStage(i);
        if (k > m) continue;
        L.WalkIndividual = i;
        if (k < m - 1)
          Life03Gosub850();
        else if (k == m - 1)
          Life03Gosub410();
        else
          Life03Gosub700();
      }
    }
  } else {
    static thread_local CountingSink counts;  // made once per thread; the walk allocates nothing
    counts.Clear(T.LastAge);
    const int poolSize = S.pool.OriginalCohortSize;
    // The pool individuals whose kept walks stand in this sample, and how often each was drawn.
    int draws[kMaxIndividual + 1] = {};
    int drawn[kMaxIndividual + 1];
    int distinct = 0;
    int lastWalked = 0;  // the individual walked last at the last age
    for (int i = 1; i <= N; ++i) {
      // A walk that ended before the last age, kept from an earlier sample, is added again.
      WalkScript* script = KeptWalk(C, i, poolSize);
      if (script && script->known && script->lastX <= T.LastAge) {
        const int k = C.RowSource(i);
        if (draws[k]++ == 0) drawn[distinct++] = k;
        if (script->lastX == T.LastAge && script->lastX > 0) lastWalked = i;
        continue;
      }
      if (script && (script->known || script->tooLong)) script = nullptr;  // nothing to note
      if (script) script->count = 0;
      RecordingSink sink{counts, script};
      for (int j = 1; j <= m; ++j) L.RemainingDuration(i, j) = C.StageDuration(i, j);
      StartWalk(L, i, m);
      int lastX = 0;
      if (L.CurrentStage(i) <= m) {
        const bool female = IsText(C.IndividualSex(i), 'F');
        Walker v = TakeWalker(L, i, m);
        for (int x = 1; x <= T.LastAge;) {
          if (v.stage > m) break;  // the stage only grows: dead or gone for good
          const int k = v.stage;
          const double left = v.left;
          const bool adult = k >= m;
          // A whole number of days left (in an adult stage, a positive one): each of them is
          // a day in the stage, counted in n and g, and the last one ends it only when the
          // individual dies in it or its adult life runs out. A move waits for the next step.
          if (left != 0 && left == std::floor(left) && std::fabs(left) <= kMaxAge && (!adult || left > 0)) {
            const int run = static_cast<int>(std::fabs(left));
            const int days = run < T.LastAge - x + 1 ? run : T.LastAge - x + 1;
            const int row = adult ? (female ? m : m + 1) : k;
            sink.StayRun(x, days, row);
            x += days;
            lastX = x - 1;
            v.left = left > 0 ? left - days : left + days;
            if (v.left == 0 && (adult || left < 0)) {
              v.row[k] = v.left;
              v.stage = m + 1;
            }
            continue;
          }
          WalkStep(T, v, female, m, x, sink);
          lastX = x;
          ++x;
        }
        PutWalker(L, i, m, v);
      }
      if (lastX == T.LastAge && lastX > 0) lastWalked = i;
      // Ended on its own (dead or gone), not at the last age: the same for any later sample
      // whose last age reaches lastX.
      if (sink.script && L.CurrentStage(i) > m) {
        sink.script->lastX = lastX;
        SortByKind(*sink.script);
        sink.script->known = true;
      }
    }
    // Each kept walk once, for all the places that drew her.
    for (int d = 0; d < distinct; ++d) {
      const int k = drawn[d];
      Replay(C.WalkScripts[static_cast<std::size_t>(k)], draws[k], counts, T);
      draws[k] = 0;
    }
    counts.AddRuns(T, m, T.LastAge);
    counts.AddTo(T, m, T.LastAge);
    if (T.LastAge >= 1) {
      L.WalkAge = T.LastAge;
      if (lastWalked > 0) L.WalkIndividual = lastWalked;
    }
  }

  double sum = 0;
  for (int x = 0; x <= T.LastAge; ++x)
    for (int j = 1; j <= m + 1; ++j) sum += T.Nxj(x, j);
  L.SumNxj = sum;
}

// A preadult stage before the last one: stay, or move to the next stage.
void LifeTableEngine::Life03Gosub850() {
  FlowEngine("Life03Gosub850 (boot record)");
  AddingSink sink{W.tables};
  auto& L = W.lifeTable;
  const int m = S.header.StageCount, i = L.WalkIndividual;
  Walker v = TakeWalker(L, i, m);
  WalkPreadult(W.tables, v, false, m, L.WalkAge, sink);
  PutWalker(L, i, m, v);
}

// The last preadult stage.
void LifeTableEngine::Life03Gosub410() {
  FlowEngine("Life03Gosub410");
  AddingSink sink{W.tables};
  auto& L = W.lifeTable;
  const int m = S.header.StageCount, i = L.WalkIndividual;
  Walker v = TakeWalker(L, i, m);
  WalkPreadult(W.tables, v, !IsText(W.cohort.IndividualSex(i), 'F'), m, L.WalkAge, sink);
  PutWalker(L, i, m, v);
}

// The adult stage.
void LifeTableEngine::Life03Gosub700() {
  FlowEngine("Life03Gosub700");
  AddingSink sink{W.tables};
  auto& L = W.lifeTable;
  const int m = S.header.StageCount, i = L.WalkIndividual;
  Walker v = TakeWalker(L, i, m);
  WalkAdult(W.tables, v, IsText(W.cohort.IndividualSex(i), 'F'), m, L.WalkAge, sink);
  PutWalker(L, i, m, v);
}

void LifeTableEngine::Life03Gosub1050() {
  FlowEngine("Life03Gosub1050");
  auto& T = W.tables;
  auto& L = W.lifeTable;
  auto& C = W.cohort;
  const int m = S.header.StageCount;
  const int N = C.CohortSize;
  const int last = T.LastAge;

  // Each female's daily fecundity moves from her adult days to the age axis.
  for (int i = 1; i <= N; ++i) {
    if (!IsText(C.IndividualSex(i), 'F')) continue;
    const double P = m >= 2 ? L.CumulativeDuration(i, m - 1) : 0;
    // A whole number of preadult days: the ages up to P are passed over at once, and a - P
    // is whole already.
    const bool whole = P >= 0 && P < 1e9 && P == std::floor(P);
    if (whole && C.MaxLongevity > P && C.MaxLongevity - P <= kMaxAge && C.MaxLongevity <= kMaxAge + 1) {
      // Her days and the ages they fall on are all within the tables: the rows are walked
      // directly. A day without eggs adds a zero, which changes no sum: the cells start at +0
      // and take no negative value, so none of them is ever -0.
      const long from = static_cast<long>(P);
      const double* eggs = &C.Fecundity(i, 1);
      double* fx = &T.Fxj(from, m);
      const long stride = &T.Fxj(1, m) - &T.Fxj(0, m);
      const long days = DaysBeforeMark(C, i, m, C.MaxLongevity - from);
      for (long day = 1; day <= days; ++day, fx += stride) *fx += eggs[day - 1];
      continue;
    }
    for (int a = whole ? static_cast<int>(P) + 1 : 1; a <= C.MaxLongevity; ++a) {
      if (!whole && a <= P) continue;
      const long day = whole ? a - static_cast<long>(P) : static_cast<long>(CIntValue(a - P));
      const double e = C.Fecundity(i, day);
      if (e < 0) break;
      T.Fxj(a - 1, m) += e;
    }
  }
  for (int x = 0; x <= last; ++x) {
    if (T.Nxj(x, m) == 0) {
      L.FxjTotal(x, m) = 0;
    } else {
      L.FxjTotal(x, m) = T.Fxj(x, m);
      L.FxjCumulative(x) = L.FxjTotal(x, m) + (x > 0 ? L.FxjCumulative(x - 1) : 0);
      T.Fxj(x, m) /= T.Nxj(x, m);
    }
  }

  // Age range of every stage; a stage nobody reached keeps its former range.
  for (int j = 1; j <= m + 1; ++j) {
    int x = 0;
    while (x <= last && T.Nxj(x, j) <= 0) ++x;
    if (x > last) continue;
    L.StageFirstAge(j) = x;
    for (; x <= last; ++x)
      if (T.Nxj(x, j) > 0) L.StageLastAge(j) = x;
  }

  L.CohortCost = 0;
  L.CostExtra = 0;
  L.MeanLongevitySum = 0;
  const bool costs = S.header.RegularLifeTable != "Yes";
  const double maleCost = costs ? S.header.StageRearingCost(2, m) : 0;
  for (int j = 1; j <= m + 1; ++j) {
    L.StageSxSum(j) = 0;
    const double cost = costs ? (j < m + 1 ? S.header.StageRearingCost(1, j) : maleCost) : 0;
    const int to = L.StageLastAge(j) < last ? L.StageLastAge(j) : last;
    for (int x = L.StageFirstAge(j); x <= to; ++x) {
      T.Sxj(x, j) = T.Nxj(x, j) / N;
      if (costs) {
        L.CohortCost += T.Nxj(x, j) * cost;
        L.CostExtra = T.Sxj(x, j) * maleCost + L.CohortCost;
      }
      L.StageSxSum(j) += T.Sxj(x, j);
    }
    L.MeanLongevitySum += L.StageSxSum(j);
  }

  for (int j = 1; j <= m + 1; ++j) {
    double total = 0;
    for (int x = 0; x <= last; ++x) total += L.FxjTotal(x, j);
    L.StageFecundityTotal(j) = total;
  }
}

}  // namespace korvan
