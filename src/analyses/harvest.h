#pragma once
// Mass rearing under harvest. On the age-stage matrices of a finished Basic Run, for a target
// stage and a last age of the rearing system, the largest constant harvest rate (a grid of
// 0.0001) at which the colony still replaces itself (R0 >= 1), and the stable colony that
// yields an expected harvest per time unit, with its size and costs.
//
// The harvest takes a share of the transition into the target stage (of the female's eggs for
// stage 1): the row of D (or F) the target cuts is multiplied by 1 - rate over the ages of
// the stage that row leaves, up to the last harvest age. Sh, the survival to age x and stage j
// of the harvested colony, follows from G and the harvested D as s(x,j) does from G and D.
#include <string>

#include "run/run_context.h"

namespace korvan {

// The six conservation levels by their captions, in the form's order.
inline constexpr const char* kConservationLevels[] = {"Ro(original)", "Ro(0.1587)", "Ro(0.025)",
                                                      "Other",        "Ro-SE",      "Ro-2SE"};
// Whether a level needs the file "_Z-R0 and boot SE for harvest.txt" (every one but the first).
bool ConservationNeedsSEFile(const std::string& level);
// The form's list of the life table: the stages with their age ranges, and R0.
std::string HarvestLifeTableInformation(const SessionStore& S);

class MassRearingHarvest : public Procedures {
 public:
  using Procedures::Procedures;

  // Loading the form: the original G, D and F are saved; the list of the life table.
  void SaveOriginalMatrices();

  // "Read Ro and SE first": the file written by the bootstrap. False (with a message) on a
  // short or garbled file; nothing of an earlier reading is kept then.
  bool ReadRoAndSEFile(const std::string& path);

  // "Calculate the sustainable harvest rate": the form's fields are in S.harvest.
  void Command1();

  // The procedures of Command1, in the order it runs them.
  void ScaleFecundityForConservation();
  void JudgeLastHarvestAge();
  void AskMaleHarvest();
  void CalculateFforHarvest(double rate);
  void CalculateDforHarvestingFemale(double rate);
  void CalculateDforHarvestingMale(double rate);
  void CalculateDforHarvest(double rate);
  void ConstructNewS();
  void ConstructFinalS();
  double CalculateR0forHarvest() const;
  void CalculateSASDwithHarvest();
  void CalculateHarvestRatePerEgg();
  void CalculateHarvestRatePerAdult();
  void CalculateStageNumberInStableSystem();

  // Output: "_0L_harvest_0-Basic_output.txt" (or "...-conserved..."), the system in words, and
  // the five figure files "_0K-fig_harvest_...".
  void PrintOutputFilesGDFS();
  void PrintSystemFile();
  void PrintGraphicFilesGDFS();

 private:
  // The harvested row at the rate given (one of the four cuts by target).
  void CutAtRate(double rate);
  // Sh from G and Dh; with totals, the sum of each stage goes to StageShSum.
  void BuildSurvival(bool totals);
  // The last age of stage j inside the rearing system.
  int StageEnd(int j) const;
  // The stage whose ages the cut runs over.
  int CutStage() const;
};

}  // namespace korvan
