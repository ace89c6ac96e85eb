// Rebuilding individuals from the counts of a group-reared cohort. A fall of a stage's count
// from x to x+1 is a death at age x+1, a rise of the female or male count an emergence at x+1.
// Whether the last preadult stage overlaps the adult stages decides how the preadult deaths of
// the overlap are told apart from the emergences; the individuals are then paired first in,
// first out: the k-th to emerge is the k-th to die.
#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "groupreared/group_reared.h"
#include "input/data_file_writer.h"
#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {

namespace {

std::string Int(long v) { return std::to_string(v); }
int Whole(double v) { return static_cast<int>(std::lround(v)); }

// A row anybody reached.
bool RowUsed(const GroupRearedRecord& g, int j) { return g.StageRowSum(j) > 0; }

// Appends n entries of value to a list that holds count entries.
void Append(GroupRearedRecord::ListInt& list, int& count, long n, int value) {
  for (long k = 0; k < n; ++k) list(++count) = value;
}

std::string ProjectTitle(const std::string& title) {
  if (title.rfind("Project: ", 0) == 0) return title.substr(9);
  if (title.rfind("Project:", 0) == 0) return title.substr(8);
  return title;
}

}  // namespace

bool GroupReared::FindNandFOverlapType() {
  Flow("FindNandFOverlapType");
  auto& g = S.group;
  const int s = StageCount();
  // 1. The first age with eggs, which is the first with m(x) > 0.
  g.FirstReproductionAge = g.StageFirstAge(s);
  for (int x = 0; x <= g.LastAge; ++x)
    if (g.FemaleEggs(x, s) > 0) {
      g.FirstReproductionAge = x;
      break;
    }
  g.PreadultDeathsToFirstAdult = Whole(g.CohortSize - NAgeNF(g.FirstReproductionAge));
  g.PreadultDeaths = g.PreadultDeathsToFirstAdult;

  // 2. The larval stages must end before the next stage and the adults begin.
  if (s > 2) {
    for (int j = 1; j <= s - 2; ++j) {
      if (g.StageLastAge(j) > g.StageFirstAge(j + 1) || g.StageLastAge(j) > g.StageFirstAge(s)) {
        if (P.MsgBox("The larval(or nymphal) stage is overlapped with adult stage. Continue?",
                     "Larval stage overlaps adult stage!", kYesNo) == kNo)
          return false;
        break;
      }
    }
  }

  // 3. The last preadult stage against the adult stages; a row nobody reached begins never.
  const int a = g.StageLastAge(s - 1);
  const int never = kMaxAge + 2;
  const int ff = RowUsed(g, s) ? g.StageFirstAge(s) : never;
  const int fm = RowUsed(g, s + 1) ? g.StageFirstAge(s + 1) : never;
  g.SuggestedCase.clear();
  if (a < ff && a < fm) {
    g.NandFOverlapType = "NoOverlap";
    g.SuggestedCase = "0";
    g.FirstAdultAge = std::min(ff, fm) == never ? a + 1 : g.StageFirstAge(s);
  } else if (ff < fm) {
    g.NandFOverlapType = "OverlapFemaleEarlier";
    g.FirstAdultAge = ff;
  } else if (ff == fm) {
    g.NandFOverlapType = "OverlapMaleAndFemaleSameAge";
    g.FirstAdultAge = ff;
  } else {
    g.NandFOverlapType = "OverlapMaleEarlier";
    g.FirstAdultAge = fm;
  }
  // 4.
  g.LastPreadultAge = a;
  g.PreadultDeathsToFirstAdult = Whole(g.CohortSize - NAgeNF(g.FirstAdultAge));
  g.OverlapDeaths = Whole(NAgeNF(g.FirstAdultAge) - NAgeNF(g.LastPreadultAge));
  g.OverlapNtypeCount = 0;
  return true;
}

