// The pre-oviposition periods: APOP counted from the female's emergence, TPOP from birth.
#include <string>

#include "engine/female_days.h"
#include "engine/stage_statistics.h"
#include "engine/table_text.h"
#include "store/rules.h"
#include "text/numbers.h"
#include "text/short_text.h"

namespace korvan {

void StageStatsEngine::APOPandTPOP() {
  Flow("APOPandTPOP");
  auto& w = W.stageStats;
  const auto& c = W.cohort;
  const double tu = TimeUnit();
  double aSum = 0, aSq = 0, tSum = 0, tSq = 0, count = 0;
  w.ReproductiveFemaleCount = 0;
  w.ReproductiveEggSum = 0;
  w.ApopStat.maximum = w.ApopStat.minimum = 0;
  w.TpopStat.maximum = w.TpopStat.minimum = 0;
  for (long i = 1; i <= c.CohortSize; ++i) {
    if (!IsText(c.IndividualSex(i), 'F') || w.TotalFecundity(i) == 0) continue;
    ++w.ReproductiveFemaleCount;
    if (w.OviDays(i) != 0) w.EggsPerOviDay(i) = w.TotalFecundity(i) / w.OviDays(i);
    w.ReproductiveEggSum += w.TotalFecundity(i);
    const long adult = CInt(c.StageDuration(i, m()));
    long t = 1;
    while (t <= adult && !(c.Fecundity(i, t) > 0)) ++t;
    if (t > adult) continue;
    const double apop = TimeUnitToDaysWithHalf(static_cast<double>(t - 1), tu);
    const double tpop = TimeUnitToDaysWithHalf(static_cast<double>(t - 1) + w.PreadultDuration(i), tu);
    w.Apop(i) = apop;
    w.Tpop(i) = tpop;
    // A stored minimum of 0 means "not set yet" and gives way to the next value, so a true
    // minimum of 0 only stands when it is the last value met.
    if (apop > w.ApopStat.maximum) w.ApopStat.maximum = apop;
    if (w.ApopStat.minimum == 0 || apop < w.ApopStat.minimum) w.ApopStat.minimum = apop;
    if (tpop > w.TpopStat.maximum) w.TpopStat.maximum = tpop;
    if (w.TpopStat.minimum == 0 || tpop < w.TpopStat.minimum) w.TpopStat.minimum = tpop;
    aSum += apop;
    aSq += apop * apop;
    tSum += tpop;
    tSq += tpop * tpop;
    count += 1;
  }
  ApplyStatisticsRule(w.ApopStat, aSum, aSq, count);
  ApplyStatisticsRule(w.TpopStat, tSum, tSq, count);
  if (BasicPass()) {
    Keep().stageStats.ApopBasic = w.ApopStat.mean;
    Keep().stageStats.TpopBasic = w.TpopStat.mean;
  }
}

// The replicate's means of APOP and TPOP and its number of reproductive females. The life-long
// fecundity and the preadult duration of each female are formed anew from the sample.
void StageStatsEngine::APOPandTPOPforBoot() {
  FlowEngine("APOPandTPOPforBoot");
  auto& w = W.stageStats;
  const auto& c = W.cohort;
  const double tu = TimeUnit();
  PreadultDurations();
  double aSum = 0, tSum = 0, count = 0;
  long reproductive = 0;
  for (long i = 1; i <= c.CohortSize; ++i) {
    if (!IsText(c.IndividualSex(i), 'F')) continue;
    FemaleDaySums own;
    FemaleDaySums* known = KeptDaySums(W.cohort, static_cast<int>(i));
    FemaleDaySums& walk = known ? *known : own;
    if (!walk.firstKnown) WalkFirstDay(c, static_cast<int>(i), m(), walk);
    const double total = walk.lifeEggs;
    const long first = walk.first;
    w.TotalFecundity(i) = total;
    if (total == 0) continue;
    ++reproductive;
    if (first == 0) continue;
    aSum += TimeUnitToDaysWithHalf(static_cast<double>(first - 1), tu);
    tSum += TimeUnitToDaysWithHalf(static_cast<double>(first - 1) + w.PreadultDuration(i), tu);
    count += 1;
  }
  w.ReproductiveFemaleCount = static_cast<int>(reproductive);
  auto& rec = W.boot.sample;
  if (count > 0) {
    rec.APOP = aSum / count;
    rec.TPOP = tSum / count;
  }
  rec.ReproductiveFemales = static_cast<double>(reproductive);
}

void StageStatsEngine::PrintAPOPandTPOP() {
  Flow("PrintAPOPandTPOP");
  const auto& w = W.stageStats;
  const auto& c = W.cohort;
  if (w.AdultFemaleCount == 0) return;
  TextFile& out = C.MainOutput;
  const std::string rule(35, '-');
  const bool wholeUnit = TimeUnit() == 1;
  auto shown = [&](double v) { return wholeUnit ? v : RoundDisplay(v, 2); };

  NewPage();
  out.Print("Table " + std::to_string(NextTable()) + ". APOP (or APRP) and TPOP (or TPRP) of each reproduced female");
  out.Print("(APOP: Adult pre-oviposition period of female adult)");
  out.Print("(APRP: Adult pre-reproduction period of female adult)");
  out.Print("(TPOP: Total pre-oviposition period of female counted from birth)");
  out.Print("(TPRP: Total pre-reproduction period of female counted from birth)");
  out.Print("If your insects lay eggs, you should use APOP and TPOP.");
  out.Print("If your insects don't lay eggs, you should use APRP and TPRP.");
  out.Print(rule);
  out.Print("Indiv. no.  APOP/APRP   TPOP/TPRP");
  out.Print(rule);
  for (long i = 1; i <= c.CohortSize; ++i) {
    if (!IsText(c.IndividualSex(i), 'F') || w.TotalFecundity(i) == 0) continue;
    out.Print(Tab{5}, c.IndividualNo(i), Tab{17}, shown(w.Apop(i)), Tab{27}, shown(w.Tpop(i)));
  }
  out.Print(rule);
  const RoutineStat& a = w.ApopStat;
  const RoutineStat& t = w.TpopStat;
  out.Print(" N   ", Tab{17}, a.n, Tab{27}, t.n);
  out.Print(rule);
  out.Print("Min ", Tab{17}, shown(a.minimum), Tab{27}, shown(t.minimum));
  out.Print(rule);
  out.Print("Max ", Tab{17}, shown(a.maximum), Tab{27}, shown(t.maximum));
  out.Print(rule);
  out.Print("Mean ", Tab{17}, RoundDisplay(a.mean, 2), Tab{27}, RoundDisplay(t.mean, 2));
  out.Print(rule);
  out.Print("S.D. ", Tab{17}, RoundDisplay(a.sd, 4), Tab{27}, RoundDisplay(t.sd, 4));
  out.Print(rule);
  out.Print("S.E. ", Tab{17}, RoundDisplay(a.se, 4), Tab{27}, RoundDisplay(t.se, 4));
  out.Print(rule);
  out.Print("Note well! ");
  out.Print("The APOP is calculated based on the adult stage. It assumes");
  out.Print("that all females emerged on the same day, which is never true.");
  out.Print("The TPOP is counted from birth: it includes the preadult");
  out.Print("duration of each female and shows when she really began to");
  out.Print("reproduce. Because the development rate varies among");
  out.Print("individuals, females with the same APOP may differ in TPOP.");
  out.Print("Only the TPOP fits the age-stage, two-sex life table: the");
  out.Print("onset of reproduction at the mean TPOP is usually close to");
  out.Print("the maximum of reproductive value.");
  out.Print("");
}

void StageStatsEngine::NewPage() { NewMainPage(C); }

int StageStatsEngine::NextTable() { return ++C.MainTableNumber; }

}  // namespace korvan
