#include "bootstrap/general_bootstrap.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <filesystem>
#include <thread>

#include "bootstrap/bootstrap_statistics.h"
#include "bootstrap/resampling.h"
#include "bootstrap/sample_records.h"
#include "bootstrap/sorting.h"
#include "bootstrap/uniform_random.h"
#include "input/field_reader.h"
#include "store/faults.h"
#include "text/numbers.h"
#include "text/side_by_side_rows.h"
#include "text/text_file.h"

namespace korvan {

namespace {

constexpr const char* kTitle = "General bootstrap";
// The ages over which l(x) of a list of longevities is counted.
constexpr double kLongestAge = 100000;

// l(x) of a list of longevities by counting, per age, those still alive: a longevity v adds
// one to the ages 0 to v - 1. Each value is filed once at its last age and the counts are
// summed from the top, so a sample costs its size plus the age range, not their product.
class HalfSurvival {
 public:
  explicit HalfSurvival(double largest)
      : last_(largest >= 1 ? static_cast<long>(std::floor(largest)) : 0), alive_(static_cast<std::size_t>(last_ + 1)) {}
  void Add(double v) {
    if (!(v >= 1)) return;  // dead before the end of age 0
    const long a = std::min(static_cast<long>(std::floor(v - 1)), last_);
    ++alive_[static_cast<std::size_t>(a)];
  }
  // The first age with 2 * alive <= n; the counts are left at zero for the next list.
  double Age(long n) {
    for (long a = last_ - 1; a >= 0; --a) alive_[static_cast<std::size_t>(a)] += alive_[static_cast<std::size_t>(a + 1)];
    long age = last_;
    for (long a = 0; a <= last_; ++a) {
      if (2 * alive_[static_cast<std::size_t>(a)] <= n) {
        age = a;
        break;
      }
    }
    std::fill(alive_.begin(), alive_.end(), 0);
    return static_cast<double>(age);
  }

