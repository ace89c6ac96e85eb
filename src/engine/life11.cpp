// Life11: the opening of the main report and the table of durations per individual.
#include <cmath>
#include <cstdio>
#include <ctime>
#include <string>

#include "engine/stage_statistics.h"
#include "store/rules.h"
#include "text/numbers.h"

namespace korvan {

namespace {

constexpr int kFirstColumn = 15;  // the first stage's column; one column every 10
constexpr int kColumnWidth = 10;

// A duration of the table: "d " and the magnitude in the stage of death.
std::string DurationCell(double d) {
  if (d < 0) return "d " + FullPrecision(-d);
  return PrintNumber(d);
}

}  // namespace

void StageStatsEngine::Life11() {
  Flow("Life11");
  const auto& w = W.stageStats;
  const auto& c = W.cohort;
  const int mm = m();
  const double tu = TimeUnit();
  TextFile& out = C.MainOutput;
  const std::string stars(72, '*');

  NewPage();
  out.Print("Program: Age-Stage, Korvan Life Table Analysis ", S.identity.VersionStamp);
  out.Print(stars);
  out.Print("  Insects and mites develop through stages, and individuals of one cohort");
  out.Print("  develop at different rates. A life table based on age alone merges the");
  out.Print("  stages and hides this variation; a life table of females alone ignores");
  out.Print("  the males, which are part of the population and of its growth. The");
  out.Print("  age-stage, two-sex life table takes both sexes and the variable");
  out.Print("  development rate among individuals into account.");
  out.Print(stars);
  out.Print("Date: ", ClockText("%m-%d-%Y"));
  out.Print("Time: ", ClockText("%H:%M:%S"));
  out.Print("");
  out.Print(std::string(60, '='));
  out.Print("| Attention! The most useful files of this run are:         |");
  out.Print("|   _0A_Life Table_Output.txt   (this report)                |");
  out.Print("|   _1_Fig_Sxj.txt              (age-stage survival rate)     |");
  out.Print("|   _2_Fig_Lx-Fxf-Mx-LxMx.txt   (l(x), f(x,j), m(x))         |");
  out.Print("|   _3_Fig_Exj.txt, _4_Fig_Vxj.txt  (e(x,j), v(x,j))         |");
  out.Print("| Use the bootstrap to estimate the standard errors.         |");
  out.Print(std::string(60, '='));
  out.Print("");
  out.Print("Project: ", S.identity.ProjectName);
  out.Print("Username: ", S.identity.UserName);
  out.Print("Treatment: ", S.identity.TreatmentName);
  out.Print("");

  std::string hint;
  if (tu == 0.3)
    hint = " (8 hours?)";
  else if (tu == 0.16)
    hint = " (4 hours?)";
  else if (tu == 0.2)
    hint = " (4.8 hours?)";
  else if (tu == 0.25)
    hint = " (6 hours?)";
  const std::string box(40, '-');
  out.Print(box);
  out.Print(" Time unit used: ", tu, hint);
  out.Print(" Fecundity coefficient: ", S.settings.FecundityFactor);
  out.Print(box);
  out.Print("");

  out.Print("Table " + std::to_string(NextTable()) + ". Number of time units spent by each individual in each");
  out.PrintPart("         stage, preadult and total longevity");
  if (tu != 1) out.PrintPart(" (you collected your data every ", tu, " time unit)");
  out.NewLine();

  // Columns: the stages, then preadult, adult, total longevity and sex.
  const int preadultCol = kFirstColumn + mm * kColumnWidth;
  const int adultCol = preadultCol + kColumnWidth;
  const int totalCol = adultCol + kColumnWidth;
  const int sexCol = totalCol + 18;
  const std::string rule(static_cast<std::size_t>(sexCol + 8), '-');
  out.Print(rule);
  out.PrintPart("Indiv.");
  for (int j = 1; j <= mm; ++j)
    out.PrintPart(Tab{kFirstColumn + (j - 1) * kColumnWidth}, S.header.StageName(1, j).substr(0, 8));
  out.Print(Tab{preadultCol}, "Preadult", Tab{adultCol}, "Adult", Tab{totalCol}, "  Total longevity", Tab{sexCol},
            "    Sex");
  out.Print(rule);
  for (long i = 1; i <= c.CohortSize; ++i) {
    out.PrintPart(c.IndividualNo(i));
    bool dead = false;
    for (int j = 1; j <= mm; ++j) {
      out.PrintPart(Tab{kFirstColumn + (j - 1) * kColumnWidth});
      if (dead) {
        out.PrintPart(" - ");
        continue;
      }
      const double d = c.StageDuration(i, j);
      out.PrintPart(DurationCell(d));
      if (d < 0) dead = true;
    }
    out.PrintPart(Tab{preadultCol});
    if (dead)
      out.PrintPart(" - ", Tab{adultCol}, " - ");
    else
      out.PrintPart(w.PreadultDuration(i), Tab{adultCol}, c.StageDuration(i, mm));
    out.Print(Tab{totalCol + 4}, w.LongevitySteps(i), Tab{sexCol + 4}, c.IndividualSex(i));
  }
  out.Print(rule);

  // The statistics under the table, in days: stages, preadult (those that became adult),
  // adult, total longevity.
  double preMax = 0, preMin = 0;
  bool first = true;
  for (long i = 1; i <= c.CohortSize; ++i) {
    if (!(c.StageDuration(i, mm) > 0) || mm < 2) continue;
    const double p = TimeUnitToDays(w.PreadultDuration(i), tu);
    if (first || p > preMax) preMax = p;
    if (first || p < preMin) preMin = p;
    first = false;
  }
  auto row = [&](const char* label, auto value) {
    out.PrintPart(label);
    for (int j = 1; j <= mm; ++j) out.PrintPart(Tab{kFirstColumn + (j - 1) * kColumnWidth}, value(w.Stage(j), j));
    const RoutineStat& pre = mm >= 2 ? w.Cumulative(mm - 1) : w.Stage(mm);
    out.Print(Tab{preadultCol}, value(pre, -1), Tab{adultCol}, value(w.Stage(mm), mm), Tab{totalCol + 4},
              value(w.LongevityAll, 0));
  };
  auto days = [&](double v) { return ReportNumber(TimeUnitToDays(v, tu)); };
  row("N        ", [](const RoutineStat& s, int) { return s.n; });
  row("Mean       ", [](const RoutineStat& s, int) { return ReportNumber(s.mean); });
  row("Maximum   ", [&](const RoutineStat& s, int j) {
    if (j > 0) return days(w.StageMax(j));
    return j == 0 ? ReportNumber(s.maximum) : ReportNumber(preMax);
  });
  row("Minimum   ", [&](const RoutineStat& s, int j) {
    if (j > 0) return days(w.StageMin(j));
    return j == 0 ? ReportNumber(s.minimum) : ReportNumber(preMin);
  });
  row("Variance     ", [](const RoutineStat& s, int) { return ReportNumber(s.variance); });
  row("S.D.         ", [](const RoutineStat& s, int) { return ReportNumber(s.sd); });
  row("S.E.         ", [](const RoutineStat& s, int) { return ReportNumber(s.se); });
  out.Print(rule);
  if (tu != 1) out.Print("The rows below the individuals are in days.");
  out.Print("");
}

}  // namespace korvan
