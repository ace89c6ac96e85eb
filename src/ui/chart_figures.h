#pragma once
// The figures of a life table as ChartPanel data, built from the store: the age-stage figures
// of the Basic Run, the bands of the bootstrap, the frequencies of r and R0, and the click
// cycle of the console's chart. A figure built before its data exist shows zeros.
#include <span>
#include <string>
#include <string_view>

#include "store/session_store.h"
#include "ui/chart_panel.h"

namespace korvan {

// Age-stage figures, one series per stage 1..m+1, rows the ages 0..LastAge+1.
ChartPanel ShowSxj(const SessionStore& S);
ChartPanel ShowGxj(const SessionStore& S);
ChartPanel ShowDxj(const SessionStore& S);
ChartPanel ShowFxj(const SessionStore& S);
ChartPanel ShowPxj(const SessionStore& S);
ChartPanel ShowQxj(const SessionStore& S);
ChartPanel ShowExj(const SessionStore& S);
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

// The frame of a figure by age: title, fonts, axes, and the rows of ages 0..lastAge labelled
// by the time unit; the caller adds the series.
ChartPanel AgeFigure(const SessionStore& S, const char* figure, std::vector<std::string> title,
                     const char* yTitle, const char* xTitle, int lastAge);

// A figure by the name of its Show procedure; an empty panel for a name that has none.
ChartPanel BuildFigure(const SessionStore& S, std::string_view figure);
// Whether BuildFigure knows the name.
bool IsFigureBuilt(std::string_view figure);

// The figures of the large graph window, in the order offered.
std::span<const std::string_view> LargeGraphFigures();

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
