#pragma once
// The figures of a life table as ChartPanel data, built from the store: the age-stage figures
// of the Basic Run, the bands of the bootstrap, the frequencies of r and R0, and the click
// cycle of the console's chart. A figure built before its data exist shows zeros.
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/session_store.h"
#include "ui/chart_panel.h"

namespace korvan {

// Age-stage figures, one series per stage 1..m+1, rows the ages 0..LastAge+1.
ChartPanel ShowSxj(const SessionStore& S);
// s(x,j) of a workspace other than the Basic Run's (a matched table, say), with a line of its own
// under the title when subtitle is not empty.
ChartPanel ShowSxj(const SessionStore& S, const Workspace& ws, const std::string& subtitle);
ChartPanel ShowGxj(const SessionStore& S);
ChartPanel ShowDxj(const SessionStore& S);
ChartPanel ShowFxj(const SessionStore& S);
ChartPanel ShowPxj(const SessionStore& S);
ChartPanel ShowQxj(const SessionStore& S);
ChartPanel ShowExj(const SessionStore& S);
ChartPanel ShowCxj(const SessionStore& S);
ChartPanel ShowSASD(const SessionStore& S);
ChartPanel ShowVxj(const SessionStore& S);
// Age-specific figures, one series.
ChartPanel ShowLx(const SessionStore& S);
ChartPanel ShowMx(const SessionStore& S);
ChartPanel ShowLxMx(const SessionStore& S);
ChartPanel ShowCumuLxMx(const SessionStore& S);
ChartPanel ShowEx(const SessionStore& S);
ChartPanel ShowSAD(const SessionStore& S);
ChartPanel ShowVx(const SessionStore& S);
ChartPanel ShowFxjMxLxMx(const SessionStore& S);
ChartPanel ShowTailedR0(const SessionStore& S);
ChartPanel ShowTailedR(const SessionStore& S);
ChartPanel ShowCurtailedR(const SessionStore& S);
// Bands of the bootstrap: "Max", "Mean", "Min" or "Upper", "Mean", "Lower".
ChartPanel ShowBootLx(const SessionStore& S);
ChartPanel ShowBootLxCI(const SessionStore& S);
ChartPanel ShowBootMx(const SessionStore& S);
ChartPanel ShowBootMxCI(const SessionStore& S);
// Class counts of R0 and r (the console's second chart).
ChartPanel ShowFreqR0(const SessionStore& S);
ChartPanel ShowFreqr(const SessionStore& S);
// The frequency form: its twins of the two charts above ("N =" for the sample size), and how
// often each individual was drawn over all samples, as bars with gaps, as touching bars, as a
// thin line or as a thick line.
ChartPanel FreqFormR0(const SessionStore& S);
ChartPanel FreqFormr(const SessionStore& S);
enum class IndividualCountsForm { Bars, ContinuousBars, Line, ContinuousLine };
ChartPanel IndividualCounts(const SessionStore& S, IndividualCountsForm form);
// Cumulative frequencies in probits against the value with the fitted line ("Observed",
// "Expected"): of bootstrap R0 after a bootstrap, of the list of "N. Normality"; and of R0 as a
// percentage.
ChartPanel ShowCumuFreqOfNormality(const SessionStore& S);
ChartPanel ShowCumuFreqNormForNbutton(const SessionStore& S);
ChartPanel ShowCumuFreqSigmoid(const SessionStore& S);
// A frequency form: the count of each value (of a list, or of each individual in a sample of a
// demonstration) as bars under the value, the largest count setting the scale.
ChartPanel ShowFreqForm(const std::string& title, const std::string& xTitle, const std::vector<double>& values,
                        const std::vector<double>& counts);

// Stage figures: bars, one row per stage 1..m+1 under the stage's name.
ChartPanel ShowStageMortality(const SessionStore& S);
ChartPanel ShowStableStageDistribution(const SessionStore& S);
ChartPanel ShowStageSurvivalship(const SessionStore& S);
ChartPanel ShowSProbabilityNewbornSurviveThisStage(const SessionStore& S);
ChartPanel ShowStageSpecificSurvivalRate(const SessionStore& S);
// The Euler-Lotka function around the Basic Run's r, so that one sees where it crosses:
// f(r) = the sum of l(x) exp(-r a) m(x) (crossing 1), f(lambda) = the same sum at r = ln(lambda)
// minus 1 (crossing 0), over the rates of EulerLotkaGrid.
ChartPanel ShowFunctionR(const SessionStore& S);
ChartPanel ShowFunctionLambda(const SessionStore& S);
// 41 rates evenly spaced over [r - d, r + d] with d = max(0.05, |r|/2).
std::vector<double> EulerLotkaGrid(double r);
// The female age-specific life table read on the adult-age axis, as if all females had
// emerged on the same day: wrong on purpose, and titled so. From adult emergence, and behind
// the rounded mean preadult duration.
ChartPanel ShowLxBasedOnAdultAge(const SessionStore& S);
ChartPanel ShowMxBasedOnAdultAge(const SessionStore& S);
ChartPanel ShowFemaleLxWithPreA(const SessionStore& S);
ChartPanel ShowFemaleMxWithPreA(const SessionStore& S);
// Fexp(x), the eggs a female alive at age x is still expected to lay: the sum over y >= x of
// f(y,female) s'(y), where s'(y) is her chance of being alive at y (the product of
// g(z,female) for z = x..y-1); 0 where no female is alive. Ages 0..LastAge+1.
std::vector<double> CalculateFemaleFecundityExpectancy(const SessionStore& S);
ChartPanel ShowFemaleFecundityExpectancy(const SessionStore& S);
// "<base>_7_Fig_female fecundity expectancy.txt": "Age" (in days), "Expect fecundity".
void WriteFemaleFecundityExpectancyFile(const SessionStore& S);

// The data file a figure leaves beside the data file when it is drawn from its button (the
// regressions, the expected fecundity); nothing for the others. A file that can't be written
// ends the program (ProgramEnd).
void WriteFigureFile(const SessionStore& S, std::string_view figure);

// The last row's age of the figures by age: LastAge + 1, within the store's ages.
int LastRowAge(const SessionStore& S);
// The number of stages m, within the store's stages; the figures show m + 1 (two adult ones).
int FigureStageCount(const SessionStore& S);
// The frame of every figure: title and its font, legend, the two axes' titles and fonts.
ChartPanel FigureFrame(const char* figure, std::vector<std::string> title, const char* yTitle, const char* xTitle);
// The frame of a figure by age: the rows of ages 0..lastAge labelled by the time unit; the
// caller adds the series.
ChartPanel AgeFigure(const SessionStore& S, const char* figure, std::vector<std::string> title,
                     const char* yTitle, const char* xTitle, int lastAge);
// A figure by age of one series, value(a) for a = 0..lastAge, named by the Y title.
ChartPanel AgeSeriesFigure(const SessionStore& S, const char* figure, std::vector<std::string> title,
                           const char* yTitle, const char* xTitle, int lastAge,
                           const std::function<double(int)>& value);

// A figure by the name of its Show procedure; an empty panel for a name that has none.
ChartPanel BuildFigure(const SessionStore& S, std::string_view figure);
// Whether BuildFigure knows the name.
bool IsFigureBuilt(std::string_view figure);

// The figures of the large graph window, in the order offered: the click cycle's first, then
// the further figures of a Basic Run.
std::span<const std::string_view> LargeGraphFigures();
inline constexpr std::size_t kLargeGraphCycleFigures = 15;

// The figure the console's chart shows on a click, given the figure it shows now and the
// click counter (0..15, advanced here). Empty when the click changes nothing: a group-reared
// run, after a bootstrap, at position 13 of the cycle.
std::string ChartClickFigure(const SessionStore& S, const std::string& shown, int& counter);

// The figure the console's frequency chart shows on a click: R0 and r in turn, once a
// bootstrap has ended; empty before.
std::string FrequencyClickFigure(const SessionStore& S, const std::string& shown);

// The figure a graph command of the console shows, given the figure shown now (a second press
// of a band command shows its confidence form); empty for a command that shows no figure here.
std::string FigureOfCommand(std::string_view control, const std::string& shown);

}  // namespace korvan
