#pragma once
// Records of the two analyses that build a population from several tables: matched preadult
// and adult life tables, and the 3D life table of offspring sex by the mother's age.
#include <cstdint>
#include <string>
#include <vector>

#include "store/bounded.h"
#include "store/limits.h"

namespace korvan {

// A match: effective; ineffective (its draw lacked a female, or a male where mating is
// needed); or drawn whole but without a single egg (no population parameters).
enum MatchState : std::uint8_t { kMatchIneffective = 0, kMatchEffective = 1, kMatchNoOffspring = 2 };

// The matching form: its settings and the results of every match b = 1..MatchB.
struct MatchRecord {
  int MatchSampleSize = 0;
  double MatchB = 0;
  int OverwinterDuration = 0;
  double OverwinterMortality = 0;
  std::string OnlyEffectiveMatch, MatingRequired, TeachingDemo;
  std::string SameMatch;  // "Yes": the individuals of every match come from a match record
  std::string MatchBase;  // the output base taken from the immature file's name
  std::string RunLabel;   // "Matched-<third string>" or "Matched"
  std::string RecordPath;  // the match record written or read
  std::string ImmatureRead, AdultRead;  // "Yes" once read
  // The match record: immature and adult numbers of match b at position k, row (b - 1) * n + k - 1
  // (adult 0 for an N-type); allocated once a run.
  std::vector<std::int16_t> MatchImmature, MatchAdult;
  std::vector<std::uint8_t> MatchEffective;  // kMatchEffective, kMatchIneffective, kMatchNoOffspring
  std::vector<std::int32_t> MatchRedraws;    // ineffective draws repeated before match b
  std::vector<double> MatchR, MatchLambda, MatchR0, MatchFecundity, MatchT, MatchGRR, MatchLongevity;
  long RecordMatches = 0;  // matches held by a record that was read
  long IneffectiveMatches = 0;
  long EffectiveMatches = 0;
  double MeanR = 0, MeanLambda = 0, MeanR0 = 0, MeanT = 0, MeanFecundity = 0;
  std::uint64_t Seed = 0;
};

// The 3D life table: the matrices of a female (t = 1), a male (2) and an N-type (3) cohort.
struct ThreeDRecord {
  using Cube3 = Cube<double, 3, kMaxAge, kMaxStage>;
  Vec<int, 1, 3> CohortLastAge{"CohortLastAge"}, CohortStageCount{"CohortStageCount"};
  Mat<std::string, 3, kMaxStage> CohortStageName{"CohortStageName"};
  Mat<int, 3, kMaxStage> CohortStageFirstAge{"CohortStageFirstAge"}, CohortStageLastAge{"CohortStageLastAge"};
  Cube3 CohortSxj{"CohortSxj"}, CohortGxj{"CohortGxj"}, CohortDxj{"CohortDxj"}, CohortPxj{"CohortPxj"};
  Mat<double, 3, kMaxAge> OffspringFxj{"OffspringFxj"};
  int FemaleStage3D = 0;
  double FiniteRate3D = 0, IntrinsicRate3D = 0;
  Vec<double, 1, 3> Alpha{"Alpha"}, SumPf{"SumPf"}, R0ByType{"R0ByType"}, ProportionByType{"ProportionByType"};
  Vec<double, 0, kMaxStage> ProportionByStage{"ProportionByStage"};
  Vec<double, 0, kMaxAge> ProportionByAge{"ProportionByAge"};
  double R0Total3D = 0;
  std::string NTypeAbsent;
  std::string OutputBase;  // the base of the daughter file
};

}  // namespace korvan
