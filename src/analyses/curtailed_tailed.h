#pragma once
// Curtailed and tailed rates: how much of r comes from the early ages and how much from the
// late ones. The curtailed analysis cuts the life table after an age and finds the r of what
// is left; the tailed analysis cuts it before an age. Both run in a Basic Run, after r.
// Also the report table and the figure files of cumulative, curtailed and tailed rates.
#include "run/run_context.h"

namespace korvan {

class CurtailedTailedRates : public Procedures {
 public:
  using Procedures::Procedures;

  // Both analyses right after r in a Basic Run, unless it leaves out the effect of reduced
  // f(x,j); whether they ran.
  bool CurtailedAndTailedAfterR();

  void CurtailedR();
  void CurtailedRGosub120();
  void TailedRandR0();
  void TailedRandR0Gosub120();

  void PrintCumuR0andIntrinR();
  void WriteGraphDataCumuR0andR();
  void WriteGraphDataTailedR0andR();

 private:
  // Bisection on r for the table cut at CutAge; false when it ran 500 times.
  bool Bisect(bool curtailed, double& found);
};

// The time rule of the curtailed and tailed residuals: 0.5, 0.3, 0.25 and 0.16 divide, every
// other time unit (0.2 too) multiplies.
double ConvertCurtailedExponent(double product, double timeUnit);

}  // namespace korvan