 private:
  long last_;
  std::vector<long> alive_;
};

double Largest(const std::vector<double>& values) {
  double m = 0;
  for (double v : values) m = std::max(m, v);
  return m;
}

double ProbitOfMean(double mean, const std::string& whose) {
  if (!(mean > 0 && mean < 1))
    throw ProgramEnd{"The mean of " + whose + " is " + FullPrecision(mean) +
                         ": only a proportion between 0 and 1 has a probit. Answer 0 (no transformation) to "
                         "\"Transformation?\" for data that are not proportions.",
                     kTitle};
  return ProbitTransformation(mean).value;
}

std::string NumberFault(const std::string& path, int line, const std::string& text) {
  return "Line " + std::to_string(line) + " of " + path + " holds \"" + text + "\" where a number should stand.";
}

}  // namespace

GeneralData ReadGeneralData(const std::string& path, bool serialNumbers) {
  FieldReader in(path);
  GeneralData d;
  if (in.AtEnd()) throw ProgramEnd{"The file " + path + " is empty.", kTitle};
  d.treatment = in.ReadString();
  while (in.Line() == 1 && !in.AtEnd()) in.ReadString();
  while (in.Line() == 2 && !in.AtEnd()) d.variable = in.ReadString();
  while (in.HasMoreData()) {
    if (serialNumbers) {
      const int line = in.Line();
      const double serial = in.ReadNumber();
      if (!in.LastNumberValid()) throw ProgramEnd{NumberFault(path, line, in.LastText()), kTitle};
      d.serial.push_back(serial);
      if (!in.HasMoreData() || in.Line() != line)
        throw ProgramEnd{"Line " + std::to_string(line) + " of " + path +
                             " holds a serial number without its value (answer No to \"Are there serial numbers "
                             "in your data file?\" for a list of values alone).",
                         kTitle};
    }
    const int line = in.Line();
    const double v = in.ReadNumber();
    if (!in.LastNumberValid()) throw ProgramEnd{NumberFault(path, line, in.LastText()), kTitle};
    d.values.push_back(v);
  }
  if (d.values.empty())
    throw ProgramEnd{"The file " + path + " holds no values below its two head lines (treatment and variable).",
                     kTitle};
  return d;
}

std::string MultiplyGeneralData(const std::string& path, const GeneralData& data, long times) {
  const std::string base = path.size() > 4 ? path.substr(0, path.size() - 4) : path;
  const std::string out = base + "-new.txt";
  TextFile f(out);
  f.Write(data.treatment);
  f.Write("Ind. No.", data.variable);
  long serial = 0;
  for (double v : data.values)
    for (long t = 0; t < times; ++t) f.Write(++serial, v);
  return out;
}

double AgeOfHalfSurvival(const std::vector<double>& longevities) {
  HalfSurvival h(Largest(longevities));
  for (double v : longevities) h.Add(v);
  return h.Age(static_cast<long>(longevities.size()));
}

void GeneralBootstrap::DataStatistics() {
  Flow("GeneralBootstrapDataStatistics");
  BootstrapRecord& R = S.boot;
  const double N = static_cast<double>(data.values.size());
  double s = 0, q = 0;
  for (double v : data.values) {
    s += v;
    q += v * v;
  }
  R.GeneralN = N;
  R.GeneralDataMean = s / N;
  R.GeneralDataVariance = N > 1 ? std::max(0.0, (q - s * s / N) / (N - 1)) : 0;
  R.GeneralDataSD = std::sqrt(R.GeneralDataVariance);
  R.GeneralDataSE = R.GeneralDataSD / std::sqrt(N);
  if (R.ProbitOn == "Yes") R.GeneralDataMean = ProbitOfMean(R.GeneralDataMean, "the data");
  if (R.AgeOfHalfSurvival == "Yes" && !(Largest(data.values) <= kLongestAge))
    throw ProgramEnd{"A total longevity of " + FullPrecision(Largest(data.values)) +
                         " is beyond the ages l(x) is counted for (up to " + FullPrecision(kLongestAge) +
                         " time units). Choose the file \"_G_Total longevity-all.txt\" of a Basic Run.",
                     kTitle};
  R.GeneralDataHalfAge = R.AgeOfHalfSurvival == "Yes" ? AgeOfHalfSurvival(data.values) : 0;
  R.VariableName = data.variable;
  R.GeneralTreatment = data.treatment;
}

void GeneralBootstrap::DataFrequency(std::vector<double>& values, std::vector<double>& counts) const {
  std::vector<double> sorted = data.values;
  std::sort(sorted.begin(), sorted.end());
  values.clear();
  counts.clear();
  for (double v : sorted) {
    if (values.empty() || values.back() != v) {
      values.push_back(v);
      counts.push_back(0);
    }
    counts.back() += 1;
  }
}

void GeneralBootstrap::Run() {
  BootstrapRecord& R = S.boot;
  R.GeneralBootFlag = "Yes";
  R.ResampleKind = "g";
  R.BootB = static_cast<std::int32_t>(B);
  R.BootBReal = static_cast<double>(B);
  R.BootSampleSize = static_cast<std::int32_t>(SampleSize);
  R.FirstBootNumber = 1;
  Resample();
  Summarize();
  WriteFiles();
}

void GeneralBootstrap::Resample() {
  Flow("GeneralBootstrapResample");
  BootstrapRecord& R = S.boot;
  const long n = SampleSize;
  const bool keepIndividuals = R.SerialNumbersInData == "Yes";  // for the record no. 11B
  if (keepIndividuals && n > kMaxIndividual)
    throw SubscriptFault("BootIndividuals", "A sample of the record no. 11B holds at most " +
                                                std::to_string(kMaxIndividual) + " individuals; n = " +
                                                std::to_string(n) + ".");
  const bool half = R.AgeOfHalfSurvival == "Yes", probit = R.ProbitOn == "Yes";
  (void)R.GeneralMean(B);  // the lists' bound, before any worker writes
  const double* values = data.values.data();
  const double largest = Largest(data.values);

  const int threads = static_cast<int>(std::clamp<long>(RunThreads(S.runControl.threads), 1, B));
  std::vector<long> firstBad(static_cast<std::size_t>(threads), 0);
  auto work = [&](int w) {
    SampleGenerator gen;
    HalfSurvival h(largest);
    for (long i = 1 + w; i <= B; i += threads) {
      gen.SeedSample(R.RunSeed, i);
      double s = 0, q = 0;
      for (long pos = 1; pos <= n; ++pos) {
        const int k = DrawIndividual(gen, static_cast<int>(n));
        if (keepIndividuals) R.BootIndividuals(pos, i) = static_cast<std::int16_t>(k);
        const double v = values[k - 1];
        s += v;
        q += v * v;
        if (half) h.Add(v);
      }
      const double dn = static_cast<double>(n);
      double mean = s / dn;
      if (probit && !(mean > 0 && mean < 1)) {
        if (firstBad[static_cast<std::size_t>(w)] == 0) firstBad[static_cast<std::size_t>(w)] = i;
        mean = 0;
      } else if (probit) {
        mean = ProbitTransformation(mean).value;
      }
      R.GeneralMean(i) = mean;
      R.GeneralSE(i) = std::sqrt(std::max(0.0, (q - s * s / dn) / (dn - 1))) / std::sqrt(dn);
      R.GeneralHalfAge(i) = half ? h.Age(n) : 0;
    }
  };
  RunSideBySide(threads, work);
  long bad = 0;
  for (long b : firstBad)
    if (b != 0 && (bad == 0 || b < bad)) bad = b;
  if (bad != 0) ProbitOfMean(0, "bootstrap sample " + std::to_string(bad));
}

void GeneralBootstrap::Summarize() {
  Flow("GeneralBootstrapSummarize");
  BootstrapRecord& R = S.boot;
  R.General = SummarizeSamples(B, [&](long i) { return R.GeneralMean(i); });
  R.EffectiveCount = static_cast<std::int32_t>(B);
  R.IneffectiveCount = 0;
  for (long i = 1; i <= B; ++i) R.EffectiveList(i) = static_cast<std::int32_t>(i);
  R.HistogramBars = 50;
  R.HistogramBarsPlus1 = 51;
  const int plus1 = R.HistogramBarsPlus1;
  R.R0ClassWidth = CountClasses(R.General.min, R.General.max, R.HistogramBars, plus1 + 2, plus1 + 1, B,
                                R.R0ClassEdge, R.R0ClassCentre, R.R0ClassCount,
                                [&](long i, double& v) { return v = R.GeneralMean(i), true; });
  SortStore& s = R.sort;
  s.SortCount = static_cast<std::int32_t>(B);
  for (long i = 1; i <= B; ++i) {
    s.SortInValue(i) = R.GeneralMean(i);
    s.SortInIndex(i) = static_cast<std::int32_t>(i);
  }
  s.QuickRangesWanted = 1024;
  QuickSort(s);
  Lower = s.SortValue(PercentileIndexUp(B, 0.025));
  Upper = s.SortValue(PercentileIndexUp(B, 0.975));
  CountEqualGroups(s, s.OtherGroups, B);
}

void GeneralBootstrap::WriteFiles() {
  Flow("GeneralBootstrapWriteFiles");
  BootstrapRecord& R = S.boot;
  const SortStore& s = R.sort;
  const std::string& treatment = data.treatment;
  const std::string& variable = data.variable;
  const double n = static_cast<double>(SampleSize), N = R.GeneralN;
  const double mean = R.General.mean, se = R.General.se;
  {
    TextFile out(OutputName(S, "_0_GB_0_Bar data.txt"));
    out.Write(treatment);
    out.Write("Bar center", "Counts");
    for (int i = 0; i <= R.HistogramBarsPlus1 + 1; ++i) out.Write(R.R0ClassCentre(i), R.R0ClassCount(i));
  }
  // The column form that the paired test reads.
  auto column = [&](const std::string& suffix, const std::string& name, double original, const BootList<double>& list) {
    TextFile out(OutputName(S, suffix));
    out.Write(treatment);
    out.Write("Next line is bootstrap sample size (n)");
    out.Write(n);
    out.Write("Next line is total effective bootstrap number (B)");
    out.Write(static_cast<double>(B));
    out.Write(name, N, original);
    for (long i = 1; i <= B; ++i) out.Write(list(i));
  };
  column("_0_GB_0_results for PT 1 by 1.txt", variable, R.GeneralDataMean, R.GeneralMean);
  if (R.AgeOfHalfSurvival == "Yes")
    column("_0_GB_8_Age X 0.5 Lx for PT 1 by 1.txt", "Age of 0.5 lx", R.GeneralDataHalfAge, R.GeneralHalfAge);
  {
    TextFile out(OutputName(S, "_0_GB_1_results with SN.txt"));
    out.Write("Serial no", variable);
    for (long i = 1; i <= B; ++i) out.Write(i, R.GeneralMean(i));
  }
  if (UsableSpread(se)) {
    TextFile out(OutputName(S, "_0_GB_6_Normal density.txt"));
    out.Write(treatment);
    out.Write("Mean of bootstrap " + variable + ":", mean, "SE:", se);
    out.Write("Bootstrap sample size =", n);
    out.Write("X", "density");
    for (int i = 0; i <= 200; ++i) {
      const double x = mean - 3.5 * se + i * (7 * se / 200);
      out.Write(x, NormalDensity(x, mean, se));
    }
  }
  {
    TextFile out(OutputName(S, "_0_GB_7_Normal density-95CI for plot.txt"));
    out.Write(treatment);
    out.Write("Lower CL-X", "Lower CL-Y", "Mean-X", "Mean-Y", "Upper CL-X", "Upper CL-Y");
    const double lower = mean - 1.959964 * se, upper = mean + 1.959964 * se;
    auto d = [&](double x) { return UsableSpread(se) ? NormalDensity(x, mean, se) : 0.0; };
    out.Write(lower, 0, mean, 0, upper, 0);
    out.Write(lower, d(lower), mean, d(mean), upper, d(upper));
  }
  {
    TextFile out(OutputName(S, "_0_GB_5_95CI percentile.txt"));
    out.Write(treatment);
    out.Write("Bootstrap sample size (n) =", n);
    out.Write("Total effective bootstrap number (B) =", static_cast<double>(B));
    out.Write(variable);
    out.Write("Sample size =", N);
    out.Write("Mean =", mean, ". SD of bootstrap results =", se, ".  Note well: It is the SE of the parameter.");
    out.Write("0.025 percentile =", Lower);
    out.Write("0.975 percentile =", Upper);
  }
  {
    TextFile out(OutputName(S, "_0_GB_4_results-count.txt"));
    out.Write("Next line is parameter (treatment code) and bootstrap sample size (n)");
    out.Write(treatment, n);
    out.Write("Next line is total effective bootstrap number (B) and total classes");
    out.Write(static_cast<double>(B), static_cast<double>(s.OtherGroups.Count));
    for (long g = 1; g <= s.OtherGroups.Count; ++g) out.Write(s.OtherGroups.Value(g), s.OtherGroups.Members(g));
  }
  {
    TextFile out(OutputName(S, "_0_GB_2_Sorted not for PT 1 by 1.txt"));
    out.Write("Sorted Results");
    for (long i = 1; i <= B; ++i) out.Write(s.SortValue(i));
  }
  {
    TextFile out(OutputName(S, "_0_GB_3_Sorted with SN.txt"));
    out.Write("Sorted Results");
    out.Write("Serial no.", "Original boot no.", variable);
    for (long i = 1; i <= B; ++i) out.Write(i, s.SortIndex(i), s.SortValue(i));
  }
  if (R.SerialNumbersInData == "Yes") SampleRecords(S, P).WriteEffectiveBootRecordForVoragen();
}

}  // namespace korvan
