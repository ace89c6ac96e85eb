// Statistics of the treatments and the pair loop of the paired bootstrap test: paired
// differences, their mean and SE, t and percentile limits, the counts behind P, and the detail
// files of a detailed run.
#include <chrono>
#include <cmath>
#include <ctime>
#include <string>

#include "bootstrap/sorting.h"
#include "comparison/pair_differences.h"
#include "comparison/paired_test.h"
#include "store/faults.h"

namespace korvan {

namespace {

constexpr const char* kStatus = "lblBootMsg";

std::string Num(long v) { return std::to_string(v); }

}  // namespace

void PairedBootTest::BasicAnalysisForCI() {
  Flow("BasicAnalysisForCI");
  auto& c = S.comparison;
  if (c.FastPBT == "Yes") c.UseQuickSort = "Yes";
  StartClock("Paired bootstrap test begins at:");
  TreatmentStatistics();
  const int n = c.TreatmentCount;
  for (int i = 1; i <= n - 1; ++i)
    for (int j = i + 1; j <= n; ++j) PairStep(i, j);
}

void PairedBootTest::StartClock(const std::string& beginsAt) {
  auto& c = S.comparison;
  c.BootBeginTime = DateTimeText();
  c.BeginSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
  c.BeginsAtText = beginsAt;
  P.Status("lblBootBegin", beginsAt + "\n" + c.BootBeginTime);
}

void PairedBootTest::TreatmentStatistics() {
  auto& c = S.comparison;
  const int n = c.TreatmentCount;
  for (int i = 1; i <= n; ++i) {
    std::int32_t count = 0;
    double sum = 0, sumSq = 0;
    for (long k = 1; k <= c.TreatmentB(i); ++k) {
      const double x = c.BootValue(k, i);
      count += c.BootValueSeen(k, i);
      sum += x;
      sumSq += x * x;
    }
    if (count == 0) throw ProgramEnd{"Division by zero: treatment " + c.TreatmentTitle(i) + " has no values.",
                                     "Paired bootstrap test"};
    c.BootCount(i) = count;
    c.BootSum(i) = sum;
    c.BootSumSq(i) = sumSq;
    c.BootMean(i) = sum / count;
    double dev = 0;
    for (long k = 1; k <= c.TreatmentB(i); ++k) {
      const double e = c.BootValue(k, i) - c.BootMean(i);
      dev += e * e;
    }
    c.BootScaled(i) = dev / count * c.TreatmentN(i);
    c.BootVar1(i) = (sumSq - sum * sum / count) / (count - 1);
    c.BootVar2(i) = dev / (count - 1);
    c.BootSE(i) = std::sqrt(c.BootVar2(i));
  }

  // One-way table on the bootstrap means; the within term is the variance of the bootstrap
  // values themselves.
  double g = 0;
  for (int i = 1; i <= n; ++i) g += c.BootMean(i);
  c.GrandMean = g / n;
  c.SSB = c.SSW = c.dfW = 0;
  for (int i = 1; i <= n; ++i) {
    const double ni = c.BootCount(i);
    c.SSB += ni * (c.BootMean(i) - c.GrandMean) * (c.BootMean(i) - c.GrandMean);
    c.SSW += (ni - 1) * c.BootVar1(i);
    c.dfW += ni - 1;
  }
  c.dfB = n - 1;
  c.MSB = c.SSB / c.dfB;
  c.MSW = c.SSW / c.dfW;
  if (c.MSW != 0) c.FValue = c.MSB / c.MSW;
}

void PairedBootTest::PairStep(int i, int j) {
  auto& c = S.comparison;
  const bool detailed = c.DetailedDifferences == "Yes";
  c.PairBelowZero(i, j) = c.PairBeyondTwice(i, j) = c.PairInsideCount(i, j) = 0;
  c.PairOutsideCount(i, j) = c.PairNegativeCount(i, j) = 0;
  const std::string running = "I am running paired bootstrap test.\nPlease wait!\nDon't touch me!\n(Comparing " +
                              Num(i) + " with " + Num(j) + ")";
  P.Status(kStatus, running);

  DetailFiles files;
  if (detailed) OpenPairedDetailFiles(files, S, i, j);

  const bool iLarger = c.BootMean(i) > c.BootMean(j);
  const double D = iLarger ? c.BootMean(i) - c.BootMean(j) : c.BootMean(j) - c.BootMean(i);
  c.PairTails(i, j) = (c.BootMean(i) == 0 || D / c.BootMean(i) > 0.25) ? "One" : "Two";

  const long B = c.BootCount(i);
  DifferenceTally tally(D);
  for (long k = 1; k <= B; ++k) {
    if (k % 10000 == 0 && k / 10000 <= 200) P.Status(kStatus, running + "\n(k =" + Num(k) + ")");
    const double d = iLarger ? c.BootValue(k, i) - c.BootValue(k, j) : c.BootValue(k, j) - c.BootValue(k, i);
    const bool different = tally.Add(d);
    c.PairDifference(k) = d;
    if (detailed) files.Record(k, d, D, different);
  }
  KeepTally(i, j, tally, B);

  P.Status(kStatus, running + "\n(Sorting...)");
  SortDifferences(B);
  c.PairPctLower(i, j) = c.PairDifference(PercentileIndexGRR(B, 0.025));
  c.PairPctUpper(i, j) = c.PairDifference(PercentileIndexGRR(B, 0.975));
  long firstNonNegative = B + 1;
  for (long k = 1; k <= B; ++k)
    if (c.PairDifference(k) >= 0) {
      firstNonNegative = k;
      break;
    }
  c.PairNegativeCount(i, j) = static_cast<std::int32_t>(firstNonNegative - 1);

  // Every pair's P is taken over the B of the first treatment.
  SetPairLimits(i, j, static_cast<double>(c.PairOutsideCount(i, j)) / c.BootCount(1));

  if (detailed) {
    c.CurveMean = c.PairMeanDiff(i, j);
    c.CurveSE = c.PairSE(i, j);
    c.CurveFirst = i;
    c.CurveSecond = j;
    WriteNormalDensityCurveForDifferenceAndCI();
  }
  P.Status(kStatus, "Treat " + Num(i) + " to treat " + Num(j) + "\n" + DateTimeText());
}

void PairedBootTest::KeepTally(int i, int j, const DifferenceTally& tally, long count) {
  auto& c = S.comparison;
  c.PairBelowZero(i, j) = static_cast<std::int32_t>(tally.belowZero);
  c.PairBeyondTwice(i, j) = static_cast<std::int32_t>(tally.beyondTwice);
  c.PairInsideCount(i, j) = static_cast<std::int32_t>(tally.inside);
  c.PairOutsideCount(i, j) = c.PairBelowZero(i, j) + c.PairBeyondTwice(i, j);
  c.PairMeanDiff(i, j) = tally.Mean(count);
  c.PairVar(i, j) = tally.Variance(count);
  c.PairSE(i, j) = std::sqrt(c.PairVar(i, j));
}

void PairedBootTest::SetPairLimits(int i, int j, double p) {
  auto& c = S.comparison;
  c.PairP(i, j) = c.PairP(j, i) = p;
  c.PairLower(i, j) = c.PairMeanDiff(i, j) - 1.959964 * c.PairSE(i, j);
  c.PairUpper(i, j) = c.PairMeanDiff(i, j) + 1.959964 * c.PairSE(i, j);
}

void PairedBootTest::SortDifferences(long count) {
  auto& c = S.comparison;
  auto& st = S.boot.sort;
  c.PairDifference.CheckRange(1, count);
  st.SortInValue.CheckRange(1, count);
  st.SortInIndex.CheckRange(1, count);
  st.SortValue.CheckRange(1, count);
  double* d = c.PairDifference.Data();
  if (c.UseQuickSort == "Yes") {
    st.SortCount = static_cast<std::int32_t>(count);
    st.QuickRangesWanted = 1024;
    for (long k = 1; k <= count; ++k) {
      st.SortInValue.Data()[k] = d[k];
      st.SortInIndex.Data()[k] = static_cast<std::int32_t>(k);
    }
    QuickSort(st);
    for (long k = 1; k <= count; ++k) d[k] = st.SortValue.Data()[k];
    return;
  }
  for (long k = 1; k <= count; ++k) st.SortInIndex.Data()[k] = static_cast<std::int32_t>(k);
  ExchangeSortRange(d + 1, st.SortInIndex.Data() + 1, count, st.ExchangeTree.Data());
}

void PairedBootTest::WriteNormalDensityCurveForDifferenceAndCI() {
  Flow("WriteNormalDensityCurveForDifferenceAndCI");
  const auto& c = S.comparison;
  const int i = c.CurveFirst, j = c.CurveSecond;
  const double M = c.CurveMean, SE = c.CurveSE;
  const long B = c.BootCount(i);
  const std::string pair = Num(i) + " to " + Num(j);
  TextFile f;
  const std::string meanLabel = "Mean of " + c.TreatmentParameter(i) + " differences:";
  if (c.PickedOneByOne == "Yes") {
    f.Open(S.identity.DataFileBase + "-" + c.TreatmentParameter(1) + "-" + pair +
           "-Normal density fig of difference.txt");
    f.Write(c.TreatmentTitle(i) + " vs " + c.TreatmentTitle(j));
    f.Write("Paired bootstrap test");
    f.Write("Bootstrap number =", B);
    f.Write(meanLabel, M, "SE of differences:", SE);
  } else {
    f.Open(S.identity.DataFileBase + "_23-Fig-" + pair + "-Normal density of difference.txt");
    f.Write("Project: " + c.ProjectTitle + " " + DateTimeText());
    f.Write(c.Description);
    f.Write(c.ParameterName);
    f.Write("Bootstrap number =", B);
    f.Write(meanLabel, M, "SE of differences:", SE);
    f.Write("Total number of effective bootstrap =", B);
  }
  f.Write("Class", "Difference " + pair + " density");
  const double step = 7 * SE / 200;
  for (int k = 0; k <= 200; ++k) {
    const double x = M - 3.5 * SE + k * step;
    const double z = (x - M) / SE;
    f.Write(k, x, std::exp(-0.5 * z * z) / (std::sqrt(6.28318) * SE));
  }
}

}  // namespace korvan
