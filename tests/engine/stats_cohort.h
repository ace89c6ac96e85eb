#pragma once
// A small hand-checked cohort for the stage statistics, filled straight into a store.
#include <string>
#include <vector>

#include "store/session_store.h"

namespace korvan::test {

struct StatsRecord {
  std::string sex;
  std::vector<double> durations;  // the stage of death negative
  std::vector<double> fecundity;  // adult days, without the closing -1
};

// Egg, Larva, Female (Male): three stages.
//   no sex  durations  fecundity by adult day
//   1  F    2 3 5      0 4 6 0 2
//   2  F    3 3 4      5 0 5 0
//   3  F    2 4 3      0 0 0
//   4  M    3 2 6
//   5  N    2 -2
//   6  N    -1
//   7  F    2 2 2      0 3
inline std::vector<StatsRecord> HandCohort() {
  return {
      {"F", {2, 3, 5}, {0, 4, 6, 0, 2}}, {"F", {3, 3, 4}, {5, 0, 5, 0}}, {"F", {2, 4, 3}, {0, 0, 0}},
      {"M", {3, 2, 6}, {}},             {"N", {2, -2}, {}},            {"N", {-1}, {}},
      {"F", {2, 2, 2}, {0, 3}},
  };
}

// Fills the head (stage names, special stages) and the working cohort of S, with LastAge
// one below the longest life.
inline void LoadCohort(SessionStore& S, const std::vector<StatsRecord>& records, double timeUnit = 1) {
  S.settings.TimeUnit = timeUnit;
  S.identity.ProjectName = "Hand cohort";
  S.identity.UserName = "tester";
  S.identity.TreatmentName = "25C";
  auto& h = S.header;
  h.StageCount = 3;
  h.TypeCount = 2;
  h.CohortSizeRead = static_cast<int>(records.size());
  h.TypeCode(1) = "F";
  h.TypeCode(2) = "M";
  const char* names[] = {"", "Egg", "Larva", "Female", "Male"};
  for (int j = 1; j <= 4; ++j) h.StageName(1, j) = names[j];
  h.StageName(2, 1) = "Egg";
  h.StageName(2, 2) = "Larva";
  h.StageName(2, 3) = "Male";
  h.SpecialGroup(1) = "Egg";
  h.SpecialGroup(2) = "Larva";
  auto& c = S.ws.cohort;
  c.CohortSize = static_cast<int>(records.size());
  c.MaxLongevity = 0;
  for (long i = 1; i <= c.CohortSize; ++i) {
    const StatsRecord& r = records[static_cast<std::size_t>(i - 1)];
    c.IndividualNo(i) = static_cast<int>(i);
    c.IndividualSex(i) = r.sex;
    double total = 0;
    for (std::size_t j = 0; j < r.durations.size(); ++j) {
      c.StageDuration(i, static_cast<long>(j + 1)) = r.durations[j];
      total += r.durations[j] < 0 ? -r.durations[j] : r.durations[j];
    }
    if (r.sex == "F") {
      const long d = static_cast<long>(r.durations.back());
      for (long t = 1; t <= d; ++t)
        c.Fecundity(i, t) = t <= static_cast<long>(r.fecundity.size()) ? r.fecundity[static_cast<std::size_t>(t - 1)] : 0;
      c.Fecundity(i, d + 1) = -1;
    }
    c.TotalLongevity(i) = static_cast<int>(total);
    if (c.TotalLongevity(i) > c.MaxLongevity) c.MaxLongevity = c.TotalLongevity(i);
  }
  S.ws.tables.LastAge = c.MaxLongevity - 1;
}

}  // namespace korvan::test
