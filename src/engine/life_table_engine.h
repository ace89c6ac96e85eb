#pragma once
// The age-stage engine from individuals to matrices: stage-duration statistics (Life01,
// Life02), the day-by-day walk of the cohort into n(x,j), g(x,j), d(x,j) (Life03), the
// survival, fecundity and mortality matrices with l(x) and the main-output tables (Life04),
// and life expectancy. The computing steps run for the Basic Run and for every bootstrap
// replicate on the workspace W; they allocate nothing. Printing runs only outside resampling.
#include <string>

#include "run/run_context.h"

namespace korvan {

class LifeTableEngine : public EngineProcedures {
 public:
  using EngineProcedures::EngineProcedures;

  // Stage durations: statistics of the whole cohort, cumulative times, LastAge, by type.
  void Life01();
  void Life01Gosub100();
  void Life01Gosub290();
  void Life01Gosub570();
  void Life01Gosub570boot();
  void Life01Gosub790();
  void Life01Gosub790Boot();

  // Span between the special stages, by type; fecundity statistics.
  void Life02();
  void Life02Gosub80();
  void Life02Gosub410();
  void Life02Gosub660();

  // The walk of the cohort, then fecundity and s(x,j).
  void Life03();
  void Life03Gosub120();
  void Life03Gosub850();
  void Life03Gosub410();
  void Life03Gosub700();
  void Life03Gosub1050();

  // Survival and mortality, l(x), stage rates; the tables and figure files of a Basic Run.
  void Life04();
  void Life04Gosub0290();
  void Life04Gosub0530();
  void Life04Gosub2400();
  void WriteSxFig();

  // Life expectancy e(x,j) and e(x), their table and files.
  void AgeStageLifeExpectancy();
  void PrintLifeExpectancy();
  void PrintMatrixExj();
  void PrintSubSMatrix();

  // Consumption of a predator cohort (with a consumption file): Ct(x,j), c(x,j), the net
  // predation rate C0 and the transformation rate Qp; the stable and finite predation rates
  // over the stable age-stage distribution; their tables and figure files in a Basic Run.
  void CalculateNetPredationRate();
  void CalculateFinitePredationRate();
  void PrintCxjAndBxj();
  void PrintCxj();

 private:
  // Life01 helpers shared by the Basic and the replicate forms.
  void TypeStatistics(bool cumulative, bool clearFirst);
  bool typeListsStand_ = false;  // the lists of each type made by the last TypeStatistics stand
  void DeathsAndSexRates();
  // Life04 helpers.
  void MedianAndSpecificAges();
  void StageRates();
  void AccumulateBootLx();
  bool SurvivalRanOut(int x);  // the message of a replicate that ran out of individuals
  // Printers of the main output (the display matrix is W.lifeTable.PrintMatrix).
  void PrintTableHead(const std::string& title, bool developmentHead);
  void PrintMatrixTable(const std::string& title, int decimals, bool withSum, bool developmentHead);
  void PrintAgeTables();
  // Figure files of the age-stage matrices: a quoted title, "Age," and the stage names (moves
  // of the D matrix), a row per age in rate units and a closing row of zeros at LastAge + 1.
  // The file of s(x) spaces its zeros; the sub-matrices have neither head nor closing row.
  enum class Figure { G, D, F, S, RC, N, U, Q, P, E, Survivors, C };
  enum class FigureForm { Plain, Development, SpacedZeros, Bare };
  void WriteStageFigure(const std::string& suffix, const std::string& title, Figure matrix,
                        FigureForm form = FigureForm::Plain);
  double FigureValue(Figure matrix, int x, int j) const;
  void WriteLxKeyFactors();
  // An age index in rate units (the time-unit rule).
  double AgeInDays(double x) const;
};

}  // namespace korvan
