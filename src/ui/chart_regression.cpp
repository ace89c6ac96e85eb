#include "ui/chart_regression.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "store/rules.h"
#include "text/numbers.h"
#include "text/text_file.h"
#include "ui/chart_figures.h"

namespace korvan {

RegressionFit RegressionAnalysis(const std::vector<double>& x, const std::vector<double>& y) {
  RegressionFit fit;
  const std::size_t n = std::min(x.size(), y.size());
  fit.points = static_cast<int>(n);
  if (n == 0) return fit;
  double sx = 0, sy = 0, sxy = 0, sxx = 0, syy = 0;
  for (std::size_t i = 0; i < n; ++i) {
    sx += x[i];
    sy += y[i];
    sxy += x[i] * y[i];
    sxx += x[i] * x[i];
    syy += y[i] * y[i];
  }
  const double m = static_cast<double>(n);
  const double vx = sxx - sx * sx / m, vy = syy - sy * sy / m, cxy = sxy - sx * sy / m;
  fit.b = vx > 0 ? cxy / vx : 0;
  fit.a = sy / m - fit.b * sx / m;
  fit.r2 = vy > 0 ? fit.b * cxy / vy : 0;
  return fit;
}

namespace {

enum class Against { TotalLongevity, AdultLongevity, OviDays, Consumption };

struct RegressionKind {
  const char* figure;
  const char* control;  // the button; empty for a figure reached otherwise
  const char* what;     // "total longevity" in the title
  const char* xName;    // "Total longevity"
  Against x;
  bool residuals = false;  // observed minus fitted against X, with the line at 0
};

constexpr RegressionKind kKinds[] = {
    {"ShowFRegOnTotalLong", "cmdShowFvsTotalLong", "total longevity", "Total longevity", Against::TotalLongevity},
    {"ShowFRegOnAdultLong", "cmdShowFvsAdultLong", "adult longevity", "Adult longevity", Against::AdultLongevity},
    {"ShowFRegOnOviDays", "cmdFecundityVsOvidays", "oviposition days", "Oviposition days", Against::OviDays},
    {"ShowFRegOnAdultLongResidual", "", "adult longevity (residuals)", "Adult longevity", Against::AdultLongevity,
     true},
    {"ShowFRegOnConsumption", "cmdShowFvsConsumption", "total consumption", "Total consumption",
     Against::Consumption},
};

const RegressionKind* KindOf(std::string_view figure) {
  for (const auto& k : kKinds) {
    if (figure == k.figure) return &k;
  }
  return nullptr;
}

struct Female {
  int number;
  double x, fecundity;
};

// The females in the order of the file, with the X of the figure.
std::vector<Female> Females(const SessionStore& S, const RegressionKind& kind) {
  std::vector<Female> out;
  const Cohort& C = S.ws.cohort;
  const StageStatsWork& w = S.ws.stageStats;
  const int m = std::clamp(S.header.StageCount, 1, static_cast<int>(kMaxStage));
  const int n = std::clamp(C.CohortSize, 0, static_cast<int>(kMaxIndividual));
  for (int i = 1; i <= n; ++i) {
    if (C.IndividualSex(i) != "F") continue;
    double x = 0;
    switch (kind.x) {
      case Against::TotalLongevity: x = w.Longevity(i); break;
      case Against::AdultLongevity: x = TimeUnitToDays(std::fabs(C.StageDuration(i, m)), S.settings.TimeUnit); break;
      case Against::OviDays: x = w.OviDays(i); break;
      case Against::Consumption: x = w.TotalConsumption(i); break;
    }
    out.push_back({C.IndividualNo(i), x, w.TotalFecundity(i)});
  }
  return out;
}

ChartPanel Regression(const SessionStore& S, const RegressionKind& kind) {
  std::vector<Female> females = Females(S, kind);
  std::vector<double> x, y;
  for (const auto& f : females) {
    x.push_back(f.x);
    y.push_back(f.fecundity);
  }
  const RegressionFit fit = RegressionAnalysis(x, y);
  ChartPanel c = FigureFrame(kind.figure,
                             {std::string("Regression of fecundity vs. ") + kind.what + ". " + "a =" +
                              FullPrecision(fit.a) + ". b =" + FullPrecision(fit.b) + ". R^2 =" + FullPrecision(fit.r2)},
                             "Fecundity", kind.xName);
  std::stable_sort(females.begin(), females.end(), [](const Female& a, const Female& b) { return a.x < b.x; });
  ChartSeries observed{"Observed", 1, {}, true}, expected{"Expected", 2, {}, false};
  for (const auto& f : females) {
    c.rowLabels.push_back(FullPrecision(f.x));
    c.xValues.push_back(f.x);
    const double fitted = fit.a + fit.b * f.x;
    observed.values.push_back(kind.residuals ? f.fecundity - fitted : f.fecundity);
    expected.values.push_back(kind.residuals ? 0 : fitted);
  }
  c.series = {std::move(observed), std::move(expected)};
  return c;
}

}  // namespace

ChartPanel ShowFRegOnTotalLong(const SessionStore& S) { return Regression(S, kKinds[0]); }
ChartPanel ShowFRegOnAdultLong(const SessionStore& S) { return Regression(S, kKinds[1]); }
ChartPanel ShowFRegOnOviDays(const SessionStore& S) { return Regression(S, kKinds[2]); }
ChartPanel ShowFRegOnAdultLongResidual(const SessionStore& S) { return Regression(S, kKinds[3]); }
ChartPanel ShowFRegOnConsumption(const SessionStore& S) { return Regression(S, kKinds[4]); }

bool HasConsumptionData(const SessionStore& S) { return S.options.PredationPresent == "Yes"; }

std::string RegressionFigureOfCommand(std::string_view control) {
  for (const auto& k : kKinds) {
    if (!control.empty() && control == k.control) return k.figure;
  }
  return "";
}

void WriteFecundityRegressionFile(const SessionStore& S, std::string_view figure) {
  const RegressionKind* kind = KindOf(figure);
  if (!kind) return;
  // The adult file has no ending; the others all go to the total longevity file.
  const bool adult = kind->x == Against::AdultLongevity;
  TextFile f(OutputName(S, adult ? "_G_Adult longevity and fecundity" : "_G_Total longevity and fecundity.txt"));
  f.Write("Ind. no.", kind->xName, "Total fecundity");
  for (const auto& female : Females(S, *kind)) f.Write(female.number, female.x, female.fecundity);
}

BootResultForm JackBootForm(const SessionStore& S) {
  const BootstrapRecord& R = S.boot;
  BootResultForm form;
  const bool jack = R.ResampleKind == "j";
  form.caption = jack ? "Jackknife results" : "Bootstrap results";
  if (R.ResampleKind == "b") form.caption += " (Bootstrap number B: " + FullPrecision(R.BootB) + ")";
  const bool noSE = S.options.GroupRearedFlag == "Yes";
  struct Item {
    const char* name;
    const BootSummary& s;
    int decimals;
  };
  const Item items[] = {{"r", R.R, 4}, {"lambda", R.Lambda, 4}, {"R0", R.R0, 4}, {"T", R.T, 2}, {"GRR", R.GRR, 2}};
  for (const auto& it : items) {
    form.rows.push_back({it.name, FullPrecision(RoundDisplay(it.s.mean, it.decimals)),
                         noSE ? std::string() : FullPrecision(RoundDisplay(it.s.se, it.decimals))});
  }
  return form;
}

}  // namespace korvan
