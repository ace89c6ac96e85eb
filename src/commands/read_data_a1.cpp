#include "commands/read_data_a1.h"

#include "input/csv_import.h"

#include <cmath>
#include <string>

#include "commands/basic_run_driver.h"
#include "input/check_data_file.h"
#include "input/field_reader.h"
#include "store/faults.h"
#include "text/numbers.h"
#include "ui/console_rules.h"

namespace korvan {

std::string FlowFileNameFor(const std::string& dataFileBase, const std::tm& when) {
  return dataFileBase + "_0_Flow_" + std::to_string(when.tm_year + 1900) + std::to_string(when.tm_mon + 1) +
         std::to_string(when.tm_mday) + "-time_" + std::to_string(when.tm_hour) + std::to_string(when.tm_min) +
         std::to_string(when.tm_sec) + ".txt";
}

void ReadDataA1::cmdReadDataA1_Click() {
  Flow("cmdReadDataA1_Click");
  S.options.GroupRearedFlag = "No";
  ApplyConsoleRule(S.console, "A1 begins");

  std::string path = P.ChooseFile("Open life table data file");
  // A cohort kept in a spreadsheet is read through the data file written from it.
  if (IsCsvPath(path)) path = ImportCohortCsv(path);
  if (!path.empty()) {
    S.identity.DataFilePath = path;
    P.Status("txtDatafile", path);
    S.identity.DataFileBase = path.size() > 4 ? path.substr(0, path.size() - 4) : std::string();

    if (!AskMinimalOutput()) {
      AskFastRun();
      if (S.options.FastRun != "Yes") AskFlowRecord();
      AskContribution();
      AskExtentOfOutput();
    }

    ApplyConsoleRule(S.console, "A1 file chosen");

    CheckDataFile(S, P, W).CheckDataFile2();
    if (W.cohort.CohortSize < 72) CalcuFMpairLessthan2();
    P.Status("Caption", " (Treatment: " + S.identity.TreatmentName + ")");
    ApplyConsoleRule(S.console, "A1 file checked");
  }

  S.identity.DataFileRead = "Yes";
  ApplyConsoleRule(S.console, "A1 ends");
  if (S.options.FastRun == "Yes") {
    PressBasicRunA2();
    ApplyConsoleRule(S.console, "A1 Fast Run done");
  }
}

bool ReadDataA1::AskMinimalOutput() {
  const std::string title = "Do you need only the basic output (0A) and figure files?";
  int answer = P.MsgBox(
      "Minimal outputs?\n\n"
      "Yes: Only basic output and figure files. (For test program and MNT)\n"
      "No: Regular run.\n"
      "Cancel: End the program.",
      title, kYesNoCancel);
  if (answer == kCancel) throw ProgramEnd{"The program ends, as chosen (Cancel: End the program.).", title};
  if (answer != kYes) return false;
  S.options.MinimalOutput = "Yes";
  S.options.OutputLevel = "Nooutput";
  S.options.MntOutputOnly = "Yes";
  S.options.FlowMode = "No";
  S.options.AnalysisMethod = "Calculus";
  return true;
}

void ReadDataA1::AskFastRun() {
  int answer = P.MsgBox(
      "Do you want to run Fast Run?\n"
      "If you don't want do Fast Run, click \"Cancel\".\n"
      "To create unique data file for each participant, click \"Cancel\".\n"
      "After A1, you can click \"CF\" button to read students' info file.\n"
      "Each student will have a different life table data file.\n"
      "This option is good for teaching.\n"
      "\n##### To use the button \"M\", clcik \"Cancel.\", then complete BASIC RUN.\n"
      "\nIf following conditions are true, you can use Fast Run:\n"
      "   1. You don't record the flow of program.\n"
      "   2. You want to use the calculus method.\n"
      "   3. You don't need to the modify the fecundity.\n"
      "   4. The time unit is one.\n"
      "   5. No curtailed life table will be calculated\n"
      "   6. No rearing cost in life table data file.\n"
      "   7. You don't need to read the consumption rate c(x,j).\n"
      "   8. You will not analyze 3D life table.\n"
      "\nYes: Fast run for two-sex reproduction.\n"
      "No: Fast run for parthenogenetic reproduction.\n"
      "Cancel: Go through all steps. (Choose this for 3D life table.)",
      "Fast run for two-sex or parthenogenetic population?", kYesNoCancel);
  if (answer == kCancel) {
    S.options.FastRun = "No";
    return;
  }
  S.options.FastRun = "Yes";
  S.options.FlowMode = "No";
  S.options.MatingMode = answer == kYes ? "Yes" : "No";
  S.settings.FecundityFactor = 1;
  S.settings.TimeUnit = 1;
  S.options.AnalysisMethod = "Calculus";
  S.options.MoreOptions = "No";
  S.options.EffectOfFxjFlag = "No";
  S.options.WriteSubMatrix = "No";
  S.options.ConsumptionRead = "No";
  S.options.CountOldFemales = "No";
  S.options.AgeConvention = "x+1";
  S.options.SubMatrixAge = 0;
  S.options.SubMatrixStage = 1;
  S.settings.PrecisionCalculus = 1e-07;
  S.header.RegularLifeTable = "Yes";
  S.options.OutputLevel = "Yes";
}

void ReadDataA1::AskFlowRecord() {
  int answer = P.MsgBox(
      "Do you need the record of detailed program flow?\n"
      "(This is for debug, most users don't need this record.)\n"
      "\n"
      "Yes: Detailed program flow will be recorded.\n"
      "No: No program flow will be recorded.\n"
      "Cancel: Flow will be record for bootstrap only.",
      "Do you need flow record?", kYesNoCancel);
  if (answer == kYes) {
    S.options.FlowMode = "Yes";
  } else if (answer == kCancel) {
    S.options.FlowMode = "Boot";
  } else {
    S.options.FlowMode = "No";
    return;
  }
  std::time_t now = std::time(nullptr);
  std::tm tm{};
  localtime_r(&now, &tm);
  S.identity.FlowFileName = FlowFileNameFor(S.identity.DataFileBase, tm);
  // Channel 8 stays open to the end of the session.
  S.channels.Flow.Open(S.identity.FlowFileName);
}

void ReadDataA1::AskContribution() {
  int answer = P.MsgBox(
      "##### Cancel: Print MNT output files only.\n"
      "\n"
      "Do you want to calculate the contribution of this life table data?\n"
      "\n"
      "If this organism can produce offspring in two different ways or types, "
      "e.g., wingless and winged offspring, or offspring produced through bisexual or parthenogenetic "
      "reproduction, you can calculate the contribution of different offspring to the "
      "population parameters.\n"
      "You have to prepare following three life table files:\n"
      "File A with pooled fecundity data of both types of offspring.\n"
      "     (If this is File A, you choose \"No\" to skip this option.\n"
      "File B with fecundity of bisexual mating (or winged aphids)\n"
      "File C with fecundity of parthenogeneitc offspring (or wingless aphds).\n"
      "\n"
      "If you have analyzed File A of pooled fecundity,"
      "you can use this option to calculate the contribution of File B or File C.\n"
      "\n"
      "Yes: Open the A2a file in the folder of the pooled fecundity.\n"
      "No: Skip this option. Choose \"No\" for 3D life table analysis.\n"
      "##### Cancel: Print MNT output files only.",
      "Do you need the contribution of this life table to intrinsic rate?", kYesNoCancel);
  if (answer == kYes) {
    S.options.ContributionWanted = "Yes";
    InputBootRforContribution();
  } else if (answer == kNo) {
    S.options.ContributionWanted = "No";
  } else {
    S.options.OutputLevel = "Nooutput";
    S.options.MntOutputOnly = "Yes";
  }
}

void ReadDataA1::AskExtentOfOutput() {
  if (S.options.FastRun == "Yes") return;
  int answer = P.MsgBox(
      "Do you need all output files?\n"
      "\n"
      "Yes: Prepare all output files.\n"
      "No: Only the major output files will be prepared.\n"
      "Cancel: Fast run without output files (For Multinomial theorem).",
      "Do you need all output files?", kYesNoCancel);
  if (answer == kYes) {
    S.options.OutputLevel = "Yes";
  } else if (answer == kNo) {
    S.options.OutputLevel = "No";
  } else {
    // OutputLevel stays as it is; never set, it is empty, which the writers take like "Yes".
    S.options.QuietCheck = "Yes";
  }
}

// The file is a column file of the bootstrap of the pooled cohort: a tag line, a label, n, a
// label, E, the line "r", n, r of the whole cohort, then one r per effective sample.
void ReadDataA1::InputBootRforContribution() {
  Flow("InputBootRforContribution");
  ReadDataRecord& R = S.readData;
  const std::string path = P.ChooseFile(kContributionFileTitle);
  if (path.empty()) {
    // Nothing to work with: the contribution is off.
    S.options.ContributionWanted = "No";
    return;
  }
  FieldReader in(path);
  in.ReadString();  // treatment and tag
  in.ReadString();  // "Next line is Bootstrap sample size (n)"
  R.ContributionSampleSize = CInt(in.ReadNumber());
  in.ReadString();  // "Next line is total effective Bootstrap number (B)"
  double E = in.ReadNumber();
  in.ReadString();  // "r"
  in.ReadNumber();  // n
  R.ContributionPooledR = in.ReadNumber();
  R.ContributionBootR.Fill(0);
  long count = 0;
  for (long k = 1; k <= E; ++k) {
    R.ContributionBootR(k) = in.ReadNumber();
    count = k;
  }
  R.ContributionBootCount = count;
  R.ContributionRFile = path;
  R.ContributionRLoaded = "Yes";
}

// Among the N^N samples with replacement, those with fewer than two females or fewer than two
// males can't hold two pairs. With a, b, c females, males and N-types:
//   at most one female      (b+c)^N + N a (b+c)^(N-1)
//   at most one male        (a+c)^N + N b (a+c)^(N-1)
//   at most one of each     N a c^(N-1) + N b c^(N-1) + c^N + N(N-1) a b c^(N-2)
// where the last term is taken as 0 when c or b is 0. N below 72 keeps N^N a finite double.
void ReadDataA1::CalcuFMpairLessthan2() {
  Flow("CalcuFMpairLessthan2");
  const double N = W.cohort.CohortSize;
  const double a = S.header.FileFemaleCount;
  const double b = S.header.FileMaleCount;
  const double c = S.header.FileNCount;
  ReadDataRecord& R = S.readData;
  if (N < 1) {
    // An empty cohort has one sample, the empty one, and it holds no pair.
    R.SamplesAll = R.SamplesFemaleLessthan2 = R.SamplesMaleLessthan2 = R.SamplesBothLessthan2 = 1;
    R.FMpairSamples = 0;
    return;
  }
  R.SamplesAll = std::pow(N, N);
  R.SamplesFemaleLessthan2 = std::pow(b + c, N) + N * a * std::pow(b + c, N - 1);
  R.SamplesMaleLessthan2 = std::pow(a + c, N) + N * b * std::pow(a + c, N - 1);
  const double pairTerm = (c == 0 || b == 0) ? 0 : N * (N - 1) * a * b * std::pow(c, N - 2);
  R.SamplesBothLessthan2 =
      N * a * std::pow(c, N - 1) + N * b * std::pow(c, N - 1) + std::pow(c, N) + pairTerm;
  R.FMpairSamples = R.SamplesAll - R.SamplesFemaleLessthan2 - R.SamplesMaleLessthan2 + R.SamplesBothLessthan2;
}

// A Fast Run presses "A2. Basic Run" by program: Basic Run starts at once.
void ReadDataA1::PressBasicRunA2() { BasicRunDriver(S, P, W).cmdBasicRunA2_Click(); }

}  // namespace korvan
