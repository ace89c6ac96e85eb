// The sorts of the bootstrap results and their "_J..." files.
#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>

#include "bootstrap/cohort_values.h"
#include "bootstrap/percentile.h"
#include "bootstrap/sorting.h"
#include "input/data_file_writer.h"
#include "store/faults.h"
#include "text/numbers.h"
#include "text/side_by_side_rows.h"

namespace korvan {
namespace {


const char* const kThreeLabels[3] = {"0.025", "0.5", "0.975"};
const double kThreeP[3] = {0.025, 0.5, 0.975};

// Position of a quantity by B (B * 0.025, B * 0.5, B * 0.975): fixed for the usual B, the same
// rule for the others.
long PositionByB(long B, int which) { return PercentileIndex(B, kThreeP[which]); }

}  // namespace

// The statistics sorted sample by sample: what a sample gave (false where it gave nothing),
// the list that keeps them sorted, and the "_J" file of the sorted values (Write form: the
// position, the sample, the value), the zeros left out of it where they mean no value.
struct BootPercentiles::SortedStatistic {
  const char* flow;
  bool (*value)(const BootstrapRecord& R, long b, double& v);
  BootList<double> BootstrapRecord::*sorted;  // nullptr: kept only in the sort's workspace
  const char* file;                          // nullptr: none
  const char* column;
  bool skipZeros;
};

namespace {

using Statistic = BootPercentiles::SortedStatistic;
const Statistic kLambda{nullptr, [](const BootstrapRecord& R, long b, double& v) { return v = R.BootLambda(b), true; },
                        &BootstrapRecord::SortedLambda, "_J2a_Boot_Sorted lambda.txt", "Lambda", true};
const Statistic kR0{"SortBootstrapNetR0", [](const BootstrapRecord& R, long b, double& v) { return v = R.BootR0(b), true; },
                    &BootstrapRecord::SortedR0, nullptr, "R0", false};
const Statistic kR{"SortBootstrapIntrinsicRate",
                   [](const BootstrapRecord& R, long b, double& v) { return v = R.BootR(b), true; },
                   &BootstrapRecord::SortedR, "_J3a_Boot_Sorted r.txt", "r", false};
const Statistic kT{"SortBootstrapMeanGenT", [](const BootstrapRecord& R, long b, double& v) { return v = R.BootT(b), true; },
                   &BootstrapRecord::SortedT, "_J4a_Boot_Sorted T.txt", "T", true};
const Statistic kGRR{"SortBootGRR", [](const BootstrapRecord& R, long b, double& v) { return v = R.BootGRR(b), true; },
                     &BootstrapRecord::SortedGRR, nullptr, "GRR", false};
const Statistic kFecundity{"SortBootFecundity",
                           [](const BootstrapRecord& R, long b, double& v) { return v = R.BootF(b), true; },
                           &BootstrapRecord::SortedF, "_J6a_Boot_Sorted Fecundity.txt", "Fecundity", false};
// The eggs of the sample (BootF times its females) over its reproductive females.
const Statistic kFecundityFr{"SortedBootFecundityNfr",
                             [](const BootstrapRecord& R, long b, double& v) {
                               if (R.BootNfr(b) == 0) return false;
                               v = R.BootF(b) * R.BootNf(b) / R.BootNfr(b);
                               return true;
                             },
                             nullptr, "_J8a_Boot_Sorted Fecundity (Fr).txt", "Fecundity(Fr)", false};
const Statistic kFemaleProportion{"SortBootFemaleProportion",
                                  [](const BootstrapRecord& R, long b, double& v) {
                                    return v = R.BootNf(b) / static_cast<double>(R.BootSampleSize), true;
                                  },
                                  &BootstrapRecord::SortedNfToN, "_J7c_Boot_Sorted Female proportion.txt", "Nf/N",
                                  false};
const Statistic kLongevity{"SortBootLongevity",
                           [](const BootstrapRecord& R, long b, double& v) { return v = R.BootLongevity(b), true; },
                           &BootstrapRecord::SortedLongevity, "_J7a_Boot_Sorted Longevity.txt", "Longevity", false};

}  // namespace

namespace {

// Loads value(b) of the samples b = 1..m that have one into the sort workspace s and sorts
// them (the quick sort by ranges, or the selection sort); returns how many.
template <class ValueOf>
long LoadAndSort(SortStore& s, const BootstrapRecord& R, long m, ValueOf value) {
  long count = 0;
  for (long b = 1; b <= m; ++b) {
    double v = 0;
    if (!value(b, v)) continue;
    ++count;
    s.SortInValue(count) = v;
    s.SortInIndex(count) = static_cast<std::int32_t>(b);
  }
  s.SortCount = static_cast<std::int32_t>(count);
  s.QuickRangesWanted = R.QuickRangesWanted;
  if (R.UseQuickSort == "Yes")
    QuickSort(s);
  else
    SelectionSort(s);
  return count;
}

}  // namespace

long BootPercentiles::SortStatistic(const SortedStatistic& st, long m) {
  if (st.flow) Flow(st.flow);
  BootstrapRecord& R = S.boot;
  SortStore& s = R.sort;
  long count = 0;
  const auto made = std::find_if(presorts_.begin(), presorts_.end(),
                                 [&](const Presort& p) { return p.statistic == &st && p.m == m; });
  if (made != presorts_.end()) {
    count = made->count;
    s.SortValue.CheckRange(1, count);
    std::copy(made->value.begin(), made->value.end(), s.SortValue.Data() + 1);
    std::copy(made->index.begin(), made->index.end(), s.SortIndex.Data() + 1);
    s.SortCount = static_cast<std::int32_t>(count);
    s.SortCheckSum = made->checkSum;
    s.QuickRangesUsed = made->rangesUsed;
    s.QuickRangesWanted = made->rangesWanted;
    presorts_.erase(made);
  } else {
    count = LoadAndSort(s, R, m, [&](long b, double& v) { return st.value(R, b, v); });
  }
  if (st.sorted)
    for (long i = 1; i <= count; ++i) (R.*st.sorted)(i) = R.sort.SortValue(i);
  if (st.file) {
    TextFile out(OutputName(S, st.file));
    SortedHead(out, true);
    SortedRows(out, st.column, st.skipZeros);
  }
  return count;
}

void BootPercentiles::PresortSideBySide(const std::vector<std::pair<const SortedStatistic*, long>>& wanted) {
  const BootstrapRecord& R = S.boot;
  presorts_.assign(wanted.size(), Presort{});
  std::atomic<std::size_t> next{0};
  try {
    RunSideBySide(ThreadsForPieces(S.runControl.threads, static_cast<long>(wanted.size())), [&](int) {
      auto store = std::make_unique<SortStore>();  // its lists are zero pages until touched
      for (std::size_t k = next++; k < wanted.size(); k = next++) {
        const SortedStatistic& st = *wanted[k].first;
        Presort& p = presorts_[k];
        p.statistic = &st;
        p.m = wanted[k].second;
        p.count = LoadAndSort(*store, R, p.m, [&](long b, double& v) { return st.value(R, b, v); });
        p.value.assign(store->SortValue.Data() + 1, store->SortValue.Data() + 1 + p.count);
        p.index.assign(store->SortIndex.Data() + 1, store->SortIndex.Data() + 1 + p.count);
        p.checkSum = store->SortCheckSum;
        p.rangesWanted = store->QuickRangesWanted;
        p.rangesUsed = store->QuickRangesUsed;
      }
    });
  } catch (...) {
    presorts_.clear();  // each sort is made again in its turn, where its fault is reported
  }
}

void BootPercentiles::QuickSortBootResultsYesNo() {
  Flow("QuickSortBootResultsYesNo");
  S.boot.UseQuickSort = "Yes";
}

void BootPercentiles::SortedHead(TextFile& out, bool writeForm) const {
  const BootstrapRecord& R = S.boot;
  auto line = [&](const auto&... items) {
    if (writeForm)
      out.Write(items...);
    else
      out.Print(items...);
  };
  line(StampedProjectLine(S));
  line(S.options.MatingMode == "Yes" ? "This is a two-sex population." : "This is a parthenogenetic population.");
  if (R.EffectiveCount == R.BootB) {
    line("Total assigned and effective bootstrap number (B) = ", R.EffectiveCount);
  } else {
    line("Total assigned bootstrap number (B) = ", R.BootB);
    line("Total effective bootstrap number (B) = ", R.EffectiveCount);
    line("Total ineffective bootstrap number (B) = ", R.BootB - R.EffectiveCount);
  }
}

void BootPercentiles::SortedRows(TextFile& out, const std::string& name, bool skipZeros) const {
  const SortStore& s = S.boot.sort;
  out.Write("Sorted serial no.", "Original serial no.", name);
  WriteRowsSideBySide(out, 1, s.SortCount, RunThreads(S.runControl.threads), [&](long i, TextFile& rows) {
    const double v = s.SortValue(i);
    if (skipZeros && v == 0) return;
    rows.Write(i, s.SortIndex(i), v);
  });
}

void BootPercentiles::CountGroupsFromFirst(ValueGroups& groups, long m) { CountEqualGroups(S.boot.sort, groups, m); }

long BootPercentiles::GroupRows(TextFile& out, const std::string& name, const ValueGroups& groups,
                                bool skipZero) const {
  long zeros = 0;
  if (skipZero)
    for (long g = 1; g <= groups.Count; ++g)
      if (groups.Value(g) == 0) zeros += groups.Members(g);
  out.Print("Group serial no.", Zone{}, name, Zone{}, "Count");
  WriteRowsSideBySide(out, 1, groups.Count, RunThreads(S.runControl.threads), [&](long g, TextFile& rows) {
    if (!skipZero || groups.Value(g) != 0) rows.Print(g, Zone{}, groups.Value(g), Zone{}, groups.Members(g));
  });
  return zeros;
}

void BootPercentiles::WritePercentileFile(const PercentileFile& f) {
  const BootstrapRecord& R = S.boot;
  TextFile out(OutputName(S, f.suffix));
  SortedHead(out, false);
  out.Print("Mean of bootstrap results =", f.mean);
  out.Print("SD of bootstrap results =", f.sd);
  out.Print("Note well: It is the SE of the " + f.what + " based on t-distribution.");
  out.Print("If mean-SE is negative, you should report percentile confidence intervals, not SE.");
  auto ineffective = [&](std::int32_t k) {
    return k < 1 || R.BootEffectLabel(k) == kLabelIneffective || (!f.isR0 && R.BootR0(k) == 0);
  };
  for (int t = 0; t < 3; ++t) {
    const std::int32_t k = f.sample[t];
    const std::string label = kThreeLabels[t];
    if (ineffective(k)) {
      out.Print("The " + label + " percentile sample is ineffective, the " + f.what + " doesn't exist.");
      continue;
    }
    const double v = f.valueThroughEffectiveList ? R.BootLambda(R.EffectiveList(k)) : f.value[t];
    out.Print("The " + label + " percentile of " + f.what + " = ", v, ". It is the bootstrap sample no. =", k);
  }
  for (int t = 0; t < 3; ++t) {
    const std::int32_t k = f.sample[t];
    if (k < 1) continue;
    out.Print("The " + std::string(kThreeLabels[t]) + " percentile: bootstrap sample no. =", k);
    WriteSampleList(out, R, k, R.BootSampleSize);
    if (f.isR0 && t == 0 && R.BootR0(k) == 0) {
      out.Print("Because the 0.025 percentile of Ro is zero, intrinsic rate and finite rate do not exist.");
      continue;
    }
    out.Print("Net reproductive rate =", R.BootR0(k));
    out.Print("Finite rate =", R.BootLambda(k));
    out.Print("Intrinsic rate =", R.BootR(k));
  }
}

void BootPercentiles::SortBootstrapLambdaQuick() { SortLambda(Order::Quick); }

void BootPercentiles::SortBootstrapLambdaSelection() {
  const std::string kept = S.boot.UseQuickSort;
  S.boot.UseQuickSort = "No";
  SortLambda(Order::Selection);
  S.boot.UseQuickSort = kept;
}

void BootPercentiles::SortLambda(Order order) {
  Flow(order == Order::Quick ? "SortBootstrapLambdaQuick" : "SortBootstrapLambdaSelection");
  BootstrapRecord& R = S.boot;
  SortStore& s = R.sort;
  const long E = R.EffectiveCount;
  SortStatistic(kLambda, E);

  SetPercentileTable(s);
  auto sampleAt = [&](double p) { return s.SortIndex(PercentileIndex(E, p)); };
  for (int row = 0; row <= 14; ++row) s.PercentileSample(row) = sampleAt(s.PercentileP(row));
  for (int i = 1; i <= 100; ++i) s.Percentile100Sample(i) = sampleAt(static_cast<double>(s.Percentile100P(i)));
  s.Lambda025Sample = sampleAt(0.025);
  s.Lambda500Sample = sampleAt(0.5);
  s.Lambda975Sample = sampleAt(0.975);
  CountGroupsFromFirst(s.LambdaGroups, E);
  {
    TextFile out(OutputName(S, "_J2b_Boot_Sorted lambda_counts.txt"));
    SortedHead(out, false);
    GroupRows(out, "lambda", s.LambdaGroups, true);
  }
  PercentileFile f{"_J2c_Boot_0.025 and 0.975 percentile-lambda.txt", "finite rate"};
  f.sample[0] = s.Lambda025Sample;
  f.sample[1] = s.Lambda500Sample;
  f.sample[2] = s.Lambda975Sample;
  f.mean = R.Lambda.mean;
  f.sd = R.Lambda.se;
  f.valueThroughEffectiveList = true;
  WritePercentileFile(f);
}

void BootPercentiles::AskR0Precision() {
  BootstrapRecord& R = S.boot;
  if (R.BootFastRun == "Yes" || R.R0PrecisionSettled) return;
  const std::string text =
      "Enter the precision for grouping Ro: 0 = Exact, 1 = 10^(-10), 2 = 10^(-11), 3 = 10^(-12), 4 = "
      "10^(-13), 5 = 10^(-14), 6 = 10^(-15).";
  for (;;) {
    const double v = std::atof(P.InputBox(text, "Each precision level =?", "0").c_str());
    if (v >= 0 && v <= 6 && v == std::floor(v)) {
      R.R0Precision = static_cast<int>(v);
      break;
    }
  }
  R.R0PrecisionSettled = true;
}

void BootPercentiles::SortBootstrapNetR0() {
  AskR0Precision();
  BootstrapRecord& R = S.boot;
  SortStore& s = R.sort;
  if (R.R0Precision < 0 || R.R0Precision > 6)
    throw ProgramEnd{"The precision for grouping Ro must be 0 to 6, not " + std::to_string(R.R0Precision) + ".",
                     "Precision of R0"};
  const long B = R.BootB;
  SortStatistic(kR0, B);
  auto sampleAt = [&](double p) { return s.SortIndex(PercentileIndex(B, p)); };
  s.R0025Sample = sampleAt(0.025);
  s.R0500Sample = sampleAt(0.5);
  s.R0975Sample = sampleAt(0.975);
  for (int w = 0; w < 3; ++w) s.R0ByB(w) = R.SortedR0(PositionByB(B, w));

  // Groups: each value against the one before it, so that a slowly climbing chain stays one.
  const double tolerance = R.R0Precision == 0 ? 0 : std::pow(10.0, -(9 + R.R0Precision));
  ValueGroups& g = s.R0Groups;
  g.Count = 0;
  for (long i = 1; i <= B; ++i) {
    const double v = s.SortValue(i);
    const bool same = i > 1 && (R.R0Precision == 0 ? v == s.SortValue(i - 1)
                                                   : std::fabs(v - s.SortValue(i - 1)) < tolerance);
    if (!same) {
      ++g.Count;
      g.Value(g.Count) = v;
      g.Members(g.Count) = 0;
    }
    ++g.Members(g.Count);
  }

  {
    TextFile out(OutputName(S, "_J1a_Bootstrap_Sorted R0.txt"));
    SortedHead(out, true);
    out.Write("Original net reproductive rate =", ReadCohortValues(S).R0);
    out.Write("Mean of Net reproductive rate of all bootstrap samples = ", B > 0 ? s.SortCheckSum / B : 0.0);
    SortedRows(out, "R0", false);
  }
  {
    TextFile out(OutputName(S, "_J1b_Boot_Sorted R0_grouped_counts.txt"));
    SortedHead(out, false);
    out.Print("Precision of R0 =", R.R0Precision, ". The total observed number of different R0 =", g.Count, ".");
    long sum = 0;
    for (long k = 1; k <= g.Count; ++k) sum += g.Members(k);
    out.Print("Sum of counts =", sum);
    GroupRows(out, "R0", g, false);
  }
  if (R.BootNormalCurves != "No") WriteR0CumulativeFrequency(g, B);
  PercentileFile f{"_J1c_Boot_0.025 and 0.975 percentile-R0.txt", "net reproductive rate"};
  f.sample[0] = s.R0025Sample;
  f.sample[1] = s.R0500Sample;
  f.sample[2] = s.R0975Sample;
  for (int t = 0; t < 3; ++t) f.value[t] = R.SortedR0(PercentileIndex(B, kThreeP[t]));
  f.mean = R.R0.mean;
  f.sd = R.R0.se;
  f.isR0 = true;
  WritePercentileFile(f);
}

void BootPercentiles::WriteR0CumulativeFrequency(const ValueGroups& g, long m) {
  SortStore& s = S.boot.sort;
  TextFile out(OutputName(S, "_J1d_Boot_R0_Cumu Freq.txt"));
  SortedHead(out, false);
  out.Print("Group serial no.", Zone{}, "R0", Zone{}, "Cumu. Freq.", Zone{}, "Probit");
  FormCumulativeProbits(g, m, s.R0CumulativeFrequency, s.R0Probit);
  WriteRowsSideBySide(out, 1, g.Count, RunThreads(S.runControl.threads), [&](long k, TextFile& rows) {
    if (k == g.Count)
      rows.Print(k, Zone{}, g.Value(k), Zone{}, 1);
    else
      rows.Print(k, Zone{}, g.Value(k), Zone{}, s.R0CumulativeFrequency(k), Zone{}, s.R0Probit(k));
  });
}

void BootPercentiles::SortBootstrapIntrinsicRate() {
  BootstrapRecord& R = S.boot;
  SortStore& s = R.sort;
  const long E = R.EffectiveCount;
  SortStatistic(kR, E);
  auto sampleAt = [&](double p) { return s.SortIndex(PercentileIndex(E, p)); };
  s.R025Sample = sampleAt(0.025);
  s.R500Sample = sampleAt(0.5);
  s.R975Sample = sampleAt(0.975);
  CountGroupsFromFirst(s.RGroups, E);
  {
    TextFile out(OutputName(S, "_J3b_Boot_Sorted r_counts.txt"));
    SortedHead(out, false);
    const long ineffective = GroupRows(out, "r", s.RGroups, true);
    if (ineffective > 0) out.Print("There are", ineffective, " ineffective bootstrap samples.");
  }
  PercentileFile f{"_J3c_Boot_0.025 and 0.975 percentile-r.txt", "intrinsic rate"};
  f.sample[0] = s.R025Sample;
  f.sample[1] = s.R500Sample;
  f.sample[2] = s.R975Sample;
  for (int t = 0; t < 3; ++t) f.value[t] = R.SortedR(PercentileIndex(E, kThreeP[t]));
  f.mean = R.R.mean;
  f.sd = R.R.se;
  WritePercentileFile(f);
}

void BootPercentiles::SortBootstrapMeanGenT() {
  BootstrapRecord& R = S.boot;
  SortStore& s = R.sort;
  const long E = R.EffectiveCount;
  SortStatistic(kT, E);
  auto sampleAt = [&](double p) { return s.SortIndex(PercentileIndex(E, p)); };
  s.T025Sample = sampleAt(0.025);
  s.T500Sample = sampleAt(0.5);
  s.T975Sample = sampleAt(0.975);
  PercentileFile f{"_J4c_Boot_0.025 and 0.975 percentile-T.txt", "mean generation time"};
  f.sample[0] = s.T025Sample;
  f.sample[1] = s.T500Sample;
  f.sample[2] = s.T975Sample;
  for (int t = 0; t < 3; ++t) f.value[t] = R.SortedT(PercentileIndex(E, kThreeP[t]));
  f.mean = R.T.mean;
  f.sd = R.T.se;
  WritePercentileFile(f);
}

void BootPercentiles::SortBootGRR() {
  BootstrapRecord& R = S.boot;
  SortStore& s = R.sort;
  const long E = R.EffectiveCount;
  SortStatistic(kGRR, E);
  s.GRR025 = R.SortedGRR(PercentileIndexGRR(E, 0.025));
  s.GRR975 = R.SortedGRR(PercentileIndexGRR(E, 0.975));
}

void BootPercentiles::SortBootFecundity() {
  BootstrapRecord& R = S.boot;
  SortStore& s = R.sort;
  const long E = R.EffectiveCount;
  SortStatistic(kFecundity, E);
  for (int w = 0; w < 3; ++w) s.FByB(w) = R.SortedF(PositionByB(R.BootB, w));
  CountGroupsFromFirst(s.OtherGroups, E);
  TextFile out(OutputName(S, "_J6b_Boot_Sorted Fecundity_counts-new.txt"));
  SortedHead(out, false);
  GroupRows(out, "Fecundity", s.OtherGroups, false);
}

void BootPercentiles::SortedBootFecundityNfr() {
  BootstrapRecord& R = S.boot;
  SortStore& s = R.sort;
  const long m = SortStatistic(kFecundityFr, R.EffectiveCount);
  s.SortedFNfrCount = static_cast<std::int32_t>(m);
  for (long i = 1; i <= m; ++i) s.SortedFNfr(i) = s.SortValue(i);
  for (int w = 0; w < 3; ++w) s.FNfrByB(w) = s.SortedFNfr(PositionByB(R.BootB, w));
  CountGroupsFromFirst(s.OtherGroups, m);
  TextFile out(OutputName(S, "_J8b_Boot_Sorted Fecundity (Fr)-count.txt"));
  SortedHead(out, false);
  GroupRows(out, "Fecundity(Fr)", s.OtherGroups, false);
}

void BootPercentiles::SortBootFemaleProportion() { SortStatistic(kFemaleProportion, S.boot.EffectiveCount); }

void BootPercentiles::SortBootLongevity() { SortStatistic(kLongevity, S.boot.EffectiveCount); }

void BootPercentiles::SortAndWritePercentileTables() {
  BootstrapRecord& R = S.boot;
  QuickSortBootResultsYesNo();
  // Nf/N is sorted only where it varies: not in a cohort of females alone.
  const CohortValues cohort = ReadCohortValues(S);
  bool varies = false;
  for (long b = 2; b <= R.EffectiveCount && !varies; ++b) varies = R.BootNf(b) != R.BootNf(1);
  const bool femaleProportion = cohort.femaleProportion != 1 && varies;
  const long E = R.EffectiveCount;
  std::vector<std::pair<const SortedStatistic*, long>> wanted = {
      {&kLambda, E}, {&kR0, R.BootB}, {&kR, E}, {&kFecundity, E}, {&kFecundityFr, E}, {&kT, E},
      {&kLongevity, E}, {&kGRR, E}};
  if (femaleProportion) wanted.push_back({&kFemaleProportion, E});
  PresortSideBySide(wanted);
  SortBootstrapLambdaQuick();
  SortBootstrapNetR0();
  SortBootstrapIntrinsicRate();
  const bool tables = R.MajorFilesOnly != "Yes" && R.PercentileTables025975 != "No";
  const SortStore& s = R.sort;
  if (tables) {
    if (R.PercentileTables15 == "Yes") WriteLifeTableForPercentileX();
    if (R.PercentileTables100 == "Yes") WriteLifeTableFor100();
    WritePercentilePair("_Ka_boot_", "_Kd_Life Table_", s.Lambda025Sample, "0.025 lambda", "0.025 lambda");
    WritePercentilePair("_Ka_boot_", "_Kd_Life Table_", s.Lambda975Sample, "0.975 lambda", "0.975 lambda");
    WritePercentilePair("_Kb_boot_", "_Ke_Life Table_", s.R025Sample, "0.025 r", "0.025 r");
    WritePercentilePair("_Kb_boot_", "_Ke_Life Table_", s.R975Sample, "0.975 r", "0.975 r");
    WritePercentilePair("_Kc_boot_", "_Kf_Life Table_", s.R0025Sample, "0.025 R0", "0.025 R0");
    WritePercentilePair("_Kc_boot_", "_Kf_Life Table_", s.R0500Sample, "0.5 R0", "0.500 R0");
  }
  SortBootFecundity();
  SortedBootFecundityNfr();
  if (tables) WritePercentilePair("_Kc_boot_", "_Kf_Life Table_", s.R0975Sample, "0.975 R0", "0.975 R0");
  SortBootstrapMeanGenT();
  if (femaleProportion) SortBootFemaleProportion();
  SortBootLongevity();
  SortBootGRR();
  presorts_.clear();
}

}  // namespace korvan
