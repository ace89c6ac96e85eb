#pragma once
// "A3. Bootstrap": the dialogue of a run, the pool, the loop of samples on all cores, and
// the statistics and report after it.
#include <chrono>
#include <cmath>
#include <cstdint>
#include <string>

#include "store/procedures.h"

namespace korvan {

class BootstrapDriver : public Procedures {
 public:
  using Procedures::Procedures;

  // The command "A3. Bootstrap".
  void cmdBootstrap_Click();

  // The dialogue.
  void cmdBootstrap01();
  void cmdBootstrap02();
  void BeginBootstrap();
  void ReadSameBootstrapData();
  void LoadFastSettings();

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

 private:
  void AskFastRun();
  void AskSameBootstrap();
  void AskSpecificSamples();
  void AskMajorPercentiles();
  void AskHistogramAndNormalCurves();
  void AskPercentileWork(bool& sortStep);
  bool CohortHasFertileFemale() const;
  void SetResamplingMarkers();
  void ShowRunningText();
  std::string TimeText(double seconds, const std::string& before) const;
  void WriteMajorPercentileLxMx();

  std::chrono::steady_clock::time_point begin_;
  long doneSamples_ = 0;
  double estimate_ = -1;
  long estimateCount_ = 0;
};

// Keeps l(x) and m(x) of the sample in hand when it is one of the major percentiles' samples.
void KeepMajorPercentileColumns(SessionStore& S, const Workspace& W);

}  // namespace korvan
