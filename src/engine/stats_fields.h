#pragma once
// The statistics rule applied to fields that keep their value where nothing is computed:
// no values leave mean, variance and SD as they stand; one value gives the mean only.
#include <cmath>

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

}  // namespace korvan
