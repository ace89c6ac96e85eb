#pragma once
// Population parameters r, lambda, R0, T, GRR, reproductive value and stable distributions.
//
// ParameterWork holds what every pass of the engine overwrites (Basic Run, each bootstrap
// replicate, each jackknife pass); PopulationParameters holds what the session keeps: the
// Basic Run's parameters, its m(x) and v(x,j), the jackknife lists and the curtailed and
// tailed rates. The per-replicate lists (BootR, BootLambda, ...) and the bootstrap counters
// are in bootstrap_store.h.
#include <cstdint>
#include <string>

#include "store/bounded.h"
#include "store/limits.h"

namespace korvan {

// Overwritten by every pass of the engine (lives in a Workspace).
struct ParameterWork {
  using AgeDbl = Vec<double, 0, kMaxAge>;
  using AgeStage = Mat<double, kMaxAge, kMaxStage>;
  using StageDbl = Vec<double, 0, kMaxStage>;

  // Number of the individual left out by a jackknife pass; 0 outside the jackknife.
  int JackNo = 0;

  // Age-specific fecundity and the Euler-Lotka terms.
  AgeDbl Mx{"Mx"};
  AgeDbl CumLxMx{"CumLxMx"};
  Vec<std::int32_t, 0, kMaxAge + 1> AgeIndex{"AgeIndex"};  // ages 0..LastAge + 1
  int LastReproductiveAge = 0;
  AgeDbl EulerTerm{"EulerTerm"};  // l(x) exp(-r a) m(x) at the last r tried

  // The bisection: the trial value in hand, its residual, the evaluations made.
  double TrialR = 0;
  double TrialLambda = 0;
  double Residual = 0;
  int IterationCount = 0;

  // Working parameters of the pass.
  double R0 = 0, GRR = 0, r = 0, lambda = 0, T = 0;
  double DoublingTime = 0;
  double StepFiniteRate = 0, StepIntrinsicRate = 0;

  // Leslie arrays: P(x) = l(x+1)/l(x), F(x) = m(x).
  AgeDbl LeslieP{"LeslieP"}, LeslieF{"LeslieF"};

  // Stable age distribution: raw(x) with raw(0) = 1, a(x) as fractions (twice; the second is
  // later turned into percent), and the age-specific reproductive value v(x).
  AgeDbl SadRaw{"SadRaw"};
  AgeDbl Ax{"Ax"}, Ax2{"Ax2"};
  AgeDbl Vx{"Vx"};
  double ExAcc = 0;  // running sum of l(x) of the life-expectancy walk of group-reared data

  // Birth, survival and death rates at the stable distribution: per time unit when the time
  // unit is 1 (first row), per step of a fractional time unit (second row).
  double BirthRate = 0, SurvivalRate = 0, DeathRate = 0;
  double BirthRateStep = 0, SurvivalRateStep = 0, DeathRateStep = 0;

  // Age-stage reproductive value, and the walk from one start cell: s'(y,k) and the sum.
  AgeStage Vxj{"Vxj"};
  AgeStage Survivors{"Survivors"};
  int VStartAge = 0, VStartStage = 0;
  int ReportAge = 0;  // the row in hand of the main table
  double VAcc = 0;

  // Figures of the female reproductive value.
  double FirstVxjAge = 0, FirstVxjAgeSteps = 0, FirstFxjAge = 0;
  double PeakVxj = 0, PeakVxjAge = 0;
  int PeakVxjAgeRounded = 0;

  // Stable age-stage distribution: a(x,j) with a(0,1) = 1, b(x,j) in percent.
  AgeStage Axj{"Axj"}, Bxj{"Bxj"};
  StageDbl SsdPercent{"SsdPercent"}, SsdPercent2{"SsdPercent2"};
  StageDbl SsdFirstStageOne{"SsdFirstStageOne"};
};

// Kept for the session (lives in SessionStore).
struct PopulationParameters {
  using AgeDbl = Vec<double, 0, kMaxAge>;
  using IndDbl = Vec<double, 0, kMaxIndividual>;

  // The Basic Run's parameters.
  double R_Basic = 0, Lambda_Basic = 0, R0_Basic = 0, T_Basic = 0, GRR_Basic = 0;
  double DoublingTime = 0, StepFiniteRate = 0, StepIntrinsicRate = 0;
  // The second row of the birth and death rates as the Basic Run left it.
  double BirthRateStep = 0, SurvivalRateStep = 0, DeathRateStep = 0;
  // Finite and intrinsic rate of the female population (a data file whose user is "daughter").
  double FemaleFiniteRate = 0, FemaleIntrinsicRate = 0;

  AgeDbl BasicRunMx{"BasicRunMx"};
  // Of a contribution analysis: the cohort's Euler-Lotka sum at the pooled cohort's r.
  double ContributionSumBasic = 0;
  Mat<double, kMaxAge, kMaxStage> VxjBasic{"VxjBasic"};

  // Peak of m(x) met while the main table is printed; not cleared between runs.
  double PeakMx = 0, PeakMxAge = 0;

  // Jackknife results by the number of the individual left out.
  IndDbl JackR{"JackR"}, JackR0{"JackR0"}, JackT{"JackT"}, JackLambda{"JackLambda"},
      JackGRR{"JackGRR"}, JackPseudoR{"JackPseudoR"};
  IndDbl JackPseudoLambda{"JackPseudoLambda"}, JackPseudoR0{"JackPseudoR0"}, JackPseudoT{"JackPseudoT"},
      JackPseudoGRR{"JackPseudoGRR"};
  int JackCohortSize = 0;       // N of the cohort whose individuals were left out in turn
  std::string JackknifeDone;    // "Yes" once the jackknife has run in the session


  // Curtailed and tailed rates.
  std::string CurtailedDone;  // "Yes" once curtailed results exist
  AgeDbl CurtailedRate{"CurtailedRate"};
  AgeDbl TailedRate{"TailedRate"};
  AgeDbl TailedR0{"TailedR0"};
  AgeDbl CurtailedTerm{"CurtailedTerm"};
  int CutAge = 0;
  double CurtailedTrialR = 0, CurtailedResidual = 0;
  int CurtailedIterations = 0;
};

}  // namespace korvan
