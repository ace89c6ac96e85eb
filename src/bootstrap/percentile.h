#pragma once
// Sorting of the bootstrap results after the loop: each main statistic is sorted with the
// permutation back to the sample numbers, its percentile samples are set, its groups of equal
// values counted, and the sorted ("_J...") files written. The samples at the percentiles are
// written as life tables and sample records ("_K..." files).
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "run/run_context.h"
#include "text/text_file.h"

namespace korvan {

class BootPercentiles : public Procedures {
 public:
  using Procedures::Procedures;

  // The sorting step of a run: the sorts in their order with the percentile life tables.
  void SortAndWritePercentileTables();

  void QuickSortBootResultsYesNo();
  void SortBootstrapLambdaQuick();
  void SortBootstrapLambdaSelection();
  void SortBootstrapNetR0();
  void SortBootstrapIntrinsicRate();
  void SortBootstrapMeanGenT();
  void SortBootGRR();
  void SortBootFecundity();
  void SortedBootFecundityNfr();
  void SortBootFemaleProportion();
  void SortBootLongevity();
  // "_J1d_Boot_R0_Cumu Freq.txt": the cumulative frequency of groups of R0 among m samples and
  // its probit (the last group's frequency is 1, with no probit).
  void WriteR0CumulativeFrequency(const ValueGroups& groups, long m);

  // Percentile life tables. The sample, its label ("0.025 lambda") and the name of the life
  // table (OutputFileName) are set by the caller; the three are one procedure.
  std::int32_t TableSample = 0;
  std::string TableLabel;
  void WriteLifeTableFor025Percentile() { WritePercentileLifeTable(); }
  void WriteLifeTableFor500Percentile() { WritePercentileLifeTable(); }
  void WriteLifeTableFor975Percentile() { WritePercentileLifeTable(); }
  void WriteLifeTableForPercentileX();
  void WriteLifeTableFor100();
  // The record of the sample TableSample, labelled TableLabel, to OutputFileName.
  void WriteSpecificBootstrapSample();
  // Reads the sample record at SpecRecordPath into SavedBootIndividuals; false when its
  // individuals do not fit the pool in memory (the user has been told).
  std::string SpecRecordPath;
  std::int32_t SpecSampleNumber = 0;
  bool InputSpecBootSample();
  // In a run of the same samples: the life tables of the samples asked for by number.
  void WriteSpecificSampleLifeTables();

 public:
  // An entry of the table of sorted statistics.
  struct SortedStatistic;

 private:
  enum class Order { Quick, Selection };
  // A sort made before its turn, in a sort workspace of its own: the statistic, its m, and
  // what the sort left (positions 1..count).
  struct Presort {
    const SortedStatistic* statistic = nullptr;
    long m = 0, count = 0;
    double checkSum = 0;
    int rangesWanted = 0, rangesUsed = 0;
    std::vector<double> value;
    std::vector<std::int32_t> index;
  };
  std::vector<Presort> presorts_;
  // The sorts of the statistics are independent of each other: they run side by side, and
  // SortStatistic takes each result in its turn.
  void PresortSideBySide(const std::vector<std::pair<const SortedStatistic*, long>>& wanted);
  void SortLambda(Order order);
  // One statistic of the table of sorted statistics (percentile_sorts.cpp): its values of
  // samples 1..m sorted, kept in its sorted list and, where it has one, written to its "_J"
  // file; returns how many were sorted.
  long SortStatistic(const SortedStatistic& statistic, long m);
  // Head of a sorted file: project line, population kind, count lines.
  void SortedHead(TextFile& out, bool writeForm) const;
  // "Sorted serial no.", "Original serial no.", name, then a row per position (zeros left out
  // when asked); the values are those of the last sort.
  void SortedRows(TextFile& out, const std::string& name, bool skipZeros) const;
  // The three percentile samples of a statistic with their individuals and rates.
  struct PercentileFile {
    std::string suffix, what;  // "finite rate", ...
    std::int32_t sample[3] = {0, 0, 0};
    double value[3] = {0, 0, 0};
    double mean = 0, sd = 0;
    bool valueThroughEffectiveList = false;
    bool isR0 = false;
  };
  void WritePercentileFile(const PercentileFile& f);
  // Rows "Group serial no.", name, "Count"; the group of value 0 left out when asked (its
  // count is returned).
  long GroupRows(TextFile& out, const std::string& name, const ValueGroups& groups, bool skipZero) const;
  void CountGroupsFromFirst(ValueGroups& groups, long m);
  void WritePercentileLifeTable();
  // The record and the life table of one percentile sample ("_Ka_boot_..." and "_Kd_Life ...").
  // name: the percentile and statistic in the file names ("0.5 R0"), label: in the files.
  void WritePercentilePair(const std::string& recordPrefix, const std::string& tablePrefix, std::int32_t sample,
                           const std::string& name, const std::string& label);
  void AskR0Precision();
};

// The list of individuals of a sample as the files show it: each number with its print
// blanks, "," between them, twenty to a line.
void WriteSampleList(TextFile& out, const BootstrapRecord& R, long sample, long n);
// The same of any list of samples (the drawn ones, or the compositions of a count).
void WriteSampleList(TextFile& out, const BootMatList<std::int16_t, kMaxIndividual>& lists, long sample, long n);

}  // namespace korvan
