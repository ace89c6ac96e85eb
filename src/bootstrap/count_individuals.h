#pragma once
// How often each individual of the cohort was drawn over all samples of a run.
#include "run/run_context.h"

namespace korvan {

class BootIndividualCounts : public Procedures {
 public:
  using Procedures::Procedures;
  // Counts the draws of individuals 1..N over samples 1..B into IndividualDraws and writes
  // "_0H_Boot individual counts.txt".
  void CountBootstrapIndFreq();
  Vec<long, 0, kMaxIndividual> IndividualDraws{"IndividualDraws"};
};

}  // namespace korvan
