// Raw data of the individuals, for statistics in other programs: durations of stages, adult
// and preadult periods, longevity, fecundity and the oviposition periods, one value per
// individual in columns or in rows. Durations are in rate units. None is written when
// OutputLevel is "Nooutput".
#include <cmath>
#include <string>

#include "engine/stage_statistics.h"
#include "store/rules.h"
#include "text/numbers.h"

namespace korvan {

namespace {

// A file of one quantity: its title, the heading, then rows written by the caller.
TextFile ColumnFile(const SessionStore& S, const std::string& suffix, const std::string& title,
                    const std::string& name) {
  TextFile f(OutputName(S, suffix));
  f.Write(title);
  f.Write("Ind. no.", name);
  return f;
}

bool ReachedAdult(const Cohort& c, long i, int m) { return c.StageDuration(i, m) > 0; }

// Time units before stage j: the durations of the stages before it.
double Begin(const Cohort& c, long i, int j) {
  double b = 0;
  for (int k = 1; k < j; ++k) b += std::fabs(c.StageDuration(i, k));
  return b;
}

}  // namespace

void StageStatsEngine::WriteStageRawDataInColumns() {
  Flow("WriteStageRawDataInColumns");
  if (S.options.OutputLevel == "Nooutput") return;
  const auto& c = W.cohort;
  const auto& w = W.stageStats;
  const int mm = m();
  const double tu = TimeUnit();
  TextFile f(OutputName(S, "_StageRawData.txt"));
  f.Print(S.identity.ProjectName);
  f.Print(S.identity.UserName);
  f.Print(S.identity.TreatmentName);
  f.PrintPart("Indiv.", ",", "Sex", ",");
  for (int j = 1; j <= mm - 1; ++j) f.PrintPart(S.header.StageName(1, j), ",");
  f.Print("Adult-F", ",", "Adult-M", ",", "Adult-all", ",", "Preadult", ",", " Longevity");
  for (long i = 1; i <= c.CohortSize; ++i) {
    f.PrintPart(c.IndividualNo(i), ",", c.IndividualSex(i), ",");
    bool dead = false;
    for (int j = 1; j <= mm - 1; ++j) {
      const double d = c.StageDuration(i, j);
      if (dead || d == 0)
        f.PrintPart("-");
      else if (d < 0)
        f.PrintPart(TimeUnitToDays(-d, tu), "d");
      else
        f.PrintPart(TimeUnitToDays(d, tu));
      f.PrintPart(",");
      if (d < 0) dead = true;
    }
    const bool adult = !dead && ReachedAdult(c, i, mm);
    const double a = TimeUnitToDays(c.StageDuration(i, mm), tu);
    const bool female = c.IndividualSex(i) == "F";
    if (adult) {
      if (female)
        f.PrintPart(a, ",", "-", ",");
      else
        f.PrintPart("-", ",", a, ",");
      f.PrintPart(a, ",", TimeUnitToDays(w.PreadultDuration(i), tu), ",");
    } else {
      f.PrintPart("-", ",", "-", ",", "-", ",", "-", ",");
    }
    f.Print(w.Longevity(i));
  }
}

void StageStatsEngine::WriteRawDataInRow() {
  Flow("WriteRawDataInRow");
  if (S.options.OutputLevel == "Nooutput") return;
  const auto& c = W.cohort;
  const auto& w = W.stageStats;
  const int mm = m();
  const double tu = TimeUnit();
  TextFile f(OutputName(S, "_Stage-Raw-data-row.txt"));
  // One measure: its title on a line, then its values separated by commas and closed by -1.
  auto measure = [&](const std::string& title, auto&& valueOf) {
    f.Print(title);
    bool any = false;
    for (long i = 1; i <= c.CohortSize; ++i) {
      double v = 0;
      if (!valueOf(i, v)) continue;
      if (any) f.RawText(",");
      f.RawText(NumberText(v));
      any = true;
    }
    f.RawText(any ? ",-1" : "-1");
    f.NewLine();
  };
  for (int j = 1; j <= mm - 1; ++j)
    measure(S.header.StageName(1, j), [&](long i, double& v) {
      const double d = c.StageDuration(i, j);
      v = TimeUnitToDays(d, tu);
      return d > 0;
    });
  auto adultOf = [&](const char* sex) {
    return [&, sex](long i, double& v) {
      v = TimeUnitToDays(c.StageDuration(i, mm), tu);
      return ReachedAdult(c, i, mm) && (sex[0] == 0 || c.IndividualSex(i) == sex);
    };
  };
  measure("Adult (All sexes)", adultOf(""));
  measure("Male adult", adultOf("M"));
  measure("Female adult", adultOf("F"));
  auto reproductive = [&](long i) { return c.IndividualSex(i) == "F" && w.TotalFecundity(i) != 0; };
  measure("Adult preoviposition period (APOP)", [&](long i, double& v) {
    v = w.Apop(i);
    return reproductive(i);
  });
  measure("Total preoviposition period (TPOP)", [&](long i, double& v) {
    v = w.Tpop(i);
    return reproductive(i);
  });
  measure("Fecundity", [&](long i, double& v) {
    v = w.TotalFecundity(i);
    return c.IndividualSex(i) == "F";
  });
}

void StageStatsEngine::WriteEachStageRawDataInColumn() {
  Flow("WriteEachStageRawDataInColumn");
  if (S.options.OutputLevel == "Nooutput") return;
  const auto& c = W.cohort;
  const int mm = m();
  const double tu = TimeUnit();
  for (int j = 1; j <= mm - 1; ++j) {
    const std::string& name = S.header.StageName(1, j);
    TextFile f = ColumnFile(S, "_H_Stage duration-" + name + ".txt", "Duration of " + name, name);
    for (long i = 1; i <= c.CohortSize; ++i)
      if (c.StageDuration(i, j) > 0) f.Write(c.IndividualNo(i), TimeUnitToDays(c.StageDuration(i, j), tu));
  }
  struct Adult {
    const char* suffix;
    const char* title;
    const char* sex;
  };
  const Adult adults[] = {{"_H_Stage duration-All adult.txt", "Duration of  adult (All sexes)", ""},
                          {"_H_Stage duration-Male adult.txt", "Duration of male adult", "M"},
                          {"_H_Stage duration-Female adult.txt", "Duration of female adult", "F"}};
  for (const Adult& a : adults) {
    TextFile f = ColumnFile(S, a.suffix, a.title, "Adult");
    for (long i = 1; i <= c.CohortSize; ++i)
      if (ReachedAdult(c, i, mm) && (a.sex[0] == 0 || c.IndividualSex(i) == a.sex))
        f.Write(c.IndividualNo(i), TimeUnitToDays(c.StageDuration(i, mm), tu));
  }
}

void StageStatsEngine::WriteStageRawDataInColumnForStatistics() {
  Flow("WriteStageRawDataInColumnForStatistics");
  if (S.options.OutputLevel == "Nooutput") return;
  const auto& c = W.cohort;
  const auto& w = W.stageStats;
  const int mm = m();
  const double tu = TimeUnit();
  auto days = [&](double d) { return TimeUnitToDays(d, tu); };

  // Each stage with the age at which it began and ended.
  auto beginEnd = [&](const std::string& suffix, const std::string& title, int j, const char* sex) {
    TextFile f(OutputName(S, suffix));
    f.Write(title);
    f.Write("Ind. no.", "Begin", "End", "Duration");
    for (long i = 1; i <= c.CohortSize; ++i) {
      const double d = c.StageDuration(i, j);
      if (!(d > 0) || (sex[0] != 0 && c.IndividualSex(i) != sex)) continue;
      const double b = Begin(c, i, j);
      f.Write(c.IndividualNo(i), days(b), days(b + d), days(d));
    }
  };
  for (int j = 1; j <= mm - 1; ++j) {
    const std::string& name = S.header.StageName(1, j);
    beginEnd("_H_Stage-Begin-End-duration-" + name + ".txt", "Duration of " + name, j, "");
  }
  beginEnd("_H_Stage-Begin-End-duration-All adult.txt", "Duration of  adult (All sexes)", mm, "");
  beginEnd("_H_Stage-Begin-End-duration-Male adult.txt", "Duration of male adult", mm, "M");
  beginEnd("_H_Stage-Begin-End-duration-Female adult.txt", "Duration of female adult", mm, "F");

  // The preadult period of those that became adult.
  auto preadult = [&](const std::string& suffix, const std::string& title, const char* sex) {
    TextFile f(OutputName(S, suffix));
    f.Write(title);
    f.Write("Ind (i)", "Preadult");
    for (long i = 1; i <= c.CohortSize; ++i)
      if (ReachedAdult(c, i, mm) && (sex[0] == 0 || c.IndividualSex(i) == sex))
        f.Write(c.IndividualNo(i), days(w.PreadultDuration(i)));
  };
  preadult("_H_Stage-duration-preadult-all sexes.txt", "Preadult (All sexes)", "");
  preadult("_H_Stage-duration-preadult-M.txt", "Preadult (male)", "M");
  preadult("_H_Stage-duration-preadult-F.txt", "Duration of female preadult", "F");

  // The span between the two special stages, in a column and in a row.
  if (w.SpanFirstStage > 0) {
    const std::string span =
        S.header.StageName(1, w.SpanFirstStage) + " to " + S.header.StageName(1, w.SpanLastStage);
    TextFile col(OutputName(S, "_H_Stage-duration-" + span + "_All sex.txt"));
    TextFile row(OutputName(S, "_H_Stage-duration-" + span + "_All sex-row.txt"));
    col.Write("Duration of " + span);
    col.Write("Ind. no.", span);
    row.Write("Duration of " + span);
    for (long i = 1; i <= c.CohortSize; ++i) {
      double total = 0;
      bool complete = true;
      for (int k = w.SpanFirstStage; k <= w.SpanLastStage && complete; ++k) {
        complete = c.StageDuration(i, k) > 0;
        total += c.StageDuration(i, k);
      }
      if (!complete) continue;
      col.Write(c.IndividualNo(i), days(total));
      row.RawText(NumberText(days(total)) + ",");
    }
    row.RawText("-1");
    row.NewLine();
  }

  auto reproductive = [&](long i) { return c.IndividualSex(i) == "F" && w.TotalFecundity(i) != 0; };
  auto perFemale = [&](const std::string& suffix, const std::string& title, bool repOnly, auto&& value) {
    TextFile f = ColumnFile(S, suffix, title, title);
    for (long i = 1; i <= c.CohortSize; ++i) {
      if (c.IndividualSex(i) != "F" || (repOnly && !reproductive(i))) continue;
      f.Write(c.IndividualNo(i), value(i));
    }
  };
  perFemale("_G_APOP.txt", "Adult preoviposition period (APOP)", true, [&](long i) { return w.Apop(i); });
  perFemale("_G_TPOP.txt", "Total preoviposition period (TPOP)", true, [&](long i) { return w.Tpop(i); });
  perFemale("_G_total fecundity all females.txt", "Fecundity", false, [&](long i) { return w.TotalFecundity(i); });
  perFemale("_G_total fecundity of rep females.txt", "Fecundity (rep. female)", true,
            [&](long i) { return w.TotalFecundity(i); });
  {
    // One row per oviposition time unit: the individual's number and its adult day in the last
    // two digits.
    TextFile f(OutputName(S, "_G_Eggs per Od_for general boot.txt"));
    f.Write("Eggs per Od (weighted)");
    f.Write("Ind. no. and age (the last 2 digits)", "Eggs");
    for (long i = 1; i <= c.CohortSize; ++i) {
      if (c.IndividualSex(i) != "F") continue;
      const long adult = CInt(c.StageDuration(i, mm));
      for (long t = 1; t <= adult; ++t) {
        const double e = c.Fecundity(i, t);
        if (e < 0) break;
        if (e != 0) f.Write(c.IndividualNo(i) * 100 + t, e);
      }
    }
  }
  {
    TextFile f = ColumnFile(S, "_G_Eggs per Od_NOT for general boot.txt", "eggs per Od (unweighed)",
                            "eggs per Od (unweighed)");
    for (long i = 1; i <= c.CohortSize; ++i) {
      if (c.IndividualSex(i) != "F") continue;
      if (w.OviDays(i) > 0)
        f.Write(c.IndividualNo(i), w.TotalFecundity(i) / w.OviDays(i));
      else
        f.Write(c.IndividualNo(i), "This individual didn't lay egg.");
    }
  }
  perFemale("_G_Post-oviposition period.txt", "Post-oviposition period", true,
            [&](long i) { return days(w.PostOviSteps(i)); });
  perFemale("_G_Egg per day during oviposition period.txt", "Eggs per day during oviposition period", true,
            [&](long i) { return w.OviPeriod(i) > 0 ? w.TotalFecundity(i) / w.OviPeriod(i) : 0.0; });
  perFemale("_G_Oviposition period.txt", "Oviposition period", true, [&](long i) { return w.OviPeriod(i); });
  perFemale("_G_Oviposition days.txt", "oviposition days", true, [&](long i) { return w.OviDays(i); });

  struct Longevity {
    const char* suffix;
    const char* title;
    const char* sex;
  };
  const Longevity groups[] = {{"_G_Total longevity-all.txt", "Total longevity", ""},
                              {"_G_Total longevity-female.txt", "Female total longevity", "F"},
                              {"_G_Total longevity-Male.txt", "Male total longevity", "M"},
                              {"_G_Total longevity-N type.txt", "N-type total longevity", "N"}};
  for (const Longevity& g : groups) {
    TextFile f = ColumnFile(S, g.suffix, g.title, g.title);
    for (long i = 1; i <= c.CohortSize; ++i)
      if (g.sex[0] == 0 || c.IndividualSex(i) == g.sex) f.Write(c.IndividualNo(i), w.Longevity(i));
  }
}

void StageStatsEngine::WriteIndivFecundityForAnalysis() {
  Flow("WriteIndivFecundityForAnalysis");
  if (S.options.OutputLevel == "Nooutput") return;
  const auto& c = W.cohort;
  const auto& w = W.stageStats;
  const double tu = TimeUnit();
  TextFile f(OutputName(S, "_Fecundity of female individuals.txt"));
  f.Write(S.identity.ProjectName);
  f.Write(S.identity.UserName);
  f.Write(S.identity.TreatmentName);
  f.Write("Indiv. no.", "Fecundity", "Preadult duration", "Oviposition days", "Adult longevity", "Total longevity");
  for (long i = 1; i <= c.CohortSize; ++i) {
    if (c.IndividualSex(i) != "F") continue;
    f.Write(c.IndividualNo(i), w.TotalFecundity(i), w.PreadultDuration(i) * tu, w.OviDays(i),
            c.StageDuration(i, m()) * tu, w.Longevity(i));
  }
}

// Steps of the closing of a run whose files belong to other tools; nothing is written here.
void StageStatsEngine::WriteAPOPandTPOPforTtest() { Flow("WriteAPOPandTPOPforTtest"); }
void StageStatsEngine::Write1stOviAgeAndLastOviAge() { Flow("Write1stOviAgeAndLastOviAge"); }

}  // namespace korvan
