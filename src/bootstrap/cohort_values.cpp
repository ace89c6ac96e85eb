#include "bootstrap/cohort_values.h"

namespace korvan {

CohortValues ReadCohortValues(const SessionStore& S) {
  CohortValues v;
  const Cohort& C = S.ws.cohort;
  v.lastAge = S.ws.tables.LastAge;
  // Female adults, their eggs and the longevity of all, from the cohort as read.
  double females = 0, eggs = 0, longevity = 0;
  const int m = S.header.StageCount;
  const int N = S.header.CohortSizeRead > 0 ? S.header.CohortSizeRead : C.CohortSize;
  for (int i = 1; i <= N; ++i) {
    longevity += C.TotalLongevity(i);
    if (C.IndividualSex(i) != "F") continue;
    females += 1;
    const double d = C.StageDuration(i, m);
    for (int day = 1; day <= d; ++day) {
      const double e = C.Fecundity(i, day);
      if (e < 0) break;
      eggs += e;
    }
  }
  v.femaleAdults = females;
  v.meanFecundity = females > 0 ? eggs / females : 0;
  v.femaleProportion = N > 0 ? females / N : 0;
  v.meanLongevity = N > 0 ? longevity / N : 0;
  return v;
}

CohortFemaleValues ReadCohortFemaleValues(const SessionStore& S) {
  CohortFemaleValues v;
  const Cohort& C = S.ws.cohort;
  const int m = S.header.StageCount;
  const int N = S.header.CohortSizeRead > 0 ? S.header.CohortSizeRead : C.CohortSize;
  double eggsOfReproductive = 0;
  for (int i = 1; i <= N; ++i) {
    const std::string& sex = C.IndividualSex(i);
    if (sex == "M") v.males += 1;
    if (sex == "N") v.nType += 1;
    if (sex != "F") continue;
    v.females += 1;
    double eggs = 0;
    const double d = C.StageDuration(i, m);
    for (int day = 1; day <= d; ++day) {
      const double e = C.Fecundity(i, day);
      if (e < 0) break;
      eggs += e;
    }
    if (eggs > 0) {
      v.reproductive += 1;
      eggsOfReproductive += eggs;
    }
  }
  v.fecundityOfReproductive = v.reproductive > 0 ? eggsOfReproductive / v.reproductive : 0;
  return v;
}

double CohortStageMean(const SessionStore& S, int j) {
  (void)S;
  (void)j;
  return 0;
}
double CohortPreadultMean(const SessionStore& S) {
  (void)S;
  return 0;
}
double CohortStageMortality(const SessionStore& S, int j) {
  (void)S;
  (void)j;
  return 0;
}
double CohortPreadultMortality(const SessionStore& S) {
  (void)S;
  return 0;
}
double CohortSsd(const SessionStore& S, int j) {
  (void)S;
  (void)j;
  return 0;
}

double CohortMx(const SessionStore& S, int x) {
  (void)S;
  (void)x;
  return 0;
}

}  // namespace korvan
