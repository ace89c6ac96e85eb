// The tables beside the report: stage means, C0 and Omega, females with APOP and TPOP, the
// distribution of mortality, and the column files of the stable stage distribution.
#include <algorithm>
#include <string>
#include <vector>

#include "bootstrap/bootstrap_statistics.h"
#include "bootstrap/cohort_values.h"
#include "bootstrap/result_files.h"
#include "bootstrap/sorting.h"
#include "text/numbers.h"

namespace korvan {

void BootstrapStatistics::SummaryRows(TextFile& out, const std::string& originalLabel, const BootSummary* columns,
                                      const double* originals, int count, int firstColumn, int columnWidth,
                                      int decimals) {
  const BootstrapRecord& R = S.boot;
  auto row = [&](const std::string& label, auto valueOf, int dec) {
    out.PrintPart(label);
    for (int k = 0; k < count; ++k) out.PrintPart(Tab{firstColumn + k * columnWidth}, RoundDisplay(valueOf(k), dec));
    out.NewLine();
  };
  row(originalLabel, [&](int k) { return originals[k]; }, decimals);
  row("B", [&](int) { return static_cast<double>(R.EffectiveCount); }, 0);
  const bool withExtremes = R.EffectiveOnly != "No";
  if (withExtremes) row("Boot. max", [&](int k) { return columns[k].max; }, decimals);
  row("Boot. mean", [&](int k) { return columns[k].mean; }, decimals);
  if (withExtremes) row("Boot. min", [&](int k) { return columns[k].min; }, decimals);
  row("Variance", [&](int k) { return columns[k].variance; }, decimals);
  row("S.E.", [&](int k) { return columns[k].se; }, decimals);
}

void BootstrapStatistics::Boot1StageMean() {
  Flow("Boot1StageMean");
  const BootstrapRecord& R = S.boot;
  const int m = S.header.StageCount;
  std::vector<BootSummary> columns;
  std::vector<double> originals;
  std::vector<std::string> names;
  for (int j = 1; j <= m; ++j) {
    columns.push_back(R.StageMeanSummary(j));
    originals.push_back(CohortStageMean(S, j));
    names.push_back(j == m ? "Adult" : S.header.StageName(1, j));
  }
  columns.push_back(R.PreadultMeanSummary);
  originals.push_back(CohortPreadultMean(S));
  names.push_back("     Preadult");
  TextFile out(OutputName(S, "_0C_Bootstrap_Stage mean_Output.txt"));
  ReportHead(out, ". Table of stage means estimated by using bootstrap method");
  out.PrintPart("Stage");
  for (std::size_t k = 0; k < names.size(); ++k) out.PrintPart(Tab{static_cast<int>(16 + 11 * k)}, names[k]);
  out.NewLine();
  SummaryRows(out, "Original mean", columns.data(), originals.data(), static_cast<int>(columns.size()), 15, 11, 2);
}

void BootstrapStatistics::Boot1C0andOmega() {
  if (S.options.PredationPresent != "Yes") return;
  Flow("Boot1C0andOmega");
  const BootstrapRecord& R = S.boot;
  TextFile out(OutputName(S, "_0C_Bootstrap_C0 and Omega_Output.txt"));
  ReportHead(out, ". Table of C0 and Omega by using bootstrap method");
  // C0 and Omega, and beside them the transformation rate Qp and the stable predation rate.
  out.Print(Tab{20}, "   C0", Tab{30}, "Omega", Tab{40}, "   Qp", Tab{50}, "  Psi");
  const BootSummary columns[4] = {R.C0, R.Omega, R.Qp, R.Psi};
  const PredationRecord& c = S.predation;
  const double originals[4] = {c.C0_Basic, c.Omega_Basic, c.Qp_Basic, c.Psi_Basic};
  SummaryRows(out, "Original mean", columns, originals, 4, 19, 10, 2);
  if (R.EffectiveOnly == "No") return;
  // Percentile limits over the samples 1..E, as in the report of the main parameters.
  const long E = R.EffectiveCount;
  const BootList<double>* lists[4] = {&R.BootC0, &R.BootOmega, &R.BootQp, &R.BootPsi};
  std::vector<double> sorted[4];
  for (int k = 0; k < 4; ++k) {
    for (long b = 1; b <= E; ++b) sorted[k].push_back((*lists[k])(b));
    std::sort(sorted[k].begin(), sorted[k].end());
  }
  for (const double p : {0.025, 0.975}) {
    const long i = PercentileIndex(E, p);
    out.PrintPart(p < 0.5 ? "0.025 PCI" : "0.975 PCI");
    for (int k = 0; k < 4; ++k) {
      const double limit = i >= 1 && i <= E ? sorted[k][static_cast<std::size_t>(i - 1)] : 0;
      out.PrintPart(Tab{19 + 10 * k}, RoundDisplay(limit, 2));
    }
    out.NewLine();
  }
}

void BootstrapStatistics::Boot01APOPandTPOP() {
  Flow("Boot01APOPandTPOP");
  const BootstrapRecord& R = S.boot;
  const CohortValues c = ReadCohortValues(S);
  TextFile out(OutputName(S, "_0D_Bootstrap_APOP and TPOP_Output.txt"));
  ReportHead(out, ". Table of number of females, APOP, TPOP, preadult survivorship,",
             "          and oviposition days estimated by using bootstrap method");
  const char* heads[9] = {"Fn", "RepF", "RepF/Fn", "Male", "N-type", "APOP", "TPOP", " Sa", "Ovi-days"};
  for (int k = 0; k < 9; ++k) out.PrintPart(Tab{21 + 11 * k}, heads[k]);
  out.NewLine();
  const BootSummary columns[9] = {R.Nf, R.Nfr, R.NfrToNf, R.Nm, R.Nn, R.APOP, R.TPOP, R.Sa, R.OviDays};
  const CohortFemaleValues f = ReadCohortFemaleValues(S);
  const double originals[9] = {f.females, f.reproductive, f.females > 0 ? f.reproductive / f.females : 0,
                               f.males,   f.nType,        f.apop,
                               f.tpop,    f.sa,           f.oviDays};
  SummaryRows(out, "Original n", columns, originals, 9, 20, 11, 4);
  out.Print("Sa: preadult survival rate (all individuals and both sexes included).");
  out.Print("Fn: Number of females");
  out.Print("RepF/Fn: Proportion of reproductive females in all females.");
  out.Print("Ovi-days: Oviposition days, the mean number of days that an insect has laid eggs.");
  const int N = S.header.CohortSizeRead;
  if (R.BootSampleSize != N) {
    out.Print(std::string(60, '*'));
    out.Print("** Original sample size =", N);
    out.Print("**      Bootstrap sample size =", R.BootSampleSize);
    out.Print("**    Increase of sample size n will, however, decrease the");
    out.Print("**    estimated SE.");
    out.Print(std::string(60, '*'));
  }
  (void)c;
}

void BootstrapStatistics::BootStageMortality() {
  Flow("BootStageMortality");
  const BootstrapRecord& R = S.boot;
  const int m = S.header.StageCount;
  TextFile out(OutputName(S, "_0E_Bootstrap_Distrib. of stage mortality_Output.txt"));
  ReportHead(out, ". Distribution of mortality to each stage by using bootstrap method");
  std::vector<BootSummary> columns;
  std::vector<double> originals;
  out.PrintPart("Stage");
  int col = 16;
  for (int j = 1; j <= m - 1; ++j) {
    out.PrintPart(Tab{col}, S.header.StageName(1, j));
    col += 11;
    columns.push_back(R.StageMortalitySummary(j));
    originals.push_back(CohortStageMortality(S, j));
  }
  out.PrintPart(Tab{col}, "Female", Tab{col + 11}, "    Male      Preadult");
  out.NewLine();
  columns.push_back(R.StageMortalitySummary(m));
  originals.push_back(CohortStageMortality(S, m));
  if (m + 1 <= kMaxStage) {
    columns.push_back(R.StageMortalitySummary(m + 1));
    originals.push_back(CohortStageMortality(S, m + 1));
  }
  columns.push_back(R.PreadultMortalitySummary);
  originals.push_back(CohortPreadultMortality(S));
  SummaryRows(out, "Original mean", columns.data(), originals.data(), static_cast<int>(columns.size()), 15, 11, 4);
  out.Print("The preadult mortality is the sum of mortalities in all immature stages.");
  out.Print("The sum of mortalities in all stages = 1.");
}

void BootstrapStatistics::WriteBootSSD() {
  Flow("WriteBootSSD");
  const BootstrapRecord& R = S.boot;
  const int m = S.header.StageCount;
  BootResultFiles files(S, P, W);
  for (int j = 1; j <= m + 1 && j <= kMaxStage; ++j) {
    const std::string name = S.header.StageName(1, j);
    files.WriteColumnFile("_Effect Boot-X0_SSD_" + std::to_string(j) + "_" + name + ".txt",
                          files.Head("-SSD " + name, "SSD " + name, CohortSsd(S, j)),
                          [&](long b) { return R.BootSsd(j, b); }, false, "-1");
  }
  files.WriteColumnFile(
      "_Effect Boot-X0_SSD_adult.txt",
      files.Head("-SSD adult", "SSD adult", CohortSsd(S, m) + (m + 1 <= kMaxStage ? CohortSsd(S, m + 1) : 0)),
      [&](long b) { return R.BootSsd(m, b) + (m + 1 <= kMaxStage ? R.BootSsd(m + 1, b) : 0); }, false, "-1");
}

void BootstrapStatistics::WriteBootFecundityOfRepFemale() {
  Flow("WriteBootFecundityOfRepFemale");
  const BootstrapRecord& R = S.boot;
  const CohortFemaleValues f = ReadCohortFemaleValues(S);
  BootResultFiles files(S, P, W);
  ColumnHead head = files.Head("-F(NFr)", "Fecundity (NFr)", f.fecundityOfReproductive);
  head.nIn6 = f.reproductive;
  // Mean eggs of the reproductive females of each sample.
  files.WriteColumnFile("_Effect Boot-A1e_Fecundity (NFr).txt", head, [&](long b) {
    return R.BootNfr(b) == 0 ? 0.0 : R.BootF(b) * R.BootNf(b) / R.BootNfr(b);
  });
}

}  // namespace korvan
