#pragma once
// The run of a bootstrap once its settings stand: the loop over samples 1..B on the threads of
// the run, the limits of l(x) and m(x) after it, and the steps of the result files.
#include <chrono>

#include "run/run_context.h"

namespace korvan {

class BootstrapRun : public Procedures {
 public:
  using Procedures::Procedures;

  // When the run began, for the estimate of its total time.
  std::chrono::steady_clock::time_point begin = std::chrono::steady_clock::now();

  // The loop over samples 1..B (step 10), on the threads of the run.
  void RunSampleLoop();
  // After the loop: the limits of l(x) and m(x), centred on the cohort's values.
  void LxMxConfidenceLimits();

  // Progress and its estimate (the console's labels), from the count of samples done.
  void cmdBootstrap04();

  // Steps of the result files after the loop: the record of samples, the sorting and the
  // percentile life tables, the column files, the normal curves, the counts of individuals.
  void WriteSampleRecord();
  void SortAndWritePercentiles();
  void WriteColumnFiles();
  void WriteNormalCurveFiles();
  void CountIndividualFrequencies();
  // The contributions to the pooled r and lambda (a contribution analysis, only effective samples).
  void WriteContributionFiles();

 private:
  void WriteMajorPercentileLxMx();

  long doneSamples_ = 0;
  double estimate_ = -1;
  long estimateCount_ = 0;
};

// Keeps l(x) and m(x) of the sample in hand when it is one of the major percentiles' samples.
void KeepMajorPercentileColumns(SessionStore& S, const Workspace& W);

}  // namespace korvan
