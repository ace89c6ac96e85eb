// The smaller result files of a bootstrap run: stage columns, frequency classes, normal density
// curves and intervals, the l(x) and m(x) figures, the record of ineffective samples.
#include <cmath>
#include <string>

#include "bootstrap/bootstrap_statistics.h"
#include "bootstrap/cohort_values.h"
#include "bootstrap/percentile.h"
#include "bootstrap/result_files.h"
#include "text/numbers.h"

namespace korvan {
namespace {

const std::string kStars(84, '*');

// A stage as the stage files name it: the adult stages by sex, whatever the data file calls
// them (a file may name both "Adult").
std::string StageWord(const SessionStore& S, int j) {
  const int m = S.header.StageCount;
  return j == m ? "Female" : j == m + 1 ? "Male" : S.header.StageName(1, j);
}

}  // namespace

void BootResultFiles::WriteBootReproducingFemales() {
  const BootstrapRecord& R = S.boot;
  WriteColumnFile("_Effect Boot-NFr.txt", Head("-NFr", "NFr", ReadCohortFemaleValues(S).reproductive),
                  [&](long k) { return static_cast<double>(R.BootNfr(k)); });
}

void BootResultFiles::WriteBootStageSurvivalRateInColumn() {
  const LifeTableBootLists& L = S.lifeTable.BootLists();
  for (int j = 1; j < S.header.StageCount; ++j) {
    const std::string stage = S.header.StageName(1, j);
    WriteColumnFile("_Effect Boot-W6_Stage-spec surv_" + stage + ".txt",
                    Head("-" + stage, stage, S.lifeTable.OriginalStageToNext(j)),
                    [&](long k) { return L.BootStageToNext(j, k); }, false, "-1");
  }
}

void BootResultFiles::WriteBootStageSpecificMortality() {
  const LifeTableBootLists& L = S.lifeTable.BootLists();
  for (int j = 1; j < S.header.StageCount; ++j) {
    const std::string stage = S.header.StageName(1, j);
    WriteColumnFile("_Effect Boot-W5_Stage-spec mort_" + stage + ".txt",
                    Head("-" + stage, stage, 1 - S.lifeTable.OriginalStageToNext(j)),
                    [&](long k) { return 1 - L.BootStageToNext(j, k); }, false, "-1");
  }
}

void BootResultFiles::WriteBootAdultMortalityinColumn() {
  const LifeTableBootLists& L = S.lifeTable.BootLists();
  const int m = S.header.StageCount;
  for (int j = 1; j <= m + 1 && j <= kMaxStage; ++j) {
    const std::string stage = S.header.StageName(1, j);
    if (stage.empty()) continue;
    WriteColumnFile("_Effect Boot-W7_Mort distrib in_" + stage + "_Adult.txt",
                    Head("-Adult", stage, S.lifeTable.OriginalStageDeathProb(j)),
                    [&](long k) { return L.BootStageDeathProb(j, k); }, false, "-1");
  }
}

// The duration of each preadult stage over all individuals that passed it, sample by sample:
// the column the paired test compares between treatments.
void BootResultFiles::WriteBootstageMeaninColumn() {
  const LifeTableBootLists& L = S.lifeTable.BootLists();
  for (int j = 1; j < S.header.StageCount; ++j) {
    const std::string stage = S.header.StageName(1, j);
    WriteColumnFile("_Effect Boot-S1_Stage mean_" + stage + ".txt",
                    Head("-" + stage, stage, S.lifeTable.OriginalStageMean(j)),
                    [&](long k) { return L.BootStageMean(j, k); }, false, "-1");
  }
}

// The chance of a newborn of the sample to reach each stage (the share of its individuals that
// do): every preadult stage, the female and the male adult stage, and adulthood itself.
void BootResultFiles::WriteBootSurvProbToStageJinColumn() {
  const LifeTableBootLists& L = S.lifeTable.BootLists();
  const LifeTableRecord& T = S.lifeTable;
  const int m = S.header.StageCount;
  const bool males = S.header.TypeCount >= 2;
  for (int j = 1; j <= (males ? m + 1 : m); ++j) {
    const std::string stage = StageWord(S, j);
    WriteColumnFile("_Effect Boot-W4_Surv Prob to " + stage + ".txt",
                    Head(j == m + 1 ? "-male" : "-" + stage, stage, T.OriginalStageEntry(j)),
                    [&](long k) { return L.BootStageEntry(j, k); }, false, "-1");
  }
  WriteColumnFile("_Effect Boot-W4_Surv Prob to Preadult.txt",
                  Head("-Preadult", "Preadult", T.OriginalStageEntry(m) + T.OriginalStageEntry(m + 1)),
                  [&](long k) { return L.BootStageEntry(m, k) + L.BootStageEntry(m + 1, k); }, false, "-1");
}

// From each preadult stage to adulthood: of the individuals that reach the stage, the share
// that become adults (0 in a sample where none reaches it).
void BootResultFiles::WriteBootSurvProbToAdult() {
  const LifeTableBootLists& L = S.lifeTable.BootLists();
  const LifeTableRecord& T = S.lifeTable;
  const int m = S.header.StageCount;
  auto toAdult = [m](auto entry, int j) {
    const double reached = entry(j);
    return reached > 0 ? (entry(m) + entry(m + 1)) / reached : 0;
  };
  for (int j = 1; j < m; ++j) {
    const std::string stage = S.header.StageName(1, j);
    WriteColumnFile("_Effect Boot-W4_Surv Prob to " + stage + "_Adult.txt",
                    Head("-adult", stage, toAdult([&](int i) { return T.OriginalStageEntry(i); }, j)),
                    [&](long k) { return toAdult([&](int i) { return L.BootStageEntry(i, k); }, j); }, false,
                    "-1");
  }
}

// The probability that a newborn of the sample dies in each stage, and as a preadult (the table
// of the distribution of stage mortality).
void BootResultFiles::WriteBootStageMortalityinColumn() {
  const LifeTableBootLists& L = S.lifeTable.BootLists();
  const int m = S.header.StageCount;
  for (int j = 1; j <= m + (S.header.TypeCount >= 2 ? 1 : 0) && j <= kMaxStage; ++j) {
    const std::string stage = StageWord(S, j);
    WriteColumnFile("_Effect Boot-S2_Stage mortality_" + stage + ".txt",
                    Head("-" + stage, stage, S.lifeTable.OriginalStageDeathProb(j)),
                    [&](long k) { return L.BootStageDeathProb(j, k); }, false, "-1");
  }
  // The preadult mortality: the sum over the immature stages.
  WriteColumnFile("_Effect Boot-S2_Stage mortality_Preadult.txt",
                  Head("-Preadult", "Preadult", S.lifeTable.OriginalPreadultDeathProb),
                  [&](long k) { return L.BootPreadultDeathProb(k); }, false, "-1");
}

// Sample by sample, the table's part of the pooled Euler-Lotka equation times the pooled
// sample's r, and times its lambda: the contributions to r and to lambda.
void BootResultFiles::WriteBootContributionToR() {
  const BootstrapRecord& R = S.boot;
  const ReadDataRecord& d = S.readData;
  const double sum = S.params.ContributionSumBasic, r = d.ContributionPooledR;
  auto pooledR = [&](long k) { return k <= d.ContributionBootCount ? d.ContributionBootR(k) : 0.0; };
  WriteColumnFile("_Effect Boot-A2c_r-Contribution.txt", Head("-Contribution to r", "Contribution to r", r * sum),
                  [&](long k) { return pooledR(k) * R.BootContributionSum(k); });
  WriteColumnFile("_Effect Boot-A3c_lambda-Contrib.txt",
                  Head("-Contribution to lambda", "Contribution to lambda", std::exp(r) * sum),
                  [&](long k) { return std::exp(pooledR(k)) * R.BootContributionSum(k); });
}

void BootResultFiles::WriteBootSexStageMeaninColumn() {
  const LifeTableBootLists& L = S.lifeTable.BootLists();
  const LifeTableRecord& T = S.lifeTable;
  const int m = S.header.StageCount;
  for (int t = 1; t <= S.header.TypeCount && t <= 2; ++t) {
    const std::string type = S.header.TypeCode(t);
    for (int j = 1; j < m; ++j) {
      const std::string stage = S.header.StageName(t, j);
      WriteColumnFile("_Effect Boot-Z1_Stage mean_Sex_" + type + "_" + stage + ".txt",
                      Head("-" + stage, stage, T.OriginalTypeStageMean(t, j)),
                      [&](long k) { return L.BootTypeStageMean(t, j, k); }, false, "-1");
      WriteColumnFile("_Effect Boot-Y1_Sex_" + type + "-to-" + stage + "_Time.txt",
                      Head("-" + stage, stage, T.OriginalTypeCumMean(t, j)),
                      [&](long k) { return L.BootTypeCumMean(t, j, k); }, false, "-1");
    }
    const bool female = t == 1;
    WriteColumnFile(std::string("_Effect Boot-Z") + (female ? "2" : "3") + "_Stage mean_Sex_" +
                        (female ? "F adult.txt" : "M adult.txt"),
                    Head(female ? "-F adult" : "-M adult", S.header.StageName(t, m), T.OriginalTypeStageMean(t, m)),
                    [&](long k) { return L.BootTypeStageMean(t, m, k); }, false, "-1");
    if (m > 1) {
      WriteColumnFile("_Effect Boot-Y3_Sex_" + type + "_PreAd_Time.txt",
                      Head("-PreA", "Preadult", T.OriginalTypeCumMean(t, m - 1)),
                      [&](long k) { return L.BootTypeCumMean(t, m - 1, k); }, false, "-1");
    }
    WriteColumnFile("_Effect Boot-Y2_Sex_" + type + "_total longevity.txt",
                    Head(female ? "-F TLongev" : "-M Tlongev", "Total longevity", T.OriginalTypeCumMean(t, m)),
                    [&](long k) { return L.BootTypeCumMean(t, m, k); }, false, "-1");
  }
}

void BootResultFiles::WriteBootC0andOmegaInColumn() {
  const BootstrapRecord& R = S.boot;
  const PredationRecord& c = S.predation;
  WriteColumnFile("_Effect Boot-C0.txt", Head("-C0", "C0", c.C0_Basic), [&](long k) { return R.BootC0(k); }, false,
                  "-1");
  WriteColumnFile("_Effect Boot-Omega.txt", Head("-Omega", "Omega", c.Omega_Basic),
                  [&](long k) { return R.BootOmega(k); }, false, "-1");
}

void BootResultFiles::WriteBootC0andOmegaInRow() {
  const BootstrapRecord& R = S.boot;
  for (const bool c0 : {true, false}) {
    TextFile out(OutputName(S, c0 ? "_Effect Boot-C0-in row.txt" : "_Effect Boot-Omega-in row.txt"));
    ColumnHeadLines(out, Head(c0 ? "-C0" : "-Omega", c0 ? "C0" : "Omega",
                              c0 ? S.predation.C0_Basic : S.predation.Omega_Basic));
    for (long i = 1; i <= R.EffectiveCount; ++i) {
      const long k = R.EffectiveList(i);
      out.WritePart(c0 ? R.BootC0(k) : R.BootOmega(k));
    }
    out.Write(-1);
  }
}

void BootResultFiles::FigureHead(TextFile& out) const {
  const BootstrapRecord& R = S.boot;
  out.Write("Project: " + S.identity.ProjectName);
  out.Write("User: " + S.identity.UserName);
  out.Write("Treatment: " + S.identity.TreatmentName);
  if (R.EffectiveCount == R.BootB) {
    out.Write("Total assigned and effective bootstrap number (B) = ", R.EffectiveCount);
  } else {
    out.Write("Total assigned bootstrap number (B) = ", R.BootB);
    out.Write("Total effective bootstrap number (B) = ", R.EffectiveCount);
    out.Write("Total ineffective bootstrap number (B) = ", R.BootB - R.EffectiveCount);
  }
}

void BootResultFiles::WriteBootstrapFrequency() {
  Flow("WriteBootstrapFrequency");
  const BootstrapRecord& R = S.boot;
  for (const bool isR : {true, false}) {
    TextFile out(OutputName(S, isR ? "_9_Bootstrap-r frequency.txt" : "_9_Bootstrap-R0 frequency.txt"));
    out.Print("Project: ", S.identity.ProjectName);
    out.Print("User: ", S.identity.UserName);
    out.Print("Treatment: ", S.identity.TreatmentName);
    out.Print("Assigned bootstrap number (B) =", R.BootB);
    out.Print("Bootstrap sample size (n) =", R.BootSampleSize);
    out.Print("Total number of effective bootstrap =", R.EffectiveCount);
    out.Print(isR ? "Intrinsic rate of increase (r)" : "Net reproductive rate (R0)");
    WriteFrequencyClasses(out, R, isR, isR ? R.R : R.R0, "boot-",
                          "These frequencies are grouped classes and the results might different from the true ones.",
                          R.EffectiveCount);
  }
}

void BootResultFiles::DensityCurve(const std::string& suffix, const std::string& what, const std::string& xName,
                                   double mean, double se) const {
  if (!UsableSpread(se)) return;  // no spread, no curve
  TextFile out(OutputName(S, suffix));
  FigureHead(out);
  out.Write("Mean of Bootstrap-" + what + ":", mean, "SE:", se);
  out.Write("Bootstrap sample size =", S.boot.BootSampleSize);
  out.Write(xName, "density");
  for (int i = 0; i <= 200; ++i) {
    const double x = mean - 3.5 * se + i * (7 * se / 200);
    out.Write(x, NormalDensity(x, mean, se));
  }
}

void BootResultFiles::WriteBootNormalCurves() {
  Flow("WriteBootNormalCurves");
  const BootstrapRecord& R = S.boot;
  DensityCurve("__Effect Boot-r-Normal density.txt", "r", "r(x)", R.R.mean, R.R.se);
  DensityCurve("_Effect Boot-R0-Normal density.txt", "R0", "R0(x)", R.R0.mean, R.R0.se);
  DensityCurve("__Effect Boot-T-Normal density.txt", "T", "T(x)", R.T.mean, R.T.se);
  DensityCurve("_Effect Boot-lambda-Normal density.txt", "lambda", "lambda(x)", R.Lambda.mean, R.Lambda.se);
}

void BootResultFiles::WriteNormalDensityCurveBegin() {
  Flow("WriteNormalDensityCurveBegin");
  const BootstrapRecord& R = S.boot;
  const int m = S.header.StageCount;
  // WriteNormalDensityCurveForXstage for each stage, the adult stages by sex, and the rest.
  for (int j = 1; j <= m + 1 && j <= kMaxStage; ++j) {
    const std::string name = S.header.StageName(1, j);
    if (name.empty()) continue;
    DensityCurve("_Effect Boot-Z_-" + name + "-Normal density.txt", name, "X", R.StageMeanSummary(j).mean,
                 R.StageMeanSummary(j).se);
  }
  DensityCurve("_Effect Boot-Z_-Preadult-Normal density.txt", "Preadult", "X", R.PreadultMeanSummary.mean,
               R.PreadultMeanSummary.se);
  DensityCurve("_Effect Boot-Z_-Fecundity-Normal density.txt", "Fecundity", "X", R.F.mean, R.F.se);
  DensityCurve("_Effect Boot-Z_-Total longevity-Normal density.txt", "Total longevity", "X", R.Longevity.mean,
               R.Longevity.se);
  P.MsgBox("Completed and congratulation!", "Task completed");
}

void BootResultFiles::Write95CI() {
  Flow("Write95CI");
  const BootstrapRecord& R = S.boot;
  const std::pair<const char*, const BootSummary*> stats[5] = {
      {"r", &R.R}, {"R0", &R.R0}, {"T", &R.T}, {"lambda", &R.Lambda}, {"GRR", &R.GRR}};
  for (const auto& [name, sum] : stats) {
    TextFile out(OutputName(S, std::string("_12_Bootstrap-") + name + "-Normal-95CI for plot.txt"));
    out.Write("Project: " + S.identity.ProjectName);
    out.Write("User: " + S.identity.UserName);
    out.Write("Treatment: " + S.identity.TreatmentName);
    out.Write("Lower CL-X", "Lower CL-Y", "Mean-X", "Mean-Y", "Upper CL-X", "Upper CL-Y", "Mean-SD", "Mean+SD");
    const double mean = sum->mean, se = sum->se;
    const double lower = mean - 1.959964 * se, upper = mean + 1.959964 * se;
    out.Write(lower, 0, mean, 0, upper, 0, mean - se, mean + se);
    auto d = [&](double x) { return UsableSpread(se) ? NormalDensity(x, mean, se) : 0.0; };
    out.Write(lower, d(lower), mean, d(mean), upper, d(upper), mean - se, mean + se);
  }
}

void BootResultFiles::WriteCumuBootLxMx() {
  Flow("WriteCumuBootLxMx");
  const BootstrapRecord& R = S.boot;
  const int lastAge = ReadCohortValues(S).lastAge;
  const double unit = S.settings.TimeUnit;
  TextFile out(OutputName(S, "_8_Fig_Bootstrap_LxMxLxMx.txt"));
  out.Write(
      "Age, max, mean, and min of Bootstrap survival rate l(x), max, mean, and min of Bootstrap fecundity m(x), "
      "l(x)*m(x), and Cumu[l(x)*m(x)]");
  out.Write("age, max (x),mean l(x), min l(x), max m(x), mean m(x), min m(x), l(x)*m(x), Cumu[l(x)*m(x)]");
  double cumulative = 0;
  for (int x = 0; x <= lastAge && x <= kMaxAge; ++x) {
    const double lm = R.LxMean(x) * R.MxMean(x);
    cumulative += lm;
    out.Write(x * unit, R.LxMax(x), R.LxMean(x), R.LxMin(x), R.MxMax(x), R.MxMean(x), R.MxMin(x), lm, cumulative);
  }
  out.Write((lastAge + 1) * unit, 0, 0, 0, 0, 0, 0, 0, 0);
}

void BootResultFiles::WriteBootLxMxandCI() {
  Flow("WriteBootLxMxandCI");
  const BootstrapRecord& R = S.boot;
  const int lastAge = ReadCohortValues(S).lastAge;
  const double unit = S.settings.TimeUnit;
  TextFile out(OutputName(S, "_8A_Fig_Bootstrap_LxMxandCI.txt"));
  out.Write("Age, upper, mean, and lower CI of Bootstrap survival rate l(x) and m(x)");
  out.Write("age, upper l(x),mean l(x), lower l(x), upper m(x), mean m(x), lower m(x)");
  for (int x = 0; x <= lastAge && x <= kMaxAge; ++x)
    out.Write(x * unit, R.LxUpper(x), R.LxMean(x), R.LxLower(x), R.MxUpper(x), R.MxMean(x), R.MxLower(x));
  out.Write((lastAge + 1) * unit, 0, 0, 0, 0, 0, 0);
}

void BootResultFiles::PrintNonEffectiveBootRecord() {
  Flow("PrintNonEffectiveBootRecord");
  const BootstrapRecord& R = S.boot;
  TextFile out(OutputName(S, "_6X_NonEffective Boots sampled individuals.txt"));
  out.Print("Project: ", S.identity.ProjectName);
  out.Print("Treatment: ", S.identity.TreatmentName);
  out.Print("User: ", S.identity.UserName);
  out.Print("Total number of non-effective bootstrap (net reproductive rate = 0) is", R.IneffectiveCount);
  out.Print(kStars);
  out.Print("The extinction probability is", R.BootB > 0 ? static_cast<double>(R.IneffectiveCount) / R.BootB : 0.0);
  out.Print(kStars);
  for (long i = 1; i <= R.IneffectiveCount; ++i) {
    const long k = R.IneffectiveList(i);
    out.Print("Bootstrap Sample: ", k);
    WriteSampleList(out, R, k, R.BootSampleSize);
  }
}

}  // namespace korvan
