#pragma once
// "L. Sort+count", "N. Normality" and "Normality test": sorting a file of values and counting
// its equal values, the normality of the list on a probit scale, and that of bootstrap R0.
#include "run/run_context.h"

namespace korvan {

class SortFile;

class SortCountCommands : public Procedures {
 public:
  using Procedures::Procedures;
  void cmdSortandCount_Click();
  void cmdGeneralNormalTest_Click();
  void cmdShowCumuFreqinProbit_Click();

 private:
  // The dialogue of the sort (kind, serial numbers, file, decimals) and the sort itself; false
  // when the user left it (Cancel at the chooser, a limit of decimals out of range).
  bool SortForBootstrapResults(SortFile& sort, bool flow);
  // Shows the counts of the sorted list's equal values.
  void ShowCounts(const SortFile& sort);
  bool AskFlowRecord();
  bool AskDecimals(SortFile& sort);
  void OpenFlowFor(const std::string& path, bool flow);
};

}  // namespace korvan
