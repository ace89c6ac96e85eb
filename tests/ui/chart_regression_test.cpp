// Regressions of fecundity on longevity and oviposition days, and the form of bootstrap
// results.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <memory>

#include "run/run_context.h"
#include "support/test_support.h"
#include "ui/chart_figures.h"
#include "ui/chart_regression.h"
#include "commands/command_handlers.h"
#include "ui/command_table.h"
#include "ui/scripted_prompts.h"

namespace korvan {
namespace {

TEST(FecundityRegression, LeastSquaresByHand) {
  // x 1, 2, 3 and y 2, 4, 7: Sxx = 2, Sxy = 5, Syy = 38/3; b = 2.5, a = 13/3 - 5,
  // R2 = b Sxy / Syy = 12.5 / (38/3).
  const RegressionFit fit = RegressionAnalysis({1, 2, 3}, {2, 4, 7});
  EXPECT_EQ(fit.points, 3);
  EXPECT_NEAR(fit.b, 2.5, 1e-12);
  EXPECT_NEAR(fit.a, -2.0 / 3, 1e-12);
  EXPECT_NEAR(fit.r2, 37.5 / 38, 1e-12);
  // A perfect line, no spread in x, no spread in y, no points: no fault.
  EXPECT_NEAR(RegressionAnalysis({0, 10}, {5, 25}).r2, 1, 1e-12);
  EXPECT_EQ(RegressionAnalysis({4, 4}, {1, 3}).b, 0);
  EXPECT_NEAR(RegressionAnalysis({4, 4}, {1, 3}).a, 2, 1e-12);
  EXPECT_EQ(RegressionAnalysis({1, 2}, {3, 3}).r2, 0);
  EXPECT_EQ(RegressionAnalysis({}, {}).points, 0);
}

TEST(FecundityRegression, FemalesOfTheExampleAndTheirFile) {
  test::TempDir dir;
  const std::string data = dir.file("mite.txt");
  std::filesystem::copy_file(std::string(KORVAN_EXAMPLES) + "/mite.txt", data);
  auto store = std::make_unique<Session>();
  Session& S = *store;
  S.StartUp();
  SetStartUpConsole(S.console);
  ScriptedPrompts P(AnswerBook::FromText("Open life table data file = " + data +
                                         "\nFast run for two-sex or parthenogenetic population? = Yes\n"
                                         "Do you need only the basic output (0A) and figure files? = No\n"
                                         "Do you need the contribution of this life table to intrinsic rate? = No\n"),
                    true);
  PressCommand(S, P, *FindCommand("A1"));
  ASSERT_EQ(S.basic.BasicRunDone, "yes");

  const ChartPanel c = BuildFigure(S, FigureOfCommand("cmdShowFvsTotalLong", ""));
  EXPECT_EQ(c.figure, "ShowFRegOnTotalLong");
  EXPECT_EQ(c.x.title, "Total longevity");
  EXPECT_EQ(c.y.title, "Fecundity");
  ASSERT_EQ(c.Columns(), 2);
  EXPECT_EQ(c.series[0].label, "Observed");
  EXPECT_TRUE(c.series[0].markers);
  EXPECT_EQ(c.series[1].label, "Expected");
  // One row per female, in order of longevity; total eggs of all of them as counted by hand.
  const Cohort& C = S.ws.cohort;
  int females = 0;
  double eggs = 0;
  for (int i = 1; i <= C.CohortSize; ++i) {
    if (C.IndividualSex(i) != "F") continue;
    ++females;
    for (int d = 1; d <= kMaxAge && C.Fecundity(i, d) >= 0; ++d) eggs += C.Fecundity(i, d);
  }
  ASSERT_EQ(c.Rows(), females);
  ASSERT_EQ(c.xValues.size(), static_cast<std::size_t>(females));
  EXPECT_TRUE(std::is_sorted(c.xValues.begin(), c.xValues.end()));
  double observed = 0;
  for (double v : c.series[0].values) observed += v;
  EXPECT_NEAR(observed, eggs, 1e-9);
  // The fitted values lie on a line whose R2 is the squared correlation of the points.
  double sx = 0, sy = 0, sxx = 0, syy = 0, sxy = 0;
  for (int i = 0; i < females; ++i) {
    const double x = c.xValues[static_cast<std::size_t>(i)], y = c.series[0].values[static_cast<std::size_t>(i)];
    sx += x, sy += y, sxx += x * x, syy += y * y, sxy += x * y;
  }
  const double n = females;
  const double corr = (sxy - sx * sy / n) / std::sqrt((sxx - sx * sx / n) * (syy - sy * sy / n));
  const std::string title = c.TitleText();
  const auto r2At = title.find(". R^2 =");
  ASSERT_NE(r2At, std::string::npos);
  EXPECT_EQ(title.substr(0, 48), "Regression of fecundity vs. total longevity. a =");
  EXPECT_NEAR(std::stod(title.substr(r2At + 7)), corr * corr, 1e-9);
  const auto& fitted = c.series[1].values;
  const double slope = (fitted.back() - fitted.front()) / (c.xValues.back() - c.xValues.front());
  for (int i = 1; i + 1 < females; ++i) {
    const auto k = static_cast<std::size_t>(i);
    EXPECT_NEAR(fitted[k], fitted.front() + slope * (c.xValues[k] - c.xValues.front()), 1e-9);
  }

  // The data beside the data file; the adult file has no ending.
  WriteFecundityRegressionFile(S, "ShowFRegOnTotalLong");
  const std::string text = test::ReadFile(dir.file("mite_G_Total longevity and fecundity.txt"));
  EXPECT_EQ(text.substr(0, text.find('\n')), "\"Ind. no.\",\"Total longevity\",\"Total fecundity\"");
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), females + 1);
  WriteFecundityRegressionFile(S, "ShowFRegOnAdultLong");
  EXPECT_TRUE(std::filesystem::exists(dir.file("mite_G_Adult longevity and fecundity")));
  EXPECT_EQ(BuildFigure(S, "ShowFRegOnOviDays").x.title, "Oviposition days");
  // Without a consumption file there is nothing to regress on.
  EXPECT_EQ(RegressionFigureOfCommand("cmdShowFvsConsumption"), "ShowFRegOnConsumption");
  EXPECT_FALSE(HasConsumptionData(S));
}

TEST(BootResultForm, RoundingsCaptionAndGroupRearedCohorts) {
  auto store = std::make_unique<Session>();
  Session& S = *store;
  S.StartUp();
  S.boot.ResampleKind = "b";
  S.boot.BootB = 2000;
  S.boot.R.mean = 0.224487;
  S.boot.R.se = 0.0034567;
  S.boot.T.mean = 17.14891;
  S.boot.T.se = 0.125;  // a tie: half to even
  const BootResultForm form = JackBootForm(S);
  EXPECT_EQ(form.caption, "Bootstrap results (Bootstrap number B: 2000)");
  ASSERT_EQ(form.rows.size(), 5u);
  EXPECT_EQ(form.rows[0].name, "r");
  EXPECT_EQ(form.rows[0].mean, "0.2245");
  EXPECT_EQ(form.rows[0].se, "0.0035");
  EXPECT_EQ(form.rows[3].name, "T");
  EXPECT_EQ(form.rows[3].mean, "17.15");
  EXPECT_EQ(form.rows[3].se, "0.12");
  S.options.GroupRearedFlag = "Yes";
  EXPECT_EQ(JackBootForm(S).rows[0].se, "");
  S.boot.ResampleKind = "j";
  EXPECT_EQ(JackBootForm(S).caption, "Jackknife results");
}

}  // namespace
}  // namespace korvan
