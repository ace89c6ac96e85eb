// Console commands of the paired bootstrap test: "C. Paired BT" (one file per treatment) and
// the pooled route (one file holding all treatments); "Q. CartesianPT", the same test over every
// difference of two treatments' values.
#include "commands/paired_test_commands.h"

#include <string>

#include "comparison/paired_test.h"
#include "store/faults.h"
#include "ui/command_table.h"
#include "ui/console_rules.h"

namespace korvan {

namespace {

// Every treatment and pair field of an earlier comparison back to its start.
void EraseComparison(ComparisonRecord& c) {
  c.BootValue.Clear();
  c.BootValueSeen.Clear();
  for (long i = 0; i <= kMaxTreatmentIndex; ++i) {
    c.TreatmentTitle(i).clear();
    c.TreatmentN(i) = c.TreatmentB(i) = c.BootCount(i) = 0;
    c.TreatmentOriginal(i) = c.FirstPassMean(i) = c.BootMean(i) = c.BootSE(i) = 0;
    for (long j = 0; j <= kMaxTreatmentIndex; ++j) {
      c.PairP(i, j) = c.MeanDifference(i, j) = c.PairLower(i, j) = c.PairPctLower(i, j) = 0;
    }
  }
}

}  // namespace

void PairedTestCommands::cmdPairedBootTest_Click() {
  Flow("cmdPairedBootTest_Click");
  auto& c = S.comparison;
  c.PickedOneByOne = "Yes";
  c.CartesianRun = "No";
  P.Status("lblBootMsg",
           "Input data for paired bootstrap test.\nIn general you choose \"...Effect boot...txt\" files one by one.");
  ApplyConsoleRule(S.console, "C begins");
  c.TableNumber = 0;

  const std::string fastText =
      "Do you want to run fast paired bootstrap test?\n\nFast PBT:\n"
      "1. No detailed info (no detailed differences between treatments).\n"
      "2. You don't need the flow record.\n3. No transformation.\n4. Quicksort and 1024 classes.\n"
      "5. Do not add additional code.\n\nDetailed steps:\n"
      "1. You can get detailed differences between treatments.\n"
      "2. You can use logit or arcsine transformation.\n\nYes: Fast PBT.  No: Detailed steps.";
  if (P.MsgBox(fastText, "Fast paired bootstrap test?", kYesNo) == kYes) {
    c.FastPBT = "Yes";
    S.options.FlowMode = "No";
    c.Transformation = "No";
    c.UseQuickSort = "Yes";
    S.boot.sort.QuickRangesWanted = 1024;
  } else {
    c.FastPBT = "No";
    S.boot.sort.QuickRangesWanted = 1024;
    if (P.MsgBox("Do you need the detailed info?", "Do you need detailed info?", kYesNo) == kYes &&
        P.MsgBox("Do you need the record of program flow?", "Do you need flow record?", kYesNo) == kYes) {
      S.identity.DataFileBase = "24-Paired boot test";
      OpenFlowRecord(S, S.identity.DataFileBase);
    }
    EraseComparison(c);
  }

  ApplyConsoleRule(S.console, "C settled");
  P.Status("cmdPBTPooled", "(Disabled)");
  c.DetailedDifferences = "No";
  if (c.FastPBT != "Yes" &&
      P.MsgBox("Do you need detailed differences between treatments and normal density curves?",
               "Detailed differences", kYesNo) == kYes)
    c.DetailedDifferences = "Yes";

  PairedBootTest test(S, P, W);
  test.InputRawDataForCIonebyone();
  test.BasicAnalysisForCI();
  test.PrintMultiCIofDifference();
  AfterRun();

  const std::string done =
      "Congratulation!  Completed!\nAttention! This comparison is based on t confidence intervals.\n"
      "           This comparison based on percentile confidence intervals may be different.\n\n"
      "Yes: Analyze the next data set.\nNo: End KORVAN.";
  if (P.MsgBox(done, "Task completed!", kYesNo) == kNo) throw SessionQuit{};
  P.Status("lblBootMsg", "");
}

void PairedTestCommands::cmdPBTPooled_Click() {
  Flow("cmdPBTPooled_Click");
  auto& c = S.comparison;
  c.PickedOneByOne = "No";
  c.CartesianRun = "No";
  c.FastPBT = "No";
  c.TableNumber = 0;
  if (P.MsgBox("Do you need the record of program flow?", "Do you need flow record?", kYesNo) == kYes) {
    S.identity.DataFileBase = "24-Paired boot test pooled";
    OpenFlowRecord(S, S.identity.DataFileBase);
  }
  ApplyConsoleRule(S.console, "PBT pooled begins");
  P.Status("cmdBasicRunA2", "(Unavailabe)");
  P.Status("cmdPairedBootTest", "(Disabled)");
  c.DetailedDifferences = "No";
  if (P.MsgBox("Do you need detailed differences between treatments and normal density curves?",
               "Detailed differences", kYesNo) == kYes)
    c.DetailedDifferences = "Yes";
  PairedBootTest test(S, P, W);
  test.MultipleComparisonBasedOnCI();
  test.InputRawDataForCI();
  test.BasicAnalysisForCI();
  test.PrintMultiCIofDifference();
  AfterRun();
}

void PairedTestCommands::cmdCartesianDifference_Click() {
  Flow("cmdCartesianDifference_Click");
  auto& c = S.comparison;
  DisableAllButtonsForCartesian(S.console);
  c.CartesianRun = "Yes";
  c.PickedOneByOne = "Yes";
  c.FastPBT = "No";
  c.TableNumber = 0;
  c.DetailedDifferences = "No";
  const std::string text =
      "Do you need the detailed info?\nIn general you can choose \"No\". If you choose \"Yes\", there will be "
      "many huge files.\nAttention: this version is only for B = 1000, and CPT =" +
      std::to_string(c.CartesianLimit) + ".";
  if (P.MsgBox(text, "Do you need detailed info?", kYesNo) == kYes) {
    if (P.MsgBox("Do you need the record of program flow?", "Do you need flow record?", kYesNo) == kYes)
      OpenFlowRecord(S, "25A-Cartesian diff");
    if (P.MsgBox("Do you need detailed differences between treatments and normal density curves?",
                 "Detailed differences", kYesNo) == kYes)
      c.DetailedDifferences = "Yes";
  }
  EraseComparison(c);

  PairedBootTest test(S, P, W);
  test.CartesianDifference();
  test.CartesianDifference2();
  test.PrintMultiCIofDifference();
  ApplyConsoleRule(S.console, "Cartesian test done");
}

void PairedTestCommands::AfterRun() {
  ApplyConsoleRule(S.console, "Paired test done");
}

}  // namespace korvan