void GroupReared::FindNandFOverlapDeath() {
  Flow("FindNandFOverlapDeath");
  auto& g = S.group;
  const int s = StageCount();
  if (g.NandFOverlapType != "NoOverlap") {
    FindNandFOverlapDeathCase2();
    return;
  }
  const int a = g.LastPreadultAge;
  g.PreadultDeaths = g.PreadultDeathsToFirstAdult;
  g.FemaleTotal = Whole(Count(a + 1, s));
  g.MaleTotal = Whole(Count(a + 1, s + 1));
  if (g.FemaleTotal + g.MaleTotal + g.PreadultDeaths != Whole(g.N(0, 1)))
    throw ProgramEnd{"There is error: Female adult + male adult + preadult death <> MtxN(0,1)?", "Error!"};
}

void GroupReared::FindNandFOverlapDeathCase2() {
  Flow("FindNandFOverlapDeathCase2");
  auto& g = S.group;
  const int s = StageCount();
  const int a = g.LastPreadultAge;
  auto P_ = [&](int x) { return Count(x, s - 1); };
  g.FemaleDeathsAt.Fill(0);
  g.MaleDeathsAt.Fill(0);
  g.OverlapPreadultDeathsAt.Fill(0);

  // 1. Deaths of the adult rows; a rise with no preadult the day before can't be.
  auto adultDeaths = [&](int j, GroupRearedRecord::AgeInt& deathsAt, int& overlapDeaths, const char* sex) {
    overlapDeaths = 0;
    if (!RowUsed(g, j)) return;
    for (int x = g.StageFirstAge(j); x <= g.StageLastAge(j) + 1 && x <= kMaxAge; ++x) {
      const double fall = Count(x, j) - Count(x + 1, j);
      deathsAt(x) = Whole(std::max(0.0, fall));
      if (x < a) overlapDeaths += deathsAt(x);
      if (fall < 0 && x >= 1 && P_(x - 1) == 0)
        throw ProgramEnd{std::string("There is error: There were no preadult individuals on day t, but the ") + sex +
                             " increased on day t+1.",
                         "Error!"};
    }
  };
  adultDeaths(s, g.FemaleDeathsAt, g.FemaleOverlapDeaths, "female");
  adultDeaths(s + 1, g.MaleDeathsAt, g.MaleOverlapDeaths, "male");

  // 2. Preadult deaths in the overlap: the preadults lost less those that emerged. A falling
  // adult row adds nothing: those are adult deaths. Deaths before the first adult age are
  // those of PreadultDeathsToFirstAdult already.
  auto rise = [&](int x, int j) { return std::max(0.0, Count(x + 1, j) - Count(x, j)); };
  g.OverlapPreadultTotal = 0;
  for (int x = 0; x <= a - 1; ++x) {
    if (NAgeNF(x) == NAgeNF(x + 1)) continue;
    const double deaths = P_(x) - P_(x + 1) - rise(x, s) - rise(x, s + 1);
    g.OverlapPreadultDeathsAt(x) = Whole(std::max(0.0, deaths));
    if (x >= g.FirstAdultAge) g.OverlapPreadultTotal += g.OverlapPreadultDeathsAt(x);
  }
  g.PreadultDeaths = g.PreadultDeathsToFirstAdult + g.OverlapPreadultTotal;

  // 3. The last step of the preadult stage, from a to a+1.
  const bool adultsStay = Count(a + 1, s) == Count(a, s) && Count(a + 1, s + 1) == Count(a, s + 1);
  const double lastDeaths = adultsStay ? NAgeNF(a) - NAgeNF(a + 1) : P_(a) - rise(a, s) - rise(a, s + 1);
  g.OverlapPreadultDeathsAt(a) = Whole(std::max(0.0, lastDeaths));
  g.PreadultDeaths += g.OverlapPreadultDeathsAt(a);

  // 4.
  auto total = [&](int j, int overlapDeaths) {
    return overlapDeaths + Whole(Count(a + 1, j) < Count(a, j) ? Count(a, j) : Count(a + 1, j));
  };
  g.FemaleTotal = total(s, g.FemaleOverlapDeaths);
  g.MaleTotal = total(s + 1, g.MaleOverlapDeaths);
  g.OverlapNtypeCount = g.PreadultDeaths - g.PreadultDeathsToFirstAdult;
}

