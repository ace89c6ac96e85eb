#pragma once
// The engine's pass over one prepared sample, and what the driver gathers from a worker's
// workspace: the running sums of l(x) and m(x) and the counters of the engine.
#include "run/run_context.h"

namespace korvan {

// Steps 4 to 8 of the loop body: the engine's twins on the sample in the workspace, which fill
// the workspace only; then the chain files the replicate's values into the per-sample lists at
// its number (no two workers hold the same number).
class ReplicateChain : public Procedures {
 public:
  using Procedures::Procedures;
  void RunEngine();
  void FileReplicate();
};

// The accumulators of a workspace, wherever the engine keeps them.
struct AccumulatorRefs {
  Vec<double, 0, kMaxAge>*LxSum, *LxSumSquares, *LxMax, *LxMin;
  Vec<double, 0, kMaxAge>*MxSum, *MxSum2, *MxSumSquares, *MxMax, *MxMin;
  std::int32_t *NegR, *LambdaBelow1, *R0Below1;
  long* LxReplicates;  // the l(x) extremes start afresh at the first replicate of a stretch
};
AccumulatorRefs AccumulatorsOf(Workspace& W);

// The l(x) and m(x) of the sample in hand (after the engine's pass), for the file of the
// major percentiles.
double SampleLx(const Workspace& W, int x);
double SampleMx(const Workspace& W, int x);

}  // namespace korvan
