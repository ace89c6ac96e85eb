#pragma once
// "A1. Read data": the user chooses the data file, settles the run through a fixed row of
// dialogues, and the file is checked. A Fast Run goes on to Basic Run by itself.
#include <ctime>
#include <string>

#include "run/run_context.h"

namespace korvan {

class ReadDataA1 : public Procedures {
 public:
  using Procedures::Procedures;

  void cmdReadDataA1_Click();
  // Reads the r values of the cohort with pooled fecundity ("_Effect Boot-A2a-r.txt") for the
  // contribution of this life table to the intrinsic rate.
  void InputBootRforContribution();
  // Counts the bootstrap samples of size N with at least two females and two males.
  void CalcuFMpairLessthan2();

 private:
  bool AskMinimalOutput();  // true: "Yes", go straight to the enabling of the console
  void AskFastRun();
  void AskFlowRecord();
  void AskContribution();
  void AskExtentOfOutput();
  void PressBasicRunA2();
};

// Name of the flow record of a data file: base + "_0_Flow_" + year month day + "-time_" +
// hour minute second + ".txt", all numbers without leading zeros.
std::string FlowFileNameFor(const std::string& dataFileBase, const std::tm& when);

// Title of the file chooser of InputBootRforContribution.
inline constexpr const char* kContributionFileTitle = "Open the A2a file of the pooled fecundity";

}  // namespace korvan
