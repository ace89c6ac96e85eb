#include "analyses/contribution.h"

#include <cmath>
#include <string>
#include <vector>

#include "engine/population_parameters.h"
#include "engine/table_text.h"
#include "input/field_reader.h"
#include "text/numbers.h"

namespace korvan {

namespace {

constexpr const char* kTitle = "Contribution";

std::string Line(int length, char c) { return std::string(static_cast<std::size_t>(length), c); }

}  // namespace

bool OffspringContribution::ReadPooledParameters(const std::string& path) {
  Flow("Command3_Click");
  auto& c = S.contribution;
  // Four records of a label and a number: r, lambda, R0, T.
  std::vector<std::string> labels;
  std::vector<double> v;
  const std::string fault = ReadFieldPattern(path, "snsnsnsn", labels, v);
  if (!fault.empty()) {
    P.MsgBox("The file " + path +
                 " is not a file of population parameters (\"_ZZ-population parameters.txt\" of a Basic Run): " +
                 fault + ".\nNothing was read.",
             "1. Read population parameters of all offspring", kOKOnly);
    return false;
  }
  c.PooledR = v[0];
  c.PooledLambda = v[1];
  c.PooledR0 = v[2];
  c.PooledT = v[3];
  c.PooledRead = "Yes";
  P.Status("txtTotalIntrinsicRate", FullPrecision(c.PooledR));
  P.Status("txtTotalFiniteRate", FullPrecision(c.PooledLambda));
  P.Status("txtTotalNetReproductiveRate", FullPrecision(c.PooledR0));
  P.Status("txtTotalMeanGenT", FullPrecision(c.PooledT));
  return true;
}

void OffspringContribution::Command1() {
  Flow("Command1_Click");
  auto& c = S.contribution;
  const auto& t = S.ws.tables;
  const auto& mx = S.ws.params.Mx;
  if (c.PooledRead != "Yes") {
    c.PooledLambda = std::exp(c.PooledR);
    // T is not entered: the mean generation time of the pooled r and R0.
    c.PooledT = c.PooledR != 0 && c.PooledR0 > 0 ? std::log(c.PooledR0) / c.PooledR : 0;
  }
  if (c.PooledR0 == 0) {
    throw ProgramEnd{"Division by zero: the net reproductive rate of all offspring is 0.\n"
                     "Enter the parameters of the whole cohort, or read its \"_ZZ-population parameters.txt\".",
                     kTitle};
  }
  // The two fractional sums run on the age index; the reproductive values use the time unit.
  c.ContributionToR = ContributionToRateSum(t.Lx, mx, t.LastAge, c.PooledR);
  c.SumLxMx = 0;
  c.ContributionToLambda = 0;
  for (int x = 0; x <= t.LastAge; ++x) {
    c.SumLxMx += t.Lx(x) * mx(x);
    c.ContributionToLambda += (1 / std::pow(c.PooledLambda, x + 1)) * t.Lx(x) * mx(x);
  }
  c.ContributionToR0 = c.SumLxMx / c.PooledR0;
  P.Status("txtContributionToR", FullPrecision(c.ContributionToR));
  P.Status("txtContributionToLambda", FullPrecision(c.ContributionToLambda));
  P.Status("txtContributionToRo", FullPrecision(c.ContributionToR0));

  ReproductiveRateContribution();
  Life05aGosub2610Contribution();
  Life05aGosub3800Contribution();
  PrintContribution();
}

void OffspringContribution::ReproductiveRateContribution() {
  Flow("ReproductiveRateContribution");
  auto& c = S.contribution;
  const auto& t = S.ws.tables;
  const double tu = S.settings.TimeUnit;
  // The stable age distribution under the pooled rate, from l(x) and lambda to the time unit.
  const double q = std::exp(ConvertExponent(c.PooledR, tu));
  Vec<double, 0, kMaxAge> raw("ContributionSadRaw");
  raw(0) = 1;
  for (int x = 0; x < t.LastAge; ++x) raw(x + 1) = t.Lx(x) > 0 ? (t.Lx(x + 1) / t.Lx(x)) / q * raw(x) : 0;
  StableAgeAndReproductiveValue(raw, t.Lx, S.ws.params.Mx, t.LastAge, c.PooledR, tu, c.ContributionSad,
                                c.ContributionVx);
  for (int x = 0; x <= t.LastAge; ++x) c.ContributionSad(x) *= 100;
  c.ContributionVxj.Fill(0);
  ParameterEngine(S, P).ReproductiveValueWalk(c.PooledR, c.ContributionVxj, c.ContributionSxj);
}

void OffspringContribution::Life05aGosub2610Contribution() {
  Flow("Life05aGosub2610Contribution");
  const auto& c = S.contribution;
  const int last = S.ws.tables.LastAge;
  const double tu = S.settings.TimeUnit;
  WriteStageFigure(S, "_ZZ_4_Fig_Vxj-contribution.txt", "Age-stage reproductive value", c.ContributionVxj, last);
  TextFile f(OutputName(S, "_ZZ_Fig_Vx-contribution.txt"));
  f.Write("Age-specific reproductive value");
  f.RawText("Age,Reproductive value v(x)");
  f.NewLine();
  for (int x = 0; x <= last + 1; ++x) {
    f.RawText(NumberText(x * tu) + "," + FullPrecision(x <= last ? c.ContributionVx(x) : 0.0));
    f.NewLine();
  }
}

void OffspringContribution::Life05aGosub3800Contribution() {
  Flow("Life05aGosub3800Contribution");
  const auto& t = S.ws.tables;
  const auto& mx = S.ws.params.Mx;
  const int f = S.header.StageCount;
  TextFile out(OutputName(S, "_2_Fig_FxLxMxLxMx.txt"));
  out.RawText("age, l(x), f(i,female), m(x), l(x)*m(x), Cumu[l(x)*m(x)]");
  out.NewLine();
  double cumulative = 0;
  for (int x = 0; x <= t.LastAge; ++x) {
    cumulative += t.Lx(x) * mx(x);
    std::string line = NumberText(x * S.settings.TimeUnit);
    for (double v : {t.Lx(x), t.Fxj(x, f), mx(x), t.Lx(x) * mx(x), cumulative}) line += "," + FullPrecision(v);
    out.RawText(line);
    out.NewLine();
  }
}

void OffspringContribution::PrintContribution() {
  Flow("PrintContribution");
  const auto& c = S.contribution;
  const auto& t = S.ws.tables;
  const auto& mx = S.ws.params.Mx;
  const double tu = S.settings.TimeUnit;
  TextFile out(S.identity.DataFileBase + "-Contribution table.txt");
  out.Print(Tab{70}, "Page", 1);
  PrintDateAndTime(out);
  out.Print(S.identity.ProjectName);
  out.Print(S.identity.TreatmentName);
  out.Print("Table", 1, ". Age-specific life table (for contribution partition).");
  out.Print(Line(90, '='));
  out.Print(" x", "   l(x)", "    m(x)", "  l(x)m(x)", "  Exp[-r(x+1)]l(x)m(x)", "   SAD (%)    E(x)       R(x)");
  out.Print(Line(90, '-'));
  for (int x = 0; x <= t.LastAge; ++x) {
    const double lm = t.Lx(x) * mx(x);
    // Each value under its heading.
    out.Print(Tab{1}, AgeInTable(x, tu), Tab{5}, FixedText(t.Lx(x), 3), Tab{12}, FixedText(mx(x), 2), Tab{20},
              FixedText(lm, 2), Tab{32}, FixedText(std::exp(-c.PooledR * (x + 1)) * lm, 4), Tab{52},
              FixedText(c.ContributionSad(x), 2), Tab{62}, FixedText(S.ws.lifeTable.Ex(x), 2), Tab{73},
              FixedText(c.ContributionVx(x), 2));
  }
  out.Print(Line(90, '-'));
  out.Print(" Sum[Exp(-r*(x+1))*l(x)*m(x)] (i.e., Contribution to r) =", c.ContributionToR);
  out.Print(" Contribution to lambda =", c.ContributionToLambda);
  out.Print(" Sum[l(x)*m(x)] =", c.SumLxMx);
  out.Print(" Contribution to R0 =", c.ContributionToR0);
  out.Print(" Note well! Because only limited digits are reported in this table, there are rounding-off errors.");
  out.Print(" The intrinsic rate of increase (r) based on pooled fecundity =", c.PooledR, "/time unit.");
  if (tu == 0.5) {
    out.Print(" Attention:  You collected your data every 0.5 time unit.");
    out.Print("             But this intrinsic rate is for one time unit.");
    out.Print(" **********  The intrinsic rate of increase (r) per 0.5 time unit is", c.PooledR * 0.5);
  }
  out.Print(" The finite rate of increase (lambda) based on pooled fecundity =", c.PooledLambda, "/time unit.");
  if (tu == 0.5) out.Print(" *** The finite rate of increase (lambda) per 0.5 time unit is", std::exp(c.PooledR * 0.5));
  out.Print(" The net reproductive rate (R0) =", c.PooledR0, "offspring/individual.");
  out.Print(" The mean generation time (T) based on pooled fecundity =", c.PooledT, "time unit.");
  if (c.PooledR > 0) {
    out.Print(" The doubling time (DT) =", std::log(2.0) / c.PooledR);
  } else if (c.PooledR < 0) {
    out.Print(" The doubling time (DT) =", std::log(2.0) / c.PooledR);
    out.Print(" If r<0, the doubling time will be negative.  I suggest you don't give the doubling time");
    out.Print(" in your manuscript, because the population will never \"double\" its size.");
  } else {
    out.Print(" If r=0, the population will not increase and there is no doubling time.");
  }
  out.Print(" SAD (%) - Stable age distribution in percent at the pooled r.");
  out.Print(" E(x) - Age-specific life expectancy.  R(x) - Age-specific reproductive value at the pooled r.");
}

}  // namespace korvan
