#include "bootstrap/replicate_chain.h"

#include "engine/life_table_engine.h"
#include "engine/population_parameters.h"
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
  ParameterEngine params(S, P, W);
  if (S.options.AnalysisMethod == "Calculus") {
    params.Life05();
    params.Life05a();
  } else if (S.options.AnalysisMethod == "Matrix") {
    params.Life05ForMatrix();
    params.Life05AForMatrix();
  }
  // Predation rates are a side analysis the program doesn't carry.
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
double SampleMx(const Workspace& W, int x) { return W.params.Mx(x); }

}  // namespace korvan
