#pragma once
// Consumption of a predator cohort and the predation rates built on it.
//
// Every individual's daily consumption (prey or food eaten) is kept by age: Consumption(i, x)
// is what individual i ate on the day it was of age x, for x = 0..TotalLongevity(i) - 1. The
// pool keeps the records as read; the cohort in hand (the Basic Run's or a bootstrap sample's)
// carries the consumption of its own individuals, as it carries their fecundity.
#include <string>

#include "store/bounded.h"
#include "store/limits.h"

namespace korvan {

using ConsumptionByAge = Mat<double, kMaxIndividual, kMaxAge>;

// Overwritten by every pass of the engine that computes predation (lives in a Workspace).
struct PredationWork {
  // Ct(x,j): total consumed by the individuals of age x and stage j; c(x,j) = Ct(x,j) / n(x,j).
  Mat<double, kMaxAge, kMaxStage> Ctxj{"Ctxj"}, Cxj{"Cxj"};
  double C0 = 0;     // net predation rate: sum of s(x,j) c(x,j)
  double Qp = 0;     // transformation rate: C0 / R0
  double Psi = 0;    // stable predation rate: sum of the stable age-stage shares times c(x,j)
  double Omega = 0;  // finite predation rate: the finite rate times Psi
};

// Kept for the session (lives in SessionStore).
struct PredationRecord {
  std::string ConsumptionFilePath;
  // The Basic Run's rates.
  double C0_Basic = 0, Qp_Basic = 0, Psi_Basic = 0, Omega_Basic = 0;
};

}  // namespace korvan
