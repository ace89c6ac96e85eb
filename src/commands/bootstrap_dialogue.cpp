// The dialogue of a bootstrap run: cumulative numbering, the infertile criterion, the fast
// run and its settings, same samples, specific samples, detailed results, effective samples
// only, and B and n.
#include <string>

#include "commands/bootstrap_driver.h"

#include "bootstrap/sample_records.h"
#include "run/dialogues.h"
#include "bootstrap/uniform_random.h"
#include "input/field_reader.h"
#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {
namespace {

std::string YesNo(int answer) { return answer == kYes ? "Yes" : "No"; }

}  // namespace

void BootstrapDriver::cmdBootstrap01() {
  Flow("cmdBootstrap01");
  BootstrapRecord& R = S.boot;
  // The generator's start: the run's seed, from the clock unless one was asked for.
  R.RunSeed = S.runControl.hasSeed ? S.runControl.seed : SeedFromClock();

  const std::string maxB = FullPrecision(R.MaxBootB);
  const std::string title1 = "Cumulative (or additive) bootstrapping?";
  const std::string text1 =
      "Because the number of bootstrap resampling (B) is limited by CPU and RAM, you cannot run a B > " +
      maxB +
      " by using this version. However, because each bootstrap resampling is independent, you can use "
      "repetitively cumulative or additive bootstrap to add bootstrap resamples to the previous results. "
      "In this way, you can achieve a much greater number of bootstrap samples, e.g., 10 millions, 20 "
      "millions, etc.\n\nIf this is the first time you run bootsrap, you must enter 1. If you want to add "
      "bootstrap samples to the last run, you must enter the first number for this bootstrap B (e.g.," +
      FullPrecision(R.MaxBootB + 1) + ").";
  R.FirstBootNumber = CInt(NumberOfText(InputOrEnd(P, text1, title1, "1")));

  const std::string title2 = "Set the criterion of infertile sample?";
  const std::string text2 =
      "You can use this option to set the criterion of infertile bootstrap samples.  For example, if you "
      "set 2 as infertile criterion, samples with 3 or less fertile pairs will be treated as infertile "
      "samples. ";
  R.InfertileCriterion = CInt16(NumberOfText(InputOrEnd(P, text2, title2, "1")));

  AskFastRun();
}

void BootstrapDriver::AskFastRun() {
  BootstrapRecord& R = S.boot;
  const std::string title = "Fast run for bootstrap?";
  const std::string text =
      "Do you want to run Fast Run for bootstrap?\n"
      "If you want to use \"the same bootstrap\" or \"cumulative bootstrap\", you must choose \"Cancel\".\n"
      "If you want to get all files of all kinds of comparison, you must choose \"Cancel\".\n\n"
      "Yes: Run fast run for bootstrap with only effective bootstrap samples.\n"
      "No: Fast run for bootstrap with sample size 10.\n"
      "Cancel: Select detailed steps for bootstrap.";
  const int answer = P.MsgBox(text, title, kYesNoCancel);
  R.BootFastRunAnswer = std::to_string(answer);
  if (answer == kYes || answer == kNo) {
    R.BootFastRun = "Yes";
    LoadFastSettings();
    R.EffectiveOnly = answer == kYes ? "Yes" : "No";
  } else {
    R.BootFastRun = "No";
  }
  if (R.BootB == 1000000) {
    const std::string t = "Do you need only the bootstrap files of major population parameters?";
    const std::string x = t +
                          "\nIt will take longer run time for B = 1,000,000.\n"
                          "Yes: I need only major bootstrap results.\n"
                          "No: I need all bootstrap results.\n"
                          "Cancel: End the program.";
    const int a = YesNoOrEnd(P, x, t);
    R.MajorFilesOnly = YesNo(a);
  }
}

void BootstrapDriver::LoadFastSettings() {
  BootstrapRecord& R = S.boot;
  S.options.FlowMode = "No";
  S.options.AnalysisMethod = "Calculus";
  S.settings.FecundityFactor = 1;
  S.settings.TimeUnit = 1;
  S.options.AgeConvention = "x+1";
  S.settings.PrecisionCalculus = 1e-07;
  S.options.SubMatrixAge = 0;
  S.options.SubMatrixStage = 1;
  S.options.EffectOfFxjFlag = "No";
  S.options.WriteSubMatrix = "No";
  S.options.MoreOptions = "No";
  R.SameBootstrap = "No";
  R.DetailedBootResults = "No";
  R.BootNormalCurves = "No";
  R.PercentileTables15 = "No";
  R.MajorPercentileLxMx = "No";
  S.options.OutputLevel = "No";
  R.HistogramBars = 50;
  R.HistogramBarsPlus1 = 51;
  R.SpecificSample(1) = 0;
  R.PercentileTables025975 = "Yes";
  R.UseQuickSort = "Yes";
  R.QuickRangesWanted = 1024;
  R.R0Precision = 0;
  R.R0PrecisionSettled = true;
  R.BootB = CInt(R.MaxBootB);
  R.BootBReal = R.MaxBootB;
}

