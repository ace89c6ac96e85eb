#pragma once
// Population parameters of one life table: m(x), R0, GRR, r, lambda, T, the doubling time,
// the stable age distribution, reproductive values and the birth and death rates at the
// stable distribution; the age-stage reproductive value and the stable age-stage
// distribution with their report tables and figure files.
//
// r is found by bisection on the Euler-Lotka residual ("Calculus"), or lambda by bisection on
// the characteristic polynomial of the Leslie matrix ("Matrix"). One body of arithmetic serves
// the Basic Run, every bootstrap replicate (on the workspace in hand, allocating nothing) and
// every jackknife pass; the twins keep apart only what differs.
#include <string>

#include "engine/table_text.h"
#include "run/run_context.h"

namespace korvan {

class ParameterEngine : public EngineProcedures {
 public:
  using EngineProcedures::EngineProcedures;

  // Tops of the two paths.
  void Life05();
  void Life05ForMatrix();
  void ContributionSum();

  // m(x), its running sum, the last reproductive age and the bootstrap accumulators.
  void Life05Gosub1370();
  // The parameters by Calculus: Basic Run or jackknife pass; bootstrap replicate;
  // group-reared data.
  void Life05Gosub90();
  void Life05Gosub90Boot();
  void Life05Gosub90ForNandF();
  // The parameters by Matrix, any pass.
  void Life05Gosub90ForMatrix();
  // Residuals at the trial r (Euler-Lotka) and at the trial lambda (the polynomial).
  void Life05Gosub0120();
  void Life05Gosub0120ForMatrix();
  // Birth, survival and death rates at the stable distribution.
  void Life05Gosub90Then1080BSDrate();
  void Life05Gosub90Then1080BootBSDrate();

  // Age-stage reproductive value and the figures of the female stage.
  void Life05Gosub90Then1080();
  void Life05Gosub90Then1080Boot();
  void Life05Gosub1480();
  // The same walk at another rate r, into v and its survival column (the contribution of one
  // type of offspring values each cell at the pooled r).
  using AgeStage = Mat<double, kMaxAge, kMaxStage>;
  // The walk starts from the cells of stage firstStage on.
  void ReproductiveValueWalk(double r, AgeStage& v, AgeStage& survivors, int firstStage = 1);

  // Stable age-stage distribution and its output.
  void Life05a();
  void Life05AForMatrix();
  void Life05aGosub1580();
  void Life05aGosub1580ForMatrix();
  void Life05aGosub2100();
  void Life05aGosub2100ForMatrix();
  void Life05aGosub0180();

  // The main age-specific table with its block of parameters.
  void PrintIntrinsicRateTable();
  void Life05aGosub0800();
  void Life05aGosub0800ForNandFt();
  void Life05aGosub1000();
  void Life05aGosub1100();
  void PrintRelationshipFtoR0();
  void PrintRelationshipFtoR0forNandFt();

  // Figure files.
  void Life05aGosub2610();
  void Life05aGosub3800();
  void Life05aGosub3610();
  void Life05aGosub3650();
  void Life05aGosub3750();

  // a(x,j) and b(x,j) of the pass, without tables (the Matrix twin of a bootstrap replicate
  // leaves them out, and the predation rates need them).
  void StableAgeStageDistribution(bool percentCopy);

  // "_ZZ-population parameters.txt".
  void PrintTotalPopulationParameters();

 private:
  enum class Twin { Basic, Boot, NandF };
  // The common body of the Calculus twins.
  void CalculusParameters(Twin twin);
  // Filing of the results of a pass: under the number of a resampling pass, or as the Basic
  // Run's.
  void FileResampledR(bool countNegative);
  void FileResampledParameters(bool countLowRates);
  void KeepBasicParameters();
  // Exits of a net reproductive rate of 0 or exactly 1.
  void NetReproductiveRateZero();
  void NetReproductiveRateOne();
  // Bisection with the stated order of tests; returns the value found (mid).
  double BisectR(double low, double high, double precision);
  double BisectLambda(double low, double high, double precision);
  // The halt of a bisection that ran 500 times.
  [[noreturn]] void HaltIterations(const char* tail) const;
  // l(x) exp(-r a) m(x) for x = 0..LastAge into EulerTerm; returns the sum of the terms.
  double FillEulerTerms(double r);
  // R0 and GRR, summed upward over the ages.
  void SumR0AndGRR();
  void FillLeslieArrays();
  // The stable age distribution a(x) from raw(x), and v(x) on the way down.
  void NormaliseSadAndVx(double r);
  // e(x) = (the sum of l(i) for i = x..LastAge) / l(x), walked down from LastAge.
  void LifeExpectancyWalk(bool clear);
  // v(x,j) of every stage but the male one; the female figures of the Basic Run.
  void AgeStageReproductiveValue(bool keepBasicCopy);
  void FemaleFiguresBasic();
  void FemaleFiguresBoot();
  void StableTables();
  void PrintStableAgeStageTables(bool matrixTwin);

