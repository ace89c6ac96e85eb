#pragma once
// Fields of the age-stage life table: stage-duration statistics, the walk of the cohort into
// n(x,j), g(x,j), d(x,j), the survival and fecundity matrices, l(x), stage rates and life
// expectancy. The matrices n, g, d, f, s, p, q, q*s and l(x) themselves are in AgeStageTables.
#include <memory>
#include <string>

#include "store/bounded.h"
#include "store/limits.h"

namespace korvan {

// Overwritten by every pass of the engine (lives in a Workspace).
struct LifeTableWork {
  using StageInt = Vec<int, 0, kMaxStage>;
  using StageDbl = Vec<double, 0, kMaxStage>;
  using TypeStageInt = Mat<int, kMaxType, kMaxStage>;
  using TypeStageDbl = Mat<double, kMaxType, kMaxStage>;
  using AgeStage = Mat<double, kMaxAge, kMaxStage>;
  using AgeDbl = Vec<double, 0, kMaxAge>;

  // Stage durations of the whole cohort (days).
  StageInt StageSurvivors{"StageSurvivors"};
  StageDbl StageMean{"StageMean"}, StageVariance{"StageVariance"}, StageSD{"StageSD"};
  // Time from birth to the end of each stage.
  Mat<double, kMaxIndividual, kMaxStage> CumulativeDuration{"CumulativeDuration"};
  StageInt CumSurvivors{"CumSurvivors"};
  StageDbl CumMean{"CumMean"}, CumVariance{"CumVariance"}, CumSD{"CumSD"};
  double PreadultSurvival = 0;
  // The same by type (row t of TypeCode).
  TypeStageInt TypeStageCount{"TypeStageCount"};
  TypeStageDbl TypeStageMean{"TypeStageMean"}, TypeStageVariance{"TypeStageVariance"},
      TypeStageSD{"TypeStageSD"};
  TypeStageInt TypeCumCount{"TypeCumCount"};
  TypeStageDbl TypeCumMean{"TypeCumMean"}, TypeCumVariance{"TypeCumVariance"},
      TypeCumSD{"TypeCumSD"};
  Vec<double, 0, kMaxIndividual> PreadultTime{"PreadultTime"};
  // Deaths by stage and the sexes of the adults.
  StageInt StageDeaths{"StageDeaths"}, StageDeathsRest{"StageDeathsRest"};
  int FemaleCount = 0, MaleCountAdult = 0, NTypeCountAdult = 0;
  double FemaleRate = 0, MaleRate = 0, NTypeRate = 0;
  double MalesPerFemale = 0, FemaleShare = 0, MaleShare = 0;

  // Span between the two special stages.
  int SpanFirstStage = 0, SpanLastStage = 0;
  int SpanCount = 0;
  int SpanCountReport = 0;  // the count kept for the reports
  double SpanMean = 0, SpanVariance = 0, SpanSD = 0;
  Vec<int, 0, kMaxIndividual> SpanIndividual{"SpanIndividual"};
  Vec<double, 0, kMaxIndividual> SpanValue{"SpanValue"};
  Vec<int, 0, kMaxType> TypeSpanCount{"TypeSpanCount"};
  Vec<double, 0, kMaxType> TypeSpanMean{"TypeSpanMean"}, TypeSpanVariance{"TypeSpanVariance"},
      TypeSpanSD{"TypeSpanSD"};

  // Total fecundity over all females and over the reproductive ones.
  int FemaleFecundityCount = 0;
  double FemaleFecundityMean = 0, FemaleFecundityVariance = 0, FemaleFecunditySD = 0;
  double FemaleFecunditySum = 0;  // the eggs of all females together
  int ReproductiveCount = 0;
  double ReproductiveMean = 0, ReproductiveVariance = 0, ReproductiveSD = 0;

  // The walk.
  Mat<double, kMaxIndividual, kMaxStage> RemainingDuration{"RemainingDuration"};
  Vec<int, 0, kMaxIndividual> CurrentStage{"CurrentStage"};
  int WalkIndividual = 0;  // the individual and the age of the step in hand
  int WalkAge = 0;
  double SumNxj = 0;
  // Count left by the longevity statistics' loop (0 until they run); above CohortSize it
  // changes the rule of LastAge.
  int LongevityCount = 0;

  // Fecundity, survival rates and cost.
  AgeStage FxjTotal{"FxjTotal"};
  AgeDbl FxjCumulative{"FxjCumulative"};
  StageInt StageFirstAge{"StageFirstAge"}, StageLastAge{"StageLastAge"};  // StageAgeRange(1|2, j)
  StageDbl StageSxSum{"StageSxSum"};
  double MeanLongevitySum = 0;
  double CohortCost = 0, CostExtra = 0;
  StageDbl StageFecundityTotal{"StageFecundityTotal"};
  double MeanFecundityFromF = 0;

