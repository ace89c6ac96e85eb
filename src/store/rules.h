#pragma once
// Small rules that many procedures share.
#include <cmath>

namespace korvan {

// The time-unit rule: a count D of time units in rate units (days). Four time units are
// fractions of a day, not factors; every other value is a plain factor. Only the exact
// double values count (0.33 is a factor).
inline double TimeUnitToDays(double D, double timeUnit) {
  if (timeUnit == 0.3) return D / 3;
  if (timeUnit == 0.16) return D / 6;
  if (timeUnit == 0.2) return D / 5;
  if (timeUnit == 0.25) return D / 4;
  return D * timeUnit;
}

// The variant with a branch of its own for 0.5 (D / 2), used where a procedure says so.
inline double TimeUnitToDaysWithHalf(double D, double timeUnit) {
  if (timeUnit == 0.5) return D / 2;
  return TimeUnitToDays(D, timeUnit);
}

// Accumulates one duration D (time units) into a sum in rate units and a sum of squares of
// D * TimeUnit, as all duration statistics do.
inline void AddDuration(double D, double timeUnit, double& sum, double& sumSquares) {
  sum += TimeUnitToDays(D, timeUnit);
  const double scaled = D * timeUnit;
  sumSquares += scaled * scaled;
}

// The statistics rule: mean S/n, variance (Q - S*S/n)/(n-1) with a negative result set to 0,
// SD its square root, SE = SD/sqrt(n), from the sum S and the sum of squares Q of n values.
struct StatResult {
  double mean = 0, variance = 0, sd = 0, se = 0;
};
inline StatResult StatisticsRule(double S, double Q, double n) {
  StatResult r;
  r.mean = S / n;
  r.variance = (Q - S * S / n) / (n - 1);
  if (r.variance < 0) r.variance = 0;
  r.sd = std::sqrt(r.variance);
  r.se = r.sd / std::sqrt(n);
  return r;
}

}  // namespace korvan
