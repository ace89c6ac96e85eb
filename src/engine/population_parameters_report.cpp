// The main age-specific table of the report with its block of parameters, and the check of
// R0 against the mean fecundity.
#include <cmath>
#include <string>

#include "engine/population_parameters.h"
#include "engine/table_text.h"
#include "text/numbers.h"

namespace korvan {

namespace {

std::string Line(int length, char c) { return std::string(static_cast<std::size_t>(length), c); }

bool FractionalTimeUnit(double tu) { return tu == 0.5 || tu == 0.3 || tu == 0.25 || tu == 0.2 || tu == 0.16; }

}  // namespace

double ParameterEngine::ReportTpop() const {
  return S.stageStats.TpopBasic;
}

void ParameterEngine::PrintIntrinsicRateTable() {
  Flow("PrintIntrinsicRateTable");
  if (S.options.GroupRearedFlag == "Yes")
    Life05aGosub0800ForNandFt();
  else
    Life05aGosub0800();
}

void ParameterEngine::Life05aGosub1100() {
  FlowEngine("Life05aGosub1100");
  auto& out = C.MainOutput;
  out.Print(" x", "       l(x)", "   m(x)", "  l(x)m(x)", "  f(-r,lx,mx) ", "   SAD (%)    E(x)       R(x)");
  out.Print(Line(82, '-'));
}

void ParameterEngine::Life05aGosub1000() {
  FlowEngine("Life05aGosub1000");
  auto& out = C.MainOutput;
  const auto& t = W.tables;
  const auto& p = W.params;
  const int x = p.ReportAge;
  const double tu = S.settings.TimeUnit;
  out.Print(Tab{1}, AgeInTable(x, tu), Tab{10}, FixedText(t.Lx(x), 3), Tab{17}, FixedText(p.Mx(x), 2),
            Tab{25}, FixedText(t.Lx(x) * p.Mx(x), 2), Tab{35}, FixedText(p.EulerTerm(x), 4), Tab{48},
            FixedText(p.Ax2(x), 2), Tab{58}, FixedText(W.lifeTable.Ex(x), 2), Tab{69},
            FixedText(p.Vx(x), 2));
  if (p.Mx(x) > S.params.PeakMx) {
    Keep().params.PeakMx = p.Mx(x);
    Keep().params.PeakMxAge = x;
  }
}

void ParameterEngine::Life05aGosub0800() {
  FlowEngine("Life05aGosub0800");
  AgeSpecificLifeTable(false);
}

// The same table for group-reared data: the head names the project, the peak lines are left
// out, the rates at the stable distribution are always those per time unit.
void ParameterEngine::Life05aGosub0800ForNandFt() {
  FlowEngine("Life05aGosub0800ForNandFt");
  AgeSpecificLifeTable(true);
}

void ParameterEngine::AgeSpecificLifeTable(bool groupReared) {
  auto& out = C.MainOutput;
  if (!out.IsOpen()) return;
  auto& p = W.params;
  const auto& t = W.tables;
  const double tu = S.settings.TimeUnit;

  NewMainTablePage(C);
  out.Print("Table", C.MainTableNumber, ". Age-specific life table");
  PrintDateAndTime(out);
  if (groupReared) {
    out.Print("Project: ", S.identity.ProjectName);
    out.Print("Username: ", S.identity.UserName);
    out.Print("Treatment: ", S.identity.TreatmentName);
  }
  out.Print(Line(82, '='));
  Life05aGosub1100();
  for (int x = 0; x <= t.LastAge; ++x) {
    p.ReportAge = x;
    Life05aGosub1000();
  }
  out.Print(Line(82, '-'));

  const bool fractional = FractionalTimeUnit(tu);
  if (p.r != 0) {
    out.Print(" No. of iteration =", p.IterationCount);
    out.Print(" f(-r,lx,mx): Exp[-r(x+1)]*l(x)*m(x)]");
    out.Print(" The intrinsic rate of increase (r) =", p.r, "/time unit.");
  }
  if (tu != 1) {
    out.Print(" Attention:  You collected your data every ", tu, " time unit.");
    out.Print(groupReared ? "             But this intrinsic rate is for one time unit."
                          : "             But the above intrinsic rate is for one time unit.");
    out.Print("             The intrinsic rate of increase (r) per ", tu, " time unit is", p.StepIntrinsicRate);
  }
  if (p.r == 0) p.lambda = 1;
  out.Print(" The finite rate of increase (lambda) =", p.lambda, "/time unit.");
  if (tu != 1) {
    out.Print(" Attention:  You collected your data every ", tu, " time unit.");
    out.Print("             But this finite rate is for one time unit.");
    if (fractional) {
      p.StepFiniteRate = std::exp(p.StepIntrinsicRate);
      Keep().params.StepFiniteRate = p.StepFiniteRate;
    }
    out.Print(" **********  The finite rate of increase (lambda) per ", tu, " time unit is", p.StepFiniteRate);
  }
  out.Print(" The net reproductive rate (R0) =", p.R0, "offspring/individual.");
  if (p.r != 0 && !groupReared) {
    const int peakAge = static_cast<int>(S.params.PeakMxAge);
    out.Print(" The first age of reproductive value of female adult =", p.FirstVxjAge, ".");
    out.Print(" The peak value of age-specific fecundity m(x) =", RoundDisplay(S.params.PeakMx, 3), " at age",
              AgeInRateUnits(peakAge, tu), ". l(x) =", t.Lx(peakAge), ".");
    out.Print(" The peak value of age-stage reproductive value v(x,j) =", RoundDisplay(p.PeakVxj, 2), " at age",
              p.PeakVxjAge, ".");
    const double tpop = RoundDisplay(ReportTpop(), 2);
    out.Print(" The age of peak v(x,j) is ", p.PeakVxjAge, ". It must be between", p.FirstVxjAge, "and TPOP", tpop,
              " or close to ", tpop, ".");
  }
  if (S.options.PredationPresent == "Yes") {
    const PredationWork& c = W.predation;
    out.Print(" The net predation rate (Co) =", c.C0);
    out.Print(" The transformation rate (Conversion rate) Qp =", c.Qp);
    out.Print(" The stable predation rate =", c.Psi);
    out.Print(" The finite predation rate =", c.Omega);
  }
  out.Print(" The gross reproduction rate (GRR) =", p.GRR, "offspring/individual.");
  out.Print(" Attention:  GRR is not a good parameter, because it ignores the survival rate.");
  out.Print("             Please report GRR with caution.  If you report GRR, you should mention");
  out.Print("             that GRR cannot represent the population characteristics and it should");
  out.Print("             not be used to compare the population fitnees.");
  if (p.r < 0) {
    out.Print(" The mean generation time (T) =", t.LastAge, "time unit.");
    out.Print(" If r<0, the doubling time will be negative.  I suggest you don't report the doubling time");
    out.Print(" in your manuscript, because the population will mostly never \"double\" its size.");
  } else if (p.r > 0) {
    out.Print(" The mean generation time (T) =", p.T, "time unit.");
    out.Print(" The doubling time (DT) =", p.DoublingTime);
  } else {
    out.Print(" The mean generation time (T) =", t.LastAge, "time unit.");
    out.Print(" If r=0, you have to carefully interpret the mean generation time.");
    out.Print(" If r=0, the population will not increase and there is no doubling time.");
  }

  // Birth, survival and death rates at the stable distribution; a star line closes at 85.
  auto star = [&](auto... items) { out.Print(items..., Tab{85}, "*"); };
  out.Print(" The relationhip is: lambda = 1+b-d or lambda = s+b.");
  out.Print(" ** Attention! **********************************************************************");
  // Per time unit when the time unit is 1; else per the time unit of the data, with the
  // values of the second row. Group-reared data always show the first row, in the second wording.
  const bool perUnit = tu == 1 && !groupReared;
  const bool stepRow = tu != 1 && !groupReared;
  const double b = stepRow ? p.BirthRateStep : p.BirthRate;
  const double s = stepRow ? p.SurvivalRateStep : p.SurvivalRate;
  const double d = stepRow ? p.DeathRateStep : p.DeathRate;
  if (perUnit) {
    star(" *  Birth rate rate (b) (at SASD) per time unit =", b);
    star(" *  Survival rate (s) (at SASD) per time unit =", s);
    star(" *  Death rate (d) (at SASD) (per time unit) =", d);
    star(" *  Finite rate (lambda) = 1+b-d =", 1 + b - d, "per time unit.");
    if (p.r != 0) star(" *  Finite rate (lambda) = s+b =", s + b, "per time unit.");
  } else {
    const char* tag[3] = {"(b) ", "(s) ", "(d) "};
    if (groupReared) tag[0] = tag[1] = tag[2] = "";
    star(" *  Birth rate rate ", tag[0], "(at SASD) (per ", tu, " time unit) =", b);
    star(" *  Survival rate ", tag[1], "(at SASD) (per ", tu, " time unit) =", s);
    star(" *  Death rate ", tag[2], "(at SASD) (per ", tu, " time unit) =", d);
    star(" *  Finite rate (lambda) = 1+b-d =", 1 + b - d, "per ", tu, "time unit.");
    if (p.r != 0) star(groupReared ? " *  Finite rate (lambda) = S+b = " : " *  Finite rate (lambda) = s+b =", s + b, "per ", tu, "time unit.");
  }
  star(" *  The relationship among birth rate, death rate, survival rate, and finite rate");
  star(" *  is a good practice for \"Critical thinking\".");
  out.Print(" ", Line(84, '*'));

  out.Print(" SAD (%) - Stable Age Distribution in percent. ");
  out.Print(" SASD - Stable Age-Stage Distribution. ");
  out.Print(" V(x)=l(x)*m(x) - Net maternity.");
  out.Print(" R(x) - Age-specific reproductive value.");
  out.Print(" E(x) - Age-specific life expectancy (time units that individuals at age x can still survive).");
  out.Print(" The unit for the net reproductive rate is offspring/individual or just offspring.");
  out.Print(" The unit for the intrinsic rate of increase is time unit^(-1), day^(-1) or week^(-1).");
  out.Print(" The unit for the finite rate is time unit^(-1), day^(-1), or week^(-1).");
  out.Print(" The unit for the mean generation time is time unit, day, or week.");
  out.Print(" The unit for the reproductive value is time unit^(-1), day^(-1) or week^(-1).");
  out.Print(" The unit for the gross reproductive rate is offspring or eggs.");
  out.Print(" You can use dimensional analysis to find the unit of each parameter.");
  out.Print(Line(81, '-'));
  out.Print(" Attention!  For a better alignment, only limited digits are listed in this table.");
  out.Print(" You can find precise data in files for figure preparation (e.g., _Fig_FxLxMxLxMx)");
  out.Print(" and for further analyses (e.g., G_eggs per oviposition day.txt).");
  out.Print(Line(81, '-'));
  if (groupReared)
    PrintRelationshipFtoR0forNandFt();
  else
    PrintRelationshipFtoR0();
}

void ParameterEngine::PrintRelationshipFtoR0() {
  Flow("PrintRelationshipFtoR0");
  RelationshipFtoR0();
}

// F is the eggs of the group over the females that emerged in it.
void ParameterEngine::PrintRelationshipFtoR0forNandFt() {
  Flow("PrintRelationshipFtoR0forNandFt");
  RelationshipFtoR0();
}

void ParameterEngine::RelationshipFtoR0() {
  auto& out = C.MainOutput;
  if (!out.IsOpen()) return;
  const double R0 = W.params.R0;
  const double F = W.lifeTable.FemaleFecundityMean;
  const double Nf = W.lifeTable.FemaleCount;
  const double N = W.cohort.CohortSize;
  out.Print(" The relationship between Fecundity and R0 should be R0=F*(Nf/N)");
  out.Print(" Fecundity (F) =", F);
  out.Print(" Adult female (Nf) =", Nf);
  out.Print(" Total number at beginning of life table study (N) =", N);
  out.Print(" The net reproductive rate (R0) =", R0);
  // No absolute value: an F(Nf/N) above R0 always passes.
  const double D = R0 - (Nf * F) / N;
  if (D < 0.1 * R0) {
    out.Print(" ", Line(80, '*'));
    out.Print(" Attention:");
    out.Print(" This relationship shows that the two-sex life table is correct. If there is");
    out.Print(" minor difference, it is due to round off.  If you use traditional female");
    out.Print(" age-specific life table, you will mostly find erroneous relationship.");
    out.Print(" ", Line(80, '*'));
  } else {
    out.Print(" Attention: There are significant difference between R0 and F*(Nf/N).");
    out.Print("            Please check your data.");
  }
}

}  // namespace korvan