  // Mortality and l(x).
  StageDbl StageDeathProb{"StageDeathProb"};
  double PreadultDeathProb = 0, PreadultSurvivalByDeaths = 0;
  AgeDbl AgeDeathProb{"AgeDeathProb"};
  Vec<int, 0, kMaxAge> AgeDeaths{"AgeDeaths"};
  AgeDbl OneMinusLx{"OneMinusLx"};
  StageDbl StageEntry{"StageEntry"}, StageSurvival{"StageSurvival"}, StageToNext{"StageToNext"};

  // Sums of l(x) over the replicates this workspace ran; the bootstrap merges them.
  AgeDbl LxSum{"LxSum"}, LxSumSquares{"LxSumSquares"}, LxMax{"LxMax"}, LxMin{"LxMin"};
  long LxReplicates = 0;

  // Life expectancy.
  AgeStage Exj{"Exj"};
  AgeDbl Ex{"Ex"};
  AgeStage Survivors{"Survivors"};  // scratch of the walk from one start cell
  double NewbornExj = 0, MaxExj = 0;
  int MaxExjAge = 0, MaxExjStage = 0;

  // Display matrix of the table printers of the main output.
  AgeStage PrintMatrix{"PrintMatrix"};
};

// Results of the replicates, one entry per sample number Boot (1..B). Every worker writes only
// at its own Boot, so the lists are shared by all workers.
struct LifeTableBootLists {
  using StageBoot = Mat<double, kMaxStage, kMaxBootIndex>;
  using Boot = Vec<double, 0, kMaxBootIndex>;
  StageBoot BootStageMean{"BootStageMean"};  // (j, b)
  StageBoot BootCumMean{"BootCumMean"};
  Boot BootPreadultSurvival{"BootPreadultSurvival"};
  Cube<double, kMaxType, kMaxStage, kMaxBootIndex> BootTypeStageMean{"BootTypeStageMean"};
  Cube<double, kMaxType, kMaxStage, kMaxBootIndex> BootTypeCumMean{"BootTypeCumMean"};
  Boot BootLxAtSpecificAge{"BootLxAtSpecificAge"};
  Boot BootMedianAge{"BootMedianAge"};
  Boot BootSpecificSurvivalAge{"BootSpecificSurvivalAge"};
  Boot BootPreadultDeathProb{"BootPreadultDeathProb"};
  Boot BootPreadultSurvivalByDeaths{"BootPreadultSurvivalByDeaths"};
  StageBoot BootStageDeathProb{"BootStageDeathProb"};
  StageBoot BootStageToNext{"BootStageToNext"};
  StageBoot BootStageEntry{"BootStageEntry"};
};

// Kept for the session (lives in SessionStore).
struct LifeTableRecord {
  using StageInt = Vec<int, 0, kMaxStage>;
  using StageDbl = Vec<double, 0, kMaxStage>;

  // Values of the Basic Run (Boot = 0).
  StageInt OriginalStageSurvivors{"OriginalStageSurvivors"};
  StageDbl OriginalStageMean{"OriginalStageMean"};
  StageInt OriginalCumSurvivors{"OriginalCumSurvivors"};
  StageDbl OriginalCumMean{"OriginalCumMean"};
  double PreadultMeanTime = 0;
  double PreadultSurvivalOriginal = 0;
  Mat<int, kMaxType, kMaxStage> OriginalTypeStageCount{"OriginalTypeStageCount"};
  Mat<double, kMaxType, kMaxStage> OriginalTypeStageMean{"OriginalTypeStageMean"};
  Mat<int, kMaxType, kMaxStage> OriginalTypeCumCount{"OriginalTypeCumCount"};
  Mat<double, kMaxType, kMaxStage> OriginalTypeCumMean{"OriginalTypeCumMean"};
  double OriginalMeanFecundity = 0;
  int OriginalFemaleCount = 0;
  StageDbl OriginalStageDeathProb{"OriginalStageDeathProb"};
  double OriginalPreadultDeathProb = 0;
  double LxAtSpecificAge = 0;
  double MedianAge = 0, SpecificSurvivalAge = 0;
  StageDbl OriginalStageToNext{"OriginalStageToNext"};
  StageDbl OriginalStageEntry{"OriginalStageEntry"};
  int OriginalLastAge = 0;

  // The per-sample lists, made at the first call (the bootstrap calls it before its loop,
  // on one thread): their size is that of 100,003 samples.
  LifeTableBootLists& BootLists() {
    if (!bootLists_) bootLists_ = std::make_unique<LifeTableBootLists>();
    return *bootLists_;
  }
  bool HasBootLists() const { return bootLists_ != nullptr; }

 private:
  std::unique_ptr<LifeTableBootLists> bootLists_;
};

}  // namespace korvan
