#pragma once
// A group-reared cohort: counts N by stage and age, the eggs of the female group by age, and
// what the rebuilding of individuals from them works out. Stages 1..S+1: S is the female
// stage, S+1 the male stage, 1..S-1 the preadult stages. Matrices are indexed (age, stage)
// like the engine's tables.
#include <string>

#include "store/bounded.h"
#include "store/limits.h"

namespace korvan {

struct GroupRearedRecord {
  using AgeStage = Mat<double, kMaxAge, kMaxStage>;
  using StageInt = Vec<int, 0, kMaxStage>;
  using StageDbl = Vec<double, 0, kMaxStage>;
  using AgeInt = Vec<int, 0, kMaxAge + 1>;
  using ListInt = Vec<int, 1, kMaxIndividual>;

  // The file as read.
  std::string Title, Description, ThirdLine;
  int CohortSize = 0;
  int SexCount = 0;
  int StageCountNF = 0;  // S
  Vec<std::string, 0, kMaxType> SexCode{"SexCode"};
  Mat<std::string, kMaxType, kMaxStage + 1> StageLabel{"StageLabel"};
  Vec<std::string, 0, kMaxStage> StageCode{"StageCode"};
  StageInt StageFirstAge{"StageFirstAge"}, StageLastAge{"StageLastAge"};
  AgeStage N{"N"}, FemaleEggs{"FemaleEggs"}, F{"F"}, Sxj{"Sxj"};
  AgeStage Predation{"Predation"}, PredationRate{"PredationRate"};
  StageDbl StageRowSum{"StageRowSum"}, StagePredationRowSum{"StagePredationRowSum"},
      StagePredationMean{"StagePredationMean"};
  double TotalPredation = 0, PredationPerIndividual = 0;
  int LastAge = 0;  // the last age of any stage
  std::string NandFwithPredation, PrintOutputBasedOnNandF;

  // The rebuilding of individuals.
  std::string NandFOverlapType, SuggestedCase;
  int FirstReproductionAge = 0, FirstAdultAge = 0, LastPreadultAge = 0;
  int PreadultDeathsToFirstAdult = 0, OverlapDeaths = 0, PreadultDeaths = 0;
  int FemaleTotal = 0, MaleTotal = 0;
  int FemaleOverlapDeaths = 0, MaleOverlapDeaths = 0, OverlapPreadultTotal = 0, OverlapNtypeCount = 0;
  AgeInt FemaleDeathsAt{"FemaleDeathsAt"}, MaleDeathsAt{"MaleDeathsAt"},
      OverlapPreadultDeathsAt{"OverlapPreadultDeathsAt"};
  ListInt FemaleDeathAges{"FemaleDeathAges"}, FemaleEmergenceAges{"FemaleEmergenceAges"},
      FemaleDevelopment{"FemaleDevelopment"}, FemaleAdultDuration{"FemaleAdultDuration"};
  ListInt MaleDeathAges{"MaleDeathAges"}, MaleEmergenceAges{"MaleEmergenceAges"},
      MaleDevelopment{"MaleDevelopment"}, MaleAdultDuration{"MaleAdultDuration"};
  ListInt NtypeDeathAges{"NtypeDeathAges"};
  int FemaleCount = 0, MaleCount = 0, NtypeCount = 0;
  int FemaleEmergenceCount = 0, MaleEmergenceCount = 0;
  // Case 0 (and 3): one list of individuals in the order written.
  Vec<std::string, 1, kMaxIndividual> IndividualSex{"IndividualSex"};
  ListInt IndividualLongevity{"IndividualLongevity"}, IndividualAdultDuration{"IndividualAdultDuration"},
      IndividualDevelopment{"IndividualDevelopment"};
  int IndividualCount = 0;
  Vec<double, 0, kMaxAge> DailyFecundity{"DailyFecundity"};

  // The estimates of G and D: stayers and movers by age and stage, the rates, and what
  // follows from them.
  Mat<int, kMaxAge, kMaxStage> Stayers{"Stayers"}, Movers{"Movers"};
  AgeStage G{"G"}, D{"D"}, SxjFromGD{"SxjFromGD"};
  bool GDEstimated = false;
  double NfFromDandN = 0;
  StageDbl StageEntering{"StageEntering"}, StageMeanNF{"StageMeanNF"};
  double MeanFecundityNF = 0;
};

}  // namespace korvan
