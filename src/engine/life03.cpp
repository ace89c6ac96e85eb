// Life03: the day-by-day walk of every individual through its stages into n(x,j), with the
// growth and development probabilities g(x,j) and d(x,j) built as sums of 1/n; then the
// female fecundity on the age axis, s(x,j), the stage age ranges and the cohort's cost.
#include "engine/life_table_engine.h"
#include "text/short_text.h"
#include "text/numbers.h"

namespace korvan {

void LifeTableEngine::Life03() {
  FlowEngine("Life03");
  auto& T = W.tables;
  auto& L = W.lifeTable;
  const int m = S.header.StageCount;
  for (long x = 0; x <= T.LastAge + 1; ++x) {
    for (long j = 1; j <= m + 1; ++j) {
      T.Nxj(x, j) = 0;
      T.Gxj(x, j) = 0;
      T.Dxj(x, j) = 0;
      T.Fxj(x, j) = 0;
      T.Sxj(x, j) = 0;
      T.Pxj(x, j) = 0;
      T.Qxj(x, j) = 0;
      T.Mxj(x, j) = 0;
      L.FxjTotal(x, j) = 0;
    }
    T.NAge(x) = 0;
    T.Lx(x) = 0;
    L.FxjCumulative(x) = 0;
  }
  T.Nxj(0, 1) = W.cohort.CohortSize;
  Life03Gosub120();
  Life03Gosub1050();
}

namespace {

// Takes the day of entry off the duration of the stage just entered; a negative duration that
// runs out marks the individual dead.
inline void EnterStage(double& w2, int& stage, int dead) {
  if (w2 > 0) {
    w2 -= 1;
  } else {
    w2 += 1;
    if (w2 == 0) stage = dead;
  }
}

// The steps of the walk of individual i at age x. Every addition to g(x-1,k) or d(x-1,k) adds
// 1/n(x-1,k) of one and the same row k; `inverse(k)` gives it (n(x-1,.) is complete by then).

// A preadult stage before the last one: stay, or move to the next stage.
template <class Inverse>
inline void WalkPreadult(AgeStageTables& T, LifeTableWork& L, int m, int i, int x, Inverse inverse) {
  int& stage = L.CurrentStage(i);
  const int k = stage;
  double& w = L.RemainingDuration(i, k);
  if (w != 0) {
    T.Nxj(x, k) += 1;
    T.Gxj(x - 1, k) += inverse(k);
    if (w > 0) {
      w -= 1;
    } else {
      w += 1;
      if (w == 0) stage = m + 1;
    }
  } else {
    stage += 1;
    T.Dxj(x - 1, k) += inverse(k);
    T.Nxj(x, k + 1) += 1;
    EnterStage(L.RemainingDuration(i, k + 1), stage, m + 1);
  }
}

// The last preadult stage: a move goes to the female or to the male adult stage. The move to
// the female stage is kept in d(x,m-1), the move to the male stage in d(x,m).
template <class Inverse>
inline void WalkLastPreadult(AgeStageTables& T, LifeTableWork& L, const Cohort& C, int m, int i, int x,
                             Inverse inverse) {
  int& stage = L.CurrentStage(i);
  const int k = stage;
  double& w = L.RemainingDuration(i, k);
  if (w != 0) {
    T.Nxj(x, k) += 1;
    T.Gxj(x - 1, k) += inverse(k);
    if (w > 0) {
      w -= 1;
    } else {
      w += 1;
      if (w == 0) stage = m + 1;
    }
  } else {
    stage += 1;
    if (IsText(C.IndividualSex(i), 'F')) {
      T.Dxj(x - 1, k) += inverse(k);
      T.Nxj(x, k + 1) += 1;
    } else {
      T.Dxj(x - 1, k + 1) += inverse(k);
      T.Nxj(x, k + 2) += 1;
    }
    EnterStage(L.RemainingDuration(i, k + 1), stage, m + 1);
  }
}

// The adult stage: females count in row m, every other sex in row m + 1.
template <class Inverse>
inline void WalkAdult(AgeStageTables& T, LifeTableWork& L, const Cohort& C, int m, int i, int x, Inverse inverse) {
  int& stage = L.CurrentStage(i);
  double& w = L.RemainingDuration(i, stage);
  if (w == 0) {
    stage += 1;  // its last day was the day before
    return;
  }
  const int row = IsText(C.IndividualSex(i), 'F') ? m : m + 1;
  T.Nxj(x, row) += 1;
  T.Gxj(x - 1, row) += inverse(row);
  w -= 1;
  if (w == 0) stage = m + 1;
}

}  // namespace

void LifeTableEngine::Life03Gosub120() {
  FlowEngine("Life03Gosub120");
  auto& T = W.tables;
  auto& L = W.lifeTable;
  const auto& C = W.cohort;
  const int m = S.header.StageCount;
  const int N = C.CohortSize;

  for (int i = 1; i <= N; ++i)
    for (int j = 1; j <= m; ++j) L.RemainingDuration(i, j) = C.StageDuration(i, j);

  // Age 0: everybody is in stage 1, and n(0,1) = N stands; the day is taken off.
  for (int i = 1; i <= N; ++i) {
    double& w = L.RemainingDuration(i, 1);
    L.CurrentStage(i) = 1;
    if (w > 0) {
      w -= 1;
    } else if (w < 0) {
      w += 1;
      if (w >= 0) L.CurrentStage(i) = m + 1;  // its only day was age 0
    }
  }

  // With a flow record the steps run as the procedures that record themselves; otherwise the
  // same steps run in line, with 1/n(x-1,k) divided once per age and row.
  const std::string& flowMode = S.options.FlowMode;
  const bool recorded = !(flowMode.empty() || flowMode[0] == 'N');
  double inverse[kMaxStage + 3];
  for (int x = 1; x <= T.LastAge; ++x) {
    L.WalkAge = x;
    if (recorded) {
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
      continue;
    }
    for (int k = 1; k <= m + 1 && k <= kMaxStage; ++k) inverse[k] = 1 / T.Nxj(x - 1, k);
    auto rowInverse = [&](int k) { return k >= 1 && k <= kMaxStage ? inverse[k] : 1 / T.Nxj(x - 1, k); };
    for (int i = 1; i <= N; ++i) {
      const int k = L.CurrentStage(i);
      if (k > m) continue;
      L.WalkIndividual = i;
      if (k < m - 1)
        WalkPreadult(T, L, m, i, x, rowInverse);
      else if (k == m - 1)
        WalkLastPreadult(T, L, C, m, i, x, rowInverse);
      else
        WalkAdult(T, L, C, m, i, x, rowInverse);
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
  auto& T = W.tables;
  const int x = W.lifeTable.WalkAge;
  WalkPreadult(T, W.lifeTable, S.header.StageCount, W.lifeTable.WalkIndividual, x,
               [&](int k) { return 1 / T.Nxj(x - 1, k); });
}

// The last preadult stage.
void LifeTableEngine::Life03Gosub410() {
  FlowEngine("Life03Gosub410");
  auto& T = W.tables;
  const int x = W.lifeTable.WalkAge;
  WalkLastPreadult(T, W.lifeTable, W.cohort, S.header.StageCount, W.lifeTable.WalkIndividual, x,
                   [&](int k) { return 1 / T.Nxj(x - 1, k); });
}

// The adult stage.
void LifeTableEngine::Life03Gosub700() {
  FlowEngine("Life03Gosub700");
  auto& T = W.tables;
  const int x = W.lifeTable.WalkAge;
  WalkAdult(T, W.lifeTable, W.cohort, S.header.StageCount, W.lifeTable.WalkIndividual, x,
            [&](int k) { return 1 / T.Nxj(x - 1, k); });
}

void LifeTableEngine::Life03Gosub1050() {
  FlowEngine("Life03Gosub1050");
  auto& T = W.tables;
  auto& L = W.lifeTable;
  const auto& C = W.cohort;
  const int m = S.header.StageCount;
  const int N = C.CohortSize;
  const int last = T.LastAge;

  // Each female's daily fecundity moves from her adult days to the age axis.
  for (int i = 1; i <= N; ++i) {
    if (!IsText(C.IndividualSex(i), 'F')) continue;
    const double P = m >= 2 ? L.CumulativeDuration(i, m - 1) : 0;
    for (int a = 1; a <= C.MaxLongevity; ++a) {
      if (a <= P) continue;
      const double e = C.Fecundity(i, static_cast<long>(CIntValue(a - P)));
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
