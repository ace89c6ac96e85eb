// The command "A3. Bootstrap": its dialogues, the pool, the run, and the files after it.
#include "commands/bootstrap_driver.h"

#include <chrono>
#include <cstdio>
#include <ctime>
#include <string>

#include "bootstrap/bootstrap_run.h"
#include "bootstrap/bootstrap_statistics.h"
#include "bootstrap/cohort_values.h"
#include "engine/stage_statistics.h"
#include "run/dialogues.h"
#include "input/data_file_reader.h"
#include "store/faults.h"
#include "text/numbers.h"
#include "ui/chart_figures.h"
#include "ui/console_rules.h"

namespace korvan {
namespace {

std::string ClockText(std::time_t t) {
  std::tm tm{};
  localtime_r(&t, &tm);
  char buf[64];
  std::snprintf(buf, sizeof buf, "%d/%d/%d %02d:%02d:%02d", tm.tm_mon + 1, tm.tm_mday, tm.tm_year + 1900,
                tm.tm_hour, tm.tm_min, tm.tm_sec);
  return buf;
}

std::string TwoDecimals(double v) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.2f", v);
  return buf;
}

}  // namespace

std::string BootstrapDriver::TimeText(double d, const std::string& before) const {
  if (d <= 120) return TwoDecimals(d) + " sec.";
  if (d < 600) return TwoDecimals(d / 60) + " min.";
  if (d > 600) return TwoDecimals(d / 3600) + " hr.";
  return before;  // exactly 600 s: the text stands as it was
}

bool BootstrapDriver::CohortHasFertileFemale() const {
  const Cohort& C = S.ws.cohort;
  const int m = S.header.StageCount;
  const int N = S.header.CohortSizeRead > 0 ? S.header.CohortSizeRead : C.CohortSize;
  for (int i = 1; i <= N; ++i) {
    if (C.IndividualSex(i) != "F") continue;
    const double d = C.StageDuration(i, m);
    for (int day = 1; day <= d + 1; ++day) {
      const double e = C.Fecundity(i, day);
      if (e < 0) break;
      if (e > 0) return true;
    }
  }
  return false;
}

void BootstrapDriver::AskHistogramAndNormalCurves() {
  BootstrapRecord& R = S.boot;
  const std::string title = "More bars for histogram chart?";
  const std::string text =
      "Do you want to see more classes (Yes=50 bars, No=20 bars)?\n"
      "(In most cases, you can choose \"Yes\")\n\n"
      "Yes: show 50 bars.\n"
      "No: 20 bars.\n"
      "Cancel: End the program.";
  const int a = YesNoOrEnd(P, text, title);
  R.HistogramBars = a == kYes ? 50 : 20;
  R.HistogramBarsPlus1 = a == kYes ? 51 : 21;
  ApplyConsoleRule(S.console, "A3 histogram chosen");
  const std::string ntitle = "Normal density curve?";
  const std::string ntext =
      "Do you need bootstrap frequency file and normal curves?\n"
      "(In most cases, you can choose \"No\".)";
  if (P.MsgBox(ntext, ntitle, kYesNo) == kYes) R.BootNormalCurves = "Yes";
}

void BootstrapDriver::SetResamplingMarkers() {
  S.boot.ResampleKind = "b";
  S.boot.GeneralBootFlag = "No";  // the record is no. 11 again
  W.run.ResampleKind = "b";
  W.run.IsResamplingFlag = "y";
  W.run.IsBasicRunFlag = "n";
  W.run.Boot = 0;
}

