#pragma once
// Regressions of the females' fecundity on their longevity and oviposition days, and the form
// of bootstrap results (JackBootform).
#include <string>
#include <string_view>
#include <vector>

#include "store/session_store.h"
#include "ui/chart_panel.h"

namespace korvan {

// y = a + b x by least squares; R2 the share of the variance of y that the line explains.
// Without spread in x the slope is 0; without spread in y R2 is 0.
struct RegressionFit {
  double a = 0, b = 0, r2 = 0;
  int points = 0;
};
RegressionFit RegressionAnalysis(const std::vector<double>& x, const std::vector<double>& y);

// The females ("F") of the cohort with their X value and total fecundity, observed and fitted,
// the rows in order of X.
ChartPanel ShowFRegOnTotalLong(const SessionStore& S);
ChartPanel ShowFRegOnAdultLong(const SessionStore& S);
ChartPanel ShowFRegOnOviDays(const SessionStore& S);
// The residuals of the regression on adult longevity (observed minus fitted) against adult
// longevity: "Observed" the residuals, "Expected" 0.
ChartPanel ShowFRegOnAdultLongResidual(const SessionStore& S);

// The figure of a regression command ("cmdShowFvsTotalLong", ...); empty for another.
std::string RegressionFigureOfCommand(std::string_view control);
// Writes the data of a regression figure beside the data file: "Ind. no.", the X name,
// "Total fecundity". A file that can't be written ends the program (ProgramEnd).
void WriteFecundityRegressionFile(const SessionStore& S, std::string_view figure);

// The form of bootstrap (or jackknife) results: mean and SE of r, lambda, R0, T and GRR.
struct BootResultForm {
  std::string caption;
  struct Row {
    std::string name, mean, se;  // se empty for a group-reared cohort
  };
  std::vector<Row> rows;
};
BootResultForm JackBootForm(const SessionStore& S);

}  // namespace korvan
