#pragma once
// The summary table of a comparison of treatments, as a paper prints it: for every treatment
// and statistic the cohort's estimate and its bootstrap SE, read from the "_Effect Boot-..."
// column files of each treatment's bootstrap, and letters that mark the treatments the paired
// bootstrap test of that statistic did not tell apart.
#include <string>
#include <vector>

namespace korvan {

// A statistic of the summary and the column file its bootstrap leaves: "<base>" + file.
struct SummaryStatistic {
  std::string label;    // "r", "Female longevity"
  std::string file;     // "_Effect Boot-A2a-r.txt"
  int decimals = 2;     // in the Markdown table
};

// The statistics of the summary for a cohort whose preadult stages have these names: each
// stage's duration, preadult survival, female and male longevity, APOP, TPOP, oviposition
// days, fecundity, r, lambda, R0, T, GRR.
std::vector<SummaryStatistic> SummaryStatistics(const std::vector<std::string>& preadultStages);

struct EstimateAndSE {
  bool present = false;  // the file was there and held values
  double estimate = 0;   // the cohort's value (the head's line 6)
  double se = 0;         // standard deviation of the bootstrap values (n - 1 divisor)
  long B = 0;
};

// The estimate and SE of one column file; not present when the file isn't there.
EstimateAndSE ReadEstimate(const std::string& path);

// Letters of n treatments (in any order) from the P of every pair, p[i][j] for i != j: two
// treatments share a letter unless P <= 0.05; letters go by the rule of maximal groups with
// the treatments taken in descending order of mean (a for the group of the largest).
std::vector<std::string> SignificanceLetters(const std::vector<double>& means,
                                             const std::vector<std::vector<double>>& p);

// One statistic over the treatments.
struct SummaryColumn {
  SummaryStatistic statistic;
  std::vector<EstimateAndSE> values;  // one per treatment
  std::vector<std::string> letters;   // empty when the treatments were not compared
};

struct SummaryTable {
  std::vector<std::string> treatments;
  std::vector<long> cohortSizes;
  std::vector<SummaryColumn> columns;
  std::string footer;  // seed, B, version
};

// "summary.csv": one header line (treatment, n, then per statistic its value, "_SE" and
// "_letters"), plain numbers at full precision, empty cells where a treatment has no value.
std::string SummaryCsv(const SummaryTable& t);
// "summary.md": a table of "estimate ± SE letters", the footer under it.
std::string SummaryMarkdown(const SummaryTable& t);

}  // namespace korvan