void BootstrapDriver::cmdBootstrap_Click() {
  Flow("cmdBootstrap_Click");
  BootstrapRecord& R = S.boot;
  R.BootSessionFlag = "Yes";
  cmdBootstrap01();
  if (R.BootFastRun != "Yes") {
    if (R.BootstrapCompleted == "yes") {  // a second press only shows the chart again
      P.ShowChart(ShowFreqR0(S));
      return;
    }
    cmdBootstrap02();
  }
  if (R.BootFastRest != "Yes") AskHistogramAndNormalCurves();
  if (!CohortHasFertileFemale()) {
    ApplyConsoleRule(S.console, "A3 no fertile female");
    throw ProgramEnd{"Because there is no fertile female, you cannot run bootstrap.",
                     "No female reproduced offspring."};
  }
  ApplyConsoleRule(S.console, "A3 samples begin");
  SetResamplingMarkers();

  DataFileReader reader(S, P, W);
  reader.InputdataBoot();
  if (R.BootFastRun == "Yes") {
    R.BootSampleSize = R.BootFastRunAnswer == std::to_string(kYes) ? S.pool.OriginalCohortSize : 10;
    W.cohort.CohortSize = R.BootSampleSize;
  } else if (R.SameBootstrap != "Yes") {
    BeginBootstrap();
  }

  ShowRunningText();
  BootstrapRun run(S, P, W);
  const auto begin = run.begin = std::chrono::steady_clock::now();
  const std::time_t beginClock = std::time(nullptr);
  R.BootBeginText = "Bootstrap began at: " + ClockText(beginClock);
  R.BootDateText = ClockText(beginClock);
  run.RunSampleLoop();

  // The contribution of this table to the pooled population's r and lambda, sample by sample.
  if (R.EffectiveOnly == "Yes" && S.readData.ContributionRLoaded == "Yes") run.WriteContributionFiles();
  BootstrapStatistics stats(S, P, W);
  stats.Boot01Partial();

  const double d = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  R.LoopSeconds = d;
  R.BootEndText = "Bootstrap ended at: " + ClockText(std::time(nullptr));
  R.BootTotalTimeText = TimeText(d, R.BootTotalTimeText);
  P.Status("lblBootBegin", R.BootBeginText);
  P.Status("lblBootEnd", R.BootEndText + "\nTotal time = " + R.BootTotalTimeText);
  std::string writing = "Writing output files. Please wait for the R0 bar chart.\nFor B <= 100000, it will take about 2 sec ~10 min.";
  if (R.BootB >= 1000000) writing += "\nFor B = 1 million, it will take 30 min or longer.";
  P.Status("lblBootMsg", writing);

  P.Beep();
  run.WriteSampleRecord();
  bool sortStep = true;
  AskPercentileWork(sortStep);
  if (sortStep) run.SortAndWritePercentiles();

  StageStatsEngine(S, P, W).Life08();
  run.LxMxConfidenceLimits();
  stats.Boot01();
  run.WriteColumnFiles();
  P.ShowChart(ShowFreqR0(S));
  ApplyConsoleRule(S.console, "A3 column files written");

  R.BootstrapCompleted = "yes";
  const auto filesBegin = std::chrono::steady_clock::now();
  const double total = std::chrono::duration<double>(filesBegin - begin).count();
  P.Status("lblBootEnd", "Total time = " + TimeText(total, R.BootTotalTimeText));
  ApplyConsoleRule(S.console, "A3 results shown");
  if (R.BootNormalCurves == "Yes") run.WriteNormalCurveFiles();
  ApplyConsoleRule(S.console, "A3 normality");
  run.CountIndividualFrequencies();

  P.Beep();
  const double t = std::chrono::duration<double>(std::chrono::steady_clock::now() - filesBegin).count();
  std::string printing = "Total time for printing and sorting =";
  if (t < 120)
    printing += TwoDecimals(t) + " sec.";
  else if (t < 3600)
    printing += TwoDecimals(t / 60) + " min.";
  else
    printing += TwoDecimals(t / 3600) + " hr.";
  P.Beep();
  P.Status("lblBootMsg", "Bootstrap completed (B = " + FullPrecision(R.BootB) + ").\n" + printing);
  P.MsgBox("Analysis completed! Congratulation!\n" + printing + "\n\nPlease read " + S.identity.DataFileBase +
               "_0A_Life Table_Output.txt.\n\nRecord of bootstrap samples are saved in " + R.RecordFilePath + ".",
           "Task completed", kOKOnly);
  ApplyConsoleRule(S.console, "A3 ends");
}

void BootstrapDriver::ShowRunningText() {
  P.Status("lblBootMsg", "I am running bootstrap. \n(B =" + PrintNumber(S.boot.BootB) +
                             ").\nPlease wait!\nDon't touch me!");
}

