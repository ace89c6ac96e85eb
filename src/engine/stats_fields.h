#pragma once
// The statistics rule applied to fields that keep their value where nothing is computed:
// no values leave mean, variance and SD as they stand; one value gives the mean only.
#include <cmath>

#include "store/rules.h"
#include "store/session_store.h"

namespace korvan {

// Returns false when n is 0 (nothing computed). A negative variance is raised to 0 unless
// raiseNegative is false.
inline bool ApplyStatistics(double S, double Q, int n, double& mean, double& variance,
                            double& sd, bool raiseNegative = true) {
  if (n <= 0) return false;
  mean = S / n;
  if (n == 1) return true;
  variance = (Q - S * S / n) / (n - 1);
  if (raiseNegative && variance < 0) variance = 0;
  sd = std::sqrt(variance);
  return true;
}

// The sum of the durations of stages first..last of individual i; false at the first one
// that isn't positive, the sum standing as far as it came.
inline bool PositiveDurationSum(const Cohort& C, int i, int first, int last, double& sum) {
  sum = 0;
  for (int k = first; k <= last; ++k) {
    const double D = C.StageDuration(i, k);
    if (D <= 0) return false;
    sum += D;
  }
  return true;
}

// The stages of the span between the two special stages: for each stage named as one of them
// the number is noted, a later match overwriting an earlier one; the lower number first.
inline void FindSpanStages(const SessionStore& S, int& first, int& last) {
  int a = 0, b = 0;
  for (int j = 1; j <= S.header.StageCount; ++j) {
    const std::string& name = S.header.StageName(1, j);
    if (name == S.header.SpecialGroup(1)) a = j;
    if (name == S.header.SpecialGroup(2)) b = j;
  }
  first = a < b ? a : b;
  last = a < b ? b : a;
}

}  // namespace korvan
