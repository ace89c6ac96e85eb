// Life02: the span between the two special stages, whole cohort and by type, and the
// statistics of female fecundity.
#include <cstdio>

#include "engine/female_days.h"
#include "engine/life_table_engine.h"
#include "text/short_text.h"
#include "engine/stats_fields.h"
#include "store/rules.h"
#include "text/numbers.h"

namespace korvan {

void LifeTableEngine::Life02() {
  FlowEngine("Life02");
  Life02Gosub80();
  Life02Gosub410();
  Life02Gosub660();
}

void LifeTableEngine::Life02Gosub80() {
  FlowEngine("Life02Gosub80");
  auto& L = W.lifeTable;
  const auto& C = W.cohort;
  const int N = C.CohortSize;
  const TimeUnitRule tu(S.settings.TimeUnit);

  FindSpanStages(S, L.SpanFirstStage, L.SpanLastStage);

  int count = 0;
  double s = 0, q = 0;
  for (int i = 1; i <= N; ++i) {
    double span = 0;
    if (!PositiveDurationSum(C, i, L.SpanFirstStage, L.SpanLastStage, span)) continue;
    ++count;
    AddDuration(span, tu, s, q);
    L.SpanIndividual(count) = i;
    L.SpanValue(count) = TimeUnitToDays(span, tu);
  }
  L.SpanCount = count;
  L.SpanCountReport = count;
  ApplyStatistics(s, q, count, L.SpanMean, L.SpanVariance, L.SpanSD, false);
}

void LifeTableEngine::Life02Gosub410() {
  FlowEngine("Life02Gosub410");
  auto& L = W.lifeTable;
  const auto& C = W.cohort;
  const int N = C.CohortSize;
  const TimeUnitRule tu(S.settings.TimeUnit);
  for (int t = 1; t <= S.header.TypeCount; ++t) {
    const std::string& code = S.header.TypeCode(t);
    int count = 0;
    double s = 0, q = 0;
    for (int i = 1; i <= N; ++i) {
      if (!SameText(C.IndividualSex(i), code)) continue;
      double span = 0;
      if (!PositiveDurationSum(C, i, L.SpanFirstStage, L.SpanLastStage, span)) continue;
      ++count;
      AddDuration(span, tu, s, q);
    }
    L.TypeSpanCount(t) = count;
    ApplyStatistics(s, q, count, L.TypeSpanMean(t), L.TypeSpanVariance(t), L.TypeSpanSD(t));
  }
}

void LifeTableEngine::Life02Gosub660() {
  FlowEngine("Life02Gosub660");
  auto& L = W.lifeTable;
  const auto& C = W.cohort;
  const int m = S.header.StageCount;
  const int N = C.CohortSize;
  const bool resampling = W.run.IsResamplingFlag == "y";

  // Total fecundity of every female: her list up to the closing mark. The same walk along
  // her days sums her adult days alone (up to d, for the reproductive females below), in the
  // same order as a walk of its own would.
  static thread_local double adultTotal[kMaxIndividual + 1];
  static thread_local bool laidEggs[kMaxIndividual + 1];
  const bool kept = N <= kMaxIndividual;
  int females = 0;
  double s = 0, q = 0;
  for (int i = 1; i <= N; ++i) {
    if (!IsText(C.IndividualSex(i), 'F')) continue;
    FemaleDaySums own;
    FemaleDaySums* known = KeptDaySums(W.cohort, i);
    FemaleDaySums& walk = known ? *known : own;
    if (!walk.lifeKnown) WalkLifeList(C, i, m, walk);
    const double total = walk.total, adult = walk.adult;
    const bool laid = walk.laid;
    if (kept) {
      adultTotal[i] = adult;
      laidEggs[i] = laid;
    }
    ++females;
    s += total;
    q += total * total;
  }
  L.FemaleFecundityCount = females;
  L.FemaleFecunditySum = s;
  if (females == 0) return;
  ApplyStatistics(s, q, females, L.FemaleFecundityMean, L.FemaleFecundityVariance,
                  L.FemaleFecunditySD);

  if (!resampling) {
    Keep().lifeTable.OriginalMeanFecundity = L.FemaleFecundityMean;
    char text[64];
    std::snprintf(text, sizeof text, "%.4f", RoundDisplay(L.FemaleFecundityMean, 4));
    P.Status("txtMeanfecundity", text);
    Keep().lifeTable.OriginalFemaleCount = females;
    if (females < S.header.CohortSizeRead) Keep().options.SingleType = "No";
  }

  // Reproductive females: a positive value before the closing mark.
  int reproductive = 0;
  s = q = 0;
  for (int i = 1; i <= N; ++i) {
    if (!IsText(C.IndividualSex(i), 'F')) continue;
    double total = 0;
    bool laid = false;
    if (kept) {
      total = adultTotal[i];
      laid = laidEggs[i];
    } else {
      const double d = C.StageDuration(i, m);
      for (long x = 1; x <= d; ++x) {
        const double e = C.Fecundity(i, x);
        if (e < 0) break;
        if (e > 0) laid = true;
        total += e;
      }
    }
    if (!laid) continue;
    ++reproductive;
    s += total;
    q += total * total;
  }
  L.ReproductiveCount = reproductive;
  if (reproductive == 0) return;
  ApplyStatistics(s, q, reproductive, L.ReproductiveMean, L.ReproductiveVariance,
                  L.ReproductiveSD);
}

}  // namespace korvan