void GroupReared::AddIndividual(const std::string& sex, int longevity, int adultDuration, int development) {
  auto& g = S.group;
  ++g.IndividualCount;
  g.IndividualSex(g.IndividualCount) = sex;
  g.IndividualLongevity(g.IndividualCount) = longevity;
  g.IndividualAdultDuration(g.IndividualCount) = adultDuration;
  g.IndividualDevelopment(g.IndividualCount) = development;
}

bool GroupReared::FindIndSexLongFecundCase0() {
  Flow("FindIndSexLongFecundCase0");
  auto& g = S.group;
  const int s = StageCount();
  const int fra = g.FirstReproductionAge;
  auto P_ = [&](int x) { return Count(x, s - 1); };
  // 1. Preadults still there at the first age of reproduction must resolve on the next age.
  bool newNtype = false;
  if (P_(fra) > 0) {
    const double p = P_(fra);
    bool clean = P_(fra + 1) == 0;
    if (clean) {
      if (Count(fra + 1, s + 1) - Count(fra, s + 1) == p || Count(fra + 1, s) - Count(fra, s) == p) {
        // The rest became males or females: they are counted by the falls of their rows.
      } else if (Count(fra + 1, s) == Count(fra, s) && Count(fra + 1, s + 1) == Count(fra, s + 1)) {
        newNtype = true;
      } else {
        clean = false;
      }
    }
    if (!clean) {
      // Whatever the answer, no file is written.
      P.MsgBox("There are still preadul individauls. Do you want to estimate fecundity (Yes or No)?\nAt age " + Int(fra) +
                   ", preadult = " + FullPrecision(p) + "!",
               "There are still preadult individuals.  ", kYesNo);
      return false;
    }
  }
  g.IndividualCount = 0;
  // 2. Deaths before the first age of reproduction.
  for (int x = 0; x <= fra - 1; ++x) {
    const int fall = Whole(NAgeNF(x) - NAgeNF(x + 1));
    for (int k = 0; k < fall; ++k) AddIndividual("N", x + 1, 0, 0);
  }
  // 3, 4.
  if (g.OverlapDeaths == 0 && g.OverlapNtypeCount > 0)
    for (int k = 0; k < g.OverlapNtypeCount; ++k) AddIndividual("N", g.LastPreadultAge + 1, 0, 0);
  if (newNtype)
    for (int k = 0; k < Whole(P_(fra)); ++k) AddIndividual("N", fra + 1, 0, 0);
  // 5. The adults, all emerged at the first age of reproduction.
  g.DailyFecundity.Fill(0);
  for (int x = fra; x <= g.LastAge; ++x) {
    g.DailyFecundity(x) = g.F(x, s);
    const int femaleFall = Whole(Count(x, s) - Count(x + 1, s));
    for (int k = 0; k < femaleFall; ++k) AddIndividual("F", x + 1, x + 1 - fra, fra);
    const int maleFall = Whole(Count(x, s + 1) - Count(x + 1, s + 1));
    for (int k = 0; k < maleFall; ++k) AddIndividual("M", x + 1, x + 1 - fra, fra);
  }
  return true;
}

// A death at x+1 for each individual the row loses from x to x+1, over the ages of the row.
void GroupReared::ListDeaths(int j, GroupRearedRecord::ListInt& ages, int& count) const {
  count = 0;
  for (int x = S.group.StageFirstAge(j); x <= S.group.StageLastAge(j); ++x)
    Append(ages, count, Whole(std::max(0.0, Count(x, j) - Count(x + 1, j))), x + 1);
}

// An emergence at x+1 for each individual the row gains from x to x+1.
void GroupReared::ListEmergences(int j, GroupRearedRecord::ListInt& ages, int& count) const {
  count = 0;
  for (int x = 0; x <= S.group.StageLastAge(j); ++x)
    Append(ages, count, Whole(std::max(0.0, Count(x + 1, j) - Count(x, j))), x + 1);
}

void GroupReared::FindFemaleDeathAgeNF() { ListDeaths(StageCount(), S.group.FemaleDeathAges, S.group.FemaleCount); }

