#pragma once
// "A3. Bootstrap": the dialogue of a run, the pool, the run of the samples (BootstrapRun), and
// the statistics and report after it.
#include <chrono>
#include <string>

#include "run/run_context.h"

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
  void LoadFastSettings();

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
};

}  // namespace korvan
