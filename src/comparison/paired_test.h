#pragma once
// The paired bootstrap test: treatments compared on one statistic through the bootstrap values
// their runs left in "_Effect Boot-..." column files. The k-th value of one treatment is paired
// with the k-th value of the other; the B differences give t limits, percentile limits and a
// P-value for every pair, and the multiple-comparison report with its tables.
#include <string>

#include "run/run_context.h"
#include "text/text_file.h"

namespace korvan {

struct OneByOneReading;
struct DifferenceTally;

class PairedBootTest : public Procedures {
 public:
  using Procedures::Procedures;

  // Reading.
  void InputRawDataForCIonebyone();
  void MultipleComparisonBasedOnCI();
  void InputRawDataForCI();
  // The Cartesian paired test: the reading, and every difference of the two sets of a pair.
  void CartesianDifference();
  void CartesianDifference2();

  // Statistics of the treatments and of every pair; detail files.
  void BasicAnalysisForCI();
  // Mean, variance and SE of every treatment and the one-way table over them (the start of both
  // tests' analysis).
  void TreatmentStatistics();
  void WriteNormalDensityCurveForDifferenceAndCI();

  // The report.
  void PrintMultiCIofDifference();
  void PrintPairTestTable();
  void PrintPairTestTable4Treats();
  void PrintPairTestTable5Treats();

 private:
  // Shared steps of the two reading routes.
  // The begin time of the test, told on the console under the given words.
  void StartClock(const std::string& beginsAt);
  void ReadOneByOne(const OneByOneReading& reading);
  void SetPairCountAndAlpha();
  void OrderTreatmentsByMean(bool pooled);
  void BuildRules();
  void PairStep(int i, int j);
  void CartesianPairStep(int i, int j);
  // The counts, mean, variance and SE of a pair's differences, from their tally.
  void KeepTally(int i, int j, const DifferenceTally& tally, long count);
  // The pair's t limits from the mean and SE of its differences, and its P (both orders).
  void SetPairLimits(int i, int j, double p);
  void SortDifferences(long count);
  void PrintReportHead();
  void PrintPairBlock(int i, int j);
  void PrintLetterTable();
  void PrintClosing();
  // Letter rows for the treatments of the report; letters(t) of treatment t (1-based).
  void PrintLetterRow(int t, const std::string& letters);

  TextFile report_;  // channel 3 while the report is written
};


}  // namespace korvan
