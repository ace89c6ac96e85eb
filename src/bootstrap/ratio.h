#pragma once
// The ratio of two bootstrap results, sample by sample: a partial count over its total (hatch
// rate, the share of R0 of one reproductive type, ...) from two column files of one run.
#include <string>

#include "run/run_context.h"

namespace korvan {

class BootstrapRatio : public Procedures {
 public:
  using Procedures::Procedures;

  std::string NumeratorPath, DenominatorPath;
  std::string Transformation = "No";  // "No", "Arcsine" or "Logit"

  // Reads the two column files and writes "<first> to <second>.txt" beside the first: the
  // column form of a bootstrap result, its value of the cohort the ratio of the cohort's
  // values, then the ratio of every sample, transformed as asked. False (the user told under
  // "Task cannot continue!") when the two files differ in B.
  bool CalculateRatio();

  // Of the ratios written: mean, variance (Q - S * S / B) / (B - 1), SE (its root), the file.
  double Mean = 0, Variance = 0, SE = 0;
  std::string OutputPath;
};

}  // namespace korvan
