#pragma once
// The jackknife: each individual of the cohort left out in turn, the analysis repeated on the
// cohort less it, and the pseudo-values N x - (N - 1) x(i) of r, lambda, R0, T and GRR with
// their means and standard errors, the report and the files for other programs.
#include <string>

#include "run/run_context.h"
#include "text/text_file.h"

namespace korvan {

class Jackknife : public Procedures {
 public:
  using Procedures::Procedures;

  // The pass of the whole cohort, then one pass per individual left out (JackNo = 1..N), each
  // on the cohort read again from the data file into the workspace W. The engine files the
  // reduced cohorts' parameters and pseudo-r under JackNo.
  void RunPasses();
  // Removes individual JackNo from the cohort in hand: the records after it move up one place.
  void jackknif();
  // The other pseudo-values, the statistics of the ten columns, the classes of pseudo-r and
  // pseudo-R0, and the report "_0_Output-Jackknife.txt".
  void jack01();
  void WriteJackknifeForTtest();
  void WriteJackknifeInRow();
  void WriteJackknifeFrequency();

 private:
  void EnginePass();
};

}  // namespace korvan
