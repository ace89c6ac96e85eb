#include "engine/population_parameters.h"

#include "engine/bisection.h"

#include <cmath>

#include "engine/life_table_engine.h"
#include "engine/stage_statistics.h"
#include "store/faults.h"
#include "store/rules.h"
#include "text/numbers.h"

namespace korvan {

// ---------------------------------------------------------------------------------------
// Time rules

double ConvertExponent(double product, double timeUnit) { return TimeUnitToDays(product, timeUnit); }

double ConvertExponentFull(double product, double timeUnit) {
  return TimeUnitToDaysWithHalf(product, timeUnit);
}

double AgeInTable(int x, double timeUnit) {
  const double tu = timeUnit;
  if (tu == 0.5 || tu == 0.3 || tu == 0.25 || tu == 0.2 || tu == 0.16)
    return RoundDisplay(ConvertExponentFull(x, tu), 2);
  return x * tu;
}

double StepFiniteRateFor(double lambda, double timeUnit) {
  if (timeUnit == 0.5) return std::pow(lambda, 1.0 / 2);
  if (timeUnit == 0.3) return std::pow(lambda, 1.0 / 3);
  if (timeUnit == 0.25) return std::pow(lambda, 1.0 / 4);
  if (timeUnit == 0.2) return std::pow(lambda, 1.0 / 5);
  if (timeUnit == 0.16) return std::pow(lambda, 1.0 / 6);
  return std::pow(lambda, timeUnit);
}

// ---------------------------------------------------------------------------------------
// Small helpers of the pass

long ParameterEngine::BootIndex() const { return static_cast<long>(W.run.Boot); }


// The kind of resampling: the workspace's own when its driver set it, else the run's.
const std::string& ParameterEngine::ResampleKind() const {
  return W.run.ResampleKind.empty() ? S.boot.ResampleKind : W.run.ResampleKind;
}

void ParameterEngine::ShowBox(const char* box, double value, int decimals) const {
  P.Status(box, FullPrecision(RoundDisplay(value, decimals)));
}

void ParameterEngine::ShowValueBox(const char* box, const std::string& text) const { P.Status(box, text); }

void ParameterEngine::ColourBox(const char* box, const char* colour) const {
  P.Status(std::string(box) + ".BackColor", colour);
}

void ParameterEngine::HaltIterations(const char* tail) const {
  throw ProgramEnd{"NO. OF ITERATION=" + PrintNumber(W.params.IterationCount) + tail, ""};
}

void ParameterEngine::RawDataWritersAtExit() {
  StageStatsEngine raw(SameView{*this});
  raw.WriteStageRawDataInColumnForStatistics();
  raw.WriteStageRawDataInColumns();
}

void ParameterEngine::AgeStageLifeExpectancyStep() { LifeTableEngine(SameView{*this}).AgeStageLifeExpectancy(); }

// ---------------------------------------------------------------------------------------
// Tops

void ParameterEngine::Life05() {
  FlowEngine("Life05");
  Life05Gosub1370();
  ContributionSum();
  if (S.options.AnalysisMethod == "Calculus") {
    if (W.run.Boot > 0)
      Life05Gosub90Boot();
    else
      Life05Gosub90();
  } else if (S.options.AnalysisMethod == "Matrix") {
    Life05Gosub90ForMatrix();
  }
  // The curtailed and tailed rates of a Basic Run follow as a step of its driver.
}

// A contribution analysis: this life table holds one kind of offspring of a population whose
// pooled table gave r. Its part of the pooled Euler-Lotka equation is the sum of
// exp(-r(x+1)) l(x)m(x) at that r (the whole cohort's for the Basic Run, the sample's own for a
// replicate); times r it is the table's contribution to r. No time unit enters the sum.
void ParameterEngine::ContributionSum() {
  const ReadDataRecord& d = S.readData;
  if (d.ContributionRLoaded != "Yes") return;
  const long b = static_cast<long>(W.run.Boot);
  if (b > d.ContributionBootCount) return;
  const double r = b == 0 ? d.ContributionPooledR : d.ContributionBootR(b);
  const double sum = ContributionToRateSum(W.tables.Lx, W.params.Mx, W.tables.LastAge, r);
  if (b > 0)
    W.boot.sample.ContributionSum = sum;
  else if (BasicPass())
    Keep().params.ContributionSumBasic = sum;
}

void ParameterEngine::Life05ForMatrix() {
  FlowEngine("Life05ForMatrix");
  Life05Gosub1370();
  if (S.options.AnalysisMethod == "Calculus")
    Life05Gosub90();
  else if (S.options.AnalysisMethod == "Matrix")
    Life05Gosub90ForMatrix();
}

// ---------------------------------------------------------------------------------------
// m(x)

void ParameterEngine::Life05Gosub1370() {
  FlowEngine("Life05Gosub1370");
  auto& t = W.tables;
  auto& p = W.params;
  const int last = t.LastAge;
  const int m = S.header.StageCount;
  for (int x = 0; x <= last; ++x) {
    p.AgeIndex(x) = x;
    double sum = 0;
    for (int j = 1; j <= m + 1; ++j) sum += t.Fxj(x, j) * t.Sxj(x, j);
    p.Mx(x) = sum / t.Lx(x);
    if (BasicPass()) Keep().params.BasicRunMx(x) = p.Mx(x);
    if (x == 0)
      p.CumLxMx(0) = t.Lx(0) * p.Mx(0);
    else
      p.CumLxMx(x) = t.Lx(x) * p.Mx(x) + p.CumLxMx(x - 1);
  }
  for (int x = last; x >= 0; --x) {
    if (p.Mx(x) > 0) {
      p.LastReproductiveAge = CInt16(ConvertExponent(x, S.settings.TimeUnit));
      break;
    }
  }
  if (ResampleKind() == "b") {
    auto& b = W.boot;
    for (int x = 0; x <= last; ++x) {
      const double mx = p.Mx(x);
      b.MxSum(x) += mx;
      b.MxSum2(x) += mx;
      b.MxSumSquares(x) += mx * mx;
      if (W.run.Boot == 1) {
        b.MxMax(x) = mx;
        b.MxMin(x) = mx;
      } else {
        if (mx > b.MxMax(x)) b.MxMax(x) = mx;
        if (mx < b.MxMin(x)) b.MxMin(x) = mx;
      }
    }
  }
  p.AgeIndex(last + 1) = last + 1;
  AgeStageLifeExpectancyStep();
}

// ---------------------------------------------------------------------------------------
// Euler-Lotka residual

double EulerLotkaSum(const Vec<double, 0, kMaxAge>& lx, const Vec<double, 0, kMaxAge>& mx, int lastAge, double r,
                     double timeUnit, bool ageFromZero, Vec<double, 0, kMaxAge>* terms) {
  double sum = 0;
  for (int x = 0; x <= lastAge; ++x) {
    const double a = ageFromZero ? x : x + 1;
    const double l = lx(x), m = mx(x);
    const double exponent = ConvertExponent(-r * a, timeUnit);
    // An age without eggs adds a zero: l(x) e^(...) m(x) is then l(x) m(x), sign of zero
    // included, while the exponential is finite and l(x) a survival rate.
    const double term = m == 0 && std::fabs(exponent) < 700 && std::fabs(l) <= 1 ? l * m : l * std::exp(exponent) * m;
    if (terms) (*terms)(x) = term;
    sum += term;
  }
  return sum;
}

bool SureEulerLotkaResidual(const Vec<double, 0, kMaxAge>& lx, const Vec<double, 0, kMaxAge>& mx, int lastAge,
                            double r, double timeUnit, bool ageFromZero, double precision, double& residual) {
  // exp(-r a) as the a-th power of exp(-r): a few units in the last place for each age,
  // some 1e-12 of the sum of the terms at most; the margin is a hundred times that.
  const double step = ConvertExponent(-r, timeUnit);
  if (!(std::fabs(step) * (lastAge + 1) < 600)) return false;
  const double q = std::exp(step);
  double e = ageFromZero ? 1.0 : q;
  double sum = 0, size = 0;
  for (int x = 0; x <= lastAge; ++x, e *= q) {
    const double term = lx(x) * mx(x) * e;
    sum += term;
    size += std::fabs(term);
  }
  residual = sum - 1.0;
  const double margin = 1e-10 * size;
  return std::isfinite(residual) && std::isfinite(size) && std::fabs(residual) >= precision + margin &&
         std::fabs(residual) > margin;
}

double ParameterEngine::FillEulerTerms(double r) {
  return EulerLotkaSum(W.tables.Lx, W.params.Mx, W.tables.LastAge, r, S.settings.TimeUnit,
                       S.options.AgeConvention == "x", &W.params.EulerTerm);
}

void ParameterEngine::Life05Gosub0120() {
  if (S.options.FlowMode != "No" && !C.FlowWritten0120) {
    C.FlowWritten0120 = true;
    FlowEngine("Life05Gosub0120");
  }
  W.params.Residual = FillEulerTerms(W.params.TrialR) - 1.0;
}

double ParameterEngine::BisectR(double low, double high, double precision) {
  auto& p = W.params;
  // A step whose residual is surely not below the precision only needs the residual's sign:
  // the quick sum gives it. The two ends (their signs steer every step), the step that ends
  // the search and the last step allowed take the full sum, which leaves its terms and
  // residual as they always were.
  int calls = 0;
  const bool ageFromZero = S.options.AgeConvention == "x";
  const Bisection b = Bisect(low, high, precision, p.IterationCount, [&](double r) {
    p.TrialR = r;
    double quick = 0;
    if (++calls > 2 && p.IterationCount + 1 < kMaxBisections &&
        SureEulerLotkaResidual(W.tables.Lx, W.params.Mx, W.tables.LastAge, r, S.settings.TimeUnit, ageFromZero,
                               precision, quick)) {
      p.Residual = quick;
      return quick;
    }
    Life05Gosub0120();
    return p.Residual;
  });
  if (!b.found) HaltIterations("  STOP EXECUTION!");
  return b.root;
}

void ParameterEngine::SumR0AndGRR() {
  auto& p = W.params;
  p.R0 = 0;
  p.GRR = 0;
  for (int x = 0; x <= W.tables.LastAge; ++x) {
    p.R0 += p.Mx(x) * W.tables.Lx(x);
    p.GRR += p.Mx(x);
  }
}

void ParameterEngine::FillLeslieArrays() {
  auto& t = W.tables;
  for (int x = 0; x <= t.LastAge - 1; ++x) {
    W.params.LeslieP(x) = t.Lx(x + 1) / t.Lx(x);
    W.params.LeslieF(x) = W.params.Mx(x);
  }
  // P(LastAge) has no age after it; F(LastAge) is the last term of the polynomial, and the
  // oldest individual may well lay eggs on its last day.
  W.params.LeslieF(t.LastAge) = W.params.Mx(t.LastAge);
}

// ---------------------------------------------------------------------------------------
// The exits

void ParameterEngine::NetReproductiveRateZero() {
  P.MsgBox("The net reproductive rate = 0.", "Net reproductive rate = 0!", kOKOnly);
  ShowBox("txtNetreproductiverate", 0, 4);
  ColourBox("txtNetreproductiverate", "Red");
  RawDataWritersAtExit();
}

void ParameterEngine::NetReproductiveRateOne() {
  auto& p = W.params;
  P.MsgBox("The net reproductive rate = 1.", "Net reproductive rate = 1!", kOKOnly);
  ShowBox("txtNetreproductiverate", 1, 4);
  ColourBox("txtNetreproductiverate", "Red");
  ShowValueBox("txtMeangenerationtime", FullPrecision(W.tables.LastAge));
  ShowValueBox("txtFiniteRate", "1");
  ShowValueBox("txtIntrinsicrate", "0");
  p.lambda = 1;
  p.R0 = 1;
  p.T = W.tables.LastAge;
  p.r = 0;
  Keep().params.Lambda_Basic = 1;
  Keep().params.R0_Basic = 1;
  Keep().params.T_Basic = W.tables.LastAge;
  Keep().params.GRR_Basic = p.GRR;
  RawDataWritersAtExit();
}

// ---------------------------------------------------------------------------------------
// Calculus

void ParameterEngine::Life05Gosub90() {
  FlowEngine("Life05Gosub90");
  CalculusParameters(Twin::Basic);
}

void ParameterEngine::Life05Gosub90Boot() {
  FlowEngine("Life05Gosub90Boot");
  CalculusParameters(Twin::Boot);
}

void ParameterEngine::Life05Gosub90ForNandF() {
  FlowEngine("Life05Gosub90ForNandF");
  CalculusParameters(Twin::NandF);
}

void ParameterEngine::CalculusParameters(Twin twin) {
  auto& p = W.params;
  const auto& t = W.tables;
  const double tu = S.settings.TimeUnit;
  const bool basicPass = BasicPass();
  if (twin == Twin::NandF && S.settings.PrecisionCalculus != 1e-07) Keep().settings.PrecisionCalculus = 1e-07;

  if (twin == Twin::Basic && S.options.GroupRearedFlag != "Yes" && !(W.run.Boot > 0)) FillLeslieArrays();
  SumR0AndGRR();

  if (p.R0 == 0) {
    if (twin == Twin::Basic) {
      NetReproductiveRateZero();
      return;
    }
    if (twin == Twin::NandF) {
      ColourBox("txtNetreproductiverate", "Red");
      LifeExpectancyWalk(false);
      return;
    }
    // A replicate shows the message and goes on into the bisection, whose residual is -1
    // for every r: it halts after 500 evaluations.
    P.MsgBox("The net reproductive rate = 0.", "Net reproductive rate = 0!", kOKOnly);
    ShowBox("txtNetreproductiverate", 0, 4);
    ColourBox("txtNetreproductiverate", "Red");
  } else if (p.R0 == 1.0 && twin == Twin::Basic) {
    NetReproductiveRateOne();
    return;
  }

  if (basicPass && twin != Twin::Boot) {
    ShowBox("txtNetreproductiverate", p.R0, 4);
    if (twin == Twin::NandF && p.R0 > 0) ColourBox("txtNetreproductiverate", "Yellow");
  }

  double low = -1.2, high = 1.2;
  if (twin != Twin::NandF && t.LastAge > 500) {
    low = -0.5;
    high = 0.8;
  }
  const double mid = BisectR(low, high, S.settings.PrecisionCalculus);
  p.r = mid;

  // The value found, filed by the kind of pass.
  if (W.params.JackNo > 0 || W.run.Boot > 0) {
    FileResampledR(twin != Twin::NandF);
  } else {
    Keep().params.R_Basic = mid;
    if (twin != Twin::Boot) ShowBox("txtIntrinsicrate", p.r, 8);
  }

  // Mean generation time and doubling time.
  if (p.r == 0) {
    p.T = t.LastAge;
  } else {
    p.T = std::log(p.R0) / p.r;
    if (p.r > 0) p.DoublingTime = std::log(2.0) / p.r;
  }
  p.lambda = std::exp(p.r);
  if (twin == Twin::Basic) {
    // Every pass shows T and lambda: a jackknife pass T at 4 decimals when r is above 0, else
    // unrounded; the Basic Run's pass T at 2 decimals.
    if (basicPass)
      ShowBox("txtMeangenerationtime", p.T, 2);
    else if (p.r > 0)
      ShowBox("txtMeangenerationtime", p.T, 4);
    else
      ShowValueBox("txtMeangenerationtime", FullPrecision(p.T));
    ShowBox("txtFiniteRate", p.lambda, 8);
  } else if (twin == Twin::NandF) {
    if (basicPass) ShowBox("txtMeangenerationtime", p.T, 2);
    ShowBox("txtFiniteRate", p.lambda, 8);
  }

  if (twin == Twin::Basic || tu != 1) {
    p.StepFiniteRate = StepFiniteRateFor(p.lambda, tu);
    p.StepIntrinsicRate = tu * p.r;
  }

  // The rest of the parameters, filed by the kind of pass.
  if (W.params.JackNo > 0 || W.run.Boot > 0) {
    FileResampledParameters(twin != Twin::NandF);
    if (twin == Twin::Boot && ResampleKind() == "b" && W.boot.sample.lambda != std::exp(p.r))
      throw ProgramEnd{"", ""};
  } else {
    KeepBasicParameters();
  }

  // Stable age distribution and age-specific reproductive value.
  const double q = tu == 1 ? p.lambda : p.StepFiniteRate;
  p.SadRaw(0) = 1;
  for (int x = 0; x <= t.LastAge - 1; ++x) p.SadRaw(x + 1) = (t.Lx(x + 1) / t.Lx(x)) / q * p.SadRaw(x);
  NormaliseSadAndVx(p.r);

  if (twin == Twin::NandF) {
    LifeExpectancyWalk(true);
    if (W.run.IsResamplingFlag == "y") return;
    // Both rows of the birth and death rates for the fractional time units.
    const double a0 = p.Ax(0);
    p.BirthRate = p.lambda * a0;
    p.SurvivalRate = (1 - a0) * p.lambda;
    p.DeathRate = 1 - p.SurvivalRate;
    if (tu == 0.5 || tu == 0.3 || tu == 0.25 || tu == 0.2 || tu == 0.16) {
      p.BirthRateStep = p.StepFiniteRate * a0;
      p.SurvivalRateStep = (1 - a0) * p.StepFiniteRate;
      p.DeathRateStep = 1 - p.SurvivalRateStep;
    }
    AgeStageReproductiveValue(BasicPass());
    if (W.run.Boot == 0)
      FemaleFiguresBasic();
    else
      FemaleFiguresBoot();
    return;
  }
  if (W.run.Boot == 0)
    Life05Gosub90Then1080();
  else
    Life05Gosub90Then1080Boot();
}

void ParameterEngine::NormaliseSadAndVx(double r) {
  auto& p = W.params;
  const auto& t = W.tables;
  StableAgeAndReproductiveValue(p.SadRaw, t.Lx, p.Mx, t.LastAge, r, S.settings.TimeUnit, p.Ax, p.Vx);
  for (int x = 0; x <= t.LastAge; ++x) p.Ax2(x) = p.Ax(x);
}

void StableAgeAndReproductiveValue(const Vec<double, 0, kMaxAge>& raw, const Vec<double, 0, kMaxAge>& lx,
                                   const Vec<double, 0, kMaxAge>& mx, int lastAge, double r, double timeUnit,
                                   Vec<double, 0, kMaxAge>& ax, Vec<double, 0, kMaxAge>& vx) {
  double sum = 0;
  for (int x = 0; x <= lastAge; ++x) {
    ax(x) = raw(x);
    sum += raw(x);
  }
  double acc = 0;
  for (int x = lastAge; x >= 0; --x) {
    ax(x) = ax(x) / sum;
    const double e = std::exp(ConvertExponent(-r * (x + 1), timeUnit));
    acc = e * lx(x) * mx(x) + acc;
    vx(x) = (1 / (e * lx(x))) * acc;
  }
}

double ContributionToRateSum(const Vec<double, 0, kMaxAge>& lx, const Vec<double, 0, kMaxAge>& mx, int lastAge,
                             double r) {
  double sum = 0;
  for (int x = 0; x <= lastAge; ++x) sum += std::exp(-r * (x + 1)) * lx(x) * mx(x);
  return sum;
}

void ParameterEngine::LifeExpectancyWalk(bool clear) {
  auto& p = W.params;
  const auto& t = W.tables;
  if (clear) p.ExAcc = 0;
  for (int x = t.LastAge; x >= 0; --x) {
    p.ExAcc += t.Lx(x);
    W.lifeTable.Ex(x) = p.ExAcc / t.Lx(x);
  }
}

// ---------------------------------------------------------------------------------------
// Birth and death rates

void ParameterEngine::Life05Gosub90Then1080BSDrate() {
  FlowEngine("Life05Gosub90Then1080BSDrate");
  auto& p = W.params;
  const double tu = S.settings.TimeUnit;
  const double a0 = p.Ax(0);
  if (tu == 1) {
    p.BirthRate = p.lambda * a0;
    p.SurvivalRate = (1 - a0) * p.lambda;
    p.DeathRate = 1 - p.SurvivalRate;
  } else if (tu == 0.5 || tu == 0.3 || tu == 0.25 || tu == 0.2 || tu == 0.16) {
    p.BirthRateStep = p.StepFiniteRate * a0;
    p.SurvivalRateStep = (1 - a0) * p.StepFiniteRate;
    p.DeathRateStep = 1 - p.SurvivalRateStep;
    if (BasicPass()) {
      Keep().params.BirthRateStep = p.BirthRateStep;
      Keep().params.SurvivalRateStep = p.SurvivalRateStep;
      Keep().params.DeathRateStep = p.DeathRateStep;
    }
  }
}

void ParameterEngine::Life05Gosub90Then1080BootBSDrate() {
  FlowEngine("Life05Gosub90Then1080BootBSDrate");
  auto& p = W.params;
  const double tu = S.settings.TimeUnit;
  const double a0 = p.Ax(0);
  if (tu == 1) {
    p.BirthRate = p.lambda * a0;
    p.SurvivalRate = (1 - a0) * p.lambda;
    p.DeathRate = 1 - p.SurvivalRate;
    auto& rec = W.boot.sample;
    rec.BirthRate = p.BirthRate;
    rec.SurvivalRate = p.SurvivalRate;
    rec.DeathRate = p.DeathRate;
    return;
  }
  if (tu == 0.5 || tu == 0.3 || tu == 0.25 || tu == 0.2 || tu == 0.16) {
    p.BirthRateStep = p.StepFiniteRate * a0;
    p.SurvivalRateStep = (1 - a0) * p.StepFiniteRate;
    p.DeathRateStep = 1 - p.SurvivalRateStep;
  }
  // Away from a time unit of 1 every replicate carries the Basic Run's rates.
  auto& rec = W.boot.sample;
  rec.BirthRate = S.params.BirthRateStep;
  rec.SurvivalRate = S.params.SurvivalRateStep;
  rec.DeathRate = S.params.DeathRateStep;
}

// ---------------------------------------------------------------------------------------
// "_ZZ-population parameters.txt"

void ParameterEngine::PrintTotalPopulationParameters() {
  Flow("PrintTotalPopulationParameters");
  if (W.params.R0 == 0 || S.options.OutputLevel == "Nooutput") return;
  Keep().identity.OutputFileName = OutputName(S, "_ZZ-population parameters.txt");
  TextFile f(S.identity.OutputFileName);
  f.Write("Intrinsic rate", S.params.R_Basic);
  f.Write("Finite rate", S.params.Lambda_Basic);
  f.Write("Net reproductive rate", W.params.R0);
  f.Write("Mean generation time", S.params.T_Basic);
}

// r of a resampling pass under its number: a jackknife pass also gives its pseudo-value, a
// bootstrap replicate counts a negative r where the twin asks for it.
void ParameterEngine::FileResampledR(bool countNegative) {
  auto& p = W.params;
  if (ResampleKind() == "j") {
    const double n = W.cohort.CohortSize;
    Keep().params.JackR(p.JackNo) = p.r;
    Keep().params.JackPseudoR(p.JackNo) = (n + 1) * Keep().params.R_Basic - n * p.r;
  } else if (ResampleKind() == "b") {
    W.boot.sample.r = p.r;
    if (countNegative && p.r < 0) ++W.boot.BootNegRCount;
  }
}

// R0, T, lambda and GRR of a resampling pass under its number, with the counts of replicates
// whose R0 lies between 0 and 1 and whose lambda is below 1.
void ParameterEngine::FileResampledParameters(bool countLowRates) {
  const auto& p = W.params;
  if (ResampleKind() == "j") {
    Keep().params.JackR0(p.JackNo) = p.R0;
    Keep().params.JackT(p.JackNo) = p.T;
    Keep().params.JackLambda(p.JackNo) = p.lambda;
    Keep().params.JackGRR(p.JackNo) = p.GRR;
  } else if (ResampleKind() == "b") {
    auto& rec = W.boot.sample;
    rec.R0 = p.R0;
    rec.T = p.T;
    rec.lambda = p.lambda;
    rec.GRR = p.GRR;
    if (countLowRates) {
      if (p.R0 > 0 && p.R0 < 1) ++W.boot.BootR0Below1Count;
      if (p.lambda < 1) ++W.boot.BootLambdaBelow1Count;
    }
  }
}

// The parameters of the Basic Run, kept for the session.
void ParameterEngine::KeepBasicParameters() {
  const auto& p = W.params;
  Keep().params.T_Basic = p.T;
  Keep().params.Lambda_Basic = p.lambda;
  Keep().params.R0_Basic = p.R0;
  Keep().params.GRR_Basic = p.GRR;
  Keep().params.DoublingTime = p.DoublingTime;
  Keep().params.StepFiniteRate = p.StepFiniteRate;
  Keep().params.StepIntrinsicRate = p.StepIntrinsicRate;
  if (S.identity.UserName == "daughter") {
    Keep().params.FemaleFiniteRate = p.lambda;
    Keep().params.FemaleIntrinsicRate = p.r;
  }
}

}  // namespace korvan
