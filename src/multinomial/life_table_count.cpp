#include "multinomial/life_table_count.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <vector>

#include "bootstrap/percentile.h"
#include "bootstrap/sample_records.h"
#include "multinomial/mnc.h"
#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {

namespace {

// Consecutive samples whose R0 differ by less than this are one group.
constexpr double kSameR0 = 1e-10;
constexpr const char* kCountTitle = "Sort bootstrap life tables for multinomial theorem?";

const BootMatList<std::int16_t, kMaxIndividual>& SampleLists(const SessionStore& S) {
  return S.boot.SameBootstrap == "Yes" ? S.boot.SavedBootIndividuals : S.boot.BootIndividuals;
}

}  // namespace

void SetUpComposition(SessionStore& S) {
  MultinomialRecord& M = S.multinomial;
  const BootstrapRecord& R = S.boot;
  if (R.BootSampleSize < 0 || R.BootSampleSize > kMaxIndividual)
    throw ProgramEnd{"A bootstrap sample of " + std::to_string(R.BootSampleSize) +
                         " individuals can't be counted: a sample holds 0 to " + std::to_string(kMaxIndividual) +
                         " individuals.",
                     "Bootstrap samples don't fit the cohort"};
  M.CountN = R.BootSampleSize;
  // The cohort of the pool in memory, else that of the data file read, else the record's n.
  M.CountCohort = S.pool.OriginalCohortSize > 0 ? S.pool.OriginalCohortSize
                  : S.header.CohortSizeRead > 0 ? S.header.CohortSizeRead
                                                : R.BootSampleSize;
  M.CountNFactorial = FactorialOf(M.CountN);
  M.CountNPowerN = PowerNN(M.CountN);
}

void ComposeSample(SessionStore& S, long b, int* counts) {
  MultinomialRecord& M = S.multinomial;
  const auto& lists = SampleLists(S);
  const int n = M.CountN, N = M.CountCohort;
  for (int p = 1; p <= n; ++p) {
    const int k = lists(p, b);
    if (k < 1 || k > N) {
      for (int q = 1; q < p; ++q) counts[lists(q, b)] = 0;
      throw ProgramEnd{"Bootstrap sample " + std::to_string(b) + " holds individual " + std::to_string(k) +
                           ", but the cohort has " + std::to_string(N) +
                           " individuals. The samples can't be counted; no file was written.",
                       "Bootstrap samples don't fit the cohort"};
    }
    ++counts[k];
  }
  // The sorted list straight from the counts (a pass over the cohort's numbers, which costs
  // no more than the sample itself), the counts back to zero on the way.
  double mnc = M.CountNFactorial;
  double logP = 0;
  int p = 0;
  for (int k = 1; k <= N; ++k) {
    const int c = counts[k];
    if (c == 0) continue;
    if (c > 1) {
      mnc /= FactorialOf(c);
      logP -= std::lgamma(c + 1.0);
    }
    for (int r = 0; r < c; ++r) M.SampleSorted(++p, b) = static_cast<std::int16_t>(k);
    counts[k] = 0;
  }
  M.SampleMNC(b) = mnc;
  M.SampleProbability(b) = std::isfinite(mnc) && std::isfinite(M.CountNPowerN)
                               ? mnc / M.CountNPowerN
                               : std::exp(std::lgamma(n + 1.0) - n * std::log(static_cast<double>(n)) + logP);
  M.SampleR0(b) = M.CountFromRecord ? S.boot.RecordR0(b) : S.boot.BootR0(b);
  M.SampleLambda(b) = M.CountFromRecord ? S.boot.RecordLambda(b) : S.boot.BootLambda(b);
}

bool CompositionLess(const MultinomialRecord& M, long a, long b) {
  for (int p = 1; p <= M.CountN; ++p) {
    const auto x = M.SampleSorted(p, a), y = M.SampleSorted(p, b);
    if (x != y) return x < y;
  }
  return false;
}

bool SameComposition(const MultinomialRecord& M, long a, long b) {
  for (int p = 1; p <= M.CountN; ++p)
    if (M.SampleSorted(p, a) != M.SampleSorted(p, b)) return false;
  return true;
}

bool LifeTableCount::ReadFileNo11ToSortandCount() {
  Flow("ReadFileNo11ToSortandCount");
  BootstrapRecord& R = S.boot;
  const int cohortSize = W.cohort.CohortSize;
  const std::string flag = R.BootSessionFlag, kept = R.RecordFilePath;
  // Into the lists the count takes its samples from.
  R.BootSessionFlag = R.SameBootstrap == "Yes" ? "Yes" : "No";
  R.RecordFilePath.clear();
  SampleRecords(S, P, W).ReadSameBootstrapData();
  R.BootSessionFlag = flag;
  if (S.header.CohortSizeRead > 0) W.cohort.CohortSize = cohortSize;  // the reader set it to the record's n
  if (R.RecordFilePath.empty()) {
    R.RecordFilePath = kept;
    return false;
  }
  R.EffectiveCount = R.BootB;
  S.multinomial.CountFromRecord = true;
  const std::string& path = R.RecordFilePath;
  if (S.identity.DataFileBase.empty())
    S.identity.DataFileBase = path.size() > 4 ? path.substr(0, path.size() - 4) : std::string();
  return true;
}

