#pragma once
// Means, variances, standard errors, extremes and frequency classes of the samples' results,
// and the reports "_0B_Bootstrap_Output.txt", "_0C_...", "_0D_...", "_0E_...".
#include <cmath>
#include <string>

#include "run/run_context.h"
#include "text/text_file.h"

namespace korvan {

// Sums, extremes, mean, variance and SE of value(b) over the samples b = 1..E (the first E
// sample numbers, whichever of them are effective), from one pass.
template <class ValueOf>
BootSummary SummarizeSamples(long E, ValueOf value) {
  BootSummary s;
  for (long b = 1; b <= E; ++b) {
    const double x = value(b);
    if (b == 1) s.max = s.min = x;
    if (x > s.max) s.max = x;
    if (x < s.min) s.min = x;
    s.S += x;
    s.Q += x * x;
  }
  const double e = static_cast<double>(E);
  s.mean = s.S / e;
  s.variance = (s.Q - s.S * s.S / e) / (e - 1);
  if (s.variance < 0) s.variance = 0;
  s.se = std::sqrt(s.variance);
  return s;
}

// The normal density at x (2 pi taken as 6.28318, as the curve files always had it), and
// whether a spread can draw a curve at all.
inline double NormalDensity(double x, double mean, double se) {
  return 1 / (se * std::sqrt(6.28318)) * std::exp(-0.5 * std::pow((x - mean) / se, 2));
}
inline bool UsableSpread(double se) { return se > 0 && std::isfinite(se); }

// A proportion transformed as kind says: "Arcsine" (the arcsine of its square root), "Logit"
// (ln(p / (1 - p))), anything else leaves it. A value outside the transformation's range ends
// the run with a message under title.
double TransformProportion(const std::string& kind, double x, const std::string& title);

// Frequency classes of equal width between min and max: edges i * width + min for
// i = 0..lastEdge, each centre half a width on. A value counts in the class before the first
// edge above it, looked for among edges 0..lastLooked: the maximum, below no earlier edge,
// lands in the class after the last full one. value(k, v) gives value k = 1..count, false to
// leave it out. Returns the width.
template <class ValueOf>
double CountClasses(double min, double max, int bars, int lastEdge, int lastLooked, long count,
                    Vec<double, 0, 60>& edges, Vec<double, 0, 60>& centres, Vec<double, 0, 60>& counts,
                    ValueOf value) {
  counts.Fill(0);
  const double width = (max - min) / bars;
  for (int i = 0; i <= lastEdge; ++i) {
    edges(i) = i * width + min;
    centres(i) = edges(i) + width / 2;
  }
  for (long k = 1; k <= count; ++k) {
    double v = 0;
    if (!value(k, v)) continue;
    for (int i = 0; i <= lastLooked; ++i) {
      if (v < edges(i)) {
        if (i >= 1) counts(i - 1) += 1;
        break;
      }
    }
  }
  return width;
}

// The classes of r (isR) or of R0 as the frequency files list them: "Max of <kind><x> =" with the
// extremes of summary, the note when there is one, "Sum of frequency of <x> =" with the sum of
// the counts (and count when it isn't negative), then a row per class: begin, centre, count.
void WriteFrequencyClasses(TextFile& out, const BootstrapRecord& R, bool isR, const BootSummary& summary,
                           const std::string& kind, const char* note, long count);

class BootstrapStatistics : public Procedures {
 public:
  using Procedures::Procedures;

  // Mean and SE of r, lambda, R0, T, GRR and F alone, before the record is written.
  void Boot01Partial();
  // All the summaries and the report with its kin.
  void Boot01();
  void Boot1StageMean();
  void WriteBootSSD();
  void Boot1C0andOmega();
  void Boot01APOPandTPOP();
  void BootStageMortality();
  void WriteBootFecundityOfRepFemale();
  // Frequency classes of r and R0 for the charts.
  void FrequencyClasses();

 private:
  void SummarizeAll();
  void WriteMainReport();
  // Items 1 to 6 of a report's head under a table title.
  void ReportHead(TextFile& out, const std::string& titleLine, const std::string& secondTitleLine = "");
  // The rows "Original ...", "B", max, mean, min, "Variance", "S.E." of a table whose columns
  // are given by their summaries and original values.
  void SummaryRows(TextFile& out, const std::string& originalLabel, const BootSummary* columns,
                   const double* originals, int count, int firstColumn, int columnWidth, int decimals);
};

}  // namespace korvan
