// Life tables on the adult-age axis. They treat all females as if they had emerged on the
// same day, which is wrong; they are kept to show how wrong, and say so in their own text.
#include <string>

#include "engine/stage_statistics.h"
#include "store/rules.h"
#include "text/numbers.h"

namespace korvan {

namespace {

std::int16_t AgeOf(double steps, double timeUnit) {
  return static_cast<std::int16_t>(CInt(TimeUnitToDays(steps, timeUnit)));
}

const char* kAdultAgeWarning = "Notewell! This age-specific life table is calculated based on adult age";

}  // namespace

void StageStatsEngine::CalculateAdultLifeTable() {
  Flow("CalculateAdultLifeTable");
  const auto& w = W.stageStats;
  auto& r = Keep().stageStats;  // a Basic Run's
  const double tu = TimeUnit();
  const int maxAge = w.MaxFemaleAdultAge;
  for (int t = 1; t <= maxAge; ++t) {
    r.AdultAge(t - 1) = AgeOf(t - 1, tu);
    r.AdultLx(t - 1) = w.AdultFemaleCount != 0 ? w.AdultAgeN(t) / w.AdultFemaleCount : 0;
    r.AdultMx(t - 1) = w.AdultAgeMean(t);
  }
  r.AdultAge(maxAge) = AgeOf(maxAge, tu);
  r.AdultLx(maxAge) = 0;
  r.AdultMx(maxAge) = 0;

  // The preadult period in front: its mean from birth to the end of the last preadult stage.
  const RoutineStat& pre = w.Cumulative(m() >= 2 ? m() - 1 : 0);
  r.PreadultAgeRounded = static_cast<std::int16_t>(CInt(pre.mean));
  r.PreadultSurvival = W.cohort.CohortSize != 0 ? pre.n / W.cohort.CohortSize : 0;
  const int pa = r.PreadultAgeRounded;
  for (int t = 1; t <= pa; ++t) {
    r.BirthAge(t - 1) = AgeOf(t - 1, tu);
    r.BirthLx(t - 1) = t == 1 ? 1 : r.PreadultSurvival;
    r.BirthMx(t - 1) = 0;
  }
  for (int t = pa + 1; t <= pa + maxAge; ++t) {
    r.BirthAge(t - 1) = AgeOf(t - 1, tu);
    r.BirthLx(t - 1) = r.PreadultSurvival * r.AdultLx(t - pa - 1);
    r.BirthMx(t - 1) = r.AdultMx(t - pa - 1);
  }
}

// "_21B_...": adult age from emergence, as if no female died before.
void StageStatsEngine::WriteAdultAgeSpecificLifeTable() {
  Flow("WriteAdultAgeSpecificLifeTable");
  const auto& r = S.stageStats;
  // Left out when R0 is 0, that is when no female laid an egg, and under "Nooutput".
  if (W.stageStats.TotalFemaleEggs == 0 || S.options.OutputLevel == "Nooutput") return;
  const int maxAge = W.stageStats.MaxFemaleAdultAge;
  TextFile f(OutputName(S, "_21B_Adult Age-spec life table without preadult mortality.txt"));
  f.Print("Project: ", S.identity.ProjectName);
  f.Print("Preadult survival rate =", r.PreadultSurvival);
  f.Print("Preadult age (rounded to integer) =", r.PreadultAgeRounded);
  f.Print(kAdultAgeWarning);
  f.Print("It is constructed based on the assumption that all females emerged on the same day.");
  f.Print("It is a wrong manipulation.  You should not use this file.");
  f.Print("Adult age,l(x),m(x),l(x)m(x)");
  for (int t = 0; t < maxAge; ++t) f.Write(r.AdultAge(t), r.AdultLx(t), r.AdultMx(t), r.AdultLx(t) * r.AdultMx(t));
  f.Write(r.AdultAge(maxAge), 0, 0, 0);
}

// "_21A_...": the adult-age table moved behind the mean preadult period, with its survival.
void StageStatsEngine::WriteAdultAgeSpecificLifeTableB() {
  Flow("WriteAdultAgeSpecificLifeTableB");
  const auto& r = S.stageStats;
  const auto& w = W.stageStats;
  if (w.TotalFemaleEggs == 0 || S.options.OutputLevel == "Nooutput") return;
  const int maxAge = w.MaxFemaleAdultAge;
  const int pa = r.PreadultAgeRounded;
  TextFile f(OutputName(S, "_21A_Adult Age-spec life table with preadult mortality.txt"));
  f.Print("Project: ", S.identity.ProjectName);
  f.Print("Preadult survival rate =", r.PreadultSurvival, ". Max female longevity =", w.MaxFemaleLongevity);
  f.Print("Preadult age (rounded to integer) =", r.PreadultAgeRounded);
  f.Print(kAdultAgeWarning);
  f.Print("It is constructed based on the assumption that all females emerged on the same day.");
  f.Print("It is a wrong manipulation.  You should not use this file.");
  f.Print("Adult age (from birth),l(x),m(x)");
  for (int t = 0; t < maxAge; ++t) f.Write(r.BirthAge(pa + t), r.BirthLx(pa + t), r.BirthMx(pa + t));
  f.Write(AgeOf(pa + maxAge, TimeUnit()), 0, 0);
}

// "_21C_...": the whole axis from birth, preadult period included.
void StageStatsEngine::WriteFemaleLifeTableBasedOnPreAandSa() {
  Flow("WriteFemaleLifeTableBasedOnPreAandSa");
  const auto& r = S.stageStats;
  const auto& w = W.stageStats;
  if (w.TotalFemaleEggs == 0 || S.options.OutputLevel == "Nooutput") return;
  const int last = r.PreadultAgeRounded + w.MaxFemaleAdultAge;
  TextFile f(OutputName(S, "_21C_Age-life table with preA time and lx.txt"));
  f.Print("Project: ", S.identity.ProjectName);
  f.Print("Preadult survival rate =", r.PreadultSurvival);
  f.Print("Preadult age (rounded to integer) =", r.PreadultAgeRounded);
  f.Print(kAdultAgeWarning);
  f.Print("It is constructed based on the assumption that all females emerged on the same day. You should not use "
          "this file.");
  f.Print("It is a wrong manipulation.   But you can use this file to show the errors of adult age life table.");
  f.Print("Adult age,l(x),m(x),l(x)m(x)");
  for (int k = 0; k < last; ++k) f.Write(r.BirthAge(k), r.BirthLx(k), r.BirthMx(k), r.BirthLx(k) * r.BirthMx(k));
  f.Write(AgeOf(last, TimeUnit()), 0, 0, 0);
}

}  // namespace korvan
