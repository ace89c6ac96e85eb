// The column files of the bootstrap results: the "_Effect Boot-..." family over the effective
// samples, and the "_All Boot-..." family over every sample.
#include "bootstrap/result_files.h"

#include <cmath>

#include "bootstrap/cohort_values.h"
#include "bootstrap/sorting.h"
#include "input/data_file_writer.h"
#include "text/numbers.h"

namespace korvan {

void BootResultFiles::ColumnHeadLines(TextFile& out, const ColumnHead& head) const {
  WriteColumnHead(out, S.identity.TreatmentName, head);
}

ColumnHead BootResultFiles::Head(const std::string& tag, const std::string& name, double cohortValue) const {
  ColumnHead h;
  h.tag = tag;
  h.line3 = S.boot.BootSampleSize;
  h.line5 = S.boot.EffectiveCount;
  h.name = name;
  h.nIn6 = S.boot.BootSampleSize;
  h.cohortValue = cohortValue;
  return h;
}

std::string BootResultFiles::RangeInName() const {
  const BootstrapRecord& R = S.boot;
  if (R.FirstBootNumber <= 1) return "";
  return " from " + std::to_string(R.FirstBootNumber) + " to " + std::to_string(R.FirstBootNumber + R.BootB - 1);
}

void BootResultFiles::WriteColumnFiles() {
  if (S.boot.MajorFilesOnly != "Yes") {
    WriteCumuBootLxMx();
    WriteBootLxMxandCI();
    PrintNonEffectiveBootRecord();
  }
  WriteAllBootstrapInColumns();
  WriteEffectiveBootstrapInColumn();
}

void BootResultFiles::WriteNormalCurveFiles() {
  WriteNormalDensityCurveBegin();
  WriteBootstrapFrequency();
  WriteBootNormalCurves();
  Write95CI();
}

void BootResultFiles::WriteEffectiveBootstrapInColumn() {
  Flow("WriteEffectiveBootstrapInColumn");
  const std::string& level = S.options.OutputLevel;
  if (level == "Nooutput") return;
  const BootstrapRecord& R = S.boot;
  const LifeTableBootLists& L = S.lifeTable.BootLists();
  const bool all = level != "No";             // files marked o
  const bool minor = R.MajorFilesOnly != "Yes";  // files marked m
  const CohortValues cohort = ReadCohortValues(S);
  const CohortFemaleValues sexes = ReadCohortFemaleValues(S);
  const double n = R.BootSampleSize;
  const long E = R.EffectiveCount, B = R.BootB;
  const std::string range = RangeInName();
  const int threads = RunThreads(S.runControl.threads);

  if (all && minor && R.DetailedBootResults != "No") {
    TextFile out(OutputName(S, "_6_Effect Boot-all parameters.txt"));
    ColumnHeadLines(out, Head("", "Sample no., r, lambda, R0, T, GRR", 0));
    out.Write(StampedProjectLine(S));
    out.Write("Sample no., r, lambda, R0, T, GRR", E);
    WriteRowsSideBySide(out, 1, E, threads, [&](long i, TextFile& rows) {
      const long k = R.EffectiveList(i);
      rows.Print(k, ",", R.BootR(k), ",", R.BootLambda(k), ",", R.BootR0(k), ",", R.BootT(k), ",", R.BootGRR(k));
    });
  }
  WriteColumnFile("_Effect Boot-A2a-r" + range + ".txt", Head("-r", "r", cohort.r), [&](long k) { return R.BootR(k); });
  WriteColumnFile("_Effect Boot-A2b-r-with SN" + range + ".txt", Head("-r", "r", cohort.r),
                  [&](long k) { return R.BootR(k); }, true);
  if (all) {
    const std::string age = FullPrecision(S.settings.SpecificAge);
    WriteColumnFile("_Effect Boot-U2_lx-at age " + age + ".txt",
                    Head("-SurvR at age " + age, "l(x) at age " + age, S.lifeTable.LxAtSpecificAge),
                    [&](long k) { return L.BootLxAtSpecificAge(k); });
  }
  if (all && minor) {
    WriteColumnFile("_Effect Boot-V1_Peak Reproductive value.txt", Head("-Peak Vxj", "Peak Rep. value", 0),
                    [&](long k) { return R.BootPeakVxj(k); });
    WriteColumnFile("_Effect Boot-V2_Age of Peak Rep. value.txt", Head("-age of peak vxj", "Peak Rep. value", 0),
                    [&](long k) { return static_cast<double>(R.BootPeakVxjAge(k)); });
    WriteColumnFile("_Effect Boot-V4_First nonzero fxj age.txt", Head("-1st rep. age", "First nonzero fxj age", 0),
                    [&](long k) { return R.BootFirstFxjAge(k); });
    WriteColumnFile("_Effect Boot-V3_First female Vxj age.txt", Head("-1st rep. age", "First female vxj age", 0),
                    [&](long k) { return R.BootFirstVxjAge(k); });
    WriteColumnFile("_Effect Boot-U1_Age of 0.5 lx.txt",
                    Head("-age of 0.5 lx", "Age of 50% survival", S.lifeTable.MedianAge),
                    [&](long k) { return L.BootMedianAge(k); });
    const double p = S.settings.SpecificSurvival;
    if (p != 0.5) {
      const std::string ps = FullPrecision(p);
      WriteColumnFile("_Effect Boot-U3_Age of " + ps + " lx.txt",
                      Head("-age " + ps + "-lx", "Age of " + ps + " survival", S.lifeTable.SpecificSurvivalAge),
                      [&](long k) { return L.BootSpecificSurvivalAge(k); });
    }
  }
  WriteColumnFile("_Effect Boot-A3a-lambda" + range + ".txt", Head("-lambda", "lambda", cohort.lambda),
                  [&](long k) { return R.BootLambda(k); });
  WriteColumnFile("_Effect Boot-A3b-lambda-with SN" + range + ".txt", Head("-lambda", "lambda", cohort.lambda),
                  [&](long k) { return R.BootLambda(k); }, true);

  // R0 is defined for every sample: its files run over all B.
  ColumnHead r0 = Head("-R0", "R0", cohort.R0);
  r0.line4 = "Next line is total effective Bootstrap number (B). All bootstrap sample are effective for Ro.";
  r0.line5 = B;
  const long offset = R.FirstBootNumber - 1;
  {
    TextFile out(OutputName(S, "_Effect Boot-A1a-R0" + range + ".txt"));
    ColumnHeadLines(out, r0);
    WriteRowsSideBySide(out, 1, B, threads, [&](long k, TextFile& rows) { rows.Write(R.BootR0(k)); });
  }
  bool anyZeroR = false;
  for (long i = 1; i <= E && !anyZeroR; ++i) anyZeroR = R.BootR(R.EffectiveList(i)) == 0;
  if (minor && R.EffectiveOnly == "Yes" && cohort.r != 0 && !anyZeroR) {
    WriteColumnFile("_Effect Boot-A5-doubling time.txt", Head("-DT", "DT", std::log(2.0) / cohort.r),
                    [&](long k) { return std::log(2.0) / R.BootR(k); });
  }
  if (!minor) return;
  {
    TextFile out(OutputName(S, "_Effect Boot-A1b-R0-with SN" + range + ".txt"));
    ColumnHeadLines(out, r0);
    WriteRowsSideBySide(out, 1, B, threads, [&](long k, TextFile& rows) { rows.Write(k + offset, R.BootR0(k)); });
  }
  ColumnHead f = Head("-F", "Fecundity", cohort.meanFecundity);
  f.line3 = f.nIn6 = sexes.females;
  WriteColumnFile("_Effect Boot-A1c_Fecundity (Nf).txt", f, [&](long k) { return R.BootF(k); });
  WriteColumnFile("_Effect Boot-A1c2_Fecundity (Nf)-with SN.txt", f, [&](long k) { return R.BootF(k); }, true);
  WriteHarvestFile();
  WriteColumnFile("_Effect Boot-A4-T.txt", Head("-T", "T", cohort.T), [&](long k) { return R.BootT(k); });
  WriteColumnFile("_Effect Boot-B1_Total longevity.txt", Head("-long.", "Longevity", cohort.meanLongevity),
                  [&](long k) { return R.BootLongevity(k); });
  if (all) {
    WriteColumnFile("_Effect Boot-A6-GRR.txt", Head("-GRR", "GRR", cohort.GRR), [&](long k) { return R.BootGRR(k); });
    ColumnHead od = Head("-Od", "Ovi-days", sexes.oviDays);
    od.nIn6 = sexes.reproductive;
    WriteColumnFile("_Effect Boot-W2_Oviposition days.txt", od, [&](long k) { return R.BootOviDays(k); });
    ColumnHead op = od;
    op.tag = "-Op";
    op.name = "Oviposition-period";
    WriteColumnFile("_Effect Boot-W1_Oviposition periods.txt", op, [&](long k) { return R.BootOviPeriod(k); });
    WriteColumnFile("_Effect Boot-W3_Preadult survival (sa).txt",
                    Head("-Sa", "Preadult survival rate s(a)", S.lifeTable.PreadultSurvivalOriginal),
                    [&](long k) { return L.BootPreadultSurvival(k); });
    ColumnHead apop = Head("-APOP", "APOP", sexes.apop);
    apop.nIn6 = sexes.reproductive;
    WriteColumnFile("_Effect Boot-B3_APOP.txt", apop, [&](long k) { return R.BootAPOP(k); });
    ColumnHead tpop = apop;
    tpop.tag = "-TPOP";
    tpop.name = "TPOP";
    tpop.cohortValue = sexes.tpop;
    WriteColumnFile("_Effect Boot-B4_TPOP.txt", tpop, [&](long k) { return R.BootTPOP(k); });
  }
  const double critical = S.settings.CriticalFemaleAge;
  if (critical != 0) {
    WriteColumnFile("_Effect Boot-C1_CANf.txt", Head("-CANf", "CANf", S.header.OldFemaleCount),
                    [&](long k) { return R.BootCANf(k); }, false,
                    "\"CANf is number of female adults with adult longevity >= \"," + FullPrecision(critical));
    const double nf = sexes.females;
    WriteColumnFile("_Effect Boot-C2_CANf-Nf ratio.txt",
                    Head("-CANf-Nf ratio", "CANf-Nf", nf > 0 ? S.header.OldFemaleCount / nf : 0),
                    [&](long k) { return R.BootNf(k) > 0 ? R.BootCANf(k) / R.BootNf(k) : 0.0; });
    WriteColumnFile("_Effect Boot-C3_CANf-N ratio.txt", Head("-CANf-N ratio", "CANf-N", S.header.OldFemaleCount / n),
                    [&](long k) { return R.BootCANf(k) / n; });
  }
  const double N = S.header.CohortSizeRead;
  auto ratio = [](double a, double b) { return b != 0 ? a / b : 0.0; };
  WriteColumnFile("_Effect Boot-A1d_Nf.txt", Head("-Nf", "Nf", sexes.females),
                  [&](long k) { return static_cast<double>(R.BootNf(k)); });
  WriteColumnFile("_Effect Boot-A1f_Nfr.txt", Head("-Nfr", "Nfr", sexes.reproductive),
                  [&](long k) { return static_cast<double>(R.BootNfr(k)); });
  WriteColumnFile("_Effect Boot-W8_Nfr to N ratio.txt", Head("-Nfr to N", "Nfr to N", ratio(sexes.reproductive, N)),
                  [&](long k) { return R.BootNfr(k) / n; });
  WriteColumnFile("_Effect Boot-W8_Nfr to Nf ratio.txt",
                  Head("-Nfr to Nf", "Nfr to Nf", ratio(sexes.reproductive, sexes.females)),
                  [&](long k) { return ratio(R.BootNfr(k), R.BootNf(k)); });
  if (cohort.meanFecundity != 0) {
    WriteColumnFile("_M_R0 and F relationship.txt",
                    Head("-R0 to F ratio", "R0 to F ratio", ratio(cohort.R0, cohort.meanFecundity)),
                    [&](long k) { return ratio(R.BootR0(k), R.BootF(k)); });
  }
  if (R.EffectiveOnly == "Yes") {
    WriteColumnFile("_Effect Boot-W8_Nf to adults ratio.txt",
                    Head("-Nf to A", "Nf to adults", ratio(sexes.females, sexes.females + sexes.males)),
                    [&](long k) { return ratio(R.BootNf(k), R.BootNf(k) + R.BootNm(k)); });
  }
  WriteColumnFile("_Effect Boot-W8_Nf to N ratio.txt", Head("-Nf to N", "Nf to N", ratio(sexes.females, N)),
                  [&](long k) { return R.BootNf(k) / n; });
  const bool males = sexes.males > 0, nType = sexes.nType > 0;
  if (males) {
    WriteColumnFile("_Effect Boot-W9_Nm.txt", Head("-Nm", "Nm", sexes.males),
                    [&](long k) { return static_cast<double>(R.BootNm(k)); });
    if (R.EffectiveOnly == "Yes") {
      WriteColumnFile("_Effect Boot-W9_Nm to Nf ratio.txt",
                      Head("-Nm to Nf", "Nm to Nf", ratio(sexes.males, sexes.females)),
                      [&](long k) { return ratio(R.BootNm(k), R.BootNf(k)); });
      WriteColumnFile("_Effect Boot-W8_Nf to Nm ratio.txt",
                      Head("-Nf to Nm", "Nf to Nm", ratio(sexes.females, sexes.males)),
                      [&](long k) { return ratio(R.BootNf(k), R.BootNm(k)); });
    }
    WriteColumnFile("_Effect Boot-W9_Nm to N ratio.txt", Head("-Nm to N", "Nm to N", ratio(sexes.males, N)),
                    [&](long k) { return R.BootNm(k) / n; });
  }
  if (nType) {
    WriteColumnFile("_Effect Boot-W10_Nn.txt", Head("-Nn", "Nn", sexes.nType),
                    [&](long k) { return static_cast<double>(R.BootNn(k)); });
    WriteColumnFile("_Effect Boot-W10_Nn to N ratio.txt", Head("-Nn to N", "Nn to N", ratio(sexes.nType, N)),
                    [&](long k) { return R.BootNn(k) / n; });
  }
  WriteColumnFile("_Effect Boot-A3d_birth rate.txt", Head("-B(SASD)", "Birth rate (SASD)", 0),
                  [&](long k) { return R.BootBirthRate(k); });
  WriteColumnFile("_Effect Boot-A3e_Death rate.txt", Head("-D(SASD)", "Death rate (SASD)", 0),
                  [&](long k) { return R.BootDeathRate(k); });
  WriteColumnFile("_Effect Boot-A3f_Survival rate.txt", Head("-S(SASD)", "Survival rate (SASD)", 0),
                  [&](long k) { return R.BootSurvivalRate(k); });
  WriteBootReproducingFemales();
  WriteBootStageSurvivalRateInColumn();
  WriteBootStageSpecificMortality();
  WriteBootSexStageMeaninColumn();
  WriteBootstageMeaninColumn();
  WriteBootStageMortalityinColumn();
  WriteBootSurvProbToStageJinColumn();
  WriteBootSurvProbToAdult();
  WriteBootAdultMortalityinColumn();
  if (S.options.PredationPresent == "Yes") {
    WriteBootC0andOmegaInColumn();
    WriteBootC0andOmegaInRow();
  }
}

void BootResultFiles::WriteHarvestFile() {
  const BootstrapRecord& R = S.boot;
  TextFile out(OutputName(S, "_Z-R0 and boot SE for harvest.txt"));
  out.Write(S.identity.TreatmentName);
  out.Write("R0", "SE of Boot(R0)", "R0(0.025)", "R0(0.15866)");
  const long B = R.BootB;
  out.Write(ReadCohortValues(S).R0, R.R0.se, R.SortedR0(PercentileIndex(B, 0.025)),
            R.SortedR0(PercentileIndex(B, 0.15866)));
}

void BootResultFiles::WriteAllBootstrapInColumns() {
  Flow("WriteAllBootstrapInColumns");
  const BootstrapRecord& R = S.boot;
  if (R.EffectiveOnly != "No" || S.options.OutputLevel == "Nooutput") return;
  const long B = R.BootB, E = R.EffectiveCount, offset = R.FirstBootNumber - 1;
  const std::string total = "Total assigned bootstrap (B) = " + FullPrecision(B) +
                            ". Total effect. ones = " + FullPrecision(E) + ". There are ";
  const std::string noneffective = FullPrecision(R.IneffectiveCount) + ".";
  struct AllFile {
    std::string suffix, tag, line4, column;
    const BootList<double>* values;
    bool serial;
  };
  const std::string negR = total + FullPrecision(R.BootNegRCount) +
                           " effect. boot with negative r. Noneffect. boot (Ro=0) = " + noneffective;
  const std::string lambdaBelow1 = total + FullPrecision(R.BootLambdaBelow1Count) +
                                   " effect. boot with lambda<1. Non-effect. boot (Ro=0) = " + noneffective;
  const std::string r0Below1 = total + FullPrecision(R.BootR0Below1Count) +
                               " effect. boot with 0<Ro<1. Non-effect. boot (Ro=0) = " + noneffective;
  const std::string r0Name = "_All Boot-R0 with SN" + RangeInName() + ".txt";
  const AllFile files[] = {
      {"_All Boot-r-with SN.txt", "-r", negR, "r (only effective ones)", &R.BootR, true},
      {"_All Boot-r.txt", "-r", negR, "r (only effective ones)", &R.BootR, false},
      {"_All Boot-lambda.txt", "-lambda", lambdaBelow1, "lambda (only effective ones)", &R.BootLambda, false},
      {r0Name, "-R0", r0Below1, "R0-only effective ones", &R.BootR0, true},
      {"_All Boot-R0.txt", "-R0", r0Below1, "R0-only effective ones", &R.BootR0, false},
      {"_All Boot-T.txt", "-T", negR, "T (only effective ones)", &R.BootT, false},
      {"_All Boot-GRR.txt", "-GRR", negR, "GRR-only effective ones", &R.BootGRR, false},
  };
  for (const AllFile& f : files) {
    TextFile out(OutputName(S, f.suffix));
    out.Write(S.identity.TreatmentName + f.tag);
    out.Write("Next line is Bootstrap sample size (n)");
    out.Write(R.BootSampleSize);
    out.Write(f.line4);
    out.Write(B);
    out.Write(f.column);
    WriteRowsSideBySide(out, 1, B, RunThreads(S.runControl.threads), [&](long k, TextFile& rows) {
      const bool effective = R.BootEffectLabel(k) != kLabelIneffective;
      if (f.serial && effective)
        rows.Write(k + offset, (*f.values)(k));
      else if (f.serial)
        rows.Write(k + offset, "Ineffective bootstrap sample");
      else if (effective)
        rows.Write((*f.values)(k));
      else
        rows.Write("Ineffective bootstrap sample");
    });
  }
}

}  // namespace korvan
