#include "bootstrap/cohort_values.h"

namespace korvan {

CohortValues ReadCohortValues(const SessionStore& S) {
  CohortValues v;
  const int N = S.header.CohortSizeRead > 0 ? S.header.CohortSizeRead : S.ws.cohort.CohortSize;
  v.lastAge = S.ws.tables.LastAge;
  const PopulationParameters& p = S.params;
  v.r = p.R_Basic;
  v.lambda = p.Lambda_Basic;
  v.R0 = p.R0_Basic;
  v.T = p.T_Basic;
  v.GRR = p.GRR_Basic;
  v.femaleAdults = S.lifeTable.OriginalFemaleCount;
  v.meanFecundity = S.lifeTable.OriginalMeanFecundity;
  v.femaleProportion = N > 0 ? v.femaleAdults / N : 0;
  v.meanLongevity = S.ws.stageStats.LongevityAll.mean;
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
  v.apop = S.stageStats.ApopBasic;
  v.tpop = S.stageStats.TpopBasic;
  v.sa = S.lifeTable.PreadultSurvivalOriginal;
  v.oviDays = S.ws.stageStats.OviDaysStat.mean;
  return v;
}

double CohortStageMean(const SessionStore& S, int j) { return S.lifeTable.OriginalStageMean(j); }
double CohortPreadultMean(const SessionStore& S) { return S.lifeTable.PreadultMeanTime; }
double CohortStageMortality(const SessionStore& S, int j) { return S.lifeTable.OriginalStageDeathProb(j); }
double CohortPreadultMortality(const SessionStore& S) { return S.lifeTable.OriginalPreadultDeathProb; }
double CohortSsd(const SessionStore& S, int j) { return S.ws.params.SsdPercent(j); }

double CohortMx(const SessionStore& S, int x) { return S.params.BasicRunMx(x); }

}  // namespace korvan
