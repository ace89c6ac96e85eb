#include "transforms/life_table_transforms.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "text/numbers.h"

namespace korvan {

namespace {

std::string Num(double v) { return FullPrecision(v); }

const char* const kUnwritable =
    " is empty or holds a comma, a double quote or a line end: a new file can't hold it as the stage lines "
    "of a data file stand.";

bool IsWhole(double v) { return std::isfinite(v) && std::floor(v) == v; }

// Round to whole time units, a half up.
double RoundHalfUp(double v) { return std::floor(v + 0.5); }

// The whole life of individual i: its time in every stage up to that of its death.
double LifeOf(const Cohort& c, long i, int m) {
  double life = 0;
  for (int j = 1; j <= LastStageOf(c, i, m); ++j) life += std::fabs(c.StageDuration(i, j));
  return life;
}

// Why a life of that length, or a female's adult life of that length, doesn't fit a table.
std::string BeyondLimits(long i, double life, double adultDays) {
  if (life > kMaxAge)
    return "Individual no. " + Num(i) + " would live " + Num(life) + " time units; a life table holds at most " +
           Num(kMaxAge) + ".";
  if (adultDays > kMaxAge - 1)
    return "Female no. " + Num(i) + " would have " + Num(adultDays) + " adult days; a fecundity list holds at most " +
           Num(kMaxAge - 1) + ".";
  return {};
}

std::string PreadultRange(const CohortHeader& h, int k) {
  if (h.StageCount < 2) return "This life table has no preadult stage.";
  if (k < 1 || k > h.StageCount - 1)
    return "Stage " + Num(k) + " is no preadult stage: enter a stage from 1 to " + Num(h.StageCount - 1) + ".";
  return {};
}

// Stage names and costs of stages from..m (row 1 to m + 1, its second adult stage) move by
// shift places, up or down; the places left behind are emptied. The table then has m + shift
// stages.
void ShiftStages(CohortHeader& h, int from, int shift) {
  const int m = h.StageCount;
  const int clearFrom = std::min(from, from + shift);
  for (int t = 1; t <= h.TypeCount; ++t) {
    const int top = t == 1 ? m + 1 : m;
    std::vector<std::string> names;
    for (int j = from; j <= top; ++j) names.push_back(h.StageName(t, j));
    for (int j = clearFrom; j <= top; ++j) h.StageName(t, j).clear();
    for (int j = from; j <= top; ++j) h.StageName(t, j + shift) = names[static_cast<std::size_t>(j - from)];
  }
  std::vector<double> costs;
  for (int j = from; j <= m; ++j) costs.push_back(h.StageRearingCost(1, j));
  for (int j = clearFrom; j <= m; ++j) h.StageRearingCost(1, j) = 0;
  for (int j = from; j <= m; ++j) h.StageRearingCost(1, j + shift) = costs[static_cast<std::size_t>(j - from)];
  const double maleAdult = h.StageRearingCost(2, m);
  h.StageRearingCost(2, m) = 0;
  h.StageRearingCost(2, m + shift) = maleAdult;
  h.StageCount = m + shift;
}

// A table of two stages reads "Adult" as its last special stage; one grown from it needs a
// stage's name there: its last preadult stage.
void NameLastSpecialStage(CohortHeader& h, int stagesBefore) {
  if (stagesBefore == 2 && h.StageCount > 2 && h.SpecialGroup(2) == "Adult")
    h.SpecialGroup(2) = h.StageName(1, h.StageCount - 1);
}

// Durations of stages from..m of individual i move up by shift places; the places left behind
// are 0 until the caller sets them.
void ShiftDurations(Cohort& c, long i, int m, int from, int shift) {
  std::vector<double> d;
  for (int j = from; j <= m; ++j) d.push_back(c.StageDuration(i, j));
  for (int j = from; j <= m; ++j) c.StageDuration(i, j) = 0;
  for (int j = from; j <= m; ++j) c.StageDuration(i, j + shift) = d[static_cast<std::size_t>(j - from)];
}

std::string AddingStageRefusal(const CohortHeader& h) {
  if (h.StageCount + 1 > MaxStageCount(h))
    return "This life table has " + Num(h.StageCount) + " stages already; a life table of " + Num(h.TypeCount) +
           " types holds at most " + Num(MaxStageCount(h)) + ".";
  return {};
}

}  // namespace

int MaxStageCount(const CohortHeader& h) { return h.TypeCount > 1 ? kMaxStage - 1 : kMaxStage; }

int LastStageOf(const Cohort& c, long i, int m) {
  for (int j = 1; j <= m; ++j)
    if (c.StageDuration(i, j) < 0) return j;
  return m;
}

std::string UnwritableHeadRefusal(const CohortHeader& h) {
  auto unwritable = [](const std::string& name) {
    return name.empty() || name.find_first_of(",\"\n\r") != std::string::npos;
  };
  for (int t = 1; t <= h.TypeCount; ++t) {
    if (unwritable(h.TypeCode(t))) return "The code of type " + Num(t) + " (\"" + h.TypeCode(t) + "\")" + kUnwritable;
    for (int j = 1; j <= h.StageCount; ++j)
      if (unwritable(h.StageName(t, j)))
        return "The name of stage " + Num(j) + " of type " + Num(t) + " (\"" + h.StageName(t, j) + "\")" + kUnwritable;
  }
  for (int s = 1; s <= 2; ++s)
    if (unwritable(h.SpecialGroup(s))) return "The special stage \"" + h.SpecialGroup(s) + "\"" + kUnwritable;
  return {};
}

std::string StageNameRefusal(const CohortHeader& h, const std::string& name, int keepFirst, int keepLast) {
  if (name.empty()) return "A stage needs a name.";
  if (name.front() == ' ' || name.back() == ' ') return "A stage name can't begin or end with a blank.";
  if (name.find_first_of(",\"\n\r\t") != std::string::npos)
    return "A stage name can't hold a comma, a double quote or a tab: the stage lines of the file separate names by commas.";
  for (int t = 1; t <= h.TypeCount; ++t) {
    for (int j = 1; j <= h.StageCount; ++j) {
      if (j >= keepFirst && j <= keepLast) continue;
      if (h.StageName(t, j) == name) return "\"" + name + "\" is the name of stage " + Num(j) + " already.";
    }
  }
  return {};
}

std::string GroupStages(CohortHeader& h, Cohort& c, int first, int last, const std::string& name) {
  const int m = h.StageCount;
  if (auto why = PreadultRange(h, first); !why.empty()) return why;
  if (auto why = PreadultRange(h, last); !why.empty()) return why;
  if (first > last) return "The first stage of the group comes after its last one.";
  if (auto why = StageNameRefusal(h, name, first, last); !why.empty()) return why;
  const int cut = last - first;

  // The cost of the new stage keeps the cohort's cost: the old costs weighted by the time spent.
  double time = 0, cost = 0, plain = 0;
  for (int j = first; j <= last; ++j) plain += h.StageRearingCost(1, j) / (cut + 1);
  for (long i = 1; i <= c.CohortSize; ++i) {
    for (int j = first; j <= std::min(last, LastStageOf(c, i, m)); ++j) {
      time += std::fabs(c.StageDuration(i, j));
      cost += std::fabs(c.StageDuration(i, j)) * h.StageRearingCost(1, j);
    }
  }

  for (long i = 1; i <= c.CohortSize; ++i) {
    const int end = LastStageOf(c, i, m);
    if (end < first) continue;
    double sum = 0;
    for (int j = first; j <= std::min(last, end); ++j) sum += std::fabs(c.StageDuration(i, j));
    c.StageDuration(i, first) = end <= last && c.StageDuration(i, end) < 0 ? -sum : sum;
    for (int j = first + 1; j <= m; ++j) c.StageDuration(i, j) = j + cut <= m ? c.StageDuration(i, j + cut) : 0;
  }

  for (int s = 1; s <= 2; ++s) {
    for (int j = first; j <= last; ++j)
      if (h.SpecialGroup(s) == h.StageName(1, j)) h.SpecialGroup(s) = name;
  }
  if (cut > 0) ShiftStages(h, last + 1, -cut);
  for (int t = 1; t <= h.TypeCount; ++t) h.StageName(t, first) = name;
  h.StageRearingCost(1, first) = time > 0 ? cost / time : plain;
  return {};
}

std::string ToTimeUnits(CohortHeader& h, Cohort& c, int x) {
  const int m = h.StageCount;
  if (x < 1 || x > 24) return "x must be a whole number from 1 to 24.";
  for (long i = 1; i <= c.CohortSize; ++i) {
    for (int j = 1; j <= LastStageOf(c, i, m); ++j) {
      const double d = c.StageDuration(i, j) * x;
      if (!IsWhole(d))
        return "Individual no. " + Num(i) + " spent " + Num(std::fabs(c.StageDuration(i, j))) + " time units in stage " +
               Num(j) + ", " + Num(std::fabs(d)) + " new units: not whole. Choose an x that makes every duration whole.";
    }
    const double adult = c.IndividualSex(i) == "F" ? c.StageDuration(i, m) * x : 0;
    if (auto why = BeyondLimits(i, LifeOf(c, i, m) * x, adult); !why.empty()) return why;
  }

  for (long i = 1; i <= c.CohortSize; ++i) {
    const double d = c.StageDuration(i, m);
    for (int j = 1; j <= LastStageOf(c, i, m); ++j) c.StageDuration(i, j) *= x;
    if (c.IndividualSex(i) != "F") continue;
    std::vector<double> eggs;
    for (long t = 1; t <= static_cast<long>(std::floor(d)); ++t) eggs.push_back(c.Fecundity(i, t));
    const long units = static_cast<long>(d * x);
    for (long u = 1; u <= units; ++u) c.Fecundity(i, u) = 0;
    for (std::size_t t = 0; t < eggs.size(); ++t) c.Fecundity(i, static_cast<long>(t) * x + 1) = eggs[t];
    c.Fecundity(i, units + 1) = -1;
  }
  for (int j = 1; j <= m; ++j) h.StageRearingCost(1, j) /= x;
  h.StageRearingCost(2, m) /= x;
  return {};
}

std::string AddStage(CohortHeader& h, Cohort& c, int k, const std::string& name, double duration, double cost) {
  const int m = h.StageCount;
  if (k < 1 || k > m) return "The new stage goes before one of the stages 1 to " + Num(m) + ".";
  if (auto why = AddingStageRefusal(h); !why.empty()) return why;
  if (auto why = StageNameRefusal(h, name); !why.empty()) return why;
  if (!IsWhole(duration) || duration < 1) return "The duration of a stage is a whole number of time units, at least 1.";
  if (!std::isfinite(cost)) return "The rearing cost must be a number.";
  for (long i = 1; i <= c.CohortSize; ++i) {
    if (LastStageOf(c, i, m) < k) continue;
    if (auto why = BeyondLimits(i, LifeOf(c, i, m) + duration, 0); !why.empty()) return why;
  }

  for (long i = 1; i <= c.CohortSize; ++i) {
    if (LastStageOf(c, i, m) < k) continue;
    ShiftDurations(c, i, m, k, 1);
    c.StageDuration(i, k) = duration;
  }
  ShiftStages(h, k, 1);
  for (int t = 1; t <= h.TypeCount; ++t) h.StageName(t, k) = name;
  h.StageRearingCost(1, k) = cost;
  NameLastSpecialStage(h, m);
  return {};
}

std::string AddTimeToStage(const CohortHeader& h, Cohort& c, int k, double amount, bool share) {
  const int m = h.StageCount;
  if (auto why = PreadultRange(h, k); !why.empty()) return why;
  if (share && !(amount >= 0 && amount <= 1)) return "The share must lie between 0 and 1.";
  if (!share && (!IsWhole(amount) || amount < 0)) return "The time to add must be a whole number of time units, 0 or more.";
  auto added = [&](long i) { return share ? RoundHalfUp(amount * std::fabs(c.StageDuration(i, k))) : amount; };
  for (long i = 1; i <= c.CohortSize; ++i) {
    if (LastStageOf(c, i, m) < k) continue;
    if (auto why = BeyondLimits(i, LifeOf(c, i, m) + added(i), 0); !why.empty()) return why;
  }
  for (long i = 1; i <= c.CohortSize; ++i) {
    if (LastStageOf(c, i, m) < k) continue;
    const double d = c.StageDuration(i, k);
    c.StageDuration(i, k) = d < 0 ? d - added(i) : d + added(i);
  }
  return {};
}

std::string SplitStage(CohortHeader& h, Cohort& c, int k, double p, const std::string& firstName,
                       const std::string& secondName, long& lengthened) {
  const int m = h.StageCount;
  lengthened = 0;
  if (auto why = PreadultRange(h, k); !why.empty()) return why;
  if (!(p > 0 && p < 1)) return "The share of the first part must lie between 0 and 1 (not 0 or 1 itself).";
  if (auto why = AddingStageRefusal(h); !why.empty()) return why;
  if (auto why = StageNameRefusal(h, firstName, k, k); !why.empty()) return why;
  if (auto why = StageNameRefusal(h, secondName, k, k); !why.empty()) return why;
  if (firstName == secondName) return "The two parts need names of their own.";

  // The first part of the cohort, for the individuals that died in the stage.
  double completed = 0, completedTime = 0, died = 0, diedTime = 0;
  for (long i = 1; i <= c.CohortSize; ++i) {
    if (LastStageOf(c, i, m) < k) continue;
    const double d = c.StageDuration(i, k);
    (d > 0 ? completed : died) += 1;
    (d > 0 ? completedTime : diedTime) += std::fabs(d);
  }
  const double mean = completed > 0 ? completedTime / completed : died > 0 ? diedTime / died : 1;
  const double cohortFirst = std::max(1.0, RoundHalfUp(p * mean));

  // Each one's two parts; the second is 0 for one that died in the first.
  struct Parts {
    double first = 0, second = 0;
  };
  auto partsOf = [&](long i) {
    const double d = c.StageDuration(i, k);
    if (d < 0) {
      const double lived = -d;
      if (lived <= cohortFirst) return Parts{d, 0};
      return Parts{cohortFirst, -(lived - cohortFirst)};
    }
    if (d < 2) return Parts{d, 1};
    const double a = std::min(std::max(RoundHalfUp(p * d), 1.0), d - 1);
    return Parts{a, d - a};
  };
  for (long i = 1; i <= c.CohortSize; ++i) {
    if (LastStageOf(c, i, m) < k) continue;
    const Parts parts = partsOf(i);
    const double longer = std::fabs(parts.first) + std::fabs(parts.second) - std::fabs(c.StageDuration(i, k));
    if (auto why = BeyondLimits(i, LifeOf(c, i, m) + longer, 0); !why.empty()) return why;
  }

  for (long i = 1; i <= c.CohortSize; ++i) {
    if (LastStageOf(c, i, m) < k) continue;
    const Parts parts = partsOf(i);
    if (c.StageDuration(i, k) > 0 && c.StageDuration(i, k) < 2) ++lengthened;
    ShiftDurations(c, i, m, k + 1, 1);
    c.StageDuration(i, k) = parts.first;
    c.StageDuration(i, k + 1) = parts.second;
  }
  const std::string old = h.StageName(1, k);
  const double cost = h.StageRearingCost(1, k);
  ShiftStages(h, k + 1, 1);
  for (int t = 1; t <= h.TypeCount; ++t) {
    h.StageName(t, k) = firstName;
    h.StageName(t, k + 1) = secondName;
  }
  h.StageRearingCost(1, k + 1) = cost;
  if (h.SpecialGroup(1) == old) h.SpecialGroup(1) = firstName;
  if (h.SpecialGroup(2) == old) h.SpecialGroup(2) = secondName;
  NameLastSpecialStage(h, m);
  return {};
}

std::string KeepEggsOfFirstDays(const CohortHeader& h, Cohort& c, int days) {
  const int m = h.StageCount;
  if (days < 1) return "The reproduction period is a whole number of days, at least 1.";
  for (long i = 1; i <= c.CohortSize; ++i) {
    if (c.IndividualSex(i) != "F") continue;
    const double d = c.StageDuration(i, m);
    for (long x = days + 1; x <= d; ++x) c.Fecundity(i, x) = 0;
  }
  return {};
}

std::string AddOverwinter(const CohortHeader& h, Cohort& c, int days, double mortality, UniformGenerator& u,
                          long& died) {
  const int m = h.StageCount;
  died = 0;
  if (days < 0) return "The overwintering time is a whole number of days, 0 or more.";
  if (!(mortality >= 0 && mortality <= 1)) return "The overwinter mortality must lie between 0 and 1.";
  for (long i = 1; i <= c.CohortSize; ++i) {
    const double d = c.StageDuration(i, m) + days;
    if (auto why = BeyondLimits(i, d, d); !why.empty()) return why;
  }

  for (long i = 1; i <= c.CohortSize; ++i) {
    const long d = static_cast<long>(c.StageDuration(i, m));
    const bool female = c.IndividualSex(i) == "F";
    if (mortality > u.Next()) {
      // It does not live to spring: no eggs.
      const long longer = d + CInt(days * u.Next());
      c.StageDuration(i, m) = static_cast<double>(longer);
      ++died;
      if (!female) continue;
      for (long x = 1; x <= longer; ++x) c.Fecundity(i, x) = 0;
      c.Fecundity(i, longer + 1) = -1;
      continue;
    }
    c.StageDuration(i, m) = static_cast<double>(d + days);
    if (!female) continue;
    for (long x = d; x >= 1; --x) c.Fecundity(i, x + days) = c.Fecundity(i, x);
    for (long x = 1; x <= std::min<long>(days, d); ++x) c.Fecundity(i, x) = 0;
    for (long x = d + 1; x <= days; ++x) c.Fecundity(i, x) = 0;
    c.Fecundity(i, d + days + 1) = -1;
  }
  return {};
}

}  // namespace korvan
