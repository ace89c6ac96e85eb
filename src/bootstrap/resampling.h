#pragma once
// Drawing, classifying and preparing bootstrap samples, and repeating the samples of a
// record file. One Resampling object serves one worker: it writes the sample in hand into
// that worker's Workspace and the sample's record at index Boot of the shared lists.
#include <cstdint>
#include <vector>

#include "bootstrap/uniform_random.h"
#include "run/run_context.h"

namespace korvan {

// k = round(u * N + 0.5) with a tie to the even number; 0 and N + 1 are drawn again.
int DrawIndividual(UniformGenerator& gen, int N);

// Marks of a sample for the lists of effective and ineffective samples, which the driver
// fills in sample order once the samples are drawn.
enum ListMark : std::int8_t { kMarkEffectiveList = 1, kMarkIneffectiveList = 2 };

// What the draw of an individual of the pool adds to a sample, worked out once before the
// loop: the fecundity days to copy, the eggs of her adult days, whether she ever laid. An
// individual whose values leave the plain case (eggs that are not whole numbers, a fault on
// the way) is marked `plain = false` and is copied day by day as before.
struct PoolEntry {
  char code = '?';           // "F", "M" or "N"; '?' for any other sex text
  bool plain = false;        // the summary may stand for the day-by-day copy
  bool critical = false;     // a female of at least CriticalFemaleAge days
  bool laid = false;         // eggs > 0 on one of the copied days
  int fecundityDays = 0;     // days 1..fecundityDays are copied
  double eggs = 0;           // her eggs on days 1..d, a whole number
  bool longevityKnown = false;  // the longevity below stands (its sum met no fault)
  std::int32_t longevity = 0;   // the sum of her stage durations as a sample's preparation forms it
};
struct PoolSummary {
  std::vector<PoolEntry> individuals;  // index 1..N of the pool
  void Build(const SessionStore& S);
};

class Resampling : public Procedures {
 public:
  Resampling(Session& S, PromptService& P, Workspace& W, UniformGenerator& gen)
      : Procedures(S, P, W), gen_(gen) {}

  // Takes the sample number Boot of the workspace and draws or repeats that sample; on return
  // its label is set, and an effective sample stands prepared in the workspace's cohort.
  void cmdBoot03();
  void BootstrapFirstTime();
  void BootstrapSameboots();

  // Whether the sample drawn last passes the test of effective samples (InfertileCriterion).
  bool IsEffectiveDraw() const;

  // The summary of the pool made before the loop; without it every individual is copied day
  // by day. The summary must have been built from the pool in hand.
  void UsePoolSummary(const PoolSummary* summary) { pool_ = summary; }

 private:
  void DrawSampleOnce();
  void CopyIndividual(int position, int k, bool stopAtDeath);
  bool CopyPlainIndividual(int position, int k);
  void CopyConsumption(int position, int k);
  void PrepareSampleForEngine();
  long SampleNo() const { return static_cast<long>(W.run.Boot); }

  UniformGenerator& gen_;
  const PoolSummary* pool_ = nullptr;
  bool predation_ = false;  // consumption goes with the individuals; set once a sample
};

// Fills EffectiveList, IneffectiveList and their counts from the marks of samples 1..B, in
// sample order: the order in which one thread would have found them.
void GatherSampleLists(SessionStore& S);

}  // namespace korvan