void GroupReared::FindFemaleEmergenceAgeNF() {
  ListEmergences(StageCount(), S.group.FemaleEmergenceAges, S.group.FemaleEmergenceCount);
}

// The male row only when somebody reached it.
void GroupReared::FindMaleDeathAgeNF() {
  S.group.MaleCount = 0;
  if (S.group.StageLastAge(StageCount() + 1) != 0) ListDeaths(StageCount() + 1, S.group.MaleDeathAges, S.group.MaleCount);
}

void GroupReared::FindMaleEmergenceAgeNF() {
  S.group.MaleEmergenceCount = 0;
  if (S.group.StageLastAge(StageCount() + 1) != 0)
    ListEmergences(StageCount() + 1, S.group.MaleEmergenceAges, S.group.MaleEmergenceCount);
}

void GroupReared::FindNtypePreadultDuration() {
  auto& g = S.group;
  g.NtypeCount = 0;
  for (int x = 1; x <= g.FirstAdultAge; ++x)
    Append(g.NtypeDeathAges, g.NtypeCount, Whole(std::max(0.0, NAgeNF(x - 1) - NAgeNF(x))), x);
  for (int x = g.FirstAdultAge; x <= g.LastPreadultAge + 1 && x <= kMaxAge + 1; ++x)
    Append(g.NtypeDeathAges, g.NtypeCount, g.OverlapPreadultDeathsAt(x), x + 1);
}

void GroupReared::FindIndividualDevelopmentDurationNF() {
  auto& g = S.group;
  // The k-th individual to emerge is the k-th to die; a list longer than the other is cut.
  g.FemaleCount = std::min(g.FemaleCount, g.FemaleEmergenceCount);
  g.MaleCount = std::min(g.MaleCount, g.MaleEmergenceCount);
  for (int k = 1; k <= g.FemaleCount; ++k) {
    g.FemaleDevelopment(k) = g.FemaleEmergenceAges(k);
    g.FemaleAdultDuration(k) = g.FemaleDeathAges(k) - g.FemaleEmergenceAges(k);
  }
  for (int k = 1; k <= g.MaleCount; ++k) {
    g.MaleDevelopment(k) = g.MaleEmergenceAges(k);
    g.MaleAdultDuration(k) = g.MaleDeathAges(k) - g.MaleEmergenceAges(k);
  }
}

void GroupReared::FindIndividualData() {
  Flow("FindIndividualData");
  FindFemaleDeathAgeNF();
  FindFemaleEmergenceAgeNF();
  FindMaleDeathAgeNF();
  FindMaleEmergenceAgeNF();
  FindNtypePreadultDuration();
  FindIndividualDevelopmentDurationNF();
}

void GroupReared::FindIndSexLongFecundCase3() {
  Flow("FindIndSexLongFecundCase3");
  auto& g = S.group;
  FindIndividualData();
  g.FemaleCount = std::min(g.FemaleCount, g.FemaleTotal);
  g.MaleCount = std::min(g.MaleCount, g.MaleTotal);
}

