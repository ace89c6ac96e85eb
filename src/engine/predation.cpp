// Predation by a cohort whose individuals' daily consumption was recorded: the age-stage
// total consumption Ct(x,j), the consumption rate c(x,j) = Ct(x,j) / n(x,j), the net predation
// rate C0 = sum of s(x,j) c(x,j), the transformation rate Qp = C0 / R0, the stable predation
// rate psi = sum of a(x,j) c(x,j) over the stable age-stage distribution in proportions, and
// the finite predation rate omega = lambda psi. Since sum s(x,j) c(x,j) = sum Ct(x,j) / N, C0 is
// also the mean lifetime consumption of the cohort's individuals.
//
// The computing steps run in a Basic Run and for every bootstrap sample on the workspace in
// hand and allocate nothing; the tables and files are the Basic Run's.
#include <cmath>
#include <string>

#include "engine/life_table_engine.h"
#include "engine/table_text.h"
#include "text/numbers.h"
#include "text/short_text.h"

namespace korvan {

void LifeTableEngine::CalculateNetPredationRate() {
  FlowEngine("CalculateNetPredationRate");
  auto& c = W.predation;
  const auto& T = W.tables;
  const auto& C = W.cohort;
  const int m = S.header.StageCount;
  const int last = T.LastAge;
  const int N = C.CohortSize;
  for (int x = 0; x <= last + 1; ++x)
    for (int j = 1; j <= m + 1; ++j) c.Ctxj(x, j) = 0;

  // Each individual's days go to the stage it was in at that age: its stages follow one
  // another, the last one (negative) being the stage of its death; a female's adult days
  // count in the female column m, every other adult's in the male column m + 1.
  for (int i = 1; i <= N; ++i) {
    const int days = C.TotalLongevity(i);
    const int adultRow = IsText(C.IndividualSex(i), 'F') ? m : m + 1;
    double total = 0;
    int j = 1;
    double end = std::fabs(C.StageDuration(i, 1));
    for (int x = 0; x < days && x <= last; ++x) {
      while (x >= end && j < m && C.StageDuration(i, j) > 0) {
        ++j;
        end += std::fabs(C.StageDuration(i, j));
      }
      const double eaten = C.Consumption(i, x);
      c.Ctxj(x, j < m ? j : adultRow) += eaten;
      total += eaten;
    }
    W.stageStats.TotalConsumption(i) = total;
  }

  c.C0 = 0;
  for (int x = 0; x <= last; ++x) {
    for (int j = 1; j <= m + 1; ++j) {
      const double n = T.Nxj(x, j);
      c.Cxj(x, j) = n > 0 ? c.Ctxj(x, j) / n : 0;
      c.C0 += T.Sxj(x, j) * c.Cxj(x, j);
    }
  }
  // A cohort that left no offspring converts nothing: Qp is 0 rather than a division by 0.
  c.Qp = W.params.R0 > 0 ? c.C0 / W.params.R0 : 0;
  if (W.run.Boot > 0) {
    W.boot.sample.C0 = c.C0;
    W.boot.sample.Qp = c.Qp;
  } else if (BasicPass()) {
    Keep().predation.C0_Basic = c.C0;
    Keep().predation.Qp_Basic = c.Qp;
  }
}

void LifeTableEngine::CalculateFinitePredationRate() {
  FlowEngine("CalculateFinitePredationRate");
  auto& c = W.predation;
  const auto& p = W.params;
  const int m = S.header.StageCount;
  // The stable distribution exists only for a cohort that reproduces; otherwise both rates
  // are 0. b(x,j) is in percent: psi weighs c(x,j) with b(x,j) / 100, whose sum is 1. The
  // finite rate is that of one step of the data, as in the stable distribution itself.
  c.Psi = 0;
  if (p.R0 > 0) {
    for (int x = 0; x <= W.tables.LastAge; ++x)
      for (int j = 1; j <= m + 1; ++j) c.Psi += p.Bxj(x, j) / 100 * c.Cxj(x, j);
  }
  const double finite = S.settings.TimeUnit == 1 ? p.lambda : p.StepFiniteRate;
  c.Omega = p.R0 > 0 ? finite * c.Psi : 0;
  if (W.run.Boot > 0) {
    W.boot.sample.Psi = c.Psi;
    W.boot.sample.Omega = c.Omega;
  } else if (BasicPass()) {
    Keep().predation.Psi_Basic = c.Psi;
    Keep().predation.Omega_Basic = c.Omega;
  }
}

// The tables of consumption in the main output, the figure files of c(x,j) and each
// individual's total consumption.
void LifeTableEngine::PrintCxjAndBxj() {
  if (S.options.PredationPresent != "Yes" || W.run.IsResamplingFlag == "y") return;
  Flow("PrintCxjAndBxj");
  const auto& c = W.predation;
  auto& show = W.lifeTable.PrintMatrix;
  const int m = S.header.StageCount;
  const int last = W.tables.LastAge;
  auto copy = [&](auto value) {
    for (int x = 0; x <= last; ++x)
      for (int j = 1; j <= m + 1; ++j) show(x, j) = value(x, j);
  };
  auto& out = C.MainOutput;
  if (out.IsOpen()) {
    double total = 0;
    for (int x = 0; x <= last; ++x)
      for (int j = 1; j <= m + 1; ++j) total += c.Ctxj(x, j);
    copy([&](int x, int j) { return c.Ctxj(x, j); });
    PrintMatrixTable("Age-stage-specific total consumption Ct(x,j) (Matrix Ct)", 2, true, false);
    out.Print("Ctotal =", total, " (Total consumption by the whole cohort).");
    out.Print("Ctotal/N =", total / W.cohort.CohortSize, ". It is the net predation rate C0 =", c.C0, ".");
    copy([&](int x, int j) { return c.Cxj(x, j); });
    PrintMatrixTable("Age-stage-specific consumption rate c(x,j) (Matrix C)", 4, false, false);
    out.Print("c(x,j)=Ct(x,j)/n(x,j) is the mean consumption of an individual of age x and stage j.");
    if (W.params.R0 > 0) {
      copy([&](int x, int j) { return W.params.Bxj(x, j) / 100 * c.Cxj(x, j); });
      PrintMatrixTable("Predation at the stable age-stage distribution b2(x,j)*c(x,j)", 4, true, false);
      out.Print("The sum of b2(x,j)*c(x,j) is the stable predation rate =", c.Psi, ".");
    }
  }

  const std::string& level = S.options.OutputLevel;
  if (level == "Nooutput") return;
  if (level != "No") WriteStageFigure("_Fig_Cxja.txt", "Predation rate matrix (C)", Figure::C);
  PrintCxj();

  TextFile f(OutputName(S, "_G_Total consumption-all.txt"));
  f.Write("Total consumption");
  f.Write("Ind. no.", "Total consumption");
  for (long i = 1; i <= W.cohort.CohortSize; ++i) f.Write(W.cohort.IndividualNo(i), W.stageStats.TotalConsumption(i));
}

void LifeTableEngine::PrintCxj() {
  Flow("PrintCxj");
  WriteStageFigure("_Fig_Cxjb.txt", "Age-stage consumption rate", Figure::C);
}

}  // namespace korvan