  // Files of other families that the exits call; run as their families land.
  void RawDataWritersAtExit();
  // Life expectancy of the age-stage table, run at the end of m(x).
  void AgeStageLifeExpectancyStep();

  // Result boxes of the console, rounded for display.
  void ShowBox(const char* box, double value, int decimals) const;
  void ShowValueBox(const char* box, const std::string& text) const;
  void ColourBox(const char* box, const char* colour) const;

  // The main table and the check of R0 of both kinds of data.
  void AgeSpecificLifeTable(bool groupReared);
  void RelationshipFtoR0();

  // Indices of the pass.
  long BootIndex() const;
  const std::string& ResampleKind() const;

  // TPOP of the cohort for the main table.
  double ReportTpop() const;

  // The figure channel.
  TextFile figure_;

  // E(a) = exp(-r (a+1)) of the reproductive values for ages 0..discountLast_, worked out once
  // for the r and the time unit they were made with; other ages and values are computed anew.
  void MakeDiscountTable(double r, double timeUnit, int lastAge);
  double DiscountAt(double r, int a, double timeUnit) const;
  bool FemaleStageValue(AgeStage& v, AgeStage& survivors, int x);
  double discount_[kMaxAge + 2];
  // The rate and the survival column of the walk in hand (Life05Gosub1480 goes on with them).
  double walkR_ = 0;
  AgeStage* walkSurvivors_ = nullptr;
  int discountLast_ = -1;
  double discountR_ = 0, discountTimeUnit_ = 0;

  // Title and the two closing lines of the table that Life05aGosub0180 prints next.
  const char* tableTitle_ = "";
  const char* tableLine1_ = "";
  const char* tableLine2_ = "";
};

// The Euler-Lotka sum of a life table at the rate r: the sum over x = 0..lastAge of
// l(x) exp(-r a) m(x), with a = x when ages count from zero (the convention "x"), else x + 1,
// the exponent by the time rule of ConvertExponent. Each term goes to terms when it is given.
// r is the intrinsic rate where the sum is 1.
// The part of the Euler-Lotka equation of a pooled population that one life table gives: the
// sum over x = 0..lastAge of exp(-r (x + 1)) l(x) m(x), on the age index (no time unit).
double ContributionToRateSum(const Vec<double, 0, kMaxAge>& lx, const Vec<double, 0, kMaxAge>& mx, int lastAge,
                             double r);
// The stable age distribution as proportions from its raw terms, and the age-specific
// reproductive value v(x) = (sum over i >= x of E(i) l(i) m(i)) / (E(x) l(x)), E(a) = exp(-r (a+1)).
void StableAgeAndReproductiveValue(const Vec<double, 0, kMaxAge>& raw, const Vec<double, 0, kMaxAge>& lx,
                                   const Vec<double, 0, kMaxAge>& mx, int lastAge, double r, double timeUnit,
                                   Vec<double, 0, kMaxAge>& ax, Vec<double, 0, kMaxAge>& vx);

double EulerLotkaSum(const Vec<double, 0, kMaxAge>& lx, const Vec<double, 0, kMaxAge>& mx, int lastAge, double r,
                     double timeUnit, bool ageFromZero, Vec<double, 0, kMaxAge>* terms = nullptr);
// A quick Euler-Lotka residual (the sum less 1) for a step of the bisection: true when it
// surely has the sign of the full residual and is, like it, not below precision in size.
bool SureEulerLotkaResidual(const Vec<double, 0, kMaxAge>& lx, const Vec<double, 0, kMaxAge>& mx, int lastAge,
                            double r, double timeUnit, bool ageFromZero, double precision, double& residual);
// The time rule on the exponent of the Euler-Lotka terms: four fractional time units divide.
double ConvertExponent(double product, double timeUnit);
// The full form with its own branch for 0.5 (reproductive values, figure ages).
double ConvertExponentFull(double product, double timeUnit);
// An age count in rate units by the full rule (figure files).
inline double AgeInRateUnits(int x, double timeUnit) { return ConvertExponentFull(x, timeUnit); }
// An age count in rate units as the report tables show it: 2 decimals for the fractional
// time units, else x times the time unit.
double AgeInTable(int x, double timeUnit);

// The heading of a figure file of age-stage values: "Age," and the names of the stages, the
// male's or "-".
std::string StageFigureHeading(const SessionStore& S);
// A figure file of an age-stage matrix: its title, that heading, and a row per age 0..last with
// the age in rate units and the values of stages 1..m + 1 at full precision.
void WriteStageFigure(const SessionStore& S, const std::string& suffix, const char* title,
                      const Mat<double, kMaxAge, kMaxStage>& M, int last);

// StepFiniteRate of the Calculus path: lambda to the time unit, as the root for fractions.
double StepFiniteRateFor(double lambda, double timeUnit);

}  // namespace korvan
