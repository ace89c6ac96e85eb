#pragma once
// Records of the two further analyses on the matrices of a finished Basic Run: mass rearing
// under harvest, and the contribution of one type of offspring to the pooled parameters.
#include <string>

#include "store/bounded.h"
#include "store/limits.h"

namespace korvan {

struct HarvestRecord {
  using AgeStage = Mat<double, kMaxAge, kMaxStage>;
  using StageDbl = Vec<double, 0, kMaxStage>;
  // The form's fields.
  int HarvestStage = 1;        // target stage 1..m + 1 (m + 1 the male adult)
  int HarvestRow = 0;          // the row of D (or F for eggs) the harvest cuts
  int LastHarvestAge = 0;      // individuals older than this are discarded
  double ExpectedHarvest = 0;  // wanted harvest of the target stage per time unit
  double HarvestCost = 0;      // cost of harvesting one individual of the target stage
  std::string ConservationLevel = "Ro(original)";  // the caption of the option chosen
  double ConservationOther = 0;                    // the number of "R0(h)=?"
  // The file "_Z-R0 and boot SE for harvest.txt".
  std::string SEFileRead;  // "Yes" once read
  std::string SETreatment;
  double FileR0 = 0, FileR0SE = 0, FileR0Low = 0, FileR0Sigma = 0;
  // Conservation.
  double TargetR0 = 0;
  double FecundityScale = 1;
  // The R0 of the scaled F: a running sum kept through the session (never cleared).
  double ScaledR0Sum = 0;
  double R0ToLastHarvestAge = 0;
  // Male harvest.
  std::string MaleHarvest = "No";
  double FecundityLossOnMaleHarvest = 0;
  // The search.
  Vec<double, 0, 10001> HarvestRateCandidate{"HarvestRateCandidate"};
  Vec<double, 0, 10001> HarvestR0{"HarvestR0"};
  double OptimalHarvestRate = 0;
  double HarvestPerEgg = 0, HarvestPerAdult = 0;
  double Yield = 0;  // the yield summed again for the form
  // Matrices: originals saved when the form loads, F scaled for conservation, the system under
  // harvest, and its stable structure.
  AgeStage OriginalG{"OriginalG"}, OriginalD{"OriginalD"}, OriginalF{"OriginalF"};
  AgeStage ScaledF{"ScaledF"};
  AgeStage Dh{"Dh"}, Fh{"Fh"}, Sh{"Sh"}, Ph{"Ph"}, Qh{"Qh"}, Nh{"Nh"};
  Vec<double, 0, kMaxAge> ScaledMx{"ScaledMx"}, ScaledCumLxMx{"ScaledCumLxMx"};
  StageDbl StageShSum{"StageShSum"};
  // The stable mass-rearing system: individuals T(j), recruits N(j), costs a(j), C(j).
  StageDbl StageTotal{"StageTotal"}, StageRecruits{"StageRecruits"};
  StageDbl StageCost{"StageCost"}, StageCostTotal{"StageCostTotal"};
  double TotalCost = 0, TotalPopulation = 0, NewbornPerTimeUnit = 0;
  std::string Done;  // "Yes" after a calculation
};

struct ContributionRecord {
  double PooledR = 0, PooledLambda = 0, PooledR0 = 0, PooledT = 0;
  std::string PooledRead;  // "Yes" after "_ZZ-population parameters.txt" was read
  double ContributionToR = 0, ContributionToLambda = 0, SumLxMx = 0, ContributionToR0 = 0;
  Vec<double, 0, kMaxAge> ContributionVx{"ContributionVx"};
  Vec<double, 0, kMaxAge> ContributionSad{"ContributionSad"};  // stable age distribution, %
  Mat<double, kMaxAge, kMaxStage> ContributionVxj{"ContributionVxj"}, ContributionSxj{"ContributionSxj"};
};

}  // namespace korvan
