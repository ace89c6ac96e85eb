#pragma once
// Stage statistics, fecundity, oviposition periods, APOP and TPOP; the adult-age life tables.
#include <cstdint>
#include <string>

#include "store/bounded.h"
#include "store/limits.h"

namespace korvan {

// One group of routine statistics. The fields keep their last values when a pass finds no
// value (mean, spread) or a single one (spread): that is what the reports show then.
struct RoutineStat {
  double n = 0;
  double sum = 0, sumSquares = 0;
  double mean = 0, variance = 0, sd = 0, se = 0;
  double minimum = 0, maximum = 0;
};

// Stage indices of the groups kept by sex: 1 "F", 2 "M", 3 "N".
inline constexpr long kSexF = 1, kSexM = 2, kSexN = 3;

using IndDoubles = Vec<double, 0, kMaxIndividual>;
using StageStats = Vec<RoutineStat, 0, kMaxStage>;
using SexStageStats = Mat<RoutineStat, 3, kMaxStage>;
using SexStats = Vec<RoutineStat, 0, 3>;
using AgeDoubles = Vec<double, 0, kMaxAge + 1>;

// Overwritten by every pass of the engine (lives in a Workspace).
struct StageStatsWork {
  // Per individual.
  IndDoubles Longevity{"Longevity"};            // total longevity, rate units
  IndDoubles LongevitySteps{"LongevitySteps"};  // the same, time units
  IndDoubles PreadultDuration{"PreadultDuration"};
  IndDoubles FemaleLongevity{"FemaleLongevity"};
  IndDoubles TotalFecundity{"TotalFecundity"};
  // Prey (or food) eaten over the individual's life; all 0 unless a consumption file was read.
  IndDoubles TotalConsumption{"TotalConsumption"};
  IndDoubles DailyFecundityMean{"DailyFecundityMean"};
  IndDoubles DailyFecunditySE{"DailyFecunditySE"};
  Vec<long, 0, kMaxIndividual> OviUnits{"OviUnits"};
  IndDoubles OviDays{"OviDays"};
  IndDoubles EggsPerOviDay{"EggsPerOviDay"};
  IndDoubles Apop{"Apop"}, Tpop{"Tpop"};
  IndDoubles FirstOviAge{"FirstOviAge"}, LastOviAge{"LastOviAge"};
  IndDoubles FirstOviAgeSteps{"FirstOviAgeSteps"}, LastOviAgeSteps{"LastOviAgeSteps"};
  IndDoubles PostOviSteps{"PostOviSteps"};  // time units of life after the last oviposition
  IndDoubles OviPeriod{"OviPeriod"};

  int AdultFemaleCount = 0;         // Nf
  int ReproductiveFemaleCount = 0;  // females with eggs

  // Durations (Life10): by stage, by sex and stage; cumulative from the first stage;
  // the span between the two special stages; longevity.
  StageStats Stage{"StageStat"};
  SexStageStats SexStage{"SexStageStat"};
  StageStats Cumulative{"CumulativeStat"};
  SexStageStats SexCumulative{"SexCumulativeStat"};
  RoutineStat Span;
  SexStats SexSpan{"SexSpanStat"};
  int SpanFirstStage = 0, SpanLastStage = 0;
  RoutineStat LongevityAll;
  SexStats SexLongevity{"SexLongevityStat"};  // F, M, N
  Vec<double, 0, kMaxStage> StageMax{"StageMax"}, StageMin{"StageMin"};  // time units
  Vec<double, 0, 2> AdultMaxBySex{"AdultMaxBySex"};                        // F, M; time units
  int MaxFemaleAdultAge = 0;

  // Adult-age fecundity (index: adult age t from 1).
  Vec<double, 0, kMaxAge + 1> AdultAgeN{"AdultAgeN"};
  Vec<double, 0, kMaxAge + 1> AdultAgeMean{"AdultAgeMean"}, AdultAgeSD{"AdultAgeSD"},
      AdultAgeSE{"AdultAgeSE"};
  double MaxDailyFecundity = 0;
  int MaxDailyFecundityIndividual = 0;
  double MinNonZeroDailyFecundity = 0;
  double AdultAgePeakMean = 0;
  int AdultAgePeakAge = 0;  // t - 1
  double AdultAgeMeanSum = 0;

  // Female fecundity: all females (F) and reproductive females (Fr).
  RoutineStat FecundityF, FecundityFr;
  std::string FecundityMaxList, FecundityMinList;  // individual numbers joined by ","
  int FecundityMaxCount = 0, FecundityMinCount = 0;
  RoutineStat OviUnitsStat;         // oviposition units per reproductive female
  RoutineStat EggsPerOviUnit;       // weighted over all units of all females
  double PreadultMeanFemale = 0;    // time units
  double MaxFemaleLongevity = 0;

  // Oviposition days and period.
  RoutineStat OviDaysStat;
  double TotalOviDays = 0;
  double TotalFemaleEggs = 0;
  double ReproductiveFraction = 0;
  std::string NoOviDaysFlag;    // "Yes" when no female laid eggs
  RoutineStat OviPeriodStat;
  std::string NoOviPeriodFlag;
  std::int16_t OviPeriodMeanRounded = 0;

  // Pre-oviposition periods.
  RoutineStat ApopStat, TpopStat;
  double ReproductiveEggSum = 0;

  // Fecundity by age from birth (index: age x).
  Mat<double, kMaxIndividual, kMaxAge + 1> FecundityFromBirth{"FecundityFromBirth"};
  AgeDoubles AliveAtAge{"AliveAtAge"}, FemalesAtAge{"FemalesAtAge"};
  AgeDoubles EggsAtAge{"EggsAtAge"}, EggSquaresAtAge{"EggSquaresAtAge"};
  AgeDoubles MxMean{"MxMean"}, MxSD{"MxSD"}, MxSE{"MxSE"};
  AgeDoubles FxMean{"FxMean"}, FxSD{"FxSD"}, FxSE{"FxSE"};
};

// Kept for the session (lives in SessionStore).
struct StageStatsRecord {
  // The Basic Run's means.
  double ApopBasic = 0, TpopBasic = 0;
  double FecundityPerOviDay = 0;

  // Adult-age life tables (index from 0).
  Vec<std::int16_t, 0, kMaxAge + 1> AdultAge{"AdultAge"};
  Vec<double, 0, kMaxAge + 1> AdultLx{"AdultLx"}, AdultMx{"AdultMx"};
  Vec<std::int16_t, 0, 2 * kMaxAge + 2> BirthAge{"BirthAge"};
  Vec<double, 0, 2 * kMaxAge + 2> BirthLx{"BirthLx"}, BirthMx{"BirthMx"};
  double PreadultSurvival = 0;
  std::int16_t PreadultAgeRounded = 0;

  // Elapsed time of the Basic Run (Life08).
  long ElapsedHours = 0, ElapsedMinutes = 0, ElapsedSeconds = 0;
};

}  // namespace korvan
