#pragma once
// The root search of the system's three rates (r by the Euler-Lotka equation, lambda of the
// Leslie matrix, the r of a curtailed or tailed table), written once.
#include <cmath>

namespace korvan {

struct Bisection {
  bool found = false;  // false: the 500th halving came without a residual within precision
  double root = 0;     // the last midpoint tried
};

inline constexpr int kMaxBisections = 500;

// Halves [low, high] until |residual(mid)| < precision: evaluates the residual at low and at
// high (the second only for what residual leaves behind: the bracket keeps the side whose
// residual has the sign of low's), then at each midpoint, counted in iterations. The count is
// checked before the precision, so the 500th midpoint ends the search unfound.
template <class Residual>
Bisection Bisect(double low, double high, double precision, int& iterations, Residual&& residual) {
  const double atLow = residual(low);
  residual(high);
  iterations = 0;
  for (;;) {
    const double mid = (low + high) / 2;
    const double r = residual(mid);
    ++iterations;
    if (iterations >= kMaxBisections) return {false, mid};
    if (std::fabs(r) < precision) return {true, mid};
    if (r * atLow > 0)
      low = mid;
    else
      high = mid;
  }
}

}  // namespace korvan