void BootstrapDriver::cmdBootstrap02() {
  Flow("cmdBootstrap02");
  BootstrapRecord& R = S.boot;
  if (R.FirstBootNumber > 1) {
    R.SameBootstrap = "No";
  } else {
    AskSameBootstrap();
  }
  if (R.SameBootstrap == "Yes" && R.BootFastRest != "Yes") {
    AskSpecificSamples();
    AskMajorPercentiles();
  }
  if (R.BootFastRest != "Yes") {
    const std::string title = "Detailed bootstrap results?";
    const std::string text =
        "Do you need the table of all bootstrap results? (In general, \"No\")\n"
        "Yes: All bootstrap results will be saved.\n"
        "     (it will take a lot of disk space.)\n"
        "No: Only the mean, variance, and SE will be saved.\n"
        "Cancel: Stop the program.";
    const int a = YesNoOrEnd(P, text, title);
    R.DetailedBootResults = YesNo(a);
  }
  if (R.SameBootstrap != "Yes") {
    const std::string title = "Only effective bootstraps?";
    const std::string text =
        "Do you want only effective bootstrap samples?\n"
        "If it is a two-sex population, an \"effecitve bootstrap sample (EB)\" is a bootstrap sample "
        "containing at least one reproductive female and one male. Bootstrap samples do not have at least "
        "one male and one reproductive female are \"ineffective or infertile bootstrap samples (IB)\".\n"
        "If it is a parthenogenetic population, an \"Effective bootstrap sample (EB)\" is a bootstrap sample "
        "containing at least one reproductive female.\n\n"
        "Note well! If the survival rate is extremely low or there are only a few reproductive females, EB "
        "will generate biased bootstrap results.\n\n"
        "If you use \"the same bootstrap samples\" for this run, then the same condition,i.e., EB or IB, "
        "will be used for the next time.\n\n"
        "Yes: Only EB will be accepted.\n"
        "No: Both EB and IB will be accepted.\n"
        "Cancel: End the program here.";
    const int a = YesNoOrEnd(P, text, title);
    R.EffectiveOnly = YesNo(a);
  }
}

void BootstrapDriver::AskSameBootstrap() {
  BootstrapRecord& R = S.boot;
  const std::string title = "Same bootstrap samples?";
  const std::string text =
      "If you have already completed the bootstrap for this data file before, you can use the same "
      "bootstrap samples for this run (Click on Yes.) \n"
      "Attention!  This good option should be used with large B. There are always variations among "
      "bootstraps. The larger B you use, the more stable results you will get. If you didn't run the "
      "boostrap for the same data, you have to choose \"No\". \n\n"
      "Yes: Use the same bootstrap samples (file no. 11)\n"
      "No: Run a new bootstrap resampling.\n"
      "Cancel: End the program here.";
  const int a = YesNoOrEnd(P, text, title);
  if (a != kYes) {
    R.SameBootstrap = "No";
    return;
  }
  R.SameBootstrap = "Yes";
  const std::string restTitle = "Fast run for the rest steps?";
  const std::string restText =
      "Do you want to run Fast Run for the rest steps?\n"
      "Fast run will use following options:\n"
      "1. No detailed l(x)m(x) for major percentiles.\n"
      "2. No detailed bootstrap tables.\n"
      "3. Same bootstrap samples = \"Yes\".\n"
      "4. A bar chart with 50 bars will be prepared.\n"
      "5. No bootstrap normal distribution files will be prepared.\n"
      "If you are not sure, you can choose \"No\".";
  if (P.MsgBox(restText, restTitle, kYesNo) == kYes) {
    R.BootFastRest = "Yes";
    R.MajorPercentileLxMx = "No";
    R.DetailedBootResults = "No";
    R.SameBootstrap = "Yes";
    R.HistogramBars = 50;
    R.HistogramBarsPlus1 = 51;
    R.BootNormalCurves = "No";
  } else {
    const std::string saveTitle = "Save bootstrap samples?";
    const std::string saveText =
        "Do you want to save the bootstrap samples once again? (Yes or No)\n"
        "Yes: Save the bootstrap samples once again in this folder.\n"
        "No: Don't save the bootstrap samples once again.\n"
        "Cancel: End the program.";
    const int s = YesNoOrEnd(P, saveText, saveTitle, 2);
    R.SaveSamplesAgain = YesNo(s);
  }
  SampleRecords(S, P, W).ReadSameBootstrapData();
}

