#include "bootstrap/bootstrap_statistics.h"

#include "bootstrap/cohort_values.h"
#include "text/numbers.h"
#include "store/faults.h"

namespace korvan {

void BootstrapStatistics::Boot01Partial() {
  Flow("Boot01Partial");
  BootstrapRecord& R = S.boot;
  const long E = R.EffectiveCount;
  R.R = SummarizeSamples(E, [&](long b) { return R.BootR(b); });
  R.Lambda = SummarizeSamples(E, [&](long b) { return R.BootLambda(b); });
  R.R0 = SummarizeSamples(E, [&](long b) { return R.BootR0(b); });
  R.T = SummarizeSamples(E, [&](long b) { return R.BootT(b); });
  R.GRR = SummarizeSamples(E, [&](long b) { return R.BootGRR(b); });
  R.F = SummarizeSamples(E, [&](long b) { return R.BootF(b); });
}

void BootstrapStatistics::SummarizeAll() {
  BootstrapRecord& R = S.boot;
  const long E = R.EffectiveCount;
  const double n = R.BootSampleSize;
  Boot01Partial();
  R.Longevity = SummarizeSamples(E, [&](long b) { return R.BootLongevity(b); });
  R.APOP = SummarizeSamples(E, [&](long b) { return R.BootAPOP(b); });
  R.TPOP = SummarizeSamples(E, [&](long b) { return R.BootTPOP(b); });
  LifeTableBootLists& L = S.lifeTable.BootLists();
  R.Sa = SummarizeSamples(E, [&](long b) { return L.BootPreadultSurvival(b); });
  R.Nf = SummarizeSamples(E, [&](long b) { return static_cast<double>(R.BootNf(b)); });
  R.Nm = SummarizeSamples(E, [&](long b) { return static_cast<double>(R.BootNm(b)); });
  R.Nn = SummarizeSamples(E, [&](long b) { return static_cast<double>(R.BootNn(b)); });
  R.Nfr = SummarizeSamples(E, [&](long b) { return static_cast<double>(R.BootNfr(b)); });
  R.NfToN = SummarizeSamples(E, [&](long b) { return R.BootNf(b) / n; });
  R.NfrToNf = SummarizeSamples(E, [&](long b) {
    return R.BootNf(b) == 0 ? 0.0 : static_cast<double>(R.BootNfr(b)) / R.BootNf(b);
  });
  R.OviDays = SummarizeSamples(E, [&](long b) { return R.BootOviDays(b); });
  const int m = S.header.StageCount;
  for (int j = 1; j <= m + 1 && j <= kMaxStage; ++j) {
    R.StageMeanSummary(j) = SummarizeSamples(E, [&](long b) { return L.BootStageMean(j, b); });
    R.StageMortalitySummary(j) = SummarizeSamples(E, [&](long b) { return L.BootStageDeathProb(j, b); });
  }
  R.PreadultMeanSummary = SummarizeSamples(E, [&](long b) { return m > 1 ? L.BootCumMean(m - 1, b) : 0.0; });
  R.PreadultMortalitySummary = SummarizeSamples(E, [&](long b) { return L.BootPreadultDeathProb(b); });
  if (S.options.PredationPresent == "Yes") {
    R.C0 = SummarizeSamples(E, [&](long b) { return R.BootC0(b); });
    R.Qp = SummarizeSamples(E, [&](long b) { return R.BootQp(b); });
    R.Psi = SummarizeSamples(E, [&](long b) { return R.BootPsi(b); });
    R.Omega = SummarizeSamples(E, [&](long b) { return R.BootOmega(b); });
  }
  // A second pass over r, for the SE of the report's closing lines.
  double q = 0;
  for (long b = 1; b <= E; ++b) q += (R.R.mean - R.BootR(b)) * (R.R.mean - R.BootR(b));
  R.RDoubleCheckSE = std::sqrt(q / (static_cast<double>(E) - 1));
  FrequencyClasses();
}

double TransformProportion(const std::string& kind, double x, const std::string& title) {
  if (kind == "Arcsine") {
    if (x < 0 || x > 1)
      throw ProgramEnd{"Invalid procedure call or argument: arcsine transformation of " + FullPrecision(x), title};
    const double y = std::sqrt(x);
    return std::atan(y / std::sqrt(1 - y * y));
  }
  if (kind == "Logit") {
    if (x <= 0 || x >= 1)
      throw ProgramEnd{"Invalid procedure call or argument: logit transformation of " + FullPrecision(x), title};
    return std::log(x / (1 - x));
  }
  return x;
}

void WriteFrequencyClasses(TextFile& out, const BootstrapRecord& R, bool isR, const BootSummary& summary,
                           const std::string& kind, const char* note, long count) {
  const std::string x = isR ? "r" : "R0";
  out.Print("Max of " + kind + x + " =", summary.max, ".  Min of " + kind + x + " =", summary.min);
  if (note) out.Print(note);
  const int last = isR ? R.HistogramBarsPlus1 : R.HistogramBarsPlus1 + 1;
  double total = 0;
  for (int i = 0; i <= last; ++i) total += isR ? R.RClassCount(i) : R.R0ClassCount(i);
  if (count >= 0)
    out.Print("Sum of frequency of " + x + " =", total, count);
  else
    out.Print("Sum of frequency of " + x + " =", total);
  out.Print("Class begin", Zone{}, "Class center", Zone{}, "Frequency");
  for (int i = 0; i <= last; ++i) {
    if (isR)
      out.Print(R.RClassEdge(i), Zone{}, R.RClassCentre(i), Zone{}, R.RClassCount(i));
    else
      out.Print(R.R0ClassEdge(i), Zone{}, R.R0ClassCentre(i), Zone{}, R.R0ClassCount(i));
  }
}

void BootstrapStatistics::FrequencyClasses() {
  BootstrapRecord& R = S.boot;
  const long E = R.EffectiveCount;
  const int bars = R.HistogramBars, plus1 = R.HistogramBarsPlus1;
  R.RClassWidth = CountClasses(R.R.min, R.R.max, bars, plus1 + 1, plus1, E, R.RClassEdge, R.RClassCentre,
                               R.RClassCount, [&](long b, double& v) { return v = R.BootR(b), true; });
  // A sample without offspring has no class of R0.
  R.R0ClassWidth = CountClasses(R.R0.min, R.R0.max, bars, plus1 + 2, plus1 + 1, E, R.R0ClassEdge, R.R0ClassCentre,
                                R.R0ClassCount, [&](long b, double& v) { return v = R.BootR0(b), v != 0; });
}

void BootstrapStatistics::Boot01() {
  Flow("Boot01");
  SummarizeAll();
  WriteMainReport();
  Boot1StageMean();
  WriteBootSSD();
  Boot1C0andOmega();
  Boot01APOPandTPOP();
  BootStageMortality();
  WriteBootFecundityOfRepFemale();
}

}  // namespace korvan
