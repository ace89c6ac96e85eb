// Figures of a bootstrap: the bands of l(x) and m(x) and the frequencies of R0 and r.
#include <algorithm>
#include <cmath>

#include "bootstrap/cohort_values.h"
#include "text/numbers.h"
#include "ui/chart_figures.h"

namespace korvan {

namespace {

using AgeList = Vec<double, 0, kMaxAge>;

ChartPanel Band(const SessionStore& S, const char* figure, const char* title, const char* yTitle,
                const char* upperName, const AgeList& upper, const AgeList& mean, const char* lowerName,
                const AgeList& lower) {
  const int last = std::clamp(S.ws.tables.LastAge + 1, 0, static_cast<int>(kMaxAge));
  ChartPanel c = AgeFigure(S, figure, {title}, yTitle, "Age", last);
  ChartSeries u{upperName, 2, {}}, m{"Mean", 2, {}}, l{lowerName, 2, {}};
  for (int a = 0; a <= last; ++a) {
    u.values.push_back(upper(a));
    m.values.push_back(mean(a));
    l.values.push_back(lower(a));
  }
  c.series = {std::move(u), std::move(m), std::move(l)};
  return c;
}

// A class limit as the chart labels it: rounded to 4 decimals.
std::string ClassLabel(double edge) {
  if (!std::isfinite(edge)) return FullPrecision(edge);
  return FullPrecision(std::fabs(edge) < 2e5 ? RoundDisplay(edge, 4) : std::round(edge));
}

// The numbers of a frequency chart's title as the reports give them: statistics to 4
// decimals, a class width to 6 significant figures (r's classes are a few thousandths wide).
std::string Stat(double v) { return FullPrecision(RoundDisplay(v, 4)); }
std::string Width(double v) {
  if (v == 0 || !std::isfinite(v)) return FullPrecision(v);
  const int decimals = 5 - static_cast<int>(std::floor(std::log10(std::fabs(v))));
  return FullPrecision(decimals >= 0 ? RoundDisplay(v, decimals) : v);
}

// The console's frequency chart, or its twin on the frequency form, which writes the sample
// size as "N".
ChartPanel Frequency(const SessionStore& S, bool isR, bool form = false) {
  const BootstrapRecord& R = S.boot;
  ChartPanel c;
  c.figure = isR ? "ShowFreqr" : "ShowFreqR0";
  c.chart = form ? "FreqForm" : "MSChart2";
  c.kind = ChartKind::Bar;
  c.legend = false;
  c.x.title = isR ? "r" : "R0";
  c.x.font = {"Times New Roman", 12, true};
  c.y.title = "Frequency";
  c.y.font = c.x.font;
  const double width = isR ? R.RClassWidth : R.R0ClassWidth;
  if (R.ResampleKind == "g") {
    // A general bootstrap keeps the means of its samples in the classes of R0.
    c.x.title = R.VariableName;
    c.title = {"Frequency of bootstrap mean of " + R.VariableName + " (interval =" + Width(width) +
               ").  Bootstrap number = " + FullPrecision(R.BootB)};
  } else if (R.ResampleKind == "j") {
    c.title = {std::string("Frequency of pseudo-") + (isR ? "r" : "R0") + " (interval =" + Width(width) + ")."};
  } else if (isR) {
    c.title = {"Frequency of r (interval =" + Width(width) + ").  Bootstrap number = " +
               FullPrecision(R.BootB)};
  } else {
    const BootSummary& s = R.R0;
    std::string head;
    const int cohort = S.header.CohortSizeRead > 0 ? S.header.CohortSizeRead : S.pool.OriginalCohortSize;
    const char* n = form ? "N =" : "n =";
    if (R.BootSampleSize != cohort) head = "B = " + FullPrecision(R.BootB) + ". " + n;
    else head = n;
    c.title = {head + FullPrecision(R.BootSampleSize) + ". Mortality =" + Stat(CohortPreadultMortality(S)) +
               ".  Min =" + Stat(s.min) + ". Mean=" + Stat(s.mean) + ". Max =" + Stat(s.max) +
               ". Variance =" + Stat(s.variance) + ". SE =" + Stat(s.se)};
  }
  const int last = std::clamp(isR ? R.HistogramBarsPlus1 : R.HistogramBarsPlus1 + 1, 0, 60);
  ChartSeries counts{"Frequency", 1, {}};
  for (int i = 0; i <= last; ++i) {
    c.rowLabels.push_back(ClassLabel(isR ? R.RClassEdge(i) : R.R0ClassEdge(i)));
    counts.values.push_back(isR ? R.RClassCount(i) : R.R0ClassCount(i));
  }
  c.series.push_back(std::move(counts));
  return c;
}

}  // namespace

ChartPanel ShowBootLx(const SessionStore& S) {
  const BootstrapRecord& R = S.boot;
  return Band(S, "ShowBootLx", "Age-specific survival rate (Bootstrap)", "l(x) (Bootstrap)", "Max", R.LxMax,
              R.LxMean, "Min", R.LxMin);
}
ChartPanel ShowBootLxCI(const SessionStore& S) {
  const BootstrapRecord& R = S.boot;
  return Band(S, "ShowBootLxCI", "Age-specific survival rate with bootstrap confidence interval", "l(x) (Bootstrap)",
              "Upper", R.LxUpper, R.LxMean, "Lower", R.LxLower);
}
ChartPanel ShowBootMx(const SessionStore& S) {
  const BootstrapRecord& R = S.boot;
  return Band(S, "ShowBootMx", "Age-specific fecundity (Bootstrap result)", "m(x) (bootstrap)", "Max", R.MxMax,
              R.MxMean, "Min", R.MxMin);
}
ChartPanel ShowBootMxCI(const SessionStore& S) {
  const BootstrapRecord& R = S.boot;
  return Band(S, "ShowBootMxCI", "Age-specific fecundity with bootstrap confidence interval", "m(x) (bootstrap)",
              "Upper", R.MxUpper, R.MxMean, "Lower", R.MxLower);
}

ChartPanel ShowFreqR0(const SessionStore& S) { return Frequency(S, false); }
ChartPanel FreqFormR0(const SessionStore& S) { return Frequency(S, false, true); }
ChartPanel FreqFormr(const SessionStore& S) { return Frequency(S, true, true); }

ChartPanel IndividualCounts(const SessionStore& S, IndividualCountsForm form) {
  const BootstrapRecord& R = S.boot;
  static constexpr const char* kFigure[] = {"ShowIndCounts", "ShowIndCountsContinuous", "ShowIndCountsLine",
                                            "ShowIndCountsLine2"};
  ChartPanel c;
  c.figure = kFigure[static_cast<int>(form)];
  c.chart = "FreqForm";
  c.legend = false;
  const bool bars = form == IndividualCountsForm::Bars || form == IndividualCountsForm::ContinuousBars;
  c.kind = bars ? ChartKind::Bar : ChartKind::Line;
  c.barWidth = form == IndividualCountsForm::Bars ? 0.6 : 1.0;
  c.x.title = "Individual (serial order)";
  c.y.title = "Counts";
  c.x.labelEvery = 5;
  const int N = std::clamp(S.pool.OriginalCohortSize, 0, static_cast<int>(kMaxIndividual));
  ChartSeries counts{"Counts", form == IndividualCountsForm::ContinuousLine ? 2 : 1, {}};
  double total = 0;
  for (int i = 1; i <= N; ++i) {
    c.rowLabels.push_back(std::to_string(i));
    counts.values.push_back(static_cast<double>(R.IndividualDraws(i)));
    total += static_cast<double>(R.IndividualDraws(i));
  }
  if (R.ResampleKind == "g")
    c.title = {"Bootstrap frequency of " + R.VariableName + ". Total frequency = " + FullPrecision(total)};
  else
    c.title = {"Bootstrap individual frequency (B =" + FullPrecision(R.BootB) + ")"};
  c.series.push_back(std::move(counts));
  return c;
}

ChartPanel ShowFreqForm(const std::string& title, const std::string& xTitle, const std::vector<double>& values,
                        const std::vector<double>& counts) {
  ChartPanel c;
  c.figure = "ShowFreqForm";
  c.chart = "FreqForm";
  c.kind = ChartKind::Bar;
  c.legend = false;
  c.title = {title};
  c.x.title = xTitle;
  c.y.title = "Counts";
  double largest = 0;
  ChartSeries bars{"Counts", 1, {}};
  for (std::size_t i = 0; i < values.size() && i < counts.size(); ++i) {
    c.rowLabels.push_back(FullPrecision(values[i]));
    bars.values.push_back(counts[i]);
    largest = std::max(largest, counts[i]);
  }
  // The largest count sets the scale.
  c.y.automatic = false;
  c.y.min = 0;
  c.y.max = largest > 0 ? largest : 1;
  c.series.push_back(std::move(bars));
  return c;
}
ChartPanel ShowFreqr(const SessionStore& S) { return Frequency(S, true); }

}  // namespace korvan
