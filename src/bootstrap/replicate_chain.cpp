#include "bootstrap/replicate_chain.h"

#include "engine/life_table_engine.h"
#include "engine/stage_statistics.h"

namespace korvan {

void ReplicateChain::RunEngine() {
  LifeTableEngine life(S, P, W);
  StageStatsEngine stats(S, P, W);
  life.Life01();
  life.Life02();
  stats.CountOvipositionDays();
  stats.AgeFecundityFromBirthBoot();
  stats.CountOvipositionPeriodBoot();
  stats.Life10boot();
  life.Life03();
  life.Life04();
  // Population parameters: Life05 and Life05a, or their Matrix twins, by AnalysisMethod.
  stats.APOPandTPOPforBoot();
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
double SampleMx(const Workspace& W, int x) {
  (void)W;
  (void)x;
  return 0;
}

}  // namespace korvan
