// Life06: the table "Basic Statistics of Life History Data" that closes the main report.
#include <string>

#include "engine/stage_statistics.h"
#include "text/numbers.h"

namespace korvan {

namespace {

const char* kSexLabel[] = {"", "F", "M", "N"};

}  // namespace

void StageStatsEngine::Life06() {
  Flow("Life06");
  Life06Gosub150();
  Life06Gosub280();
  Life06Gosub680();
  Life06Gosub470();
  Life06Gosub900();
  Life06Gosub1130();
  Life06Gosub1310();
  Life06Gosub1520();
  Life06Gosub1660();
  Life06Gosub1771();
  Life06PrintFMNRatio();
  Life06Gosub1835();
}

// One row: the label, the sex, N, and mean, S.D., S.E. and variance at 2 decimals, a dash for
// a value that the count can't give.
void StageStatsEngine::Life06Row(const std::string& label, const std::string& sex, const RoutineStat& s) {
  TextFile& out = C.MainOutput;
  out.PrintPart(label.substr(0, 18), Tab{20}, sex, Tab{30}, s.n, Tab{40});
  if (s.n < 1)
    out.PrintPart("-");
  else
    out.PrintPart(RoundDisplay(s.mean, 2));
  if (s.n < 2) {
    out.Print(Tab{50}, " -", Tab{60}, " -", Tab{70}, " -");
    return;
  }
  out.Print(Tab{50}, RoundDisplay(s.sd, 2), Tab{60}, RoundDisplay(s.se, 2), Tab{70}, RoundDisplay(s.variance, 2));
}

void StageStatsEngine::Life06Gosub150() {
  TextFile& out = C.MainOutput;
  NewPage();
  out.Print("Table " + std::to_string(NextTable()) +
            ". Basic Statistics of Life History Data  (This table is based on routine");
  out.Print("          statistics.  I suggest you try the bootstrap method.)");
  out.Print("Project: ", S.identity.ProjectName);
  out.Print("Username: ", S.identity.UserName);
  out.Print("Treatment: ", S.identity.TreatmentName);
  const std::string rule(80, '-');
  out.Print(rule);
  out.Print("Stage              Sex        N         Mean      S.D.      S.E.      Variance");
  out.Print(rule);
}

void StageStatsEngine::Life06Gosub280() {
  const auto& w = W.stageStats;
  for (int j = 1; j <= m(); ++j) {
    const std::string& name = S.header.StageName(1, j);
    Life06Row(j == m() ? "Adult " + name : name, "All", w.Stage(j));
  }
}

// The sexes shown for stage j: females and males always; "N" in the preadult stages when the
// cohort has any.
namespace {
bool ShowSex(const StageStatsWork& w, long s, int j, int m) {
  if (s != kSexN) return true;
  return j < m && w.SexLongevity(kSexN).n > 0;
}
}  // namespace

void StageStatsEngine::Life06Gosub680() {
  const auto& w = W.stageStats;
  for (int j = 1; j <= m(); ++j)
    for (long s = kSexF; s <= kSexN; ++s) {
      if (!ShowSex(w, s, j, m())) continue;
      const std::string& name = j == m() && s == kSexM ? S.header.StageName(1, m() + 1) : S.header.StageName(1, j);
      Life06Row(name, kSexLabel[s], w.SexStage(s, j));
    }
}

void StageStatsEngine::Life06Gosub470() {
  const auto& w = W.stageStats;
  for (int j = 2; j <= m(); ++j) {
    const std::string label = S.header.StageName(1, 1) + "-" + (j == m() ? "Adult " : S.header.StageName(1, j));
    Life06Row(label, "All", w.Cumulative(j));
  }
}

void StageStatsEngine::Life06Gosub900() {
  const auto& w = W.stageStats;
  for (int j = 2; j <= m(); ++j) {
    const std::string label = S.header.StageName(1, 1) + "-" + (j == m() ? "Adult " : S.header.StageName(1, j));
    for (long s = kSexF; s <= kSexN; ++s)
      if (ShowSex(w, s, j, m())) Life06Row(label, kSexLabel[s], w.SexCumulative(s, j));
  }
}

void StageStatsEngine::Life06Gosub1130() {
  const auto& w = W.stageStats;
  if (w.SpanFirstStage <= 0) return;
  const std::string last = w.SpanLastStage == m() ? "Adult " : S.header.StageName(1, w.SpanLastStage);
  Life06Row(S.header.StageName(1, w.SpanFirstStage) + "-" + last, "All", w.Span);
}

void StageStatsEngine::Life06Gosub1310() {
  const auto& w = W.stageStats;
  if (w.SpanFirstStage <= 0) return;
  const std::string last = w.SpanLastStage == m() ? "Adult " : S.header.StageName(1, w.SpanLastStage);
  for (long s = kSexF; s <= kSexN; ++s)
    if (ShowSex(w, s, w.SpanLastStage, m()))
      Life06Row(S.header.StageName(1, w.SpanFirstStage) + "-" + last, kSexLabel[s], w.SexSpan(s));
}

void StageStatsEngine::Life06Gosub1520() {
  const auto& w = W.stageStats;
  Life06Row("Mean longevity", "All", w.LongevityAll);
  Life06Row("Mean longevity", "F", w.SexLongevity(kSexF));
  Life06Row("Mean longevity", "M", w.SexLongevity(kSexM));
  Life06Row("Mean longevity", "N", w.SexLongevity(kSexN));
}

void StageStatsEngine::Life06Gosub1660() {
  const auto& w = W.stageStats;
  TextFile& out = C.MainOutput;
  if (w.AdultFemaleCount == 0) return;
  RoutineStat f = w.FecundityF;
  f.n = w.AdultFemaleCount;
  Life06Row("Fecundity (F) ", "F (all)", f);
  if (w.FecundityFr.n > 0) out.Print(Tab{20}, "Maximum =", CIntValue(w.FecundityFr.maximum));
  RoutineStat fr = w.FecundityFr;
  fr.n = w.ReproductiveFemaleCount;
  Life06Row("Fecundity (Fr)", "Rep. F", fr);
  Life06Row("TPOP ", "F", w.TpopStat);
  Life06Row("APOP ", "F", w.ApopStat);
}

void StageStatsEngine::Life06Gosub1771() {
  const auto& w = W.stageStats;
  if (w.AdultFemaleCount == 0) return;
  Life06Row("Ovi. days", "F", w.OviDaysStat);
}

void StageStatsEngine::Life06PrintFMNRatio() {
  const auto& w = W.stageStats;
  TextFile& out = C.MainOutput;
  const std::string rule(80, '-');
  out.Print(rule);
  const auto count = [&](long s) { return std::to_string(static_cast<long>(w.SexLongevity(s).n)); };
  out.Print("F : M : N", " = ", count(kSexF) + ":" + count(kSexM) + ":" + count(kSexN));
  out.Print("Among", w.AdultFemaleCount, "females,", w.AdultFemaleCount - w.ReproductiveFemaleCount,
            "female(s) did not produce offspring.");
  out.Print("If you use jackknife method, you will get", W.cohort.CohortSize - w.ReproductiveFemaleCount,
            "zeros of pseudo-R0.");
}

void StageStatsEngine::Life06Gosub1835() {
  const auto& w = W.stageStats;
  TextFile& out = C.MainOutput;
  out.Print("");
  out.Print("Rep. F: reproductive female, i.e., females have produced offspring.");
  out.Print("The mean longevity of male is calculated for those died as male adult.");
  out.Print("The mean longevity of female is calculated for those died as female adult.");
  out.Print("The mean longevity of type N is calculated for those did not develop to");
  out.Print("the adult stage.");
  if (w.ReproductiveFemaleCount > 0) {
    const double tpop = RoundDisplay(w.TpopStat.mean, 2);
    out.Print("The age of peak v(x,j) is ", W.params.PeakVxjAge, ". In general, it must be between ",
              W.params.FirstVxjAge);
    out.Print("and TPOP", tpop, " or close to ", w.TpopStat.mean, ".");
  }
  out.Print("");
  out.Print("The oviposition days is different from the \"oviposition period\". ");
  out.Print("The oviposition days (ovi. days) is calculated by taking only those days");
  out.Print("(time units) with fecundity > 0 into account. It is a parameter for fecundity.");
  out.Print("The oviposition period is the duration from the first to the last oviposition.");
  const double adultFemale = w.SexStage(kSexF, m()).mean;
  if (w.ReproductiveFemaleCount > 0 && adultFemale != 0)
    out.Print("The percentage of oviposition days is", RoundDisplay(w.OviDaysStat.mean / adultFemale * 100, 2), "%.");
  const std::string stars(76, '*');
  out.Print("");
  out.Print(stars);
  out.Print("Note well!");
  out.Print("The variances in this table are calculated by using routine statistics.");
  out.Print("They are the variances among individuals. The variance of a population");
  out.Print("parameter, such as r, lambda or R0, cannot be obtained this way: its");
  out.Print("bootstrap variance is the variance of the parameter calculated by");
  out.Print("using all bootstrap sample means.  Thus, it is the variance of all means.");
  out.Print(stars);
}

}  // namespace korvan
