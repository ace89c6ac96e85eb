#pragma once
// The records of the samples of a run (files no. 11 and 11A), from which a later run repeats
// the same samples.
#include <ctime>
#include <string>

#include "run/run_context.h"

namespace korvan {

class SampleRecords : public Procedures {
 public:
  using Procedures::Procedures;

  // The step of the driver after the loop: no. 11 with only effective samples, no. 11A with
  // all of them.
  void WriteSampleRecord();
  // File no. 11: the effective samples.
  void WriteEffectiveBootRecordForVoragen();
  // File no. 11A: every sample, the ineffective ones marked.
  void WriteAllBootstrapSamples();
  // Reads a record (file no. 11 or 11A) that a run of the same samples repeats.
  void ReadSameBootstrapData();

  // The moment in the names of the files (the clock when not set).
  std::time_t Moment = 0;

 private:
  std::string DateInName() const;
  void WriteHead(TextFile& out) const;
  void WriteSummary(TextFile& out) const;
};

// The third line of the record: the kind of samples kept and the kind of population.
std::string BootConditionLineOf(const SessionStore& S);

}  // namespace korvan
