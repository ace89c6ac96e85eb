#pragma once
// Fields of the data-file check and the read-data step.
#include <string>

#include "store/bounded.h"
#include "store/limits.h"

namespace korvan {

// Overwritten by every pass of the engine (lives in a Workspace).
struct ReadDataWork {};

// Kept for the session (lives in SessionStore).
struct ReadDataRecord {
  // Counts of bootstrap samples of size N (with replacement) made by CalcuFMpairLessthan2 from
  // the sex counts of the check. For information only: no analysis depends on them.
  double SamplesAll = 0;               // N^N
  double SamplesFemaleLessthan2 = 0;   // at most one female
  double SamplesMaleLessthan2 = 0;     // at most one male
  double SamplesBothLessthan2 = 0;     // at most one female and at most one male
  double FMpairSamples = 0;            // at least two females and at least two males

  // The r values of the cohort with pooled fecundity, read by InputBootRforContribution from
  // its "_Effect Boot-A2a-r.txt" file: the whole cohort's r and one r per effective sample.
  std::string ContributionRLoaded;     // "Yes" once the file was read
  std::string ContributionRFile;
  double ContributionPooledR = 0;
  int ContributionSampleSize = 0;      // n of the pooled run
  long ContributionBootCount = 0;      // E, the number of sample values read
  Vec<double, 0, kMaxBootIndex> ContributionBootR{"ContributionBootR"};  // 1..E
};

}  // namespace korvan