void LifeTableCount::AskPrecision() {
  BootstrapRecord& R = S.boot;
  if (R.R0PrecisionSettled) return;
  for (int tries = 0; tries < 10; ++tries) {
    const std::string a = P.InputBox(
        "Enter the precision for grouping Ro: 0 = Exact, 1 = 10^(-10), 2 = 10^(-11), 3 = 10^(-12), 4 = 10^(-13), "
        "5 = 10^(-14), 6 = 10^(-15).",
        "Precision level =?", "0");
    const auto v = NumberAnswer(a.empty() ? "0" : a);
    if (v && *v >= 0 && *v <= 6 && *v == std::floor(*v)) {
      R.R0Precision = static_cast<int>(*v);
      R.R0PrecisionSettled = true;
      return;
    }
  }
  R.R0Precision = 0;
}

void LifeTableCount::SortAndCountLifeTableBase() {
  Flow("SortAndCountLifeTableBase");
  const int end = P.MsgBox(
      "Do you want to end the program or continue to sort bootstrap life tables?\n"
      "(Sorting bootstrap life tables may take long time).\n"
      " (This is for the exact method using the multinomial theorem.)\n"
      "There are many factors which limit the success of thie subroutine.\n"
      "They are: bootstrap B, variability among individuals, sample size n,\n"
      "variability of fecundity among females, etc. Before you try this\n"
      "you should learn the application of multinomail theorem to life table\n"
      "For B <= 1000, it last only a few seconds.\n"
      "For B = 10000, it last only a few hours.\n"
      "For B >= 100000, it may last a few days.\n"
      "Are you sure that you want to end here?\n"
      "Yes: I want to end here.\n"
      "No: I want to sort bootstrap life table.",
      kCountTitle, kYesNo);
  if (end != kNo) return;
  if (P.MsgBox("Are you sure want to sort bootstrap life table? It might take very long time.\n"
               "Yes: I want to sort the bootstrap life tables.\n"
               "     (Please wait for the results. It may take a few hours or days).\n"
               "No: I want to stop.",
               "Are you sure?", kYesNo) != kYes)
    return;
  P.Status("lblBootMsg", "Sorting bootstrap life tables.\nPlease wait!\nDon't touch me!");
  AskPrecision();
  SortAndCountLifeTable();
}

void LifeTableCount::SortAndCountLifeTable() {
  Flow("SortAndCountLifeTable");
  const auto begin = std::chrono::steady_clock::now();
  SortAndCountLifeTable1();
  SortAndCountLifeTable2();
  Print00ALTunsortedButInsectSorted();
  SortAndCountLifeTable4();
  SortAndCountLifeTable5();
  SortAndCountLifeTable6();
  SortAndCountLifeTable7();
  Print00BLTRoSortedwithLambdaandMNC();
  Print00BLTRoSortedwithMNC();
  Print00CLifeTableSameAsOriginal();
  Print00DLTRoSortedwithIndCounts();
  Print00ELTRoSortedandLTcounted();
  Print00GLTGroupedBasedonRo();
  Print00HTableSameRoGrouped();
  Print00HTableForFig();
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  const std::string total = seconds >= 60 ? FullPrecision(RoundDisplay(seconds / 60, 2)) + " min."
                                          : FullPrecision(RoundDisplay(seconds, 2)) + " sec.";
  const std::string ended = "ended at " + DateTimeText();
  P.Status("lblBootEnd", ended + "\nTotal time = " + total);
  P.MsgBox("Bootstrap life tables sorted and counted (" + std::to_string(S.multinomial.LifeTableCount) +
               " different life tables in " + std::to_string(S.multinomial.CountM) + " samples).\n" + ended +
               "\nTotal time = " + total,
           "Task completed", kOKOnly);
}

void LifeTableCount::SortAndCountLifeTable1() {
  Flow("SortAndCountLifeTable1");
  MultinomialRecord& M = S.multinomial;
  const BootstrapRecord& R = S.boot;
  SetUpComposition(S);
  M.CountM = R.EffectiveCount == R.BootB ? R.BootB : R.EffectiveCount;
  std::vector<int> counts(static_cast<std::size_t>(M.CountCohort) + 1, 0);
  M.SampleMNCSum = 0;
  for (long b = 1; b <= M.CountM; ++b) {
    ComposeSample(S, b, counts.data());
    M.SampleMNCSum += M.SampleMNC(b);
    if (b % 1000 == 0) P.Progress(b, M.CountM);
  }
}

