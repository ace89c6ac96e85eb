#pragma once
// The contribution of one type of offspring (wingless or winged, bisexual or parthenogenetic)
// to the population parameters of the cohort with its fecundity pooled. The life table in hand
// holds one type's fecundity; r, lambda and R0 are those of the pooled cohort. The share of r
// is the type's part of the pooled Euler-Lotka sum, that of lambda the same sum in lambda,
// that of R0 its R0 over the pooled one: types that split a cohort's eggs add up to 1.
#include <string>

#include "run/run_context.h"

namespace korvan {

class OffspringContribution : public Procedures {
 public:
  using Procedures::Procedures;

  // "1. Read population parameters of all offspring": r, lambda, R0 and T of the pooled cohort
  // from its "_ZZ-population parameters.txt". False (with a message) on a short or garbled file.
  bool ReadPooledParameters(const std::string& path);
  // "2. Calculate contribution of these offspring". Without a file read, PooledR and PooledR0
  // are those entered.
  void Command1();

  // v(x) and v(x,j) under the pooled r, and the stable age distribution at it.
  void ReproductiveRateContribution();
  // Figure files and the table.
  void Life05aGosub2610Contribution();
  void Life05aGosub3800Contribution();
  void PrintContribution();
};

}  // namespace korvan
