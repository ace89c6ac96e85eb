#pragma once
// The general bootstrap: a list of numbers that isn't a life table (a stage duration, a
// fecundity, any measure of individuals) resampled with replacement, and the distribution of
// the sample mean; in its second mode, from a list of total longevities, also the distribution
// of the age at which l(x) first falls to 0.5 or below, for a paired test of that age when the
// life table itself can't be bootstrapped.
//
// The list is a user's file: line 1 the treatment, line 2 a heading whose last item names the
// variable (the "_G_" files of a Basic Run have "Ind. no." and the name), then the values, each
// after its serial number when the file has them.
#include <string>
#include <vector>

#include "run/run_context.h"

namespace korvan {

struct GeneralData {
  std::string treatment, variable;
  std::vector<double> serial;  // only when the file has serial numbers
  std::vector<double> values;
};

// Reads such a file. A value that isn't a number, or a file without values, ends the command
// with a message that names the file and the line (ProgramEnd).
GeneralData ReadGeneralData(const std::string& path, bool serialNumbers);

// Writes "<path less .txt>-new.txt": every row times times, numbered anew under "Ind. No.", the
// treatment and variable lines as they were; returns the new path.
std::string MultiplyGeneralData(const std::string& path, const GeneralData& data, long times);

// The age at which l(x) first is 0.5 or less, l(x) being the share of the values above x (an
// individual of total longevity v lives through the ages 0 to v - 1).
double AgeOfHalfSurvival(const std::vector<double>& longevities);

class GeneralBootstrap : public Procedures {
 public:
  using Procedures::Procedures;

  GeneralData data;
  long SampleSize = 0;  // n of each sample, at most the size of the list
  long B = 0;

  // Mean, variance (Q - S * S / N) / (N - 1), SD and SE of the list, and in the mode of l(x)
  // its age of 0.5, into the session's record of the run.
  void DataStatistics();
  // Counts of the list's values: each distinct value (ascending) with its count.
  void DataFrequency(std::vector<double>& values, std::vector<double>& counts) const;

  // The samples on all cores (sample i from its own stream of the run's seed, so the results
  // do not depend on the number of threads): the draws k = round(u * n + 0.5) from the first n
  // values, the mean and its SE, the age of 0.5 in that mode; then the summaries, classes,
  // sorted list, percentiles and every "_0_GB_" file, and the record no. 11B when the list
  // has serial numbers.
  void Run();

  // The 0.025 and 0.975 values of the sorted means.
  double Lower = 0, Upper = 0;

 private:
  void Resample();
  void Summarize();
  void WriteFiles();
};

}  // namespace korvan
