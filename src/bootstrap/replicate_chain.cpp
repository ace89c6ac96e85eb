#include "bootstrap/replicate_chain.h"

namespace korvan {

void ReplicateChain::RunEngine() {
  // Life01, Life02, CountOvipositionDays, AgeFecundityFromBirthBoot, CountOvipositionPeriodBoot,
  // Life10boot, Life03, Life04; Life05 and Life05a (or their Matrix twins); APOPandTPOPforBoot.
}

AccumulatorRefs AccumulatorsOf(Workspace& W) {
  BootstrapWork& b = W.boot;
  return AccumulatorRefs{&b.LxSum,        &b.LxSumSquares,         &b.LxMax,          &b.LxMin,
                         &b.MxSum,        &b.MxSum2,               &b.MxSumSquares,   &b.MxMax,
                         &b.MxMin,        &b.BootNegRCount,        &b.BootLambdaBelow1Count,
                         &b.BootR0Below1Count};
}

double SampleLx(const Workspace& W, int x) { return W.tables.Lx(x); }
double SampleMx(const Workspace& W, int x) {
  (void)W;
  (void)x;
  return 0;
}

}  // namespace korvan