void GroupReared::WriteIndividualFile(const std::string& suffix, bool fromList) {
  const auto& g = S.group;
  const int s = StageCount();
  const int count = fromList ? g.IndividualCount : g.FemaleCount + g.MaleCount + g.NtypeCount;
  // Counts that gain individuals from nowhere, or lose more than there were, rebuild another
  // cohort than the one studied: no file.
  if (count != g.CohortSize)
    throw ProgramEnd{"The counts give " + Int(count) + " individuals, but the cohort size is " + Int(g.CohortSize) +
                         ".\nPlease check your data. No individual life table was written.",
                     "Error in data file"};
  if (count > kMaxIndividual)
    throw ProgramEnd{"The cohort of " + Int(count) + " individuals is beyond the " + Int(kMaxIndividual) +
                         " that a life table data file holds. No individual life table was written.",
                     "Error in data file"};
  TextFile out(OutputName(S, suffix));
  out.Write("Project: " + ProjectTitle(g.Title) + " " + S.identity.VersionStamp);
  out.Write(g.Description);
  out.Write(g.ThirdLine);
  out.Write(count);
  out.Write(3, 2);
  out.RawText("F,Preadult,Female\nM,Preadult,Male\nN,Preadult,Unknown\nPreadult,Female\n");
  long k = 0;
  auto adult = [&](const std::string& sex, int development, int duration, const auto& eggsAtAge) {
    WriteIndividualRecord(out, ++k, sex, {double(development), double(duration)}, sex == "F" ? duration : -1,
                          [&](long day) { return eggsAtAge(development + static_cast<int>(day) - 1); });
  };
  auto none = [](int) { return 0.0; };
  if (fromList) {
    for (int i = 1; i <= g.IndividualCount; ++i) {
      const std::string& sex = g.IndividualSex(i);
      if (sex == "N")
        WriteIndividualRecord(out, ++k, "N", {-double(g.IndividualLongevity(i))}, -1, none);
      else if (sex == "F")
        adult("F", g.IndividualDevelopment(i), g.IndividualAdultDuration(i), [&](int x) { return g.DailyFecundity(x); });
      else
        adult("M", g.IndividualDevelopment(i), g.IndividualAdultDuration(i), none);
    }
    return;
  }
  for (int i = 1; i <= g.FemaleCount; ++i)
    adult("F", g.FemaleDevelopment(i), g.FemaleAdultDuration(i), [&](int x) { return g.F(x, s); });
  for (int i = 1; i <= g.MaleCount; ++i) adult("M", g.MaleDevelopment(i), g.MaleAdultDuration(i), none);
  for (int i = 1; i <= g.NtypeCount; ++i)
    WriteIndividualRecord(out, ++k, "N", {-double(g.NtypeDeathAges(i))}, -1, none);
}

void GroupReared::WriteIndividualLifeTableFromNFCase0() {
  Flow("WriteIndividualLifeTableFromNFCase0");
  WriteIndividualFile("_0_Individual LifeTable.txt", true);
}

void GroupReared::WriteIndividualLifeTableGeneral() {
  Flow("WriteIndividualLifeTableGeneral");
  WriteIndividualFile("_0A2_Individual Life Table.txt", false);
}

void GroupReared::RebuildIndividualsByCase() {
  Flow("RebuildIndividualsByCase");
  auto& g = S.group;
  const std::string answer = P.InputBox(
      "Try the case of your data \n0: no overlap between reproduction and pupal stage. \n"
      "1: There is overlap between pupal and adult stages, but there is no \nmortality during overlap period.\n"
      "2: There is overlap between pupal and adult stages, and there is \nmortality during overlap period. \n"
      "3: Don't try to construct the individual life table. \nAccording to your data, you should choose " +
          g.SuggestedCase,
      "Which case is good for your data =?", g.SuggestedCase);
  const std::optional<double> number = NumberAnswer(answer);
  if (!number) return;  // no file
  const bool noOverlap = g.NandFOverlapType == "NoOverlap";
  auto refuse = [](const char* text) { throw ProgramEnd{text, "Wrong selection!"}; };
  const double c = *number;
  if (c == 0) {
    if (!noOverlap) refuse("There is overlap between preadult and adult stages. Wrong selection.");
    if (!FindIndSexLongFecundCase0()) return;
    WriteIndividualLifeTableFromNFCase0();
  } else if (c == 1) {
    if (noOverlap || g.OverlapDeaths != 0) refuse("There is overlap or there are death in overlap period.  Wrong selection.");
    FindIndividualData();
    WriteIndividualLifeTableGeneral();
  } else if (c == 2) {
    if (noOverlap || g.OverlapDeaths == 0)
      refuse("There is overlap or there is no death in overlap period.  Wrong selection.");
    FindIndividualData();
    WriteIndividualLifeTableGeneral();
  } else if (c == 3) {
    if (noOverlap || g.OverlapDeaths == 0) refuse("There is no overlap or there is no death in overlap.  Wrong selection.");
    FindIndSexLongFecundCase3();
    WriteIndividualLifeTableGeneral();
  } else {
    return;
  }
  P.MsgBox("Data file of individually-reared life table is ready!\nCopy it to a new folder and continue to convert it to 3-stage life table.",
           "Individual data ready.");
}

}  // namespace korvan
