#include "ui/chart_figures.h"

#include <algorithm>
#include <array>
#include <functional>

#include "ui/chart_regression.h"

namespace korvan {

int LastRowAge(const SessionStore& S) {
  return std::clamp(S.ws.tables.LastAge + 1, 0, static_cast<int>(kMaxAge));
}

int FigureStageCount(const SessionStore& S) {
  return std::clamp(S.header.StageCount, 0, static_cast<int>(kMaxStage) - 1);
}

ChartPanel FigureFrame(const char* figure, std::vector<std::string> title, const char* yTitle, const char* xTitle) {
  ChartPanel c;
  c.figure = figure;
  c.title = std::move(title);
  c.titleFont = {"Times New Roman", 12, false};
  c.legendFont = {"Times New Roman", 14, false};
  c.x.title = xTitle;
  c.x.font = {"Times New Roman", 14, true};
  c.x.labelEvery = 3;
  c.y.title = yTitle;
  c.y.font = c.x.font;
  return c;
}

ChartPanel AgeFigure(const SessionStore& S, const char* figure, std::vector<std::string> title,
                     const char* yTitle, const char* xTitle, int lastAge) {
  ChartPanel c = FigureFrame(figure, std::move(title), yTitle, xTitle);
  for (int a = 0; a <= lastAge; ++a) c.rowLabels.push_back(AgeRowLabel(a, S.settings.TimeUnit));
  return c;
}

ChartPanel AgeSeriesFigure(const SessionStore& S, const char* figure, std::vector<std::string> title,
                           const char* yTitle, const char* xTitle, int lastAge,
                           const std::function<double(int)>& value) {
  ChartPanel c = AgeFigure(S, figure, std::move(title), yTitle, xTitle, lastAge);
  ChartSeries s;
  s.label = yTitle;
  s.lineWidth = 2;
  for (int a = 0; a <= lastAge; ++a) s.values.push_back(value(a));
  c.series.push_back(std::move(s));
  return c;
}

namespace {

ChartPanel StageFigure(const SessionStore& S, const char* figure, std::vector<std::string> title,
                       const char* yTitle, const AgeStageMatrix& m, double factor = 1, int last = -1) {
  if (last < 0) last = LastRowAge(S);
  ChartPanel c = AgeFigure(S, figure, std::move(title), yTitle, "Age", last);
  for (int j = 1; j <= FigureStageCount(S) + 1; ++j) {
    ChartSeries s;
    s.label = S.header.StageName(1, j);
    s.lineWidth = 2;
    for (int a = 0; a <= last; ++a) s.values.push_back(m(a, j) * factor);
    c.series.push_back(std::move(s));
  }
  return c;
}

// One series by age 0..LastAge+1 from value(a).
ChartPanel OneSeries(const SessionStore& S, const char* figure, std::vector<std::string> title,
                     const char* yTitle, const std::function<double(int)>& value) {
  return AgeSeriesFigure(S, figure, std::move(title), yTitle, "Age", LastRowAge(S), value);
}

}  // namespace

ChartPanel ShowSxj(const SessionStore& S) { return ShowSxj(S, S.ws, {}); }

ChartPanel ShowSxj(const SessionStore& S, const Workspace& ws, const std::string& subtitle) {
  std::vector<std::string> title = {"Survival rate to each age-stage group",
                                    "It is the probability that a newborn will survive to age x and stage j."};
  if (!subtitle.empty()) title.push_back(subtitle);
  ChartPanel c = StageFigure(S, "ShowSxj", std::move(title), "Age-stage survival rate s(x,j)", ws.tables.Sxj, 1,
                             std::clamp(ws.tables.LastAge + 1, 0, static_cast<int>(kMaxAge)));
  c.y.automatic = false;
  c.y.min = 0;
  c.y.max = 1.1;
  c.y.divisions = 11;
  return c;
}

ChartPanel ShowGxj(const SessionStore& S) {
  return StageFigure(S, "ShowGxj", {"Age-stage specific growth probability"}, "g(x,j)", S.ws.tables.Gxj);
}
ChartPanel ShowDxj(const SessionStore& S) {
  return StageFigure(S, "ShowDxj", {"Age-stage specific development probability"}, "d(x,j)", S.ws.tables.Dxj);
}
ChartPanel ShowFxj(const SessionStore& S) {
  return StageFigure(S, "ShowFxj", {"Age-stage specific fecundity"}, "f(x,j)", S.ws.tables.Fxj);
}
ChartPanel ShowPxj(const SessionStore& S) {
  return StageFigure(S, "ShowPxj", {"Age-stage distribution of mortality"}, "p(x,j)", S.ws.tables.Pxj);
}
ChartPanel ShowQxj(const SessionStore& S) {
  return StageFigure(S, "ShowQxj", {"Age-stage specific mortality"}, "q(x,j)", S.ws.tables.Qxj);
}
ChartPanel ShowExj(const SessionStore& S) {
  return StageFigure(S, "ShowExj", {"Age-stage specific life expectancy"}, "e(x,j)", S.ws.lifeTable.Exj);
}
// c(x,j): the mean consumption of an individual of age x and stage j (with a consumption file).
ChartPanel ShowCxj(const SessionStore& S) {
  return StageFigure(S, "ShowCxj", {"Age-stage consumption rate"}, "c(x,j)", S.ws.predation.Cxj);
}
// b(x,j) is kept in percent; the figure shows the proportion.
ChartPanel ShowSASD(const SessionStore& S) {
  return StageFigure(S, "ShowSASD",
                     {"Stable age-stage distribution",
                      "It is the proportion of individuals of age x and stage j in total population when the ",
                      "population reaches stable age-stage distribution and finite rate."},
                     "a(x,j)", S.ws.params.Bxj, 0.01);
}
ChartPanel ShowVxj(const SessionStore& S) {
  return StageFigure(S, "ShowVxj",
                     {"Age-stage reproductive value",
                      "It is the contribution of an individual of age x and stage j to future population."},
                     "v(x,j)", S.params.VxjBasic);
}

ChartPanel ShowLx(const SessionStore& S) {
  return OneSeries(S, "ShowLx", {"Age-specific survival rate"}, "l(x)", [&](int a) { return S.ws.tables.Lx(a); });
}
ChartPanel ShowMx(const SessionStore& S) {
  return OneSeries(S, "ShowMx", {"Age-specific fecundity"}, "m(x)", [&](int a) { return S.ws.params.Mx(a); });
}
ChartPanel ShowLxMx(const SessionStore& S) {
  return OneSeries(S, "ShowLxMx", {"Age-specific maternity"}, "l(x)m(x)",
                   [&](int a) { return S.ws.tables.Lx(a) * S.ws.params.Mx(a); });
}
ChartPanel ShowCumuLxMx(const SessionStore& S) {
  return OneSeries(S, "ShowCumuLxMx", {"Cumulative l(x)m(x)"}, "Cumu[l(x)m(x)]",
                   [&](int a) { return S.ws.params.CumLxMx(a); });
}
ChartPanel ShowEx(const SessionStore& S) {
  return OneSeries(S, "ShowEx", {"Age-specific life expectancy"}, "e(x)", [&](int a) { return S.ws.lifeTable.Ex(a); });
}
ChartPanel ShowSAD(const SessionStore& S) {
  return OneSeries(S, "ShowSAD", {"Stable age distribution"}, "%c(x)", [&](int a) { return S.ws.params.Ax2(a); });
}
ChartPanel ShowVx(const SessionStore& S) {
  return OneSeries(S, "ShowVx",
                   {"Age-specific reproductive value",
                    "It is the contribution of an individual of age x to future population."},
                   "v(x)", [&](int a) { return S.ws.params.Vx(a); });
}
ChartPanel ShowTailedR0(const SessionStore& S) {
  return OneSeries(S, "ShowTailedR0", {"Tailed R0 (Sum of l(x)*m(x) with age>=x)."}, "Tailed R0",
                   [&](int a) { return S.params.TailedR0(a); });
}
ChartPanel ShowTailedR(const SessionStore& S) {
  return OneSeries(S, "ShowTailedR",
                   {"TailedR(k) is the intrinsic rate when the fecundity of age 0 to K-1 is ignored"}, "Tailed r",
                   [&](int a) { return S.params.TailedRate(a); });
}
ChartPanel ShowCurtailedR(const SessionStore& S) {
  return OneSeries(S, "ShowCurtailedR", {"Curtailed r"}, "r-delta", [&](int a) { return S.params.CurtailedRate(a); });
}

ChartPanel ShowFxjMxLxMx(const SessionStore& S) {
  const int last = LastRowAge(S);
  const int m = FigureStageCount(S);
  ChartPanel c = AgeFigure(S, "ShowFxjMxLxMx", {"f(x,female), m(x), l(x)m(x)"}, "Fecundity", "Age", last);
  ChartSeries f{"f(x," + S.header.StageName(1, m) + ")", 2, {}}, mx{"m(x)", 2, {}}, lm{"l(x)m(x)", 2, {}};
  for (int a = 0; a <= last; ++a) {
    f.values.push_back(S.ws.tables.Fxj(a, m));
    mx.values.push_back(S.ws.params.Mx(a));
    lm.values.push_back(S.ws.tables.Lx(a) * S.ws.params.Mx(a));
  }
  c.series = {std::move(f), std::move(mx), std::move(lm)};
  return c;
}

namespace {

using Builder = ChartPanel (*)(const SessionStore&);
struct NamedFigure {
  std::string_view name;
  Builder build;
};

constexpr std::array kFigures = {
    NamedFigure{"ShowSxj", ShowSxj},         NamedFigure{"ShowGxj", ShowGxj},
    NamedFigure{"ShowDxj", ShowDxj},         NamedFigure{"ShowFxj", ShowFxj},
    NamedFigure{"ShowPxj", ShowPxj},         NamedFigure{"ShowQxj", ShowQxj},
    NamedFigure{"ShowExj", ShowExj},         NamedFigure{"ShowSASD", ShowSASD},
    NamedFigure{"ShowVxj", ShowVxj},         NamedFigure{"ShowLx", ShowLx},
    NamedFigure{"ShowMx", ShowMx},           NamedFigure{"ShowLxMx", ShowLxMx},
    NamedFigure{"ShowCumuLxMx", ShowCumuLxMx}, NamedFigure{"ShowEx", ShowEx},
    NamedFigure{"ShowSAD", ShowSAD},         NamedFigure{"ShowVx", ShowVx},
    NamedFigure{"ShowFxjMxLxMx", ShowFxjMxLxMx}, NamedFigure{"ShowTailedR0", ShowTailedR0},
    NamedFigure{"ShowTailedR", ShowTailedR}, NamedFigure{"ShowCurtailedR", ShowCurtailedR},
    NamedFigure{"ShowBootLx", ShowBootLx},   NamedFigure{"ShowBootLxCI", ShowBootLxCI},
    NamedFigure{"ShowBootMx", ShowBootMx},   NamedFigure{"ShowBootMxCI", ShowBootMxCI},
    NamedFigure{"ShowFreqR0", ShowFreqR0},   NamedFigure{"ShowFreqr", ShowFreqr},
    NamedFigure{"ShowFRegOnTotalLong", ShowFRegOnTotalLong}, NamedFigure{"ShowFRegOnAdultLong", ShowFRegOnAdultLong},
    NamedFigure{"ShowFRegOnOviDays", ShowFRegOnOviDays},
    NamedFigure{"ShowCumuFreqOfNormality", ShowCumuFreqOfNormality},
    NamedFigure{"ShowCumuFreqSigmoid", ShowCumuFreqSigmoid},
    NamedFigure{"ShowCumuFreqNormForNbutton", ShowCumuFreqNormForNbutton},
    NamedFigure{"ShowStageMortality", ShowStageMortality},
    NamedFigure{"ShowStableStageDistribution", ShowStableStageDistribution},
    NamedFigure{"ShowStageSurvivalship", ShowStageSurvivalship},
    NamedFigure{"ShowSProbabilityNewbornSurviveThisStage", ShowSProbabilityNewbornSurviveThisStage},
    NamedFigure{"ShowStageSpecificSurvivalRate", ShowStageSpecificSurvivalRate},
    NamedFigure{"ShowFunctionR", ShowFunctionR}, NamedFigure{"ShowFunctionLambda", ShowFunctionLambda},
    NamedFigure{"ShowLxBasedOnAdultAge", ShowLxBasedOnAdultAge},
    NamedFigure{"ShowMxBasedOnAdultAge", ShowMxBasedOnAdultAge},
    NamedFigure{"ShowFemaleLxWithPreA", ShowFemaleLxWithPreA},
    NamedFigure{"ShowFemaleMxWithPreA", ShowFemaleMxWithPreA},
    NamedFigure{"ShowFemaleFecundityExpectancy", ShowFemaleFecundityExpectancy},
    NamedFigure{"ShowFRegOnAdultLongResidual", ShowFRegOnAdultLongResidual},
    NamedFigure{"ShowFRegOnConsumption", ShowFRegOnConsumption},
    NamedFigure{"ShowCxj", ShowCxj},
};

constexpr std::array<std::string_view, kLargeGraphCycleFigures + 17> kLargeGraph = {
    "ShowSxj", "ShowGxj", "ShowDxj", "ShowFxj", "ShowPxj", "ShowLx",  "ShowMx", "ShowLxMx",
    "ShowExj", "ShowEx",  "ShowSASD", "ShowSAD", "ShowVxj", "ShowVx", "ShowQxj",
    // Beyond the click cycle.
    "ShowCumuLxMx", "ShowFxjMxLxMx", "ShowFunctionR", "ShowFunctionLambda", "ShowTailedR0", "ShowTailedR",
    "ShowCurtailedR", "ShowStageMortality", "ShowStableStageDistribution", "ShowStageSurvivalship",
    "ShowSProbabilityNewbornSurviveThisStage", "ShowStageSpecificSurvivalRate", "ShowLxBasedOnAdultAge",
    "ShowMxBasedOnAdultAge", "ShowFemaleLxWithPreA", "ShowFemaleMxWithPreA", "ShowFemaleFecundityExpectancy"};

// The click cycle of the console's chart; position 13 shows nothing new.
constexpr std::array<std::string_view, 16> kClickCycle = {
    "ShowSxj", "ShowGxj", "ShowDxj",  "ShowFxj", "ShowQxj", "ShowPxj", "ShowLx", "ShowMx",
    "ShowLxMx", "ShowExj", "ShowEx", "ShowSASD", "ShowSAD", "",       "ShowVx", "ShowFxjMxLxMx"};

}  // namespace

ChartPanel BuildFigure(const SessionStore& S, std::string_view figure) {
  for (const auto& f : kFigures) {
    if (f.name == figure) return f.build(S);
  }
  return ChartPanel{};
}

bool IsFigureBuilt(std::string_view figure) {
  return std::any_of(kFigures.begin(), kFigures.end(), [&](const NamedFigure& f) { return f.name == figure; });
}

std::span<const std::string_view> LargeGraphFigures() { return kLargeGraph; }

std::string ChartClickFigure(const SessionStore& S, const std::string& shown, int& counter) {
  if (S.options.GroupRearedFlag == "Yes") return "";
  // The normality test and the Lewontin check toggle between their two figures.
  if (shown == "ShowCumuFreqSigmoid") return "ShowCumuFreqOfNormality";
  if (shown == "ShowCumuFreqOfNormality") return "ShowCumuFreqSigmoid";
  if (shown == "ShowLewontinR") return "ShowLewontinLambda";
  if (shown == "ShowLewontinLambda") return "ShowLewontinR";
  if (S.boot.ResampleKind == "b") return "";
  counter = counter >= 15 ? 0 : counter + 1;
  return std::string(kClickCycle[static_cast<std::size_t>(counter)]);
}

std::string FrequencyClickFigure(const SessionStore& S, const std::string& shown) {
  if (S.boot.BootstrapCompleted != "yes") return "";
  return shown == "ShowFreqR0" ? "ShowFreqr" : "ShowFreqR0";
}

std::string FigureOfCommand(std::string_view control, const std::string& shown) {
  if (control == "Command3") return "ShowLx";
  if (control == "Command5") return "ShowMx";
  if (control == "Command7") return "ShowLxMx";
  if (control == "Command6") return "ShowVx";
  if (control == "Command9") return "ShowCurtailedR";
  if (control == "cmdShowTailedR") return "ShowTailedR";
  if (control == "cmdShowTailedRo") return "ShowTailedR0";
  if (control == "cmdBootLx") return shown == "ShowBootLx" ? "ShowBootLxCI" : "ShowBootLx";
  if (control == "cmdBootMx") return shown == "ShowBootMx" ? "ShowBootMxCI" : "ShowBootMx";
  if (control == "cmdShowFemaleFecundExpectancy") return "ShowFemaleFecundityExpectancy";
  // The regression on adult longevity shows its residuals on a second press.
  if (control == "cmdShowFvsAdultLong" && shown == "ShowFRegOnAdultLong") return "ShowFRegOnAdultLongResidual";
  return RegressionFigureOfCommand(control);
}

void WriteFigureFile(const SessionStore& S, std::string_view figure) {
  if (figure == "ShowFemaleFecundityExpectancy")
    WriteFemaleFecundityExpectancyFile(S);
  else
    WriteFecundityRegressionFile(S, figure);
}

}  // namespace korvan