void BootstrapDriver::AskSpecificSamples() {
  BootstrapRecord& R = S.boot;
  R.SpecificSampleCount = 0;
  for (;;) {
    const std::string title = "Specific bootstrap sample =?";
    const std::string text =
        "If you want to prepare the life table data file for specific bootstrap sample, enter the bootstrap "
        "number. \n"
        "You must complete the bootstrap run (A3). You should not choose \"Cancel\" in following steps.\n"
        "If you don't need it, just enter 0.";
    const std::int32_t k = CInt(NumberOfText(InputOrEnd(P, text, title, "0")));
    R.SpecificSample(++R.SpecificSampleCount) = k;
    if (k == 0) return;
    const std::string againTitle = "Prepare another life table data file?";
    const std::string againText =
        "Do you want to prepare the life table for another specific bootstrap sample?\n"
        "Click \"Yes\" to prepare next life table.\n"
        "Click \"No\" to go to the next step.";
    if (P.MsgBox(againText, againTitle, kYesNo) != kYes) return;
  }
}

void BootstrapDriver::AskMajorPercentiles() {
  BootstrapRecord& R = S.boot;
  const std::string title = "Prepare l(x) and m(x) for major percentiles?";
  const std::string text =
      "Do you want to read specific bootstrap samples and prepare the l(x) and m(x) data?\n"
      "If and only if you have already saved the \"0.025, 0.1, ...., 0.975\" files, then can you choose "
      "Yes.\n"
      "You have to choose the file \"_0Aa_All spec boot percentile samples.txt\".\n"
      "Yes: Read specific bootstrap samples to prepare the l(x) and m(x) data.\n"
      "No: Skip this step.\n"
      "Cancel: End the program.";
  const int a = YesNoOrEnd(P, text, title);
  if (a != kYes) {
    R.MajorPercentileLxMx = "No";
    return;
  }
  std::string path;
  while (path.empty()) path = P.ChooseFile("Open \"_0Aa_All spec boot percentile samples.txt\"");
  FieldReader in(path);
  // Each row: a label, the percentile, the sample number (and the number once more).
  for (int row = 0; row <= 14; ++row) {
    const int line = in.Line();
    in.ReadString();
    R.MajorPercentileP(row) = in.ReadNumber();
    R.MajorPercentileSample(row) = CInt(in.ReadNumber());
    while (!in.AtEnd() && in.Line() == line) in.ReadString();
  }
  R.MajorPercentileLxMx = "Yes";
  R.MajorPercentileFile = OutputName(S, "_0Ac_lx mx of major percentiles in col.txt");
}

void BootstrapDriver::BeginBootstrap() {
  Flow("BeginBootstrap");
  BootstrapRecord& R = S.boot;
  const std::string maxB = FullPrecision(R.MaxBootB);
  const std::string titleB = "Number of bootstrap resamplings (B)=?";
  const std::string textB = "Enter the number of bootstrap (B <=" + maxB +
                            ").\n"
                            "If this version is for larger B (500,000 or 1 million), you can enter larger B. \n"
                            "If you want to link life table and VORAGEN, you have to use the same B.";
  const double b = NumberOfText(InputOrEnd(P, textB, titleB, maxB));
  R.BootB = CInt(b);
  R.BootBReal = R.BootB;

  const std::string titleN = "Bootstrap sample size (n) =?";
  const std::string textN =
      "Enter the sample size (n) of bootstrap\n\n"
      "In general, the cohort size should be used in bootstrap.\n"
      "If you understand the bootstrap technique, you can use a larger or smaller sample size.";
  const double n = NumberOfText(InputOrEnd(P, textN, titleN, std::to_string(S.pool.OriginalCohortSize)));
  R.BootSampleSize = CInt(n);
  W.cohort.CohortSize = R.BootSampleSize;
}

}  // namespace korvan
