// The figures of a Basic Run beyond the click cycle: the stage bars, the Euler-Lotka function
// around r, the female life table read on the adult-age axis (wrong on purpose), and the
// fecundity a female still has before her.
#include <algorithm>
#include <cmath>

#include "engine/population_parameters.h"
#include "store/rules.h"
#include "text/numbers.h"
#include "text/text_file.h"
#include "ui/chart_figures.h"

namespace korvan {

namespace {

struct StageFigureKind {
  const char* figure;
  const char* title[2];  // the second line may be absent
  const char* yTitle;
  const char* series;
  const StageVec& (*value)(const SessionStore&);
};

constexpr StageFigureKind kStageFigures[] = {
    {"ShowStageMortality",
     {"Stage mortality (the probability that a newborn will die in this stage).", nullptr},
     "Mortality", "Mortality",
     [](const SessionStore& S) -> const StageVec& { return S.ws.lifeTable.StageDeathProb; }},
    {"ShowStableStageDistribution",
     {"Stable stage distribution (the proportion of each stage in SASD).", nullptr},
     "Proportion (%)", "Proportion (%)",
     [](const SessionStore& S) -> const StageVec& { return S.ws.params.SsdPercent; }},
    {"ShowStageSurvivalship",
     {"This is the probability that a newborn will survive to each stage.", nullptr},
     "Survival rate", "Survival rate",
     [](const SessionStore& S) -> const StageVec& { return S.ws.lifeTable.StageEntry; }},
    {"ShowSProbabilityNewbornSurviveThisStage",
     {"Stage survival rate (Probability that a newborn will survive ", "this stage and develop to the next stage)."},
     "", "Stage survival rate",
     [](const SessionStore& S) -> const StageVec& { return S.ws.lifeTable.StageSurvival; }},
    {"ShowStageSpecificSurvivalRate",
     {"Stage-specific survival rate (Probability that an individual will survive ",
      "this stage and develop to the next stage)."},
     "", "Stage-specific survival rate",
     [](const SessionStore& S) -> const StageVec& { return S.ws.lifeTable.StageToNext; }},
};

// Bars of one value per stage 1..m+1, each row under the stage's name. Every stage figure
// says why a female age-specific life table can't give it.
ChartPanel StageBars(const SessionStore& S, const StageFigureKind& kind) {
  std::vector<std::string> title;
  for (const char* line : kind.title)
    if (line) title.emplace_back(line);
  title.insert(title.end(), {"Because age-specific life table cannot group individuals ",
                             "into stages, you will unable to get these data by using ",
                             "traditional female age-specific life tables."});
  ChartPanel c = FigureFrame(kind.figure, std::move(title), kind.yTitle, "Stage");
  c.kind = ChartKind::Bar;
  c.x.labelEvery = 1;
  ChartSeries s{kind.series, 2, {}};
  const StageVec& value = kind.value(S);
  for (int j = 1; j <= FigureStageCount(S) + 1; ++j) {
    c.rowLabels.push_back(S.header.StageName(1, j));
    s.values.push_back(value(j));
  }
  c.series.push_back(std::move(s));
  return c;
}

}  // namespace

ChartPanel ShowStageMortality(const SessionStore& S) { return StageBars(S, kStageFigures[0]); }
ChartPanel ShowStableStageDistribution(const SessionStore& S) { return StageBars(S, kStageFigures[1]); }
ChartPanel ShowStageSurvivalship(const SessionStore& S) { return StageBars(S, kStageFigures[2]); }
ChartPanel ShowSProbabilityNewbornSurviveThisStage(const SessionStore& S) { return StageBars(S, kStageFigures[3]); }
ChartPanel ShowStageSpecificSurvivalRate(const SessionStore& S) { return StageBars(S, kStageFigures[4]); }

// ---------------------------------------------------------------------------------------
// The Euler-Lotka function

std::vector<double> EulerLotkaGrid(double r) {
  constexpr int kSteps = 40;
  const double d = std::max(0.05, std::fabs(r) / 2);
  std::vector<double> grid;
  for (int k = 0; k <= kSteps; ++k) grid.push_back(r - d + 2 * d * k / kSteps);
  return grid;
}

namespace {

// The Basic Run's Euler-Lotka sum at the rate r, in its age convention and time unit.
double EulerLotkaSumAt(const SessionStore& S, double r) {
  const int last = std::clamp(S.ws.tables.LastAge, 0, static_cast<int>(kMaxAge));
  return EulerLotkaSum(S.ws.tables.Lx, S.ws.params.Mx, last, r, S.settings.TimeUnit,
                       S.options.AgeConvention == "x");
}

// One series over the tried rates, on a scale of numbers: x(r) on the X axis, value(r) on Y.
ChartPanel RateFunction(const SessionStore& S, const char* figure, const char* title, const char* name,
                        const char* xTitle, double (*x)(double), double shift) {
  ChartPanel c = FigureFrame(figure, {title}, name, xTitle);
  c.x.labelEvery = 5;
  ChartSeries s{name, 2, {}};
  const bool table = S.ws.tables.Lx(0) > 0;  // no life table yet: zeros, not -1
  for (double r : EulerLotkaGrid(S.ws.params.r)) {
    const double at = x(r);
    c.xValues.push_back(at);
    c.rowLabels.push_back(FullPrecision(RoundDisplay(at, 4)));
    s.values.push_back(table ? EulerLotkaSumAt(S, r) + shift : 0);
  }
  c.series.push_back(std::move(s));
  return c;
}

double Same(double r) { return r; }
double Exp(double r) { return std::exp(r); }

}  // namespace

ChartPanel ShowFunctionR(const SessionStore& S) {
  return RateFunction(S, "ShowFunctionR", "If f(r)=1, then r is the intrinsic rate.", "f(r)", "r", Same, 0);
}
ChartPanel ShowFunctionLambda(const SessionStore& S) {
  return RateFunction(S, "ShowFunctionLambda", "If f(lambda)=0 and lambda>0, then lambda is the finite rate.",
                      "f(lambda)", "lambda", Exp, -1);
}

// ---------------------------------------------------------------------------------------
// The adult-age axis. The tables are the Basic Run's (CalculateAdultLifeTable); the last row
// closes them with zeros.

namespace {

int MaxAdultAge(const SessionStore& S) {
  return std::clamp(S.ws.stageStats.MaxFemaleAdultAge, 0, static_cast<int>(kMaxAge));
}

// The last row of the table from birth: the rounded preadult mean plus the adult ages.
int LastBirthAge(const SessionStore& S) {
  const int pa = std::clamp(static_cast<int>(S.stageStats.PreadultAgeRounded), 0, static_cast<int>(kMaxAge));
  return pa + MaxAdultAge(S);
}

template <class Table>
ChartPanel FalseFigure(const SessionStore& S, const char* figure, const char* title, const char* yTitle,
                       const char* xTitle, int last, const Table& table) {
  return AgeSeriesFigure(S, figure, {title}, yTitle, xTitle, last, [&](int t) { return t < last ? table(t) : 0.0; });
}

}  // namespace

ChartPanel ShowLxBasedOnAdultAge(const SessionStore& S) {
  return FalseFigure(S, "ShowLxBasedOnAdultAge", "Adult age-specific survival rate (This is false)", "Adult l(x)",
                     "Adult age", MaxAdultAge(S), S.stageStats.AdultLx);
}
ChartPanel ShowMxBasedOnAdultAge(const SessionStore& S) {
  return FalseFigure(S, "ShowMxBasedOnAdultAge", "Adult age-specific fecundity (This is false)", "Adult m(x)",
                     "Adult age", MaxAdultAge(S), S.stageStats.AdultMx);
}
ChartPanel ShowFemaleLxWithPreA(const SessionStore& S) {
  return FalseFigure(S, "ShowFemaleLxWithPreA",
                     "Age-specific survival rate based on mean of preadult and adult age (This is false)", "l(x)",
                     "Age", LastBirthAge(S), S.stageStats.BirthLx);
}
ChartPanel ShowFemaleMxWithPreA(const SessionStore& S) {
  return FalseFigure(S, "ShowFemaleMxWithPreA", "Age-specific fecundity based on adult age (This is false)", "m(x)",
                     "Age", LastBirthAge(S), S.stageStats.BirthMx);
}

// ---------------------------------------------------------------------------------------
// Fecundity expectancy

// A female alive at x lays f(x,female) now and, with the chance g(x,female) of living on in the
// stage, what one of age x + 1 still lays: the walk of e(x,j) from the cell (x, female),
// weighted by the eggs of each age. It follows the females of age x only; those that emerge
// later don't add to their expectancy.
std::vector<double> CalculateFemaleFecundityExpectancy(const SessionStore& S) {
  const auto& T = S.ws.tables;
  const int last = LastRowAge(S);
  const int female = FigureStageCount(S);
  std::vector<double> fexp(static_cast<std::size_t>(last) + 2, 0.0);  // a zero one age beyond
  for (int x = last; x >= 0; --x) {
    const auto i = static_cast<std::size_t>(x);
    if (T.Sxj(x, female) > 0) fexp[i] = T.Fxj(x, female) + T.Gxj(x, female) * fexp[i + 1];
  }
  fexp.pop_back();
  return fexp;
}

ChartPanel ShowFemaleFecundityExpectancy(const SessionStore& S) {
  const std::vector<double> fexp = CalculateFemaleFecundityExpectancy(S);
  return AgeSeriesFigure(S, "ShowFemaleFecundityExpectancy", {"Age-specific life expectancy"}, "Fexp(x)", "Age",
                         LastRowAge(S), [&](int x) { return fexp[static_cast<std::size_t>(x)]; });
}

void WriteFemaleFecundityExpectancyFile(const SessionStore& S) {
  const std::vector<double> fexp = CalculateFemaleFecundityExpectancy(S);
  TextFile f(OutputName(S, "_7_Fig_female fecundity expectancy.txt"));
  f.Write("Age", "Expect fecundity");
  for (std::size_t x = 0; x < fexp.size(); ++x)
    f.Write(TimeUnitToDays(static_cast<double>(x), S.settings.TimeUnit), fexp[x]);
}

}  // namespace korvan
