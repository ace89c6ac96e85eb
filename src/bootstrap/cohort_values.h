#pragma once
// The cohort's own values (Basic Run) beside which the bootstrap results are reported.
#include "store/session_store.h"

namespace korvan {

struct CohortValues {
  double r = 0, lambda = 0, R0 = 0, T = 0, GRR = 0;
  double meanFecundity = 0;    // F: mean eggs per female adult
  double femaleAdults = 0;     // number of female adults
  double femaleProportion = 0; // Nf/N
  double meanLongevity = 0;    // mean total longevity
  int lastAge = 0;
};

CohortValues ReadCohortValues(const SessionStore& S);

// Females, males and the statistics of reproduction of the cohort.
struct CohortFemaleValues {
  double females = 0, reproductive = 0, males = 0, nType = 0;
  double apop = 0, tpop = 0, sa = 0, oviDays = 0;
  double fecundityOfReproductive = 0;  // mean eggs of a reproductive female
};
CohortFemaleValues ReadCohortFemaleValues(const SessionStore& S);

// Stage by stage: mean duration, share of the deaths, stable stage distribution (percent).
double CohortStageMean(const SessionStore& S, int j);
double CohortPreadultMean(const SessionStore& S);
double CohortStageMortality(const SessionStore& S, int j);
double CohortPreadultMortality(const SessionStore& S);
double CohortSsd(const SessionStore& S, int j);
// m(x) of the cohort (Basic Run).
double CohortMx(const SessionStore& S, int x);

}  // namespace korvan
