#pragma once
// Drawing, classifying and preparing bootstrap samples, and repeating the samples of a
// record file. One Resampling object serves one worker: it writes the sample in hand into
// that worker's Workspace and the sample's record at index Boot of the shared lists.
#include <cstdint>

#include "bootstrap/uniform_random.h"
#include "store/procedures.h"

namespace korvan {

// k = round(u * N + 0.5) with a tie to the even number; 0 and N + 1 are drawn again.
int DrawIndividual(UniformGenerator& gen, int N);

// Marks of a sample for the lists of effective and ineffective samples, which the driver
// fills in sample order once the samples are drawn.
enum ListMark : std::int8_t { kMarkEffectiveList = 1, kMarkIneffectiveList = 2 };

class Resampling : public Procedures {
 public:
  Resampling(SessionStore& S, PromptService& P, Workspace& W, UniformGenerator& gen)
      : Procedures(S, P, W), gen_(gen) {}

  // Takes the sample number Boot of the workspace and draws or repeats that sample; on return
  // its label is set, and an effective sample stands prepared in the workspace's cohort.
  void cmdBoot03();
  void BootstrapFirstTime();
  void BootstrapSameboots();

  // Whether the sample drawn last passes the test of effective samples (InfertileCriterion).
  bool IsEffectiveDraw() const;

 private:
  void DrawSampleOnce();
  void CopyIndividual(int position, int k, bool stopAtDeath);
  void PrepareSampleForEngine();
  long SampleNo() const { return static_cast<long>(W.run.Boot); }

  UniformGenerator& gen_;
};

// Fills EffectiveList, IneffectiveList and their counts from the marks of samples 1..B, in
// sample order: the order in which one thread would have found them.
void GatherSampleLists(SessionStore& S);

}  // namespace korvan
