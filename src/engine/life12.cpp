// Life12: the fecundity of each female by adult age, and by age from birth.
//
// Both tables have a column per age; they are printed in blocks of ten ages, each block under
// the table's head ("(Continued)" from the second on), the totals of each female behind the
// last block.
#include <algorithm>
#include <string>

#include "engine/stage_statistics.h"
#include "store/rules.h"
#include "text/numbers.h"

namespace korvan {

namespace {

constexpr int kAgesPerBlock = 10;
constexpr int kAgeColumn0 = 9;
constexpr int kAgeWidth = 8;

int AgeColumn(int k) { return kAgeColumn0 + k * kAgeWidth; }

std::string Interval(double from, double to) { return FullPrecision(from) + "-<" + FullPrecision(to); }

}  // namespace

void StageStatsEngine::Life12() {
  Flow("Life12");
  const auto& w = W.stageStats;
  const auto& c = W.cohort;
  const int mm = m();
  const double tu = TimeUnit();
  TextFile& out = C.MainOutput;
  const int maxAge = w.MaxFemaleAdultAge;
  const int table = NextTable();
  const int blocks = std::max(1, (maxAge + kAgesPerBlock - 1) / kAgesPerBlock);

  for (int b = 0; b < blocks; ++b) {
    const int t0 = b * kAgesPerBlock + 1;
    const int t1 = std::min(maxAge, t0 + kAgesPerBlock - 1);
    const bool last = b == blocks - 1;
    const int sumCol = AgeColumn(t1 - t0 + 1);
    NewPage();
    if (b == 0)
      out.Print("Table " + std::to_string(table) +
                ". Age-specific fecundity of each individual based on \"adult age\".");
    else
      out.Print("Table " + std::to_string(table) + ". (Continued)");
    const std::string rule(static_cast<std::size_t>(sumCol + (last ? 64 : 0)), '-');
    out.Print(rule);
    out.Print(Tab{kAgeColumn0}, "Age interval");
    out.PrintPart("Indiv.");
    for (int t = t0; t <= t1; ++t)
      out.PrintPart(Tab{AgeColumn(t - t0)}, Interval(TimeUnitToDays(t - 1, tu), TimeUnitToDays(t, tu)));
    if (last) out.PrintPart(Tab{sumCol}, " Total  Ovi-days Ovi-unit(=n)  Eggs/OU  SE(Eggs/OU)  Adult (d)");
    out.NewLine();
    out.Print(" no. ");
    out.Print(rule);
    for (long i = 1; i <= c.CohortSize; ++i) {
      if (c.IndividualSex(i) != "F") continue;
      const double adult = c.StageDuration(i, mm);
      out.PrintPart(c.IndividualNo(i));
      for (int t = t0; t <= t1; ++t) {
        out.PrintPart(Tab{AgeColumn(t - t0)});
        if (t <= adult)
          out.PrintPart(c.Fecundity(i, t));
        else if (t == static_cast<int>(CIntValue(adult)) + 1)
          out.PrintPart(" d");
      }
      if (last) {
        out.PrintPart(Tab{sumCol}, w.TotalFecundity(i), Tab{sumCol + 8}, ReportNumber(w.OviDays(i)),
                      Tab{sumCol + 17}, w.OviUnits(i));
        if (w.OviUnits(i) > 0)
          out.PrintPart(Tab{sumCol + 31}, ReportNumber(w.DailyFecundityMean(i)), Tab{sumCol + 40},
                        ReportNumber(w.DailyFecunditySE(i)));
        out.PrintPart(Tab{sumCol + 53}, ReportNumber(TimeUnitToDays(adult, tu)));
      }
      out.NewLine();
    }
    out.Print(rule);
    auto ageRow = [&](const char* label, auto value) {
      out.PrintPart(label);
      for (int t = t0; t <= t1; ++t) out.PrintPart(Tab{AgeColumn(t - t0)}, value(t));
    };
    ageRow(" N   ", [&](int t) { return w.AdultAgeN(t); });
    if (last)
      out.PrintPart(Tab{sumCol}, w.FecundityF.n, Tab{sumCol + 8}, w.OviDaysStat.n, Tab{sumCol + 17},
                    w.OviUnitsStat.n);
    out.NewLine();
    if (last) out.Print("OU", Tab{sumCol + 17}, w.OviUnitsStat.sum, Tab{sumCol + 31}, w.EggsPerOviUnit.n);
    ageRow("Mean ", [&](int t) { return ReportNumber(w.AdultAgeMean(t)); });
    if (last)
      out.PrintPart(Tab{sumCol}, ReportNumber(w.FecundityF.mean), Tab{sumCol + 8}, ReportNumber(w.OviDaysStat.mean),
                    Tab{sumCol + 17}, ReportNumber(w.OviUnitsStat.mean));
    out.NewLine();
    if (last) out.Print("*", Tab{sumCol + 31}, ReportNumber(w.EggsPerOviUnit.mean));
    ageRow("S.D. ", [&](int t) { return ReportNumber(w.AdultAgeSD(t)); });
    if (last)
      out.PrintPart(Tab{sumCol}, ReportNumber(w.FecundityF.sd), Tab{sumCol + 8}, ReportNumber(w.OviDaysStat.sd),
                    Tab{sumCol + 17}, ReportNumber(w.OviUnitsStat.sd), Tab{sumCol + 31},
                    ReportNumber(w.EggsPerOviUnit.sd));
    out.NewLine();
    ageRow("S.E. ", [&](int t) { return ReportNumber(w.AdultAgeSE(t)); });
    if (last)
      out.PrintPart(Tab{sumCol}, ReportNumber(w.FecundityF.se), Tab{sumCol + 8}, ReportNumber(w.OviDaysStat.se),
                    Tab{sumCol + 17}, ReportNumber(w.OviUnitsStat.se), Tab{sumCol + 31},
                    ReportNumber(w.EggsPerOviUnit.se));
    out.NewLine();
    out.Print(rule);
  }

  out.Print("d - dead.");
  out.Print("Please read \"Note well\" messages.");
  out.Print("OU - Oviposition time unit.  *: This is the weighted value calculated from the ");
  out.Print("raw data of all individuals.");
  out.Print("");
  out.Print("Maximum of total fecundity =", w.FecundityFr.maximum, "(female no. ", w.FecundityMaxList, ")");
  out.Print("Maximum of daily fecundity =", w.MaxDailyFecundity, "observed for female no.",
            w.MaxDailyFecundityIndividual);
  out.Print("Minimum of non-zero fecundity =", w.FecundityFr.minimum, "(female no. ", w.FecundityMinList, ")");
  out.Print("Maximum of adult age-specific fecundity =", ReportNumber(w.AdultAgePeakMean), "at \"adult\" age",
            TimeUnitToDays(w.AdultAgePeakAge, tu));
  out.Print("Mean of preadult duration of females =", ReportNumber(TimeUnitToDays(w.PreadultMeanFemale, tu)));
  out.Print("");
  out.Print("Note well!");
  out.Print("The means above are taken over the females alive at each ADULT age. They are");
  out.Print("not the age-specific fecundity m(x) of the population: females emerge at");
  out.Print("different ages, so the same adult age falls on different ages from birth,");
  out.Print("and preadult mortality and the males are left out.");
  out.Print("The sum of age-specific mean fecundity is:", ReportNumber(w.AdultAgeMeanSum));
  out.Print("It is usually DIFFERENT from the female mean fecundity, i.e.", ReportNumber(w.FecundityF.mean));
  out.Print("Use f(x,j) and m(x) of the age-stage, two-sex life table instead.");
  out.Print("References:");
  out.Print("  The publications on the age-stage, two-sex life table listed in the manual.");
  out.Print("");
}

void StageStatsEngine::Life12PrintAgeFecundityFromBirth() {
  Flow("Life12PrintAgeFecundityFromBirth");
  const auto& w = W.stageStats;
  const auto& c = W.cohort;
  const int mm = m();
  const double tu = TimeUnit();
  TextFile& out = C.MainOutput;
  const int lastAge = W.tables.LastAge;
  const int table = NextTable();
  const int blocks = (lastAge + 1 + kAgesPerBlock - 1) / kAgesPerBlock;

  for (int b = 0; b < blocks; ++b) {
    const int x0 = b * kAgesPerBlock;
    const int x1 = std::min(lastAge, x0 + kAgesPerBlock - 1);
    const bool last = b == blocks - 1;
    const int sumCol = AgeColumn(x1 - x0 + 1);
    NewPage();
    if (b == 0)
      out.Print("Table " + std::to_string(table) + ". Age-specific fecundity of each female individual from age 0");
    else
      out.Print("Table " + std::to_string(table) + ". (Continued)");
    const std::string rule(static_cast<std::size_t>(sumCol + (last ? 28 : 0)), '-');
    out.Print(rule);
    out.PrintPart("Age");
    for (int x = x0; x <= x1; ++x) out.PrintPart(Tab{AgeColumn(x - x0)}, TimeUnitToDays(x, tu));
    if (last) out.PrintPart(Tab{sumCol}, " Total    Ovi-units   Adult");
    out.NewLine();
    out.Print(rule);
    for (long i = 1; i <= c.CohortSize; ++i) {
      if (c.IndividualSex(i) != "F") continue;
      const long death = CInt(w.LongevitySteps(i));
      out.PrintPart(c.IndividualNo(i));
      for (int x = x0; x <= x1; ++x) {
        out.PrintPart(Tab{AgeColumn(x - x0)});
        if (x < death)
          out.PrintPart(w.FecundityFromBirth(i, x));
        else if (x == death)
          out.PrintPart(" d");
      }
      if (last)
        out.PrintPart(Tab{sumCol}, w.TotalFecundity(i), Tab{sumCol + 9}, w.OviUnits(i), Tab{sumCol + 21},
                      ReportNumber(TimeUnitToDays(c.StageDuration(i, mm), tu)));
      out.NewLine();
    }
    out.Print(rule);
    auto ageRow = [&](const char* label, auto value) {
      out.PrintPart(label);
      for (int x = x0; x <= x1; ++x) out.PrintPart(Tab{AgeColumn(x - x0)}, value(x));
      out.NewLine();
    };
    ageRow("Female", [&](int x) { return w.FemalesAtAge(x); });
    ageRow("Total", [&](int x) { return w.EggsAtAge(x); });
    ageRow("Mean ", [&](int x) { return ReportNumber(w.FxMean(x)); });
    ageRow("S.D. ", [&](int x) { return ReportNumber(w.FxSD(x)); });
    ageRow("S.E. ", [&](int x) { return ReportNumber(w.FxSE(x)); });
    out.Print(rule);
  }

  // The peak of the female means by age from birth; the youngest of equal peaks.
  double peak = 0;
  int peakAge = 0;
  for (int x = 0; x <= lastAge; ++x)
    if (w.FxMean(x) > peak) peak = w.FxMean(x), peakAge = x;
  out.Print("d - dead.");
  out.Print("Maximum life-long fecundity =", w.FecundityFr.maximum, "(individual no.", w.FecundityMaxList, ")");
  out.Print("Maximum of female age-specific mean fecundity [f(x,j)] =", ReportNumber(peak), "at age",
            TimeUnitToDays(peakAge, tu));
  out.Print("Ovi-units = Number of time units that individual produced offspring");
  out.Print("");
  const double adultPeak = TimeUnitToDays(w.AdultAgePeakAge, tu);
  const double preadult = TimeUnitToDays(w.PreadultMeanFemale, tu);
  out.Print("The maximum of the mean fecundity by adult age is at adult age", adultPeak, ".");
  out.Print("If the mean preadult duration of females (", ReportNumber(preadult), ") is added to the");
  out.Print("adult age (Table 2), the maximum m(x) will be at age", ReportNumber(adultPeak + preadult), ".");
  out.Print("Counted from birth, the maximum of f(x,j) is at age", TimeUnitToDays(peakAge, tu), ".");
  out.Print("Attention! The problem is not \"how different\", it is a matter of right and wrong.");
  out.Print("");
}

}  // namespace korvan