void LifeTableCount::SortAndCountLifeTable2() {
  Flow("SortAndCountLifeTable2");
  MultinomialRecord& M = S.multinomial;
  const long m = M.CountM;
  if (m < 1) return;
  (void)M.SampleOrder(m);  // the bound, checked once: the list lies in one piece
  std::int32_t* order = &M.SampleOrder(1);
  for (long i = 0; i < m; ++i) order[i] = static_cast<std::int32_t>(i + 1);
  // Ascending R0, ties by sample number: the order doesn't depend on how the sort walks.
  std::sort(order, order + m, [&](std::int32_t a, std::int32_t b) {
    const double x = M.SampleR0(a), y = M.SampleR0(b);
    return x != y ? x < y : a < b;
  });
}

void LifeTableCount::SortAndCountLifeTable4() {
  Flow("SortAndCountLifeTable4");
  MultinomialRecord& M = S.multinomial;
  const long m = M.CountM;
  M.GroupCount = 0;
  if (m < 1) return;
  std::int32_t* order = &M.SampleOrder(1);
  // Groups of R0 first (a chain of consecutive values closer than the tolerance), then within
  // each group equal compositions side by side. Samples of one composition have one R0, so
  // they always fall in one group.
  long group = 0;
  for (long i = 0; i < m; ++i) {
    if (i == 0 || std::fabs(M.SampleR0(order[i]) - M.SampleR0(order[i - 1])) >= kSameR0) ++group;
    M.OrderGroup(i + 1) = static_cast<std::int32_t>(group);
  }
  long start = 0;
  for (long i = 1; i <= m; ++i) {
    if (i < m && M.OrderGroup(i + 1) == M.OrderGroup(i)) continue;
    std::sort(order + start, order + i, [&](std::int32_t a, std::int32_t b) {
      if (CompositionLess(M, a, b)) return true;
      if (CompositionLess(M, b, a)) return false;
      return a < b;
    });
    start = i;
  }
  M.GroupCount = group;
}

void LifeTableCount::SortAndCountLifeTable5() {
  Flow("SortAndCountLifeTable5");
  MultinomialRecord& M = S.multinomial;
  long tables = 0;
  for (long i = 1; i <= M.CountM; ++i) {
    const long b = M.SampleOrder(i);
    if (i == 1 || M.OrderGroup(i) != M.OrderGroup(i - 1) || !SameComposition(M, b, M.SampleOrder(i - 1))) {
      ++tables;
      M.LifeTableFirst(tables) = static_cast<std::int32_t>(b);
      M.LifeTableSamples(tables) = 0;
    }
    ++M.LifeTableSamples(tables);
    M.OrderLifeTable(i) = static_cast<std::int32_t>(tables);
  }
  M.LifeTableCount = tables;
}

void LifeTableCount::SortAndCountLifeTable6() {
  Flow("SortAndCountLifeTable6");
  MultinomialRecord& M = S.multinomial;
  for (long g = 1; g <= M.GroupCount; ++g) {
    M.GroupSamples(g) = M.GroupLifeTables(g) = 0;
    M.GroupMNC(g) = M.GroupProbability(g) = M.GroupLifeTableMNC(g) = 0;
  }
  for (long i = 1; i <= M.CountM; ++i) {
    const long b = M.SampleOrder(i), g = M.OrderGroup(i);
    if (M.GroupSamples(g) == 0) M.GroupR0(g) = M.SampleR0(b);  // the group's first
    ++M.GroupSamples(g);
    M.GroupMNC(g) += M.SampleMNC(b);
    M.GroupProbability(g) += M.SampleProbability(b);
    if (i == 1 || M.OrderLifeTable(i) != M.OrderLifeTable(i - 1)) {
      ++M.GroupLifeTables(g);
      M.GroupLifeTableMNC(g) += M.SampleMNC(b);
    }
  }
  ValueGroups& v = M.R0Groups;
  v.Count = static_cast<std::int32_t>(M.GroupCount);
  for (long g = 1; g <= M.GroupCount; ++g) {
    v.Value(g) = M.GroupR0(g);
    v.Members(g) = M.GroupSamples(g);
  }
}

void LifeTableCount::SortAndCountLifeTable7() {
  Flow("SortAndCountLifeTable7");
  MultinomialRecord& M = S.multinomial;
  {
    TextFile out(OutputName(S, "_00_H_Sorted R0_counts-simple.txt"));
    out.Write("SN", "R0", "Count", "P(LT)", "S[MNC]", "P[S(MNC)]", "S(MNC)/Sum[S(MNC)]");
    for (long g = 1; g <= M.GroupCount; ++g)
      out.Write(g, M.GroupR0(g), M.GroupSamples(g), static_cast<double>(M.GroupSamples(g)) / M.CountM, M.GroupMNC(g),
                M.GroupProbability(g), M.SampleMNCSum > 0 ? M.GroupMNC(g) / M.SampleMNCSum : 0.0);
  }
  BootPercentiles(S, P, W).WriteR0CumulativeFrequency(M.R0Groups, M.CountM);
}

}  // namespace korvan
