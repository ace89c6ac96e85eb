// Life04: survival p(x,j), mortality q(x,j) and its distribution, l(x), median and specific
// survival ages, stage totals, the bootstrap sums of l(x) and the stage rates. In a Basic Run
// it goes on to the figure files, the tables of the main output and life expectancy.
#include <cmath>
#include <cstdint>
#include <string>

#include "engine/life_table_engine.h"
#include "store/faults.h"
#include "store/rules.h"
#include "text/numbers.h"

namespace korvan {

void LifeTableEngine::Life04() {
  FlowEngine("Life04");
  W.tables.Lx(0) = 1;
  W.tables.Pxj(0, 1) = 1;
  Life04Gosub0290();
  if (W.run.IsResamplingFlag != "y") {
    Life04Gosub2400();
    Life04Gosub0530();
    AgeStageLifeExpectancy();
    PrintLifeExpectancy();
    PrintMatrixExj();
  }
}

double LifeTableEngine::AgeInDays(double x) const {
  return TimeUnitToDays(x, S.settings.TimeUnit);
}

bool LifeTableEngine::SurvivalRanOut(int x) {
  const auto& C = W.cohort;
  std::string text = "Bootstrap no. " + FullPrecision(W.run.Boot) +
                     ". Survival rate =0, at age = " + std::to_string(x) + ".\n" +
                     "Sampled individuals:";
  for (int i = 1; i <= C.CohortSize; ++i) {
    text += std::to_string(C.IndividualNo(i)) + " ";
    if (i % 80 == 0 && i <= 320) text += "\n";
  }
  text += "\nEffective fecundity =" + FullPrecision(W.lifeTable.FemaleFecunditySum) + "\n" +
          "Do you want to continue?\n" + "Yes = continue.  No = stop.";
  const int answer = P.MsgBox(text, "Error in data file", kYesNo);
  if (answer == kNo)
    throw ProgramEnd{"Bootstrap no. " + FullPrecision(W.run.Boot) +
                         ". Survival rate =0, at age = " + std::to_string(x) + ".",
                     "Error in data file"};
  return true;
}

void LifeTableEngine::Life04Gosub0290() {
  FlowEngine("Life04Gosub0290");
  auto& T = W.tables;
  auto& L = W.lifeTable;
  const int m = S.header.StageCount;
  const int N = W.cohort.CohortSize;
  const int last = T.LastAge;
  const double boot = W.run.Boot;

  for (int j = 1; j <= m + 1; ++j) L.StageDeathProb(j) = 0;
  for (int x = 0; x <= last; ++x) {
    T.NAge(x) = 0;
    L.OneMinusLx(x) = 0;
    // n(x) = CInt(n(x) + n(x,j)) stage by stage; with whole counts of moderate size every
    // rounding is exact and the sum stands for them.
    double counted = 0;
    bool whole = true;
    for (int j = 1; j <= m + 1; ++j) {
      const double s = T.Sxj(x, j);
      if (!(s > 0)) continue;
      double p;
      if (j < m - 1)
        p = T.Gxj(x, j) + T.Dxj(x, j);
      else if (j == m - 1)
        p = T.Gxj(x, j) + T.Dxj(x, j) + T.Dxj(x, j + 1);  // both adult stages start here
      else
        p = T.Gxj(x, j);
      T.Pxj(x, j) = p;
      const double q = p > 1 ? 0 : 1 - p;
      T.Qxj(x, j) = q;
      T.Mxj(x, j) = q * s;
      L.StageDeathProb(j) += q * s;
      const double n = T.Nxj(x, j);
      whole = whole && std::fabs(n) < 1e8 && n == static_cast<double>(static_cast<std::int32_t>(n));
      counted += n;
    }
    if (whole) {
      T.NAge(x) = static_cast<std::int32_t>(counted);
    } else {
      for (int j = 1; j <= m + 1; ++j)
        if (T.Sxj(x, j) > 0) T.NAge(x) = CInt(T.NAge(x) + T.Nxj(x, j));
    }
    T.Lx(x) = static_cast<double>(T.NAge(x)) / N;
    if (x == S.settings.SpecificAge) {
      if (boot > 0)
        W.boot.sample.LxAtSpecificAge = T.Lx(x);
      else if (BasicPass())
        Keep().lifeTable.LxAtSpecificAge = T.Lx(x);
    }
    if (BasicPass()) Keep().basic.OriginalLx(x) = T.Lx(x);
    if (T.Lx(x) == 0) {
      SurvivalRanOut(x);
      L.OneMinusLx(x) = 1 - T.Lx(x);
      return;
    }
    L.OneMinusLx(x) = 1 - T.Lx(x);
  }
  if (BasicPass()) Keep().lifeTable.OriginalLastAge = last;

  MedianAndSpecificAges();

  // Stage totals of the mortality distribution, and deaths by age.
  double preadult = 0;
  for (int j = 1; j <= m - 1; ++j) preadult += L.StageDeathProb(j);
  L.PreadultDeathProb = preadult;
  L.PreadultSurvivalByDeaths = 1 - preadult;
  if (boot > 0) {
    auto& rec = W.boot.sample;
    rec.PreadultDeathProb = preadult;
    rec.PreadultSurvivalByDeaths = 1 - preadult;
    for (int j = 1; j <= m + 1; ++j) rec.StageDeathProb(j) = L.StageDeathProb(j);
  } else if (BasicPass()) {
    Keep().lifeTable.OriginalPreadultDeathProb = preadult;
    for (int j = 1; j <= m + 1; ++j) Keep().lifeTable.OriginalStageDeathProb(j) = L.StageDeathProb(j);
  }
  for (int x = 0; x <= last; ++x) {
    double share = 0;
    int deaths = 0;
    for (int j = 1; j <= m + 1; ++j) {
      share += T.Mxj(x, j);
      const double dying = N * T.Mxj(x, j);
      if (dying != 0) deaths = CInt(deaths + dying);  // a whole number plus zero stands as it is
    }
    L.AgeDeathProb(x) = share;
    L.AgeDeaths(x) = deaths;
  }

  if (W.run.IsResamplingFlag == "y" && W.run.ResampleKind != "j" && boot > 0) AccumulateBootLx();
  StageRates();
}

// Median and specific survival ages: the first age with l(x) at most the level, in days; the
// days of a fractional time unit are rounded to two decimals. When l(x) never falls so low,
// LastAge, unrounded.
void LifeTableEngine::MedianAndSpecificAges() {
  const auto& T = W.tables;
  const double tu = S.settings.TimeUnit;
  const double boot = W.run.Boot;
  const int last = T.LastAge;
  const bool fraction = tu == 0.3 || tu == 0.16 || tu == 0.2 || tu == 0.25 || tu == 0.5;
  auto ageAt = [&](double level, bool strictlyAbove, double& out) {
    for (int x = 0; x <= last; ++x) {
      if (T.Lx(x) <= level) {
        const double days = TimeUnitToDaysWithHalf(x, tu);
        out = fraction ? static_cast<double>(CInt(days * 100)) / 100 : days;
        return;
      }
    }
    const double l = T.Lx(last);
    if (strictlyAbove ? l > level : l >= level) out = TimeUnitToDaysWithHalf(last, tu);
  };
  if (boot > 0) {
    auto& rec = W.boot.sample;
    ageAt(0.5, false, rec.MedianAge);
    if (S.settings.SpecificSurvival != 0.5) ageAt(S.settings.SpecificSurvival, true, rec.SpecificSurvivalAge);
  } else if (BasicPass()) {
    ageAt(0.5, false, Keep().lifeTable.MedianAge);
    if (S.settings.SpecificSurvival != 0.5)
      ageAt(S.settings.SpecificSurvival, true, Keep().lifeTable.SpecificSurvivalAge);
  }
}

// Sums of l(x) and its square, and the extremes, over the replicates of this workspace.
// Ages beyond the replicate's LastAge count with l(x) = 0, up to the Basic Run's last age.
void LifeTableEngine::AccumulateBootLx() {
  auto& L = W.lifeTable;
  const auto& T = W.tables;
  const int last = T.LastAge;
  int to = S.lifeTable.OriginalLastAge > last ? S.lifeTable.OriginalLastAge : last;
  if (to + 1 > kMaxAge) to = kMaxAge - 1;
  const bool start = W.run.Boot == 1 || L.LxReplicates == 0;
  for (int x = 0; x <= to + 1; ++x) {
    const double l = x <= last ? T.Lx(x) : 0;
    L.LxSum(x) += l;
    L.LxSumSquares(x) += l * l;
    if (start) {
      L.LxMax(x) = l;
      L.LxMin(x) = l;
    } else {
      if (l > L.LxMax(x)) L.LxMax(x) = l;
      if (l < L.LxMin(x)) L.LxMin(x) = l;
    }
  }
  ++L.LxReplicates;
}

void LifeTableEngine::StageRates() {
  auto& L = W.lifeTable;
  const int m = S.header.StageCount;
  const double N = W.cohort.CohortSize;
  const double boot = W.run.Boot;
  const auto& Sv = L.StageSurvivors;

  L.StageEntry(1) = 1;
  for (int j = 2; j <= m - 1; ++j) L.StageEntry(j) = Sv(j - 1) / N;
  L.StageEntry(m) = L.FemaleCount / N;
  L.StageEntry(m + 1) = L.MaleCountAdult / N;

  for (int j = 1; j <= m - 1; ++j) L.StageSurvival(j) = Sv(j) / N;
  L.StageSurvival(m) = 0;
  L.StageSurvival(m + 1) = 0;

  L.StageToNext(1) = Sv(1) / N;
  for (int j = 2; j <= m - 2; ++j) {
    if (Sv(j - 1) == 0) {
      WriteSxFig();
      throw ProgramEnd{"All insects died in stage " + std::to_string(j) + ". Program ended.",
                       "All insects died."};
    }
    L.StageToNext(j) = static_cast<double>(Sv(j)) / Sv(j - 1);
  }
  if (m > 2) {
    const double entry = L.StageEntry(m - 1);
    L.StageToNext(m - 1) = entry == 0 ? 0 : (L.FemaleCount + L.MaleCountAdult) / (N * entry);
  }
  L.StageToNext(m) = 0;
  L.StageToNext(m + 1) = 0;
  for (int j = 1; j <= m - 1; ++j) {
    if (boot > 0)
      W.boot.sample.StageToNext(j) = L.StageToNext(j);
    else if (BasicPass())
      Keep().lifeTable.OriginalStageToNext(j) = L.StageToNext(j);
  }
  for (int j = 1; j <= m + 1; ++j) {
    if (boot > 0)
      W.boot.sample.StageEntry(j) = L.StageEntry(j);
    else if (BasicPass())
      Keep().lifeTable.OriginalStageEntry(j) = L.StageEntry(j);
  }

  if (L.ReproductiveCount > 0) L.MeanFecundityFromF = L.StageFecundityTotal(m) / L.ReproductiveCount;
}

}  // namespace korvan