void BootstrapDriver::AskPercentileWork(bool& sortStep) {
  BootstrapRecord& R = S.boot;
  sortStep = true;
  if (R.BootFastRun == "Yes" || R.MajorFilesOnly == "Yes") return;
  if (ReadCohortValues(S).R0 <= 1) {
    R.PercentileTables15 = "No";
    R.PercentileTables025975 = "No";
    sortStep = false;
    return;
  }
  const std::string fastText =
      "Do you want to run fast steps?\nFast step offers:\n1. 0.025 and 0.975 percentiles files.\n"
      "   You can use them to show the uncertainty of ZELTOM.\n2. No detaied 0.1, 0.2, 0.3 files.\n"
      "3. Precision of R0 = 0 (exact).\n   (In general, you choose \"Yes\".)\n\nYes: Fast step.\n"
      "No: You can make your decision for each one.\n\n"
      "If you are not sure, you can choose \"No\" to make your decision later.";
  if (P.MsgBox(fastText, "Fast steps?", kYesNo) == kYes) {
    R.PercentileTables15 = "No";
    R.PercentileTables025975 = "Yes";
    R.R0Precision = 0;
    R.R0PrecisionSettled = true;
    R.BootFastRun = "Yes";
    return;
  }
  const std::string t2 =
      "Do you need life tables of 0.025 and 0.975 percentiles?\n\n"
      "The 0.025 and 0.975 percentile life tables can be used to show the uncertainty of simulation. \n"
      "You should copy these files to new folders and run KORVAN again to get ZELTOM data files. \n"
      "In general, you choose \"Yes\".\n"
      "Yes: I need life table files of 0.025 and 0.975 percentiles.\n"
      "No: I don't need them.";
  R.PercentileTables025975 = P.MsgBox(t2, "Percentile life tables?", kYesNo) == kYes ? "Yes" : "No";
  const std::string t3 =
      "Do you need life tables of 0.025, 0.05, 0.1, 0.15866, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.84135, 0.9, "
      "0.95, and 0.975 percentiles?\n"
      "There will be in total 15 life tables.\n"
      "If you want to prepare l(x) and m(x) for major bootstrap percentiles, you have to choose Yes.\n"
      "If you choose \"Yes\", it may take a few seconds longer.\n"
      "You can use these percentile life tables to prepare 15 ZELTOM files.\n"
      "These 15 ZELTOM files can be used to get the 15 simulation results.\n"
      "The 15 population sizes at specific date can be used to run \"Gen. boot\" to get the bootstrap "
      "results.\n"
      "Then you can compare the simulated population sizes of different treatments to see whether the "
      "difference is significant.\n"
      "In you don't want to run ZELTOM, you can choose \"No\".";
  R.PercentileTables15 = P.MsgBox(t3, "Percentile life tables?", kYesNo) == kYes ? "Yes" : "No";
  const std::string t4 =
      "Do you need 100 life tables (0.01, 0.02, ....., .98, and 0.99 percentiles? (There will be 100 life "
      "tables.)\n"
      "If you choose \"Yes\", it may take a few seconds longer.\n"
      "You can use these 100 percentile life tables to prepare 100 ZELTOM files.\n"
      "These 100 ZELTOM files can be used to get the 100 simulation results.\n"
      "The 100 population sizes at specific date can be used to run \"Gen. boot\" to get the bootstrap "
      "results.\n"
      "Then you can compare the simulated population sizes of different treatments to see whether the "
      "difference is significant.\n"
      "In you don't want to run ZELTOM, you can choose \"No\".";
  R.PercentileTables100 = P.MsgBox(t4, "100 life tables for every percentile?", kYesNo) == kYes ? "Yes" : "No";
  if (R.BootFastRun != "Yes" && !R.R0PrecisionSettled) {
    const std::string t5 =
        "Enter the precision for grouping Ro: 0 = Exact, 1 = 10^(-10), 2 = 10^(-11), 3 = 10^(-12), 4 = "
        "10^(-13), 5 = 10^(-14),6 = 10^(-15).";
    const std::string a = InputOrEnd(P, t5, "Enter precision level", "0");
    R.R0Precision = CInt16(NumberOfText(a));
    R.R0PrecisionSettled = true;
  }
}

}  // namespace korvan
