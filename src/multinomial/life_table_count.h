#pragma once
// Counting of bootstrap life tables: samples of one composition of individuals give one life
// table. The samples of a run (or of a record no. 11) are put in ascending order of R0, the
// different compositions counted, samples of equal R0 grouped, and the observed counts set
// beside the multinomial coefficients.
#include <cstdint>

#include "run/run_context.h"

namespace korvan {

class LifeTableCount : public Procedures {
 public:
  using Procedures::Procedures;

  // The two warnings and the precision; on consent the whole count (SortAndCountLifeTable).
  void SortAndCountLifeTableBase();
  void SortAndCountLifeTable();
  // Loads a record no. 11 as the samples to count (E set to B); false when none was chosen.
  // With no data file read, the files are named behind the record's path less 4 characters.
  bool ReadFileNo11ToSortandCount();

  // The passes: compositions and MNC; the order on R0; compositions compared; life tables
  // counted; groups of R0; the simple table of groups and the cumulative frequency.
  void SortAndCountLifeTable1();
  void SortAndCountLifeTable2();
  void SortAndCountLifeTable4();
  void SortAndCountLifeTable5();
  void SortAndCountLifeTable6();
  void SortAndCountLifeTable7();
  void Print00ALTunsortedButInsectSorted();
  void Print00BLTRoSortedwithMNC();
  void Print00BLTRoSortedwithLambdaandMNC();
  void Print00CLifeTableSameAsOriginal();
  void Print00DLTRoSortedwithIndCounts();
  void Print00ELTRoSortedandLTcounted();
  void Print00GLTGroupedBasedonRo();
  void Print00HTableSameRoGrouped();
  void Print00HTableForFig();

 private:
  void AskPrecision();
  // The samples in ascending order of R0, with their MNC and probability, or finite rate and MNC.
  void PrintInOrderOfR0(const char* suffix, bool withLambda);
};

// The sample's individuals (taken from the run's or the record's lists) in ascending order into
// SampleSorted(., b), its MNC and probability; counts is scratch of CountCohort + 1 zeros, left
// zero. A number outside 1..CountCohort ends the run with a message.
void ComposeSample(SessionStore& S, long b, int* counts);
// Ascending order of two composed samples (lexicographic on their sorted individuals).
bool CompositionLess(const MultinomialRecord& M, long a, long b);
bool SameComposition(const MultinomialRecord& M, long a, long b);
// Sets CountN, CountCohort, n! and n^n for the samples of S.boot (cohort: the pool's size, or
// n when no pool is in memory).
void SetUpComposition(SessionStore& S);

}  // namespace korvan
