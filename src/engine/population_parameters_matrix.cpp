// The Matrix method: lambda by bisection on the characteristic polynomial of the Leslie matrix.
#include <cmath>

#include "engine/population_parameters.h"

#include "engine/bisection.h"
#include "store/faults.h"

namespace korvan {

void ParameterEngine::Life05Gosub0120ForMatrix() {
  FlowEngine("Life05Gosub0120ForMatrix");
  auto& p = W.params;
  const int n = W.tables.LastAge;
  const double lambda = p.TrialLambda;
  double res = 0;
  if (S.options.AgeConvention == "x") {
    // The running product begins at P(1), F(2) takes no part and P(n-2) is missing from the
    // last term: the polynomial stands so.
    res = std::pow(lambda, n) - std::pow(lambda, n - 1) * p.LeslieF(1);
    double prod = 1;
    for (int i = 2; i <= n - 2; ++i) {
      prod *= p.LeslieP(i - 1);
      res -= std::pow(lambda, n - i) * prod * p.LeslieF(i + 1);
    }
    double last = 1;
    for (int k = 1; k <= n - 3; ++k) last *= p.LeslieP(k);
    res -= last * p.LeslieP(n - 1) * p.LeslieF(n);
  } else {
    res = std::pow(lambda, n + 1) - std::pow(lambda, n) * p.LeslieF(0);
    double prod = 1;
    for (int i = 1; i <= n - 1; ++i) {
      prod *= p.LeslieP(i - 1);
      res -= std::pow(lambda, n - i) * prod * p.LeslieF(i);
    }
    double last = 1;
    for (int k = 0; k <= n - 1; ++k) last *= p.LeslieP(k);
    res -= last * p.LeslieF(n);
  }
  p.Residual = res;
  if (!(W.run.Boot > 0)) {
    p.r = std::log(lambda);
    FillEulerTerms(p.r);
  }
}

double ParameterEngine::BisectLambda(double low, double high, double precision) {
  auto& p = W.params;
  const Bisection b = Bisect(low, high, precision, p.IterationCount, [&](double lambda) {
    p.TrialLambda = lambda;
    Life05Gosub0120ForMatrix();
    return p.Residual;
  });
  if (!b.found) throw ProgramEnd{"", ""};
  return b.root;
}

void ParameterEngine::Life05Gosub90ForMatrix() {
  FlowEngine("Life05Gosub90ForMatrix");
  auto& p = W.params;
  const auto& t = W.tables;
  const double tu = S.settings.TimeUnit;
  const bool basicPass = BasicPass();

  if (S.options.GroupRearedFlag != "Yes") FillLeslieArrays();
  SumR0AndGRR();
  if (p.R0 == 0) {
    NetReproductiveRateZero();
    return;
  }
  if (basicPass) ShowBox("txtNetreproductiverate", p.R0, 4);

  if (S.settings.PrecisionMatrix != 1e-06) Keep().settings.PrecisionMatrix = 1e-06;
  const double found = BisectLambda(0.2, 3.0, S.settings.PrecisionMatrix);
  p.lambda = found;
  p.r = std::log(found);
  if (p.JackNo > 0 || W.run.Boot > 0) {
    FileResampledR(true);
    // The rates on the other time scale stay those of the Basic Run in a resampling pass.
    p.StepFiniteRate = S.params.StepFiniteRate;
    p.StepIntrinsicRate = S.params.StepIntrinsicRate;
  }

  if (basicPass) {
    // The lambda found is per time unit; it is carried to the rate unit.
    int power = 0;  // lambda^power; a negative power is a root
    if (tu == 1) power = 1;
    else if (tu == 0.5) power = 2;
    else if (tu == 0.3) power = 3;
    else if (tu == 0.25) power = 4;
    else if (tu == 0.2) power = 5;
    else if (tu == 0.16) power = 6;
    else if (tu == 2) power = -2;
    else if (tu == 4) power = -4;
    else if (tu == 5) power = -5;
    else throw ProgramEnd{"", ""};
    if (power > 1) {
      p.StepFiniteRate = std::pow(p.lambda, power);
      p.StepIntrinsicRate = power * p.r;
    } else if (power < 0) {
      p.StepFiniteRate = std::pow(p.lambda, 1.0 / -power);
      p.StepIntrinsicRate = p.r / -power;
    }
    if (tu != 1) {
      p.r = p.StepIntrinsicRate;
      p.lambda = p.StepFiniteRate;
    }
    Keep().params.R_Basic = p.r;
  }
  ShowBox("txtIntrinsicrate", p.r, 8);
  ShowBox("txtFiniteRate", p.lambda, 8);

  if (p.r == 0) {
    p.T = t.LastAge;
  } else {
    const double rate = tu == 1 ? p.r : p.StepIntrinsicRate;
    p.T = std::log(p.R0) / rate;
    if (p.r > 0) p.DoublingTime = std::log(2.0) / rate;
  }
  ShowBox("txtMeangenerationtime", p.T, 2);

  // Filed by the kind of resampling alone.
  FileResampledParameters(true);
  if (W.run.Boot > 0 && C.Flow.IsOpen())
    C.Flow.Print("For lambda subroutine: Boot=", W.run.Boot, "finite rate=", p.lambda,
                          "intrinsic rate=", p.r);
  if (basicPass) KeepBasicParameters();

  // Stable age distribution per time unit, divided by the rate in hand (in the rate unit when
  // the time unit isn't 1).
  const double q = tu == 1 ? p.lambda : p.StepFiniteRate;
  p.SadRaw(0) = 1;
  for (int x = 1; x <= t.LastAge; ++x) p.SadRaw(x) = p.SadRaw(x - 1) * p.LeslieP(x - 1) / q;
  NormaliseSadAndVx(std::log(p.lambda));

  if (W.run.Boot == 0)
    Life05Gosub90Then1080();
  else
    Life05Gosub90Then1080Boot();
}

}  // namespace korvan
