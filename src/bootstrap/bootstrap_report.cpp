// The report of a bootstrap run, "_0B_Bootstrap_Output.txt".
#include <string>

#include "bootstrap/bootstrap_statistics.h"
#include "bootstrap/cohort_values.h"
#include "text/numbers.h"

namespace korvan {
namespace {

constexpr int kColumns[8] = {15, 25, 38, 50, 60, 70, 80, 90};
const std::string kEquals(98, '=');
const std::string kDashes(98, '-');
const std::string kAts(98, '@');
const std::string kStars(98, '*');

struct Decimals {
  int d[8];
};
constexpr Decimals kOriginalDecimals{{6, 6, 5, 3, 2, 2, 4, 2}};
constexpr Decimals kMaxDecimals{{6, 6, 5, 3, 2, 2, 4, 3}};
constexpr Decimals kSEDecimals{{5, 6, 5, 3, 3, 3, 4, 3}};

// One row: the label, then the eight values rounded for display at their columns. A column
// marked in dash shows "-" instead of its value.
void ValueRow(TextFile& out, const std::string& label, const double (&v)[8], const Decimals& dec,
              int dashColumn = -1) {
  out.PrintPart(label);
  for (int c = 0; c < 8; ++c) {
    out.PrintPart(Tab{kColumns[c]});
    if (c == dashColumn)
      out.PrintPart(" -");
    else
      out.PrintPart(RoundDisplay(v[c], dec.d[c]));
  }
  out.NewLine();
}

void Note(TextFile& out, const std::string& text) { out.Print(text, Tab{96}, "***"); }

std::string DateText(const SessionStore& S) { return S.boot.BootDateText; }

}  // namespace

void BootstrapStatistics::ReportHead(TextFile& out, const std::string& titleLine, const std::string& secondTitleLine) {
  BootstrapRecord& R = S.boot;
  R.ReportPage += 1;
  R.ReportTable += 1;
  out.Print(Tab{70}, "Page", R.ReportPage);
  out.Print("Program: Age-Stage, Korvan Life Table Analysis (", S.identity.ProgramName, ").");
  out.Print("Table", R.ReportTable, titleLine);
  if (!secondTitleLine.empty()) out.Print(secondTitleLine);
  out.Print("Project: ", S.identity.ProjectName, " ", S.identity.VersionStamp);
  out.Print("Username: ", S.identity.UserName);
  out.Print("Treatment: ", S.identity.TreatmentName);
  out.Print("Analyzed on: ", DateText(S));
  std::string begin = R.BootBeginText, end = R.BootEndText;
  const std::string beganAt = "Bootstrap began at: ", endedAt = "Bootstrap ended at: ";
  if (begin.rfind(beganAt, 0) == 0) begin = begin.substr(beganAt.size());
  if (end.rfind(endedAt, 0) == 0) end = end.substr(endedAt.size());
  out.Print("Bootstrap began: ", begin, ". Ended: ", end, ". Total time: ", R.BootTotalTimeText);
  out.Print("Bootstrap sample size: ", R.BootSampleSize);
  if (R.EffectiveCount == R.BootB) {
    out.Print("Total number of bootstrap:", R.EffectiveCount);
  } else {
    out.Print("Total number of bootstrap:", R.BootB);
    out.Print("Total number of effective bootstrap:", R.EffectiveCount);
  }
  out.Print("Seed of the random generator: ", std::to_string(R.RunSeed));
}

void BootstrapStatistics::WriteMainReport() {
  BootstrapRecord& R = S.boot;
  const CohortValues c = ReadCohortValues(S);
  const double E = R.EffectiveCount;
  const double n = R.BootSampleSize;
  TextFile out(OutputName(S, "_0B_Bootstrap_Output.txt"));
  ReportHead(out, ". Table of Bootstrap results");
  out.Print("Two-sex mating: ", S.options.MatingMode, ". Same bootstrap: ", R.SameBootstrap);
  out.Print("For B = 1 million version, you will see \"No data\" in cases of no bootstrap results are estimated.");
  out.Print("Table of bootstrapping results of population parameters (KORVAN mating: ", S.options.MatingMode, ")");
  out.Print(kEquals);
  out.Print(Tab{16}, "r", Tab{26}, "lambda ", Tab{39}, "R0", Tab{52}, "T", Tab{61}, "GRR", Tab{71}, "F", Tab{81},
            "Nf/N", Tab{90}, "Longevity");
  out.Print(kDashes);

  const BootSummary* s[8] = {&R.R, &R.Lambda, &R.R0, &R.T, &R.GRR, &R.F, &R.NfToN, &R.Longevity};
  const double original[8] = {c.r, c.lambda, c.R0, c.T, c.GRR, c.meanFecundity, c.femaleProportion, c.meanLongevity};
  auto pick = [&](double BootSummary::*field, double (&v)[8]) {
    for (int k = 0; k < 8; ++k) v[k] = s[k]->*field;
  };
  ValueRow(out, "ORIGINAL", original, kOriginalDecimals);
  const double originalN[8] = {n, n, n, n, n, c.femaleAdults, n, n};
  ValueRow(out, "Original n", originalN, Decimals{{0, 0, 0, 0, 0, 0, 0, 0}});
  const double bRow[8] = {E, E, E, E, E, E, E, E};
  ValueRow(out, "B", bRow, Decimals{{0, 0, 0, 0, 0, 0, 0, 0}});
  const bool withExtremes = R.EffectiveOnly != "No";
  double v[8];
  if (withExtremes) {
    pick(&BootSummary::max, v);
    ValueRow(out, "Boot. max", v, kMaxDecimals);
  }
  pick(&BootSummary::mean, v);
  ValueRow(out, "Boot. mean", v, kOriginalDecimals);
  if (withExtremes) {
    pick(&BootSummary::min, v);
    ValueRow(out, "Boot. min", v, kOriginalDecimals);
  }
  pick(&BootSummary::variance, v);
  Decimals varDec = kOriginalDecimals;
  for (int k : {2, 4, 5})
    if (v[k] > 1e6) varDec.d[k] = 0;
  ValueRow(out, "Variance", v, varDec);
  pick(&BootSummary::se, v);
  ValueRow(out, "S.E.", v, kSEDecimals);
  out.Print(kDashes);
  if (c.r == 0) out.Print("r = 0! You have to carefully interpret population parameters.");
  out.Print(kAts);
  // Nf/N is no real variable when the cohort is all females or the samples do not vary in it.
  const int dash = (c.femaleProportion == 1 || R.NfToN.max == R.NfToN.min) ? 6 : -1;
  if (withExtremes) {
    const long lo = static_cast<long>(CIntValue(E * 0.025)), hi = static_cast<long>(CIntValue(E * 0.975));
    const BootList<double>* sorted[8] = {&R.SortedR,  &R.SortedLambda, &R.SortedR0,    &R.SortedT,
                                         &R.SortedGRR, &R.SortedF,     &R.SortedNfToN, &R.SortedLongevity};
    for (int k = 0; k < 8; ++k) v[k] = (*sorted[k])(lo);
    ValueRow(out, "0.025 PCI", v, kSEDecimals, dash);
    for (int k = 0; k < 8; ++k) v[k] = (*sorted[k])(hi);
    ValueRow(out, "0.975 PCI", v, kSEDecimals, dash);
    for (int k = 0; k < 8; ++k) v[k] = original[k] - 1.96 * s[k]->se;
    ValueRow(out, "0.025 TCI", v, kSEDecimals, dash);
    for (int k = 0; k < 8; ++k) v[k] = original[k] + 1.96 * s[k]->se;
    ValueRow(out, "0.975 TCI", v, kSEDecimals, dash);
  }
  out.Print(kEquals);
  Note(out, "*** Use the \"ORIGINAL\" (parameter for the cohort) and SE in your paper.");
  Note(out, "*** For normal distribution and B>=100,000, the bootstrap mean will be close to ORIGINAL.");
  Note(out, "*** If it is a normal distribution, the percentile confidence intervals (PCI) will be very ");
  Note(out, "*** close to the confidence intervals calculated using the t-value (TCI).");
  Note(out, "*** If original-SE or original+SE gives illogical results (e.g., R0-SE < 0, F-SE < 0, ");
  Note(out, "*** lambda-SE < 0, etc.), you should report the PCI, not SE.");
  if (c.femaleProportion + R.NfToN.se > 1) Note(out, "*** Nf/N + SE > 1: You should report CI, not SE.");
  if (c.femaleProportion - R.NfToN.se < 0) Note(out, "*** Nf/N - SE < 0: You should report CI, not SE.");
  if (c.R0 - R.R0.se < 0) Note(out, "*** R0 - SE < 0: You should report CI for r, lambda, R0 and T, not SE.");
  if (c.meanFecundity - R.F.se < 0) Note(out, "*** Fecundity - SE < 0: You should report CI, not SE.");
  if (c.meanLongevity - R.Longevity.se < 0) Note(out, "*** Longevity - SE < 0: You should report CI, not SE.");
  out.Print(kStars);
  out.Print("*** The longevity is the total longevity (from birth to death).");
  out.Print("*** Because GRR ignores the survival rate, it is not a good statistic.");
  out.Print(kStars);
  for (int k = 0; k < 8; ++k) v[k] = 2 * original[k] - s[k]->mean;
  ValueRow(out, "Bias-adj.", v, kOriginalDecimals);
  out.Print(kStars);
  out.Print("Attention!  There are many \"Bias-adjusted methods\".  It is your decision to use the ");
  out.Print("\"original\" or \"bootstrap\" or \"bias-adj.\" mean. If you used a large cohort (n >=100)");
  out.Print("to begin your life table study and a large bootstrap samples (B >=100,000), the original");
  out.Print("mean and SE are good for your paper.  I used \"original\" means in my papers.");
  out.Print("If you see a negative bias-adj. value, it shows the problem of bias-adjusted methods.");

  if (R.DetailedBootResults != "No") {
    out.Print("Orig. boot no.", Tab{16}, "r", Tab{26}, "lambda ", Tab{39}, "R0", Tab{52}, "T", Tab{61}, "GRR", Tab{71},
              "F", Tab{81}, "Female%", Tab{90}, "Longevity");
    for (long b = 1; b <= static_cast<long>(E); ++b) {
      const double r0 = R.BootR0(b);
      const double row[8] = {R.BootR(b), R.BootLambda(b), r0,          R.BootT(b),
                             R.BootGRR(b), R.BootF(b),    R.BootNf(b) / n, R.BootLongevity(b)};
      out.PrintPart(Tab{7}, static_cast<double>(b));
      for (int k = 0; k < 8; ++k) {
        out.PrintPart(Tab{kColumns[k]});
        if (r0 <= 0 && (k == 0 || k == 1))
          out.PrintPart("  -");
        else if (r0 <= 0 && k == 3)
          out.PrintPart("   -");
        else
          out.PrintPart(RoundDisplay(row[k], kOriginalDecimals.d[k]));
      }
      out.NewLine();
    }
    out.Print("Sample no.", Tab{16}, "r", Tab{26}, "lambda ", Tab{39}, "R0", Tab{52}, "T", Tab{61}, "GRR", Tab{71}, "F",
              Tab{81}, "Female%", Tab{90}, "Longevity");
  }
  out.Print(kEquals);
  out.Print("Attention!");
  out.Print("SE of boot-r calculated again =", R.RDoubleCheckSE, "(Double check passed).");
  out.Print("Original are the parameters calculated using all individuals.");
  out.Print("r: intrinsic rate, lambda: finite rate, R0: net reproduction rate,");
  out.Print("T: mean generation time, GRR: gross reproduction rate.");
  out.Print("F: mean fecundity per female adult.");
  out.Print("Nf/N: it is the proportion of female adults in total individuals.");
  out.Print("R0 = F * (Nf/N): the net reproductive rate equals the mean fecundity times the proportion of females.");
  out.Print("Effective bootstraps are bootstraps with non-zero net reproductive rate.");
  out.Print("References:");
  out.Print("  Efron, B. and R. J. Tibshirani. 1993. An introduction to the bootstrap. Chapman & Hall.");
  out.Print(std::string(80, '*'));
  if (R.R.variance > 0 && R.R.variance < 1e-06) out.Print("    Variance of Boot-r is:", R.R.variance);
}

}  // namespace korvan
