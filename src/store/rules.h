#pragma once
// Small rules that many procedures share.
#include <cmath>

namespace korvan {

// The time-unit rule: a count D of time units in rate units (days). Four time units are
// fractions of a day, not factors; every other value is a plain factor. Only the exact
// double values count (0.33 is a factor). Decided once, it serves a loop over many durations.
struct TimeUnitRule {
  double timeUnit, divisor;  // divisor 0: a plain factor
  explicit TimeUnitRule(double tu)
      : timeUnit(tu), divisor(tu == 0.3 ? 3 : tu == 0.16 ? 6 : tu == 0.2 ? 5 : tu == 0.25 ? 4 : 0) {}
  double ToDays(double D) const { return divisor != 0 ? D / divisor : D * timeUnit; }
};
inline double TimeUnitToDays(double D, const TimeUnitRule& rule) { return rule.ToDays(D); }
inline double TimeUnitToDays(double D, double timeUnit) { return TimeUnitRule(timeUnit).ToDays(D); }

// The variant with a branch of its own for 0.5 (D / 2), used where a procedure says so.
inline double TimeUnitToDaysWithHalf(double D, double timeUnit) {
  if (timeUnit == 0.5) return D / 2;
  return TimeUnitToDays(D, timeUnit);
}

// Accumulates one duration D (time units) into a sum in rate units and a sum of squares of
// D * TimeUnit, as all duration statistics do.
inline void AddDuration(double D, const TimeUnitRule& rule, double& sum, double& sumSquares) {
  sum += rule.ToDays(D);
  const double scaled = D * rule.timeUnit;
  sumSquares += scaled * scaled;
}
inline void AddDuration(double D, double timeUnit, double& sum, double& sumSquares) {
  AddDuration(D, TimeUnitRule(timeUnit), sum, sumSquares);
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
