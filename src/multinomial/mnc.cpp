#include "multinomial/mnc.h"

#include <cmath>

namespace korvan {

double FactorialOf(int n) {
  double f = 1;
  for (int k = 2; k <= n; ++k) f *= k;
  return f;
}

double PowerNN(int n) { return n <= 0 ? 1 : std::pow(static_cast<double>(n), n); }

double CompositionCount(int n) {
  // C(2n - 1, n) = prod_{k=1..n} (n - 1 + k) / k; every partial product is itself a binomial
  // coefficient, so the running product stays whole.
  double c = 1;
  for (int k = 1; k <= n; ++k) c = c * (n - 1 + k) / k;
  return c;
}

double MultinomialCoefficient(double nFactorial, const int* counts, int k) {
  double mnc = nFactorial;
  for (int i = 0; i < k; ++i)
    if (counts[i] > 1) mnc /= FactorialOf(counts[i]);
  return mnc;
}

double MultinomialProbability(double mnc, double nPowerN, int n, const int* counts, int k) {
  if (std::isfinite(mnc) && std::isfinite(nPowerN) && nPowerN > 0) return mnc / nPowerN;
  double log = std::lgamma(n + 1.0) - n * std::log(static_cast<double>(n));
  for (int i = 0; i < k; ++i)
    if (counts[i] > 1) log -= std::lgamma(counts[i] + 1.0);
  return std::exp(log);
}

bool NextCountPattern(int n, int* parts, int& count) {
  if (count == 0) {
    if (n < 1) return false;
    parts[0] = n;
    count = 1;
    return true;
  }
  // The next partition in reverse lexicographic order: take one from the last part above 1
  // and spread what stands behind it in parts no larger than it.
  int ones = 0;
  while (count > 0 && parts[count - 1] == 1) {
    ++ones;
    --count;
  }
  if (count == 0) return false;
  const int k = --parts[count - 1];
  int rest = ones + 1;
  while (rest > 0) {
    const int part = rest < k ? rest : k;
    parts[count++] = part;
    rest -= part;
  }
  return true;
}

}  // namespace korvan
