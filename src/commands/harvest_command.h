#pragma once
// "H. Harvest" and "I. Contribution": the two forms on the matrices of a finished Basic Run. On
// the command line a form is its dialogues in the order of use, then its main button.
#include "run/run_context.h"

namespace korvan {

// The titles of the forms' dialogues: answer files key on them, and the desktop program's forms
// answer them from their fields.
namespace form_titles {
inline constexpr const char* kTargetStage = "Target stage";
inline constexpr const char* kLastHarvestAge = "Enter the Last harvest age:";
inline constexpr const char* kExpectedHarvest = "Expected harvest number of target stage =";
inline constexpr const char* kHarvestCost = "Cost per harvesting one individual of the target stage =";
inline constexpr const char* kConservationLevel = "Conservation level";
inline constexpr const char* kSEFile = "Open Z-Ro and bootSE for harvest.txt";
inline constexpr const char* kOtherR0 = "R0(h)=?";
inline constexpr const char* kPooledFile = "1. Read population parameters of all offspring";
inline constexpr const char* kPooledR = "Intrinsic rate of increase of all offspring =";
inline constexpr const char* kPooledR0 = "Net reproductive rate of all offspring =";
}  // namespace form_titles

class FurtherAnalysisForms : public Procedures {
 public:
  using Procedures::Procedures;
  // The form Harvest: target stage, last harvest age, expected harvest, cost, conservation
  // level (with the file of R0 and its SE where the level needs it), then Command1.
  void cmdHarvest_Click();
  // The form frmContribution: the pooled cohort's parameters from its file or entered, then
  // Command1.
  void ContributionPartition_Click();
};

}  // namespace korvan
