#pragma once
// How often each individual of the cohort was drawn over all samples of a run.
#include "run/run_context.h"

namespace korvan {

class BootIndividualCounts : public Procedures {
 public:
  using Procedures::Procedures;
  // Counts the draws of individuals 1..N over samples 1..B into S.boot.IndividualDraws and
  // writes "_0H_Boot individual counts.txt".
  void CountBootstrapIndFreq();
};

}  // namespace korvan
