#include "analyses/curtailed_tailed.h"

#include <cmath>
#include <string>

#include "engine/bisection.h"
#include "engine/population_parameters.h"
#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {

namespace {

constexpr const char* kSpecialCaseText =
    "Special case encountered! Please re-run KORVAN and when you see \"Do you want to see more "
    "options?\", you have to choose Yes.  Then you choose \"No\" at the next step";


}  // namespace

double ConvertCurtailedExponent(double product, double timeUnit) {
  if (timeUnit == 0.5) return product / 2;
  if (timeUnit == 0.3) return product / 3;
  if (timeUnit == 0.25) return product / 4;
  if (timeUnit == 0.16) return product / 6;
  return product * timeUnit;
}

// ---------------------------------------------------------------------------------------
// Residuals of the cut tables

void CurtailedTailedRates::CurtailedRGosub120() {
  auto& c = S.params;
  const auto& t = W.tables;
  const double tu = S.settings.TimeUnit;
  double sum = 0;
  for (int x = 0; x <= c.CutAge; ++x) {
    c.CurtailedTerm(x) = t.Lx(x) * std::exp(ConvertCurtailedExponent(-c.CurtailedTrialR * (x + 1), tu)) * W.params.Mx(x);
    sum += c.CurtailedTerm(x);
  }
  c.CurtailedResidual = sum - 1.0;
}

void CurtailedTailedRates::TailedRandR0Gosub120() {
  auto& c = S.params;
  const auto& t = W.tables;
  const double tu = S.settings.TimeUnit;
  for (int x = 0; x < c.CutAge; ++x) c.CurtailedTerm(x) = 0;
  double sum = 0;
  for (int x = c.CutAge; x <= t.LastAge; ++x) {
    c.CurtailedTerm(x) = t.Lx(x) * std::exp(ConvertCurtailedExponent(-c.CurtailedTrialR * (x + 1), tu)) * W.params.Mx(x);
    sum += c.CurtailedTerm(x);
  }
  c.CurtailedResidual = sum - 1.0;
}

bool CurtailedTailedRates::Bisect(bool curtailed, double& found) {
  auto& c = S.params;
  auto residual = [&](double r) {
    c.CurtailedTrialR = r;
    if (curtailed)
      CurtailedRGosub120();
    else
      TailedRandR0Gosub120();
    return c.CurtailedResidual;
  };
  const Bisection b = korvan::Bisect(-1.2, 1.2, std::pow(10.0, -5), c.CurtailedIterations, residual);
  if (b.found) found = b.root;
  return b.found;
}

// ---------------------------------------------------------------------------------------
// The two loops

bool CurtailedTailedRates::CurtailedAndTailedAfterR() {
  const std::string& effect = S.options.EffectOfFxjFlag;
  if (W.run.IsBasicRunFlag == "n" || effect == "No" || effect == "NO" || effect == "no") return false;
  CurtailedR();
  S.params.CurtailedDone = "Yes";
  TailedRandR0();
  // EffectOfVariableFxj (effect of reduced f(x,j)) isn't part of this system yet.
  return true;
}

void CurtailedTailedRates::CurtailedR() {
  Flow("CurtailedR");
  auto& c = S.params;
  const auto& t = W.tables;
  for (c.CutAge = t.LastAge; c.CutAge >= 0; --c.CutAge) {
    double sum = 0;
    for (int i = 0; i <= c.CutAge; ++i) sum += W.params.Mx(i) * t.Lx(i);
    if (sum == 0) break;
    double found = 0;
    if (!Bisect(true, found)) throw ProgramEnd{kSpecialCaseText, "Special case!"};
    c.CurtailedRate(c.CutAge) = found;
  }
  for (int x = 0; x <= c.CutAge; ++x) c.CurtailedRate(x) = 0;
}

void CurtailedTailedRates::TailedRandR0() {
  Flow("TailedRandR0");
  auto& c = S.params;
  const auto& t = W.tables;
  for (c.CutAge = 0; c.CutAge <= t.LastAge; ++c.CutAge) {
    double sum = 0;
    for (int i = c.CutAge; i <= t.LastAge; ++i) sum += W.params.Mx(i) * t.Lx(i);
    c.TailedR0(c.CutAge) = sum;
    if (sum == 0) {
      c.TailedRate(c.CutAge) = -1;
      break;
    }
    double found = 0;
    if (!Bisect(false, found))
      throw ProgramEnd{"NO. OF ITERATION=" + PrintNumber(c.CurtailedIterations) + "  STOP EXECUTION !", ""};
    c.TailedRate(c.CutAge) = found;
  }
}

// ---------------------------------------------------------------------------------------
// Report table and figure files

