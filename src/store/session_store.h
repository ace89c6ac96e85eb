#pragma once
// The one store of a session. Every analysis procedure reads and writes it directly.
//
// What a bootstrap replicate overwrites (the cohort in hand, the age-stage tables, the working
// parameters, the run indicators) lives in a Workspace: the store owns the one Basic Run
// uses, and every bootstrap worker has its own. Everything else is shared.
//
// Arrays keep the fixed bounds of the system and are allocated once; every index is checked.
#include <cstdint>
#include <string>
#include <vector>

#include "store/bootstrap_store.h"
#include "store/bounded.h"
#include "store/comparison.h"
#include "store/console_state.h"
#include "store/further_analyses.h"
#include "store/group_reared.h"
#include "store/life_table.h"
#include "store/multinomial_store.h"
#include "store/limits.h"
#include "store/match_store.h"
#include "store/parameters.h"
#include "store/predation.h"
#include "store/read_data.h"
#include "store/stage_stats.h"

namespace korvan {

using AgeStageMatrix = Mat<double, kMaxAge, kMaxStage>;
using AgeVec = Vec<double, 0, kMaxAge>;
using AgeIntVec = Vec<int, 0, kMaxAge>;
using IndVec = Vec<double, 0, kMaxIndividual>;
using IndIntVec = Vec<int, 0, kMaxIndividual>;
using IndStrVec = Vec<std::string, 0, kMaxIndividual>;
using StageVec = Vec<double, 0, kMaxStage>;
using BootVec = Vec<double, 0, kMaxBootIndex>;

// ---------------------------------------------------------------------------------------
// Shared sub-records

struct Identity {
  std::string DataFilePath, DataFileBase, DataFileRead;
  std::string ProjectName, UserName, TreatmentName;
  std::string VersionStamp = "Ver. 5/7/2024";
  std::string ProgramName = "KORVAN";
  std::string OutputFileName, FlowFileName;
  std::int32_t RunStartHour = 0, RunStartMinute = 0, RunStartSecond = 0;
  int SessionStartYear = 0, SessionStartMonth = 0, SessionStartDay = 0;
};

// The head of the cohort as read: stage lists, types, costs, counts. A bootstrap replicate
// does not change it.
struct CohortHeader {
  int CohortSizeRead = 0;
  int TypeCount = 0;
  int StageCount = 0;
  Vec<std::string, 0, kMaxType> TypeCode{"TypeCode"};
  // One stage more than the other stage dimensions: row 1 also carries the second adult stage
  // at m + 1, so that a file of 13 stages still reads.
  Mat<std::string, kMaxType, kMaxStage + 1> StageName{"StageName"};
  Vec<std::string, 1, 2> SpecialGroup{"SpecialGroup"};
  std::string RegularLifeTable;
  Mat<double, kMaxType, kMaxStage> StageRearingCost{"StageRearingCost"};
  Vec<std::int32_t, 1, 3> TypeCounts{"TypeCounts"};
  std::int32_t MaleCount = 0, NTypeCount = 0;
  std::int32_t FileFemaleCount = 0, FileMaleCount = 0, FileNCount = 0;
  double OldFemaleCount = 0;
};

// The pool of a bootstrap: a second copy of the cohort, filled once by InputdataBoot.
struct Pool {
  int OriginalCohortSize = 0;
  IndStrVec OriginalSex{"OriginalSex"};
  Mat<double, kMaxIndividual, kMaxStage> OriginalStageDuration{"OriginalStageDuration"};
  Mat<double, kMaxIndividual, kMaxAge> OriginalFecundity{"OriginalFecundity"};
  IndVec OriginalTotalFecundity{"OriginalTotalFecundity"};
  Vec<std::string, 0, kMaxType> OriginalTypeCode{"OriginalTypeCode"};
  // The consumption file as read (when one was read), by individual and age.
  ConsumptionByAge OriginalConsumption{"OriginalConsumption"};
};

// The head of a table kept apart from the data file (an adult or an immature life table): the
// fields of a data file's head but the costs.
struct SideTableHead {
  std::string ProjectName, UserName, TreatmentName;
  int TypeCount = 0, StageCount = 0;
  Vec<std::string, 0, kMaxType> TypeCode{"TypeCode"};
  Mat<std::string, kMaxType, kMaxStage + 1> StageName{"StageName"};
  Vec<std::string, 1, 2> SpecialGroup{"SpecialGroup"};
};

// An adult life table ("O. + overwinter"): adults only, read by InputAdultLifeTable. Its head
// stays with it; only its treatment line also goes to TreatmentName.
struct AdultLifeTable {
  int AdultCohortSize = 0;
  SideTableHead head;
  IndIntVec AdultIndividualNo{"AdultIndividualNo"};
  IndStrVec AdultIndividualSex{"AdultIndividualSex"};
  IndIntVec AdultLongevity{"AdultLongevity"};  // the adult duration, 16-bit
  Mat<double, kMaxIndividual, kMaxAge> AdultFecundity{"AdultFecundity"};
  std::string AdultFilePath;  // the file read
};

// An immature life table: the preadult stages of a cohort whose adults were reared apart (the
// immature file of a matching of preadult and adult tables), read by InputImmatureLifeTable.
// Its head is that of a data file; each record has the durations of the stages 1..m-1, an "N"
// record up to the negative duration of its stage of death.
struct ImmatureLifeTable {
  int ImmatureCount = 0;
  SideTableHead head;
  IndIntVec ImmatureNo{"ImmatureNo"};
  IndStrVec ImmatureSex{"ImmatureSex"};
  Mat<int, kMaxIndividual, kMaxStage> ImmatureDuration{"ImmatureDuration"};  // 16-bit
  std::string ImmatureFilePath;
};

// Options: strings compared exactly; one never set is empty.
struct Options {
  std::string AnalysisMethod = "Calculus";
  std::string AgeConvention = "x+1";
  std::string MatingMode;
  std::string OutputLevel = "Yes";
  std::string FlowMode = "No";
  std::string FastRun = "No";
  std::string MinimalOutput;
  std::string MoreOptions = "No";
  std::string EffectOfFxjFlag = "No";
  std::string WriteSubMatrix = "No";
  double SubMatrixAge = 0;
  int SubMatrixStage = 1;
  std::string ConsumptionRead = "No";
  std::string PredationPresent;
  std::string CountOldFemales = "No";
  std::string Analysis3D;
  std::string SingleType;
  std::string ContributionWanted;
  std::string MntOutputOnly;
  std::string QuietCheck;
  std::string AcceptNonIntegerDuration, AcceptNonIntegerFecundity;
  std::string AcceptNonIntegerRead;
  std::string GroupRearedFlag = "No";
};

struct NumericSettings {
  double TimeUnit = 1;
  double FecundityFactor = 1;
  double PrecisionCalculus = 1e-07;
  double PrecisionMatrix = 0;
  double CriticalFemaleAge = 0;
  int SpecificAge = 0;
  double SpecificSurvival = 0.5;
};

// Results of Basic Run that a replicate never touches.
struct BasicResults {
  AgeVec OriginalLx{"OriginalLx"};
  std::string BasicRunDone;
};

// How the front end asks a run to go (--seed, --threads, --quiet).
struct RunControl {
  bool hasSeed = false;     // the run's seed is given; otherwise it comes from the clock
  std::uint64_t seed = 0;
  int threads = 0;          // bootstrap workers; 0 = all cores
  bool quiet = false;       // show no progress
};

// ---------------------------------------------------------------------------------------
// What one pass of the engine overwrites

// What the walks along one female's days of eggs find; they depend on her rows alone.
struct FemaleDaySums {
  bool lifeKnown = false;  // her whole list (days 1..d+1): all eggs, those of days 1..d, laid on one
  double total = 0, adult = 0;
  bool laid = false;
  bool oviKnown = false;  // days 1..CInt(d): days with eggs, their eggs (whole numbers only: wholeEggs)
  long units = 0;
  double eggs = 0;
  bool wholeEggs = false;
  bool firstKnown = false;  // days 1..CInt(d): all eggs and the first day with some
  double lifeEggs = 0;
  long first = 0;
  bool markKnown = false;  // days 1..beforeMark hold no negative value (at most kMaxAge days)
  long beforeMark = 0;
};

// What the day-by-day walk of one individual adds to n(x,j) and to the counts of g and d,
// event by event; it depends on her rows alone while the walk ends before the last age.
struct WalkEvent {
  enum Kind : std::uint8_t { kRun, kCount, kStay, kMove };
  std::int16_t x = 0, days = 0;  // days: of a run
  Kind kind = kRun;
  std::uint8_t row = 0, from = 0;  // from: of a move
};
struct WalkScript {
  static constexpr int kMaxEvents = 40;
  bool known = false;    // the events below stand
  bool tooLong = false;  // more events than kept: walked every time
  int lastX = 0;         // the last age walked (0: none)
  int count = 0;
  int ends[4] = {};      // once known, the events stand by kind: runs, counts, stays, moves
  WalkEvent events[kMaxEvents];
};

// What the stage durations of one individual give, whatever the sample she is drawn into.
struct DurationSums {
  bool longevityKnown = false;
  double steps = 0, longevity = 0;  // her longevity in time units and in rate units
  bool preadultKnown = false;
  double preadult = 0;  // her time before the adult stage
};

struct Cohort {
  int CohortSize = 0;
  // The individual of the bootstrap pool whose rows stand whole at each place of a sample, 0
  // elsewhere; the walks of her days keep what they found under it (DaySums, by individual of
  // the pool, made on the first use in a worker's workspace).
  IndIntVec RowSource{"RowSource"};
  std::vector<FemaleDaySums> DaySums;
  std::vector<WalkScript> WalkScripts;  // by individual of the pool, like DaySums
  std::vector<DurationSums> DurationsKept;  // the same
  IndIntVec IndividualNo{"IndividualNo"};
  IndStrVec IndividualSex{"IndividualSex"};
  Mat<double, kMaxIndividual, kMaxStage> StageDuration{"StageDuration"};
  Mat<double, kMaxIndividual, kMaxAge> Fecundity{"Fecundity"};
  ConsumptionByAge Consumption{"Consumption"};  // by age; only with a consumption file
  IndIntVec TotalLongevity{"TotalLongevity"};
  int MaxLongevity = 0;
};

struct AgeStageTables {
  AgeStageMatrix Nxj{"Nxj"}, Gxj{"Gxj"}, Dxj{"Dxj"}, Fxj{"Fxj"};
  AgeStageMatrix Sxj{"Sxj"}, Pxj{"Pxj"}, Qxj{"Qxj"}, Mxj{"Mxj"};
  int LastAge = 0;
  AgeIntVec NAge{"NAge"};
  AgeVec Lx{"Lx"};
};

struct RunIndicators {
  double Boot = 0;
  std::string IsResamplingFlag = "n";
  std::string IsBasicRunFlag = "y";
  std::string ResampleKind;  // "b" in a bootstrap, "j" in a jackknife
};

struct Workspace {
  Cohort cohort;
  AgeStageTables tables;
  RunIndicators run;
  LifeTableWork lifeTable;
  ParameterWork params;
  StageStatsWork stageStats;
  ReadDataWork readData;
  BootstrapWork boot;
  PredationWork predation;
};

// ---------------------------------------------------------------------------------------

struct SessionStore {
  Identity identity;
  CohortHeader header;
  Pool pool;
  Options options;
  NumericSettings settings;
  BasicResults basic;
  ConsoleState console;
  RunControl runControl;
  LifeTableRecord lifeTable;
  PopulationParameters params;
  StageStatsRecord stageStats;
  ReadDataRecord readData;
  BootstrapRecord boot;
  ComparisonRecord comparison;
  MultinomialRecord multinomial;
  AdultLifeTable adult;
  ImmatureLifeTable immature;
  PredationRecord predation;
  HarvestRecord harvest;
  ContributionRecord contribution;
  GroupRearedRecord group;
  MatchRecord match;
  ThreeDRecord threeD;
  Workspace ws;  // the workspace of Basic Run

  // Start-up values: program name, version stamp, time unit 1, the session's date.
  void StartUp();
};

// DataFileBase + a fixed suffix: the name of every output file.
std::string OutputName(const SessionStore& S, const std::string& suffix);

}  // namespace korvan
