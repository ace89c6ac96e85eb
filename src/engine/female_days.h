#pragma once
// Walks along the days of eggs of one female of the cohort. What a walk finds depends on her
// rows alone, so in a bootstrap sample, which draws the same individuals of the pool again and
// again, it is kept under the individual her rows came from (Cohort::RowSource) and walked once
// in a worker's workspace.
#include <cmath>
#include <cstdint>

#include "store/session_store.h"
#include "text/numbers.h"

namespace korvan {

// The kept sums of female i, or nullptr when her rows have no source.
inline FemaleDaySums* KeptDaySums(Cohort& C, int i) {
  const int k = C.RowSource(i);
  if (k < 1 || k > kMaxIndividual) return nullptr;
  if (C.DaySums.empty()) C.DaySums.resize(static_cast<std::size_t>(kMaxIndividual) + 1);  // once a workspace
  return &C.DaySums[static_cast<std::size_t>(k)];
}

// Her whole list, days 1..d+1 (d her adult duration) up to the closing mark: all eggs, the eggs
// of days 1..d and whether she laid on one of those.
inline void WalkLifeList(const Cohort& C, int i, int m, FemaleDaySums& s) {
  const double d = C.StageDuration(i, m);
  double total = 0, adult = 0;
  bool laid = false;
  for (long x = 1; x <= d + 1; ++x) {
    const double e = C.Fecundity(i, x);
    if (e < 0) break;
    total += e;
    if (x <= d) {
      adult += e;
      if (e > 0) laid = true;
    }
  }
  s.total = total;
  s.adult = adult;
  s.laid = laid;
  s.lifeKnown = true;
}

// A whole number below 2^52: sums of such numbers are exact in any grouping.
inline bool WholeAndModerate(double v) {
  return std::fabs(v) < 4503599627370496.0 && v == static_cast<double>(static_cast<std::int64_t>(v));
}

// Days 1..CInt(d) up to the closing mark: the days with eggs, their eggs added one by one to
// *chain (the running sum of the cohort) and on their own (kept when all were whole numbers).
inline void WalkOviDays(const Cohort& C, int i, int m, double& chain, FemaleDaySums& s) {
  long units = 0;
  double own = 0;
  bool whole = true;
  const long adult = CInt(C.StageDuration(i, m));
  for (long t = 1; t <= adult; ++t) {
    const double f = C.Fecundity(i, t);
    if (f < 0) break;
    if (f != 0) {
      ++units;
      chain += f;
      own += f;
      whole = whole && WholeAndModerate(f) && std::fabs(f) < 2147483648.0;
    }
  }
  s.units = units;
  s.eggs = own;
  s.wholeEggs = whole && WholeAndModerate(own);
  s.oviKnown = true;
}

// Days 1..CInt(d) up to the closing mark: all her eggs and the first day with some (0: none).
inline void WalkFirstDay(const Cohort& C, int i, int m, FemaleDaySums& s) {
  const long adult = CInt(C.StageDuration(i, m));
  double total = 0;
  long first = 0;
  for (long t = 1; t <= adult; ++t) {
    const double f = C.Fecundity(i, t);
    if (f < 0) break;
    total += f;
    if (f > 0 && first == 0) first = t;
  }
  s.lifeEggs = total;
  s.first = first;
  s.firstKnown = true;
}

// Of days 1..limit (limit <= kMaxAge), those before her closing mark, the first negative value.
// Kept only when the mark lies within her own days, 1..d+1, the ones a sample copies from the
// pool: past them a sample's row holds whatever stood there before.
inline long DaysBeforeMark(Cohort& C, int i, int m, long limit) {
  FemaleDaySums* kept = KeptDaySums(C, i);
  if (kept && kept->markKnown) return kept->beforeMark < limit ? kept->beforeMark : limit;
  const double* f = &C.Fecundity(i, 1);
  if (kept) {
    const double d = C.StageDuration(i, m);
    long own = 0;
    while (own < kMaxAge && own + 1 <= d + 1) ++own;
    long n = 0;
    while (n < own && !(f[n] < 0)) ++n;
    if (n < own) {
      kept->beforeMark = n;
      kept->markKnown = true;
      return n < limit ? n : limit;
    }
  }
  long n = 0;
  while (n < limit && !(f[n] < 0)) ++n;
  return n;
}

}  // namespace korvan