void CurtailedTailedRates::PrintCumuR0andIntrinR() {
  Flow("PrintCumuR0andIntrinR");
  auto& out = S.channels.MainOutput;
  if (!out.IsOpen()) return;
  const auto& t = W.tables;
  const auto& p = W.params;
  const double tu = S.settings.TimeUnit;
  const bool fast = S.options.FastRun == "Yes";
  const bool curtailed = S.params.CurtailedDone == "Yes";
  NewMainTablePage(S.channels);
  out.Print("Table", S.channels.MainTableNumber,
            ". Cumulative reproductive rate, cumulative contribution to r, and curtailed r");
  if (fast)
    out.Print("Because you used \"Fast run\", r(dalta) and r(delta)/r (%) were not calculated.");
  out.PrintPart("x", "    l(x)", "    m(x)", "     C[v(x)]", "   C[v(x)]%", "  C[e(-rW)lm]",
                "  r*C[e(-rW)lm]");
  if (!fast) out.PrintPart(" r(delta)", "  r(delta)/r (%)");
  out.NewLine();
  double c = 0;
  for (int x = 0; x <= t.LastAge; ++x) {
    c += p.EulerTerm(x);
    out.PrintPart(Tab{1}, AgeInTable(x, tu), Tab{7}, FixedText(t.Lx(x), 2), Tab{14}, FixedText(p.Mx(x), 2), Tab{24},
                  FixedText(p.CumLxMx(x), 2), Tab{34}, FixedText(p.CumLxMx(x) / p.R0 * 100, 4), Tab{45},
                  FixedText(c, 4), Tab{59}, FixedText(p.r * c, 4));
    if (!fast) {
      if (curtailed)
        out.PrintPart(Tab{75}, FixedText(S.params.CurtailedRate(x), 4), Tab{85},
                      FixedText(S.params.CurtailedRate(x) / p.r * 100, 4));
      else
        out.PrintPart(Tab{75}, "  -", Tab{85}, "  -");
    }
    out.NewLine();
  }
  out.Print("C[v(x)] = Cumulative l(x)*m(x).");
  out.Print("C[v(x)]% = {C[v(x)]}/R0.");
  out.Print("C[e(-rW)lm] = Cumulative exp(-r(x+1))*l(x)*m(x)");
  out.Print("r*C[e(-rW)lm]=r*Cumulative exp(-r(x+1))*l(x)*m(x): the cumulative contribution to r.");
}

void CurtailedTailedRates::WriteGraphDataCumuR0andR() {
  Flow("WriteGraphDataCumuR0andR");
  if (S.options.OutputLevel == "Nooutput") return;
  const auto& t = W.tables;
  const auto& p = W.params;
  const double tu = S.settings.TimeUnit;
  const bool fast = S.options.FastRun == "Yes";
  S.identity.OutputFileName = OutputName(S, "_Fig_CumuR0-and-IntrinR.txt");
  TextFile f(S.identity.OutputFileName);
  f.Write(
      "Age-specific survival rate l(x),  age-specific fecundity m(x), Cumu[l(x)*m(x)], "
      "Cumu[E(-r(x+1))*lx*mx]*r,Cumu[E(-r(x+1))*lx*mx],Curtailed r(x), r(x)/r (%)");
  if (fast) f.Write("Because you used \"Fast run\", curtailed r(x) and r(x)/r (%) were not calculated.");
  f.RawText(
      "age, l(x), m(x), Cumu[l(x)*m(x)],Cumu[E(-r(x+1))*lx*mx]*r,Cumu[E(-r(x+1))*lx*mx],Curtailed "
      "r(x),r(x)/r (%)");
  f.NewLine();
  double c = 0;
  for (int x = 0; x <= t.LastAge; ++x) {
    c += p.EulerTerm(x);
    f.RawText(NumberText(AgeInRateUnits(x, tu)));
    f.RawText(",");
    f.Write(t.Lx(x), p.Mx(x), p.CumLxMx(x), p.r * c, c, S.params.CurtailedRate(x),
            S.params.CurtailedRate(x) / p.r * 100);
  }
}

void CurtailedTailedRates::WriteGraphDataTailedR0andR() {
  Flow("WriteGraphDataTailedR0andR");
  if (S.options.OutputLevel == "Nooutput") return;
  const auto& t = W.tables;
  const double tu = S.settings.TimeUnit;
  {
    S.identity.OutputFileName = OutputName(S, "_Fig_Tailed R0.txt");
    TextFile f(S.identity.OutputFileName);
    f.RawText("age, Tailed R0");
    f.NewLine();
    for (int x = 0; x <= t.LastAge; ++x) {
      f.RawText(NumberText(AgeInRateUnits(x, tu)) + ",");
      f.Write(S.params.TailedR0(x));
    }
  }
  S.identity.OutputFileName = OutputName(S, "_Fig_Tailed r.txt");
  TextFile f(S.identity.OutputFileName);
  f.RawText("age, Tailed r");
  f.NewLine();
  for (int x = 0; x <= t.LastAge; ++x) {
    if (S.params.TailedRate(x) == -1) break;
    f.RawText(NumberText(AgeInRateUnits(x, tu)) + ",");
    f.Write(S.params.TailedRate(x));
  }
}

}  // namespace korvan
