#include "commands/sort_count_commands.h"

#include <cmath>
#include <string>
#include <vector>

#include "bootstrap/sort_file.h"
#include "bootstrap/sorting.h"
#include "text/numbers.h"
#include "text/text_file.h"
#include "ui/chart_figures.h"

namespace korvan {

namespace {

std::string BaseOf(const std::string& path) { return path.size() > 4 ? path.substr(0, path.size() - 4) : path; }

}  // namespace

bool SortCountCommands::AskFlowRecord() {
  return P.MsgBox("Do you need the record of program flow?", "Do you need flow record?", kYesNo) == kYes;
}

void SortCountCommands::OpenFlowFor(const std::string& path, bool flow) {
  // A record already open (from A1) goes on; else one beside the file sorted.
  if (flow && S.options.FlowMode != "Yes") OpenFlowRecord(S, BaseOf(path));
}

bool SortCountCommands::AskDecimals(SortFile& sort) {
  const std::string title = "Limit the decimal points?";
  const double d = NumberOfText(P.InputBox(
      "Limit of decimal points (0, 1, 2, 3, 4, 5 and -1).\n[Enter -1 (minus 1) to use double precision.]", title,
      "-1"));
  if (!(d >= -1 && d <= 5 && d == std::floor(d))) {
    P.MsgBox("The limit of decimal points must be 0, 1, 2, 3, 4, 5 or -1. Nothing was sorted.", title, kOKOnly);
    return false;
  }
  sort.Decimals = static_cast<int>(d);
  return true;
}

bool SortCountCommands::SortForBootstrapResults(SortFile& sort, bool flow) {
  const int kind = P.MsgBox(
      "You can use this button to sort a data file.\n"
      "Choose a general data file or a bootstrap resampling file to sort.\n"
      "Don't choose a \"sorted\" file. It is already sorted. \n"
      "You don't need to sort it again.  You can use it to prepare figures.\n\n"
      "Yes: General integer data (Individual developmental duration, longevity, fecundity, etc). \n"
      "You will get the sorted and counted files. You will see the frequency distribution. \n"
      "No bootstrap technique will be used. The output files are not for paired test.\n\n"
      "Cancel: PBT or CPT results (e.g., file no. 24 or 25). ",
      "Sort and count general data or bootstrap results", kYesNoCancel);
  sort.Kind = kind == kYes ? SortFileKind::General : kind == kNo ? SortFileKind::Boot : SortFileKind::Differences;
  sort.SerialNumbers = P.MsgBox("Are there serial numbers in your data file?\n"
                                "Yes: i and x(i).\n"
                                "No: x(i) only.\n"
                                "Most bootstrap results are without serial numbers.\n"
                                "Bootstrap results of population parameters are offered in both formats.",
                                "Data formate", kYesNo) == kYes;
  sort.Path = P.ChooseFile(sort.Kind == SortFileKind::General ? "Open a general data file to sort"
                                                              : "Open a bootstrap file to sort");
  if (sort.Path.empty()) return false;
  OpenFlowFor(sort.Path, flow);
  if (!AskDecimals(sort)) return false;
  sort.SortForBootstrapResults();
  S.boot.sort.OtherName = sort.Variable;
  P.Status("lblBootMsg", sort.SortedPath + "\n" + sort.PercentilePath);
  return true;
}

void SortCountCommands::ShowCounts(const SortFile& sort) {
  const ValueGroups& g = S.boot.sort.OtherGroups;
  std::vector<double> values, counts;
  for (long k = 1; k <= g.Count; ++k) {
    values.push_back(g.Value(k));
    counts.push_back(g.Members(k));
  }
  P.ShowChart(ShowFreqForm("Frequency of " + sort.Variable + " (N = " + std::to_string(sort.Count) + ")",
                           sort.Variable, values, counts));
}

void SortCountCommands::cmdSortandCount_Click() {
  Flow("cmdSortandCount_Click");
  const bool flow = AskFlowRecord();
  bool threeColumns = false;
  if (P.MsgBox("Sort bootstrap results or sort the bootstrap differences?\n"
               "Yes: Sort bootstrap results.\n"
               "No: Sort the bootstrap differences.",
               "Sort and count", kYesNo) == kNo) {
    threeColumns = P.MsgBox("Data file with two or three column?\nYes: Two column.\nNo: Three column.",
                            "Two or three columns?", kYesNo) == kNo;
  }
  SortFile sort(S, P);
  if (!threeColumns) {
    if (!SortForBootstrapResults(sort, flow)) return;
    ShowCounts(sort);
    return;
  }
  sort.Path = P.ChooseFile("Open a bootstrap file to sort");
  if (sort.Path.empty()) return;
  OpenFlowFor(sort.Path, flow);
  if (!AskDecimals(sort)) return;
  sort.SortForBootstrapResults3columns();
  P.Status("lblBootMsg", sort.SortedPath);
  P.MsgBox("Bootstrap results sorted and data file ready!", "Task completed!", kOKOnly);
}

void SortCountCommands::cmdGeneralNormalTest_Click() {
  Flow("cmdGeneralNormalTest_Click");
  const bool flow = AskFlowRecord();
  SortFile sort(S, P);
  if (!SortForBootstrapResults(sort, flow)) return;
  ShowCounts(sort);
  P.ShowChart(ShowCumuFreqNormForNbutton(S));
}

void SortCountCommands::cmdShowCumuFreqinProbit_Click() {
  Flow("cmdShowCumuFreqinProbit_Click");
  const BootstrapRecord& R = S.boot;
  SortStore& s = S.boot.sort;
  if (R.BootstrapCompleted != "yes" || R.ResampleKind != "b" || s.R0Groups.Count < 1) {
    P.MsgBox("The normality test of R0 needs the results of a bootstrap (A3) of this session.", "Normality test",
             kOKOnly);
    return;
  }
  FormCumulativeProbits(s.R0Groups, R.BootB, s.R0CumulativeFrequency, s.R0Probit);
  {
    TextFile out(OutputName(S, "_G_Boot. R0 and Cumu. Freq. in Probit.txt"));
    out.Write("Boot. R0");
    out.Write("R0", "Count", "Cumu. Freq.", "Cumu. Freq. in Probit");
    for (long k = 1; k <= s.R0Groups.Count; ++k) {
      if (k == s.R0Groups.Count)
        out.Write(s.R0Groups.Value(k), s.R0Groups.Members(k), s.R0CumulativeFrequency(k));
      else
        out.Write(s.R0Groups.Value(k), s.R0Groups.Members(k), s.R0CumulativeFrequency(k), s.R0Probit(k));
    }
  }
  P.ShowChart(ShowCumuFreqOfNormality(S));
}

}  // namespace korvan
