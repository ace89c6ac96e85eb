#include "bootstrap/replicate_chain.h"

#include "engine/life_table_engine.h"
#include "engine/population_parameters.h"
#include "engine/stage_statistics.h"

namespace korvan {

void ReplicateChain::RunEngine() {
  W.boot.sample.Clear();
  // The engine sees the session read-only: a worker writes its own workspace alone.
  const Session& session = S;
  LifeTableEngine life(session, S.channels, P, W);
  StageStatsEngine stats(session, S.channels, P, W);
  life.Life01();
  life.Life02();
  stats.CountOvipositionDays();
  stats.AgeFecundityFromBirthBoot();
  stats.CountOvipositionPeriodBoot();
  stats.Life10boot();
  life.Life03();
  life.Life04();
  ParameterEngine params(session, S.channels, P, W);
  if (S.options.AnalysisMethod == "Calculus") {
    params.Life05();
    params.Life05a();
  } else if (S.options.AnalysisMethod == "Matrix") {
    params.Life05ForMatrix();
    params.Life05AForMatrix();
  }
  if (S.options.PredationPresent == "Yes") {
    if (S.options.AnalysisMethod == "Matrix") params.StableAgeStageDistribution(true);
    life.CalculateNetPredationRate();
    life.CalculateFinitePredationRate();
  }
  stats.APOPandTPOPforBoot();
}

void ReplicateChain::FileReplicate() {
  const long b = static_cast<long>(W.run.Boot);
  const ReplicateRecord& rec = W.boot.sample;
  BootstrapRecord& R = S.boot;
  R.BootR(b) = rec.r;
  R.BootContributionSum(b) = rec.ContributionSum;
  R.BootLambda(b) = rec.lambda;
  R.BootR0(b) = rec.R0;
  R.BootT(b) = rec.T;
  R.BootGRR(b) = rec.GRR;
  R.BootBirthRate(b) = rec.BirthRate;
  R.BootSurvivalRate(b) = rec.SurvivalRate;
  R.BootDeathRate(b) = rec.DeathRate;
  R.BootFirstVxjAge(b) = rec.FirstVxjAge;
  R.BootFirstFxjAge(b) = rec.FirstFxjAge;
  R.BootPeakVxj(b) = rec.PeakVxj;
  R.BootPeakVxjAge(b) = rec.PeakVxjAge;
  R.BootAPOP(b) = rec.APOP;
  R.BootTPOP(b) = rec.TPOP;
  R.BootReproductiveFemales(b) = rec.ReproductiveFemales;
  R.BootLongevity(b) = rec.Longevity;
  R.BootOviDays(b) = rec.OviDays;
  R.BootOviPeriod(b) = rec.OviPeriod;
  R.BootC0(b) = rec.C0;
  R.BootQp(b) = rec.Qp;
  R.BootPsi(b) = rec.Psi;
  R.BootOmega(b) = rec.Omega;

  // The stages the engine reaches: the means 1..m, the moves on 1..m - 1, the shares of the
  // stable distribution and of the deaths 1..m + 1 (the second adult stage).
  LifeTableBootLists& L = S.lifeTable.BootLists();
  const int m = S.header.StageCount;
  for (int j = 1; j <= m + 1; ++j) {
    R.BootSsd(j, b) = rec.Ssd(j);
    L.BootStageDeathProb(j, b) = rec.StageDeathProb(j);
    L.BootStageEntry(j, b) = rec.StageEntry(j);
    if (j > m) continue;
    L.BootStageMean(j, b) = rec.StageMean(j);
    L.BootCumMean(j, b) = rec.CumMean(j);
    if (j < m) L.BootStageToNext(j, b) = rec.StageToNext(j);
    for (int t = 1; t <= S.header.TypeCount; ++t) {
      L.BootTypeStageMean(t, j, b) = rec.TypeStageMean(t, j);
      L.BootTypeCumMean(t, j, b) = rec.TypeCumMean(t, j);
    }
  }
  L.BootPreadultSurvival(b) = rec.PreadultSurvival;
  L.BootLxAtSpecificAge(b) = rec.LxAtSpecificAge;
  L.BootMedianAge(b) = rec.MedianAge;
  L.BootSpecificSurvivalAge(b) = rec.SpecificSurvivalAge;
  L.BootPreadultDeathProb(b) = rec.PreadultDeathProb;
  L.BootPreadultSurvivalByDeaths(b) = rec.PreadultSurvivalByDeaths;
}

AccumulatorRefs AccumulatorsOf(Workspace& W) {
  BootstrapWork& b = W.boot;
  LifeTableWork& l = W.lifeTable;
  return AccumulatorRefs{&l.LxSum,        &l.LxSumSquares,         &l.LxMax,          &l.LxMin,
                         &b.MxSum,        &b.MxSum2,               &b.MxSumSquares,   &b.MxMax,
                         &b.MxMin,        &b.BootNegRCount,        &b.BootLambdaBelow1Count,
                         &b.BootR0Below1Count, &l.LxReplicates};
}

double SampleLx(const Workspace& W, int x) { return W.tables.Lx(x); }
double SampleMx(const Workspace& W, int x) { return W.params.Mx(x); }

}  // namespace korvan
