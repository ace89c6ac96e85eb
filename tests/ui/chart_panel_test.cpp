// The figures of the console as ChartPanel data: the survival chart of a Basic Run against the
// cohort counted by hand, the labels of ages by time unit, the click cycle, the bootstrap bands
// and frequencies, and the texts of the console's labels.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <sstream>

#include "run/run_context.h"
#include "support/cohort.h"
#include "support/test_support.h"
#include "ui/chart_figures.h"
#include "ui/chart_regression.h"
#include "commands/command_handlers.h"
#include "ui/command_table.h"
#include "commands/run_command.h"
#include "ui/console_texts.h"
#include "ui/scripted_prompts.h"

namespace korvan {
namespace {

// Scripted answers that keep every chart the engine asks to show.
class ChartRecorder : public ScriptedPrompts {
 public:
  using ScriptedPrompts::ScriptedPrompts;
  void ShowChart(const ChartPanel& panel) override { shown.push_back(panel); }
  std::vector<ChartPanel> shown;
};

// A1 (not a Fast Run) and A2 on the bundled example, or on the cohort of a data file's text,
// no consumption file, every other dialogue at its default.
struct MiteSession {
  test::TempDir dir;
  std::unique_ptr<Session> store = std::make_unique<Session>();
  Session& S = *store;
  std::unique_ptr<ChartRecorder> P;
  explicit MiteSession(const std::string& moreAnswers = "", const std::string& dataText = "") {
    const std::string data = dir.file("mite.txt");
    if (dataText.empty())
      std::filesystem::copy_file(std::string(KORVAN_EXAMPLES) + "/mite.txt", data);
    else
      test::WriteFile(data, dataText);
    P = std::make_unique<ChartRecorder>(
        AnswerBook::FromText("Open life table data file = " + data +
                             "\n"
                             "Do you need only the basic output (0A) and figure files? = No\n"
                             "Fast run for two-sex or parthenogenetic population? = Cancel\n"
                             "Do you need flow record? = No\n"
                             "Do you need the contribution of this life table to intrinsic rate? = No\n"
                             "Life table only? = Yes\n" +
                             moreAnswers),
        true);
    S.StartUp();
    SetStartUpConsole(S.console);
    PressCommand(S, *P, *FindCommand("A1"));
    PressCommand(S, *P, *FindCommand("A2"));
  }
};

TEST(ChartPanel, SurvivalChartOfABasicRunIsTheCohortCountedByHand) {
  MiteSession s;
  const SessionStore& S = s.S;
  ASSERT_EQ(s.P->shown.size(), 1u);
  const ChartPanel& c = s.P->shown.front();
  EXPECT_EQ(c.figure, "ShowSxj");
  EXPECT_EQ(c.chart, "MSChart1");
  EXPECT_EQ(c.kind, ChartKind::Line);
  EXPECT_EQ(c.TitleText(), "Survival rate to each age-stage group\n"
                           "It is the probability that a newborn will survive to age x and stage j.");
  EXPECT_EQ(c.titleFont.family, "Times New Roman");
  EXPECT_EQ(c.titleFont.size, 12);
  EXPECT_TRUE(c.legend);
  EXPECT_EQ(c.legendFont.size, 14);
  EXPECT_EQ(c.x.title, "Age");
  EXPECT_TRUE(c.x.font.bold);
  EXPECT_EQ(c.x.font.size, 14);
  EXPECT_TRUE(c.x.automatic);
  EXPECT_EQ(c.x.labelEvery, 3);
  EXPECT_EQ(c.y.title, "Age-stage survival rate s(x,j)");
  EXPECT_FALSE(c.y.automatic);
  EXPECT_DOUBLE_EQ(c.y.min, 0);
  EXPECT_DOUBLE_EQ(c.y.max, 1.1);
  EXPECT_EQ(c.y.divisions, 11);

  // One series per stage, egg to male, named as in the file, and ages 0..LastAge+1.
  const int m = S.header.StageCount;
  const std::vector<std::string> names = {"Egg", "Larva", "Protonymph", "Deutonymph", "Female", "Male"};
  ASSERT_EQ(m + 1, static_cast<int>(names.size()));
  ASSERT_EQ(c.Columns(), m + 1);
  for (int j = 0; j <= m; ++j) {
    EXPECT_EQ(c.series[static_cast<std::size_t>(j)].label, names[static_cast<std::size_t>(j)]);
    EXPECT_EQ(c.series[static_cast<std::size_t>(j)].lineWidth, 2);
  }
  const int last = S.ws.tables.LastAge;
  ASSERT_EQ(c.Rows(), last + 2);
  EXPECT_EQ(c.rowLabels.front(), "0");
  EXPECT_EQ(c.rowLabels.back(), std::to_string(last + 1));

  // The share of the cohort in each stage at each age, counted from the stage durations: an
  // individual spends |d| days in a stage and dies after a negative one; a male's adult days
  // are the column after the female's.
  const Cohort& C = S.ws.cohort;
  const int N = C.CohortSize;
  ASSERT_EQ(N, 100);
  std::map<std::pair<int, int>, int> count;
  for (int i = 1; i <= N; ++i) {
    int age = 0;
    for (int j = 1; j <= m; ++j) {
      const double d = C.StageDuration(i, j);
      const int column = (j == m && C.IndividualSex(i) == "M") ? m + 1 : j;
      for (int k = 0; k < std::abs(static_cast<int>(d)); ++k) ++count[{age + k, column}];
      age += std::abs(static_cast<int>(d));
      if (d < 0) break;
    }
  }
  double totalShare = 0;
  for (int a = 0; a <= last + 1; ++a) {
    for (int j = 1; j <= m + 1; ++j) {
      const double share = c.series[static_cast<std::size_t>(j - 1)].values[static_cast<std::size_t>(a)];
      const double byHand = count[std::make_pair(a, j)] / static_cast<double>(N);
      EXPECT_NEAR(share, byHand, 1e-12) << "age " << a << " stage " << j;
      totalShare += share;
    }
  }
  EXPECT_GT(totalShare, 1);
  // No one lives beyond LastAge: the closing row is zero.
  for (const auto& series : c.series) EXPECT_EQ(series.values.back(), 0);

  // Built again from the store after the run, the chart is the same.
  const ChartPanel again = BuildFigure(S, "ShowSxj");
  for (int j = 0; j <= m; ++j) EXPECT_EQ(again.series[static_cast<std::size_t>(j)].values, c.series[static_cast<std::size_t>(j)].values);

  // l(x) is the sum of s(x,j) over the stages; l(x)m(x) is the product of the two figures.
  const ChartPanel lx = ShowLx(S), mx = ShowMx(S), lxmx = ShowLxMx(S);
  ASSERT_EQ(lx.Columns(), 1);
  EXPECT_EQ(lx.series[0].label, "l(x)");
  for (int a = 0; a <= last; ++a) {
    double sum = 0;
    for (const auto& series : c.series) sum += series.values[static_cast<std::size_t>(a)];
    const auto i = static_cast<std::size_t>(a);
    EXPECT_NEAR(lx.series[0].values[i], sum, 1e-12) << a;
    EXPECT_NEAR(lxmx.series[0].values[i], lx.series[0].values[i] * mx.series[0].values[i], 1e-12);
  }
  // The sum of l(x)m(x) is R0.
  double r0 = 0;
  for (double v : lxmx.series[0].values) r0 += v;
  EXPECT_NEAR(r0, S.params.R0_Basic, 1e-9);
  const ChartPanel three = ShowFxjMxLxMx(S);
  ASSERT_EQ(three.Columns(), 3);
  EXPECT_EQ(three.series[0].label, "f(x,Female)");
  EXPECT_EQ(three.series[1].label, "m(x)");
  EXPECT_EQ(three.series[2].label, "l(x)m(x)");
  EXPECT_EQ(three.series[2].values, lxmx.series[0].values);
}

TEST(ChartPanel, AgeLabelsFollowTheTimeUnit) {
  EXPECT_EQ(AgeRowLabel(7, 1), "7");
  EXPECT_EQ(AgeRowLabel(7, 0.3), "2");    // 2.33
  EXPECT_EQ(AgeRowLabel(8, 0.3), "3");    // 2.67
  EXPECT_EQ(AgeRowLabel(12, 0.16), "2");
  EXPECT_EQ(AgeRowLabel(12, 0.2), "2");   // 2.4
  EXPECT_EQ(AgeRowLabel(10, 0.25), "2");  // 2.5, a tie goes to the even number
  EXPECT_EQ(AgeRowLabel(14, 0.25), "4");  // 3.5
  EXPECT_EQ(AgeRowLabel(5, 0.5), "2");
  EXPECT_EQ(AgeRowLabel(7, 0.5), "4");
  // Only the exact fractions divide: any other time unit leaves the age as it is.
  EXPECT_EQ(AgeRowLabel(10, 2), "10");
  EXPECT_EQ(AgeRowLabel(10, 0.33), "10");
}

// "Curtailed r" opens after a Basic Run that asked for the effect of reduced f(x,j), and shows
// the curtailed rates that run computed.
TEST(ChartPanel, CurtailedRCommandShowsTheRunsCurtailedRates) {
  MiteSession plain;
  EXPECT_EQ(RunCommand(plain.S, *plain.P, "cmdCurtailedR").ending, CommandEnding::Refused);
  MiteSession s("More option (Yes or No)? = Yes\n");
  const CommandOutcome out = RunCommand(s.S, *s.P, "cmdCurtailedR");
  ASSERT_EQ(out.ending, CommandEnding::Ran) << out.message;
  const ChartPanel& c = s.P->shown.back();
  EXPECT_EQ(c.figure, "ShowCurtailedR");
  ASSERT_EQ(c.Columns(), 1);
  EXPECT_GT(c.Rows(), 10);
  for (int a = 0; a < c.Rows(); ++a) EXPECT_EQ(c.series[0].values[static_cast<std::size_t>(a)], s.S.params.CurtailedRate(a));
}

// The numbers of the first line after the heading that starts with the label and holds
// exactly count numbers (a table of the main report, one column per stage).
std::vector<double> ReportRow(const std::string& report, const std::string& heading, const std::string& label,
                              int count) {
  std::istringstream in(report.substr(report.find(heading)));
  for (std::string line; std::getline(in, line);) {
    std::istringstream words(line);
    std::string first;
    if (!label.empty() && (!(words >> first) || first != label)) continue;
    std::vector<double> row;
    for (std::string w; words >> w;) {
      char* end = nullptr;
      const double v = std::strtod(w.c_str(), &end);
      if (*end != 0) break;
      row.push_back(v);
    }
    if (static_cast<int>(row.size()) == count) return row;
  }
  return {};
}

// The stage bars are the stage tables of the Basic Run's report, at its 4 decimals.
TEST(ChartPanel, StageFiguresOfTheExampleAreTheTablesOfItsReport) {
  MiteSession s;
  const SessionStore& S = s.S;
  const int m = S.header.StageCount;
  const std::string report = test::ReadFile(s.dir.file("mite_0A_Life Table_Output.txt"));
  const auto mortality = ReportRow(report, ". P(j): Distribution of mortality", "P(j)", m + 1);
  const auto entered = ReportRow(report, ". P(j): Distribution of mortality", "I(j)", m + 1);
  const auto toNext = ReportRow(report, ". Stage-specific survival rate and number", "Probability", m + 1);
  const auto reached = ReportRow(report, ". Stage survival rate.  It is", "", m + 1);
  const auto ssd = ReportRow(report, ". Stable stage distribution in percentage", "", m + 1);
  ASSERT_EQ(ssd.size(), static_cast<std::size_t>(m + 1));
  // A newborn survives stage j and develops when it reaches stage j + 1; both adult stages
  // follow the last preadult one.
  std::vector<double> through(reached.begin() + 1, reached.end());
  through[static_cast<std::size_t>(m - 2)] = (entered[static_cast<std::size_t>(m - 1)] + entered.back()) / entered[0];
  through[static_cast<std::size_t>(m - 1)] = 0;
  through.push_back(0);

  const std::string note = "Because age-specific life table cannot group individuals \n"
                           "into stages, you will unable to get these data by using \n"
                           "traditional female age-specific life tables.";
  struct Expected {
    const char* figure;
    const char* title;
    const char* yTitle;
    const std::vector<double>& values;
  };
  const Expected figures[] = {
      {"ShowStageMortality", "Stage mortality (the probability that a newborn will die in this stage).\n",
       "Mortality", mortality},
      {"ShowStableStageDistribution", "Stable stage distribution (the proportion of each stage in SASD).\n",
       "Proportion (%)", ssd},
      {"ShowStageSurvivalship", "This is the probability that a newborn will survive to each stage.\n",
       "Survival rate", reached},
      {"ShowSProbabilityNewbornSurviveThisStage",
       "Stage survival rate (Probability that a newborn will survive \nthis stage and develop to the next stage).\n",
       "", through},
      {"ShowStageSpecificSurvivalRate",
       "Stage-specific survival rate (Probability that an individual will survive \nthis stage and develop to the "
       "next stage).\n",
       "", toNext},
  };
  for (const auto& e : figures) {
    const ChartPanel c = BuildFigure(S, e.figure);
    EXPECT_EQ(c.figure, e.figure);
    EXPECT_EQ(c.kind, ChartKind::Bar);
    EXPECT_EQ(c.TitleText(), std::string(e.title) + note);
    EXPECT_EQ(c.y.title, e.yTitle);
    EXPECT_EQ(c.x.title, "Stage");
    EXPECT_EQ(c.rowLabels, (std::vector<std::string>{"Egg", "Larva", "Protonymph", "Deutonymph", "Female", "Male"}));
    ASSERT_EQ(c.Columns(), 1);
    ASSERT_EQ(e.values.size(), static_cast<std::size_t>(m + 1)) << e.figure;
    for (int j = 0; j <= m; ++j)
      EXPECT_NEAR(c.series[0].values[static_cast<std::size_t>(j)], e.values[static_cast<std::size_t>(j)], 5.1e-5)
          << e.figure << " stage " << j + 1;
  }
}

// Three females, a male and one that dies young, worked by hand (stages S1, S2, Female):
//   1 F  2 3 4  eggs 0 5 3 0   adult at age 5, lays 8
//   2 F  3 2 2  eggs 4 3       adult at age 5, lays 7
//   3 F  2 2 3  eggs 1 0 6     adult at age 4, lays 7
//   4 M  2 3 3
//   5 N  1 -2                  dies in S2
TEST(ChartPanel, EulerLotkaFunctionFalseAdultTablesAndFecundityExpectancyOfAHandCohort) {
  const std::vector<test::Individual> cohort = {
      {"F", {2, 3, 4}, {0, 5, 3, 0}}, {"F", {3, 2, 2}, {4, 3}}, {"F", {2, 2, 3}, {1, 0, 6}},
      {"M", {2, 3, 3}},               {"N", {1, -2}}};
  MiteSession s("", test::DataFileText(3, cohort));
  const SessionStore& S = s.S;
  ASSERT_EQ(S.basic.BasicRunDone, "yes");
  // A figure's title, Y and X titles, and its one series when the values are given.
  auto expectFigure = [](const ChartPanel& c, const std::string& title, const std::string& yTitle,
                         const std::string& xTitle, const std::vector<double>& byHand = {}) {
    EXPECT_EQ(c.TitleText(), title);
    EXPECT_EQ(c.y.title, yTitle) << c.figure;
    EXPECT_EQ(c.x.title, xTitle) << c.figure;
    ASSERT_EQ(c.Columns(), 1) << c.figure;
    if (byHand.empty()) return;
    ASSERT_EQ(c.series[0].values.size(), byHand.size()) << c.figure;
    for (std::size_t i = 0; i < byHand.size(); ++i)
      EXPECT_NEAR(c.series[0].values[i], byHand[i], 1e-12) << c.figure << " row " << i;
  };

  // The Euler-Lotka sum is 1 at the r found, and falls as r grows; f(lambda) is 0 at lambda.
  const double r = S.params.R_Basic;
  ASSERT_GT(r, 0.1);
  const ChartPanel fr = ShowFunctionR(S);
  expectFigure(fr, "If f(r)=1, then r is the intrinsic rate.", "f(r)", "r");
  ASSERT_EQ(fr.Rows(), 41);
  EXPECT_EQ(fr.series[0].label, "f(r)");
  const double d = std::max(0.05, r / 2);
  EXPECT_NEAR(fr.xValues.front(), r - d, 1e-12);
  EXPECT_NEAR(fr.xValues[20], r, 1e-12);
  EXPECT_NEAR(fr.xValues.back(), r + d, 1e-12);
  EXPECT_NEAR(fr.series[0].values[20], 1, 1e-6);
  for (std::size_t k = 1; k < 41; ++k) EXPECT_LT(fr.series[0].values[k], fr.series[0].values[k - 1]);
  const ChartPanel fl = ShowFunctionLambda(S);
  expectFigure(fl, "If f(lambda)=0 and lambda>0, then lambda is the finite rate.", "f(lambda)", "lambda");
  ASSERT_EQ(fl.Rows(), 41);
  EXPECT_NEAR(fl.xValues[20], S.params.Lambda_Basic, 1e-12);
  EXPECT_NEAR(fl.series[0].values[20], 0, 1e-6);
  EXPECT_EQ(fl.rowLabels[20], FullPrecision(RoundDisplay(S.params.Lambda_Basic, 4)));

  // Adult ages 0..3 of the three females, as if all had emerged on the same day: alive 3, 3,
  // 2, 1; eggs 0+4+1, 5+3+0, 3+6, 0 over those alive; a closing row of zeros.
  expectFigure(ShowLxBasedOnAdultAge(S), "Adult age-specific survival rate (This is false)", "Adult l(x)",
               "Adult age", {1, 1, 2.0 / 3, 1.0 / 3, 0});
  expectFigure(ShowMxBasedOnAdultAge(S), "Adult age-specific fecundity (This is false)", "Adult m(x)", "Adult age",
               {5.0 / 3, 8.0 / 3, 4.5, 0, 0});
  // The same behind the mean preadult period (5, 5, 4 and 5 time units: 5 rounded), which 4 of
  // 5 survive.
  expectFigure(ShowFemaleLxWithPreA(S),
               "Age-specific survival rate based on mean of preadult and adult age (This is false)", "l(x)", "Age",
               {1, 0.8, 0.8, 0.8, 0.8, 0.8, 0.8, 0.8 * 2 / 3, 0.8 / 3, 0});
  expectFigure(ShowFemaleMxWithPreA(S), "Age-specific fecundity based on adult age (This is false)", "m(x)", "Age",
               {0, 0, 0, 0, 0, 5.0 / 3, 8.0 / 3, 4.5, 0, 0});

  // Fexp(x): the females of age 5 lay 8, 7 and 6 from then on, a mean of 7; of those of age 6,
  // 8, 3 and 6 are left, 17/3; at 7 only the first, with 3. The one female of age 4 lays 1 and
  // then, living on, what one of age 5 lays: 8. The two that emerge at 5 are not hers (the
  // ratio of the sums of f(y)s(y) would give 22).
  const ChartPanel fexp = BuildFigure(S, FigureOfCommand("cmdShowFemaleFecundExpectancy", ""));
  EXPECT_EQ(fexp.figure, "ShowFemaleFecundityExpectancy");
  const std::vector<double> byHand = {0, 0, 0, 0, 8, 7, 17.0 / 3, 3, 0, 0};
  expectFigure(fexp, "Age-specific life expectancy", "Fexp(x)", "Age", byHand);
  WriteFigureFile(S, "ShowFemaleFecundityExpectancy");
  const auto lines = test::Lines(s.dir.file("mite_7_Fig_female fecundity expectancy.txt"));
  ASSERT_EQ(lines.size(), byHand.size() + 1);
  EXPECT_EQ(lines[0], "\"Age\",\"Expect fecundity\"");
  EXPECT_EQ(lines[4], "3,0");
  EXPECT_EQ(lines[7], "6,5.66666666666667");

  // Residuals of fecundity (8, 7, 7) on adult longevity (4, 2, 3): b = 1/2, a = 35/6,
  // R2 = 0.75; in order of longevity 1/6, -1/3, 1/6 about the line at 0. A second press of the
  // adult longevity button shows them.
  EXPECT_EQ(FigureOfCommand("cmdShowFvsAdultLong", "ShowFRegOnAdultLong"), "ShowFRegOnAdultLongResidual");
  const ChartPanel residuals = BuildFigure(S, "ShowFRegOnAdultLongResidual");
  const std::string title = residuals.TitleText();
  EXPECT_EQ(title.substr(0, title.find(". R^2 =")),
            "Regression of fecundity vs. adult longevity (residuals). a =5.83333333333333. b =0.5");
  EXPECT_NEAR(std::stod(title.substr(title.find(". R^2 =") + 7)), 0.75, 1e-12);
  EXPECT_EQ(residuals.x.title, "Adult longevity");
  EXPECT_EQ(residuals.xValues, (std::vector<double>{2, 3, 4}));
  ASSERT_EQ(residuals.Columns(), 2);
  EXPECT_EQ(residuals.series[0].label, "Observed");
  EXPECT_EQ(residuals.series[1].label, "Expected");
  const std::vector<double> residual = {1.0 / 6, -1.0 / 3, 1.0 / 6};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(residuals.series[0].values[i], residual[i], 1e-12);
    EXPECT_EQ(residuals.series[1].values[i], 0);
  }
}

TEST(ChartPanel, ClickCycleAndGraphCommands) {
  auto store = std::make_unique<Session>();
  Session& S = *store;
  S.StartUp();
  int counter = 0;
  std::vector<std::string> seen;
  for (int k = 0; k < 17; ++k) seen.push_back(ChartClickFigure(S, "ShowSxj", counter));
  const std::vector<std::string> cycle = {"ShowGxj", "ShowDxj", "ShowFxj",  "ShowQxj", "ShowPxj",  "ShowLx",
                                          "ShowMx",  "ShowLxMx", "ShowExj", "ShowEx",  "ShowSASD", "ShowSAD",
                                          "",        "ShowVx",  "ShowFxjMxLxMx", "ShowSxj", "ShowGxj"};
  EXPECT_EQ(seen, cycle);
  EXPECT_EQ(counter, 1);
  for (const auto& figure : cycle) EXPECT_TRUE(figure.empty() || IsFigureBuilt(figure)) << figure;

  // The normality test and the Lewontin check toggle; a group-reared run and a finished
  // bootstrap leave the chart alone, the counter too.
  EXPECT_EQ(ChartClickFigure(S, "ShowCumuFreqSigmoid", counter), "ShowCumuFreqOfNormality");
  EXPECT_EQ(ChartClickFigure(S, "ShowLewontinR", counter), "ShowLewontinLambda");
  S.boot.ResampleKind = "b";
  EXPECT_EQ(ChartClickFigure(S, "ShowSxj", counter), "");
  S.boot.ResampleKind = "";
  S.options.GroupRearedFlag = "Yes";
  EXPECT_EQ(ChartClickFigure(S, "ShowCumuFreqSigmoid", counter), "");
  EXPECT_EQ(counter, 1);

  EXPECT_EQ(FigureOfCommand("Command3", ""), "ShowLx");
  EXPECT_EQ(FigureOfCommand("Command7", ""), "ShowLxMx");
  EXPECT_EQ(FigureOfCommand("cmdShowTailedRo", ""), "ShowTailedR0");
  // A band command shows the range, then on a second press its confidence interval.
  EXPECT_EQ(FigureOfCommand("cmdBootLx", "ShowSxj"), "ShowBootLx");
  EXPECT_EQ(FigureOfCommand("cmdBootLx", "ShowBootLx"), "ShowBootLxCI");
  EXPECT_EQ(FigureOfCommand("cmdBootLx", "ShowBootLxCI"), "ShowBootLx");
  EXPECT_EQ(FigureOfCommand("cmdBootMx", "ShowBootMx"), "ShowBootMxCI");
  EXPECT_EQ(FigureOfCommand("cmdLewontin", ""), "");
  // Every graph command that shows a figure here names one that is built.
  for (const auto& command : CommandTable()) {
    const std::string figure = FigureOfCommand(command.control, "");
    if (!figure.empty()) {
      EXPECT_EQ(command.group, CommandGroup::Graph) << command.control;
      EXPECT_TRUE(IsFigureBuilt(figure)) << figure;
    }
  }

  // The large graph offers the fifteen figures of the click cycle, then the others of a Basic
  // Run, each built with its own name; an unknown name gives an empty chart. Before a run
  // every figure is zeros: the ones by age over the one row of age 0..1.
  const auto large = LargeGraphFigures();
  ASSERT_EQ(large.size(), kLargeGraphCycleFigures + 17);
  for (std::size_t k = 0; k < large.size(); ++k) {
    const std::string_view name = large[k];
    const ChartPanel c = BuildFigure(S, name);
    EXPECT_EQ(c.figure, name);
    EXPECT_FALSE(c.title.empty()) << name;
    EXPECT_FALSE(c.Empty()) << name;
    if (k < kLargeGraphCycleFigures) {
      EXPECT_EQ(c.Rows(), 2) << name;
    }
    for (const auto& series : c.series)
      for (double v : series.values) EXPECT_EQ(v, 0) << name;
  }
  EXPECT_EQ(std::set<std::string_view>(large.begin(), large.end()).size(), large.size());
  EXPECT_TRUE(BuildFigure(S, "ShowNothing").Empty());
  EXPECT_FALSE(IsFigureBuilt("ShowNothing"));
}

TEST(ChartPanel, BootstrapBandsAndFrequencies) {
  auto store = std::make_unique<Session>();
  Session& S = *store;
  S.StartUp();
  S.ws.tables.LastAge = 2;
  S.settings.TimeUnit = 0.5;
  auto& R = S.boot;
  for (int a = 0; a <= 3; ++a) {
    R.LxMax(a) = 1.0 - 0.1 * a;
    R.LxMean(a) = 0.9 - 0.1 * a;
    R.LxMin(a) = 0.8 - 0.1 * a;
    R.MxUpper(a) = 10 + a;
    R.MxMean(a) = 5 + a;
    R.MxLower(a) = a;
  }
  const ChartPanel lx = ShowBootLx(S);
  EXPECT_EQ(lx.TitleText(), "Age-specific survival rate (Bootstrap)");
  EXPECT_EQ(lx.y.title, "l(x) (Bootstrap)");
  EXPECT_EQ(lx.x.title, "Age");
  ASSERT_EQ(lx.Columns(), 3);
  EXPECT_EQ(lx.series[0].label, "Max");
  EXPECT_EQ(lx.series[1].label, "Mean");
  EXPECT_EQ(lx.series[2].label, "Min");
  EXPECT_EQ(lx.rowLabels, (std::vector<std::string>{"0", "0", "1", "2"}));  // ages 0, 0.5, 1, 1.5
  EXPECT_DOUBLE_EQ(lx.series[2].values[3], 0.5);
  const ChartPanel mx = ShowBootMxCI(S);
  EXPECT_EQ(mx.TitleText(), "Age-specific fecundity with bootstrap confidence interval");
  EXPECT_EQ(mx.y.title, "m(x) (bootstrap)");
  EXPECT_EQ(mx.series[0].label, "Upper");
  EXPECT_EQ(mx.series[2].label, "Lower");
  EXPECT_DOUBLE_EQ(mx.series[0].values[1], 11);
  EXPECT_EQ(ShowBootLxCI(S).series[0].label, "Upper");
  EXPECT_EQ(ShowBootMx(S).TitleText(), "Age-specific fecundity (Bootstrap result)");

  // Classes of r and R0: the count of each class under the class limit rounded to 4 decimals,
  // on the console's second chart.
  R.ResampleKind = "b";
  R.BootB = 200;
  R.HistogramBars = 20;
  R.HistogramBarsPlus1 = 21;
  R.RClassWidth = 0.0012345;
  R.R0ClassWidth = 1.5;
  for (int i = 0; i <= 23; ++i) {
    R.RClassEdge(i) = 0.2 + i * R.RClassWidth;
    R.RClassCount(i) = i;
    R.R0ClassEdge(i) = 40 + i * 1.5;
    R.R0ClassCount(i) = 2 * i;
  }
  const ChartPanel r = ShowFreqr(S);
  EXPECT_EQ(r.chart, "MSChart2");
  EXPECT_EQ(r.kind, ChartKind::Bar);
  EXPECT_EQ(r.TitleText(), "Frequency of r (interval =0.0012345).  Bootstrap number = 200");
  ASSERT_EQ(r.Rows(), 22);
  EXPECT_EQ(r.rowLabels[0], "0.2");
  EXPECT_EQ(r.rowLabels[3], "0.2037");  // 0.2037035
  EXPECT_DOUBLE_EQ(r.series[0].values[21], 21);
  const ChartPanel r0 = ShowFreqR0(S);
  ASSERT_EQ(r0.Rows(), 23);
  EXPECT_EQ(r0.rowLabels[1], "41.5");
  R.R0 = BootSummary{0, 0, 70, 40, 55.5, 4, 0.2};
  S.header.CohortSizeRead = 100;
  R.BootSampleSize = 100;
  S.lifeTable.OriginalPreadultDeathProb = 0.25;
  EXPECT_EQ(ShowFreqR0(S).TitleText(),
            "n =100. Mortality =0.25.  Min =40. Mean=55.5. Max =70. Variance =4. SE =0.2");
  R.BootSampleSize = 50;
  EXPECT_EQ(ShowFreqR0(S).TitleText().substr(0, 20), "B = 200. n =50. Mort");
  // A click on the frequency chart shows R0 and r in turn, once the bootstrap has ended.
  EXPECT_EQ(FrequencyClickFigure(S, "ShowFreqR0"), "");
  R.BootstrapCompleted = "yes";
  EXPECT_EQ(FrequencyClickFigure(S, "ShowFreqR0"), "ShowFreqr");
  EXPECT_EQ(FrequencyClickFigure(S, "ShowFreqr"), "ShowFreqR0");
  EXPECT_EQ(FrequencyClickFigure(S, ""), "ShowFreqR0");
  R.ResampleKind = "j";
  EXPECT_EQ(ShowFreqR0(S).TitleText(), "Frequency of pseudo-R0 (interval =1.5).");
  EXPECT_EQ(ShowFreqr(S).TitleText(), "Frequency of pseudo-r (interval =0.0012345).");
}

TEST(ConsoleTexts, GreetingBlinkWisdomAndTheTeachersKey) {
  EXPECT_EQ(GreetingText(0), "How do you do?");
  EXPECT_EQ(GreetingText(7), "How do you do?");
  EXPECT_EQ(GreetingText(8), "Wie geht es Ihnen?");
  EXPECT_EQ(GreetingText(21), "Como estas?");
  EXPECT_EQ(GreetingText(28), "Comment faites-vous?");
  EXPECT_EQ(GreetingText(35), "Nin hao ma?");
  EXPECT_EQ(GreetingText(36), "");  // the last greeting stays up to tick 42
  EXPECT_EQ(GreetingText(42), "");
  EXPECT_EQ(BlinkColour(0), 0);
  EXPECT_EQ(BlinkColour(2), 0);
  EXPECT_EQ(BlinkColour(3), 1);
  EXPECT_EQ(BlinkColour(15), 5);
  EXPECT_EQ(BlinkColour(16), 0);

  ASSERT_EQ(WisdomLines().size(), 27u);
  int commandLines = 0;
  for (int i = 0; i < 27; ++i) {
    const std::string line = WisdomLine(i);
    EXPECT_FALSE(line.empty());
    if (line.find(" A. Life table analysis (individual-reared data): A1, A2, A3.\n") == 0) ++commandLines;
  }
  EXPECT_EQ(commandLines, 1);
  const std::string list = CommandListLines();
  EXPECT_NE(list.find("  A4: Sort bootstrap life tables and multinomial theorem.\n"
                      "  B: Life table analysis (group-reared data).\n"
                      "  C: Run paired bootstrap test by picking file 1 by 1.\n"),
            std::string::npos);
  EXPECT_NE(list.find("  J: Select bootstrap files to calculate the ratio!\n"), std::string::npos);
  EXPECT_EQ(list.substr(list.size() - 28), "  Q: Cartesian paired test.\n");

  // Two clicks on the date label open every command and frame again.
  ConsoleState console;
  SetStartUpConsole(console);
  console.Disable("cmdReadDataA1");
  console.Show("Frame4", false);
  EnableAllButtonsForImage(console);
  for (const auto& command : CommandTable()) EXPECT_TRUE(IsCommandOpen(console, command)) << command.control;
  EXPECT_TRUE(console.IsVisible("Frame5"));
}

}  // namespace
}  // namespace korvan
