// Cumulative frequencies of a sorted list: on a probit scale with the regression line that a
// normal distribution would follow, and as a percentage (the sigmoid).
#include <string>
#include <vector>

#include "text/numbers.h"
#include "ui/chart_figures.h"
#include "ui/chart_regression.h"

namespace korvan {

namespace {

// Groups 1..Count - 1: the last group's cumulative frequency is 1 and has no probit.
ChartPanel ProbitRegression(const char* figure, std::vector<std::string> titleHead, const std::string& xTitle,
                            const std::string& observed, const ValueGroups& g,
                            const ZeroList<double, kMaxBootIndex>& probit) {
  std::vector<double> x, y;
  for (long k = 1; k < g.Count; ++k) {
    x.push_back(g.Value(k));
    y.push_back(probit(k));
  }
  const RegressionFit fit = RegressionAnalysis(x, y);
  ChartPanel c;
  c.figure = figure;
  c.title = std::move(titleHead);
  c.title.push_back("Regression of cumu. freq. in probit vs x. a =" + FullPrecision(RoundDisplay(fit.a, 4)) +
                    ". b =" + FullPrecision(RoundDisplay(fit.b, 4)) + ". R^2 =" +
                    FullPrecision(RoundDisplay(fit.r2, 4)));
  c.x.title = xTitle;
  c.y.title = "Cumulative frequency";
  c.xValues = x;
  ChartSeries seen{observed, 1, y, true}, expected{"Expected", 2, {}};
  for (double v : x) {
    c.rowLabels.push_back(FullPrecision(v));
    expected.values.push_back(fit.a + fit.b * v);
  }
  c.series = {std::move(seen), std::move(expected)};
  return c;
}

}  // namespace

ChartPanel ShowCumuFreqOfNormality(const SessionStore& S) {
  const SortStore& s = S.boot.sort;
  return ProbitRegression("ShowCumuFreqOfNormality", {"Boot. R0"}, "R0", "Cumu. Freq. of R0 in Probit", s.R0Groups,
                          s.R0Probit);
}

ChartPanel ShowCumuFreqNormForNbutton(const SessionStore& S) {
  const SortStore& s = S.boot.sort;
  return ProbitRegression("ShowCumuFreqNormForNbutton", {}, s.OtherName, "Observed", s.OtherGroups, s.OtherProbit);
}

ChartPanel ShowCumuFreqSigmoid(const SessionStore& S) {
  const SortStore& s = S.boot.sort;
  ChartPanel c;
  c.figure = "ShowCumuFreqSigmoid";
  c.title = {"Cumulative frequency"};
  c.x.title = "R0";
  c.y.title = "Cumulative frequency (%)";
  c.legend = false;
  ChartSeries percent{"Cumulative frequency", 2, {}};
  for (long k = 1; k <= s.R0Groups.Count; ++k) {
    c.rowLabels.push_back(FullPrecision(s.R0Groups.Value(k)));
    c.xValues.push_back(s.R0Groups.Value(k));
    percent.values.push_back(100 * s.R0CumulativeFrequency(k));
  }
  c.series.push_back(std::move(percent));
  return c;
}

}  // namespace korvan
