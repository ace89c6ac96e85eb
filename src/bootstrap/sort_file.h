#pragma once
// Sorting and counting a file of values: a general list (a "_G_" file of a Basic Run, or any
// list of the same form), a column file of bootstrap results, or the differences of a paired
// test ("..._diff-All (for N. sort).txt"). The sorted list, its 0.025, 0.5 and 0.975 values and
// the counts of equal values go to files beside the one read; the cumulative frequencies of the
// counts, in probits, test the list for normality.
#include <string>
#include <vector>

#include "run/run_context.h"

namespace korvan {

enum class SortFileKind { General, Boot, Differences };

class SortFile : public Procedures {
 public:
  using Procedures::Procedures;

  SortFileKind Kind = SortFileKind::General;
  bool SerialNumbers = false;
  int Decimals = -1;  // -1 keeps double precision
  std::string Path;

  // Reads Path, rounds to Decimals, sorts (QuickSort) and writes "<name>-2_Sorted.txt",
  // "<name>-1_0.025, 0.5 and 0.975 <variable>.txt" and "<name>-3_Counts.txt" (value, count,
  // cumulative frequency and its probit), name being Path less ".txt". The sorted list stays in
  // the sort workspace, its groups in OtherGroups with their cumulative frequencies.
  void SortForBootstrapResults();
  // A file of three columns (serial number, value, a third value): the rows in the order of
  // their values to "<name>_Sorted data.txt", and the row at the 0.5 percentile named.
  void SortForBootstrapResults3columns();

  // Of the list read: its title and variable, size, mean of the values, the file's original
  // value (the cohort's, or the difference of the two originals), B and n of its head.
  std::string Title, Variable;
  long Count = 0;
  double Mean = 0, Original = 0, HeadB = 0, HeadN = 0;
  double Percentile[3] = {0, 0, 0};  // 0.025, 0.5, 0.975
  std::string SortedPath, PercentilePath, CountsPath;

 private:
  void Read(std::vector<double>& serial, std::vector<double>& values);
};

// v rounded to d decimals as Int(10^d * v + 0.5) / 10^d; d = -1 leaves v.
double LimitDecimals(double v, int d);

}  // namespace korvan
