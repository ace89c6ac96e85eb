#pragma once
// Cohorts written by the tests: straight into the store's working cohort, into the pool that
// a bootstrap draws from, or as the text of a life-table data file.
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "run/run_context.h"
#include "text/numbers.h"

namespace korvan::test {

struct Individual {
  std::string sex;                // "F", "M" or "N"
  std::vector<double> durations;  // time units in each stage, the stage of death negative
  std::vector<double> eggs = {};  // eggs of each adult day of a female, without the closing -1
};

// Eggs of a female for adult days 1..d (missing days lay none) and the closing -1.
template <class Fecundity>
void FillEggs(Fecundity& f, long i, const Individual& a, int d) {
  for (int x = 1; x <= d; ++x)
    f(i, x) = x <= static_cast<int>(a.eggs.size()) ? a.eggs[static_cast<std::size_t>(x - 1)] : 0;
  f(i, d + 1) = -1;
}

// The head (stages "S1".."S<m-1>" unless named, then "Female" / "Male"; the span from the
// first to the last preadult stage) and the working cohort; LastAge one below the longest life.
inline void LoadCohort(Session& S, int m, const std::vector<Individual>& cohort, double timeUnit = 1,
                       const std::vector<std::string>& preadultNames = {}) {
  S.settings.TimeUnit = timeUnit;
  S.identity.ProjectName = "Hand cohort";
  S.identity.UserName = "tester";
  S.identity.TreatmentName = "25C";
  auto& H = S.header;
  H.StageCount = m;
  H.TypeCount = 2;
  H.TypeCode(1) = "F";
  H.TypeCode(2) = "M";
  for (int j = 1; j < m; ++j) {
    const std::string name = j <= static_cast<int>(preadultNames.size())
                                 ? preadultNames[static_cast<std::size_t>(j - 1)]
                                 : "S" + std::to_string(j);
    H.StageName(1, j) = H.StageName(2, j) = name;
  }
  H.StageName(1, m) = "Female";
  H.StageName(2, m) = H.StageName(1, m + 1) = "Male";
  H.SpecialGroup(1) = H.StageName(1, 1);
  H.SpecialGroup(2) = m > 1 ? H.StageName(1, m - 1) : H.StageName(1, 1);
  H.RegularLifeTable = "Yes";
  auto& C = S.ws.cohort;
  const int n = static_cast<int>(cohort.size());
  C.CohortSize = n;
  H.CohortSizeRead = n;
  C.MaxLongevity = 0;
  for (int i = 1; i <= n; ++i) {
    const Individual& a = cohort[static_cast<std::size_t>(i - 1)];
    C.IndividualNo(i) = i;
    C.IndividualSex(i) = a.sex;
    double life = 0;
    for (int j = 1; j <= m; ++j) {
      const double d = j <= static_cast<int>(a.durations.size()) ? a.durations[static_cast<std::size_t>(j - 1)] : 0;
      C.StageDuration(i, j) = d;
      life += std::fabs(d);
    }
    if (a.sex == "F") FillEggs(C.Fecundity, i, a, static_cast<int>(C.StageDuration(i, m)));
    C.TotalLongevity(i) = static_cast<int>(life);
    if (C.TotalLongevity(i) > C.MaxLongevity) C.MaxLongevity = C.TotalLongevity(i);
  }
  S.ws.tables.LastAge = C.MaxLongevity - 1;
}

// Four individuals of stages S1, S2 and the adult stage, walked day by day by hand:
//   1 F  2, 3, 4   eggs 0, 5, 3, 0 on adult days 1..4
//   2 M  2, 2, 3
//   3 N  1, -2     (dies after 2 days in S2)
//   4 N  -1        (its only day is age 0)
//   n(0,1)=4; n(1,1)=2, n(1,2)=1; n(2,2)=3; n(3,2)=2; n(4,2)=1, n(4,male)=1; n(5,F)=1,
//   n(5,male)=1; n(6,F)=1, n(6,male)=1; n(7,F)=1; n(8,F)=1. LastAge 8.
//   l(x) = 1, .75, .75, .5, .5, .5, .5, .25, .25.
inline std::vector<Individual> WalkCohort() {
  return {{"F", {2, 3, 4}, {0, 5, 3, 0}}, {"M", {2, 2, 3}}, {"N", {1, -2}}, {"N", {-1}}};
}

// Seven individuals of stages Egg, Larva and the adult stage, for the statistics worked out
// by hand (the same cohort stands in tests/data/stats_hand.txt):
//   no sex  durations  eggs by adult day
//   1  F    2 3 5      0 4 6 0 2
//   2  F    3 3 4      5 0 5 0
//   3  F    2 4 3      0 0 0
//   4  M    3 2 6
//   5  N    2 -2
//   6  N    -1
//   7  F    2 2 2      0 3
inline std::vector<Individual> HandCohort() {
  return {{"F", {2, 3, 5}, {0, 4, 6, 0, 2}}, {"F", {3, 3, 4}, {5, 0, 5, 0}}, {"F", {2, 4, 3}, {0, 0, 0}},
          {"M", {3, 2, 6}},                  {"N", {2, -2}},                  {"N", {-1}},
          {"F", {2, 2, 2}, {0, 3}}};
}
inline void LoadHandCohort(Session& S, const std::vector<Individual>& cohort = HandCohort(),
                           double timeUnit = 1) {
  LoadCohort(S, 3, cohort, timeUnit, {"Egg", "Larva"});
}

// A store whose pool holds these individuals, ready for drawing samples of size n.
inline std::unique_ptr<Session> MakePoolStore(int m, const std::vector<Individual>& pool, int n) {
  auto S = std::make_unique<Session>();
  S->header.StageCount = m;
  S->header.CohortSizeRead = static_cast<int>(pool.size());
  S->pool.OriginalCohortSize = static_cast<int>(pool.size());
  for (std::size_t k = 0; k < pool.size(); ++k) {
    const long i = static_cast<long>(k) + 1;
    const Individual& a = pool[k];
    S->pool.OriginalSex(i) = a.sex;
    for (std::size_t j = 0; j < a.durations.size(); ++j)
      S->pool.OriginalStageDuration(i, static_cast<long>(j) + 1) = a.durations[j];
    if (a.sex == "F") {
      const int d = static_cast<int>(a.durations.back());
      FillEggs(S->pool.OriginalFecundity, i, a, d);
      double total = 0;
      for (int x = 1; x <= d; ++x) total += S->pool.OriginalFecundity(i, x);
      S->pool.OriginalTotalFecundity(i) = total;
    }
  }
  S->boot.BootSampleSize = n;
  S->boot.BootB = 1;
  S->options.MatingMode = "Yes";
  S->boot.EffectiveOnly = "Yes";
  S->boot.SameBootstrap = "No";
  return S;
}

// A life-table data file of these individuals (stages "S1".."S<m-1>").
inline std::string DataFileText(int m, const std::vector<Individual>& cohort) {
  std::string t = "\"Project: Test\"\n\"Tester\"\n\"Control\"\n" + std::to_string(cohort.size()) + "\n2," +
                  std::to_string(m) + "\n";
  std::string f = "F", mm = "M";
  for (int j = 1; j < m; ++j) {
    f += ",S" + std::to_string(j);
    mm += ",S" + std::to_string(j);
  }
  t += f + ",Female\n" + mm + ",Male\n";
  t += m > 1 ? "S1,Female\n" : "Female,Female\n";
  for (std::size_t k = 0; k < cohort.size(); ++k) {
    const Individual& a = cohort[k];
    t += std::to_string(k + 1) + "," + a.sex;
    for (double d : a.durations) t += "," + FullPrecision(d);
    t += "\n";
    if (a.sex == "F") {
      for (double e : a.eggs) t += FullPrecision(e) + ",";
      t += "-1\n";
    }
  }
  return t;
}

}  // namespace korvan::test
