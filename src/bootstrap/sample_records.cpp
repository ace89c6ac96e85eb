#include "bootstrap/sample_records.h"

#include "bootstrap/cohort_values.h"
#include "bootstrap/percentile.h"
#include "input/data_file_writer.h"
#include "text/side_by_side_rows.h"
#include "text/text_file.h"

namespace korvan {

std::string BootConditionLineOf(const SessionStore& S) {
  const std::string kept = S.boot.EffectiveOnly == "Yes" ? "EffectBoot-Yes" : "AllBoot-Yes";
  return kept + " and KorvanMating-" + (S.options.MatingMode == "Yes" ? "Yes" : "No");
}

std::string SampleRecords::DateInName() const {
  const std::time_t t = Moment != 0 ? Moment : std::time(nullptr);
  std::tm tm{};
  localtime_r(&t, &tm);
  return "-" + std::to_string(tm.tm_year + 1900) + "-" + std::to_string(tm.tm_mon + 1) + "-" +
         std::to_string(tm.tm_mday) + "-" + std::to_string(tm.tm_hour) + "-" + std::to_string(tm.tm_min);
}

void SampleRecords::WriteHead(TextFile& out) const {
  out.Write(StampedProjectLine(S));
  out.Write(S.identity.TreatmentName);
  out.Write(S.boot.BootConditionLine);
}

// Eight pairs: a label line, then its value printed.
void SampleRecords::WriteSummary(TextFile& out) const {
  const BootstrapRecord& R = S.boot;
  const CohortValues cohort = ReadCohortValues(S);
  const std::pair<const char*, double> pairs[8] = {
      {"Mean of R0", R.R0.mean},           {"Variance of R0", R.R0.variance},
      {"SE of R0", R.R0.se},               {"R0 of whole cohort", cohort.R0},
      {"Mean of finite rate", R.Lambda.mean}, {"Variance of finite rate", R.Lambda.variance},
      {"SE of finite rate", R.Lambda.se},  {"Finite rate of whole cohort", cohort.lambda}};
  for (const auto& [label, value] : pairs) {
    out.Write(label);
    out.Print(value);
  }
}

void SampleRecords::WriteSampleRecord() {
  const BootstrapRecord& R = S.boot;
  if (R.EffectiveOnly == "Yes") {
    if (R.SaveSamplesAgain != "No") WriteEffectiveBootRecordForVoragen();
  } else {
    WriteAllBootstrapSamples();
  }
}

void SampleRecords::WriteEffectiveBootRecordForVoragen() {
  Flow("WriteEffectiveBootRecordForVoragen");
  BootstrapRecord& R = S.boot;
  // A general bootstrap's record (no. 11B) has the same frame: its samples carry a mean and
  // an SE where a life table's carry R0 and the finite rate.
  const bool general = R.GeneralBootFlag == "Yes";
  const long f = general ? 1 : R.FirstBootNumber, E = R.EffectiveCount, n = R.BootSampleSize;
  std::string name = (general ? "_11B_Gen Boot samples" : "_11_Bootstrap samples") + DateInName();
  if (f > 1) name += " from " + std::to_string(f) + " to " + std::to_string(f + R.BootB - 1);
  const std::string path = OutputName(S, name + ".txt");
  TextFile out(path);
  if (general) {
    out.Write(StampedProjectLine(S));
    out.Write(R.VariableName + "-" + R.GeneralTreatment);
    out.Write("No condition for general bootstrap");
    out.Write("Total number of  bootstrap =", E);
  } else {
    R.BootConditionLine = BootConditionLineOf(S);
    WriteHead(out);
    out.Write("Total number of effective bootstrap =", E);
  }
  out.Write(E);
  out.Write("Bootstrap sample size =", n);
  out.Write(n);
  WriteRowsSideBySide(out, 1, E, RunThreads(S.runControl.threads), [&](long i, TextFile& rows) {
    const long k = R.EffectiveList(i);
    const long serial = f > 1 ? k + f - 1 : k;
    rows.Write("Bootstrap Sample: ", serial);
    WriteSampleList(rows, R, k, n);
    if (general) {
      rows.Write("Mean =", R.GeneralMean(k));
      rows.Print(R.GeneralMean(k));
      rows.Write("Sample SE =", R.GeneralSE(k));
      rows.Print(R.GeneralSE(k));
    } else {
      rows.Write("Net reproductive rate ", serial);
      rows.Print(R.BootR0(k));
      rows.Write("Finite rate ", serial);
      rows.Print(R.BootLambda(k));
    }
  });
  if (general) {
    const std::pair<const char*, double> pairs[8] = {
        {"Bootstrap mean", R.General.mean},         {"Bootstrap variance", R.General.variance},
        {"Bootstrap SE", R.General.se},             {"Original mean", R.GeneralDataMean},
        {"Original sample variance", R.GeneralDataVariance}, {"Original sample SD", R.GeneralDataSD},
        {"Original sample SE", R.GeneralDataSE},    {"Original sample size", R.GeneralN}};
    for (const auto& [label, value] : pairs) {
      out.Write(label);
      out.Print(value);
    }
  } else {
    WriteSummary(out);
  }
  if (R.SameBootstrap != "Yes") R.RecordFilePath = path;
}

void SampleRecords::WriteAllBootstrapSamples() {
  Flow("WriteAllBootstrapSamples");
  BootstrapRecord& R = S.boot;
  if (R.SameBootstrap != "No" && R.SaveSamplesAgain != "Yes") return;
  R.BootConditionLine = BootConditionLineOf(S);
  const long f = R.FirstBootNumber, B = R.BootB, n = R.BootSampleSize;
  std::string name = "_11A_Bootstrap samples" + DateInName();
  if (f > 1) name += "-from " + std::to_string(f) + "to " + std::to_string(f + B - 1);
  const std::string path = OutputName(S, name + ".txt");
  TextFile out(path);
  WriteHead(out);
  out.Write("Total assigned number of bootstrap =", B, ". Total effective bootstrap =", R.EffectiveCount);
  out.Write(B);
  out.Write("Bootstrap sample size =", n);
  out.Write(n);
  WriteRowsSideBySide(out, 1, B, RunThreads(S.runControl.threads), [&](long k, TextFile& rows) {
    const long serial = f > 1 ? k + f - 1 : k;
    rows.Write("Bootstrap Sample: ", serial);
    WriteSampleList(rows, R, k, n);
    if (R.BootEffectLabel(k) != kLabelIneffective) {
      rows.Write("Net reproductive rate for bootstrap sample no. ", serial, " (effective)");
      rows.Print(R.BootR0(k));
      rows.Write("Finite rate for bootstrap sample no. ", serial, " (effective)");
      rows.Print(R.BootLambda(k));
    } else {
      rows.Write("Net reproductive rate for bootstrap sample no.", serial);
      rows.Print(0);
      rows.Write("Finite rate for bootstrap sample no.", serial, " ***(ineffective)***");
      rows.Print(-1);
    }
  });
  WriteSummary(out);
  if (R.SameBootstrap != "Yes") R.RecordFilePath = path;
}

}  // namespace korvan
