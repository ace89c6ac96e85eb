// Reading of the treatments of a paired bootstrap test: one "_Effect Boot-..." column file per
// treatment, or one pooled file holding all of them. Both read twice: the first pass finds the
// mean of every treatment, which orders them (largest mean first); the second puts the values
// in that order.
#include <cmath>
#include <string>

#include "bootstrap/bootstrap_statistics.h"
#include "comparison/paired_test.h"
#include "input/field_reader.h"
#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {

namespace {

constexpr const char* kTitle = "Paired bootstrap test";

// A "long" field: the number read, rounded.
std::int32_t ReadLong(FieldReader& in) { return CInt(in.ReadNumber()); }

double Transform(const std::string& kind, double x) { return TransformProportion(kind, x, kTitle); }

}  // namespace

void PairedBootTest::SetPairCountAndAlpha() {
  auto& c = S.comparison;
  const int n = c.TreatmentCount;
  c.PairCount = n * (n - 1) / 2;
  // A negative count (from a pooled file) gives a positive number of pairs but no treatments.
  if (n < 2) throw ProgramEnd{"Division by zero: at least two treatments are needed.", kTitle};
  c.PairAlphaSidak = 1 - std::pow(0.95, 1.0 / c.PairCount);
}

void PairedBootTest::OrderTreatmentsByMean(bool pooled) {
  auto& c = S.comparison;
  const int n = c.TreatmentCount;
  double mean[12];
  for (int a = 1; a <= n; ++a) {
    mean[a] = c.FirstPassMean(a);
    c.OriginalOrder(a) = a;
  }
  for (int a = 1; a <= n - 1; ++a)
    for (int b = a + 1; b <= n; ++b)
      if (mean[a] < mean[b]) {
        std::swap(mean[a], mean[b]);
        std::swap(c.OriginalOrder(a), c.OriginalOrder(b));
        if (pooled)
          std::swap(c.SortedTitle(a), c.SortedTitle(b));
        else
          std::swap(c.TreatmentTitle(a), c.TreatmentTitle(b));
      }
  for (int a = 1; a <= n; ++a) {
    if (!pooled) {
      c.TreatmentOrderIndex(a) = static_cast<int>(c.OriginalOrder(a));
      continue;
    }
    // The pooled route finds the file position of each place by its mean.
    c.TreatmentOrderIndex(a) = 0;
    for (int p = 1; p <= n && c.TreatmentOrderIndex(a) == 0; ++p)
      if (c.FirstPassMean(p) == mean[a]) c.TreatmentOrderIndex(a) = p;
  }
}

void PairedBootTest::BuildRules() {
  auto& c = S.comparison;
  const auto n = static_cast<std::size_t>(c.TreatmentCount);
  c.RuleWide = std::string((n + 1) * 11 + 5, '=');
  c.RuleWideThin = std::string((n + 1) * 11 + 5, '-');
  c.RuleEighty = std::string(80, '=');
  c.RuleEightyThin = std::string(80, '-');
  c.RuleShort = std::string((n - 1) * 11 + 15, '=');
  c.RuleShortThin = std::string((n - 1) * 11 + 15, '-');
  c.RuleTable = std::string(n * 11 + 15, '=');
  c.RuleTableThin = std::string(n * 11 + 15, '-');
}

// The two tests that read one column file per treatment differ only in these texts and in
// whether the transformation is asked in a fast run.
struct OneByOneReading {
  const char* base;
  const char* prompt;
  const char* title;
  bool askTransformationAlways;
};

constexpr OneByOneReading kPairedReading{"24-Paired boot test", "Enter number of treatments",
                                         "Read data file one by one for multiple comparison", false};
constexpr OneByOneReading kCartesianReading{
    "25A-Cartesian diff", "Enter number of treatments for Cartesian paired test.",
    "Read data file one by one for paired comparison using Cartesian Product", true};

void PairedBootTest::InputRawDataForCIonebyone() {
  Flow("InputRawDataForCIonebyone");
  ReadOneByOne(kPairedReading);
}

void PairedBootTest::CartesianDifference() {
  Flow("CartesianDifference");
  S.comparison.UseQuickSort = "Yes";
  S.boot.sort.QuickRangesWanted = 1024;
  ReadOneByOne(kCartesianReading);
}

void PairedBootTest::ReadOneByOne(const OneByOneReading& reading) {
  auto& c = S.comparison;
  S.identity.DataFileBase = reading.base;
  const std::string answer = P.InputBox(reading.prompt, reading.title, "2");
  const double n0 = NumberOfText(answer);
  if (n0 < 0 || n0 > 32767) throw OverflowFault();
  c.TreatmentCount = CInt16(n0);
  SetPairCountAndAlpha();
  const int n = c.TreatmentCount;

  if (reading.askTransformationAlways || c.FastPBT != "Yes") {
    const double t = NumberOfText(P.InputBox("No transformation (0), Arcsine (1), or logit (2) transformation?",
                                             "Transformation?", "0"));
    if (t == 0) c.Transformation = "No";
    if (t == 1) c.Transformation = "Arcsine";
    if (t == 2) c.Transformation = "Logit";
  }

  // First pass, in reading order: the corrected B and the mean of every treatment.
  Vec<std::int32_t, 0, kMaxTreatmentIndex> correctedB{"TreatmentB"};
  c.LargestB = 0;
  for (int i = 1; i <= n; ++i) {
    c.TreatmentFile(i) = P.ChooseFile("Input treatment " + std::to_string(i));
    FieldReader in(c.TreatmentFile(i));
    c.TreatmentTitle(i) = in.ReadString();
    in.ReadString();
    c.TreatmentN(i) = ReadLong(in);
    in.ReadString();
    std::int32_t b = ReadLong(in);
    c.TreatmentParameter(i) = in.ReadString();
    if (i == 1) c.ParameterName = c.TreatmentParameter(1);
    c.TreatmentN(i) = ReadLong(in);
    c.TreatmentOriginal(i) = in.ReadNumber();
    double sum = 0;
    long k = 1;
    for (; k <= static_cast<long>(b) + 1; ++k) {
      if (in.AtEnd()) break;
      const double x = in.ReadNumber();
      if (x == -1) break;
      sum += Transform(c.Transformation, x);
    }
    if (k <= b) b = static_cast<std::int32_t>(k - 1);
    correctedB(i) = b;
    if (b == 0) throw ProgramEnd{"Division by zero: no bootstrap values in " + c.TreatmentFile(i), kTitle};
    c.FirstPassMean(i) = sum / b;
    if (b > c.LargestB) c.LargestB = b;
  }

  OrderTreatmentsByMean(false);
  BuildRules();

  // Second pass, in the order of the means. Its values stay as read: the transformation only
  // ever decides the order of the treatments.
  for (int a = 1; a <= n; ++a) {
    const int r = c.TreatmentOrderIndex(a);
    c.TreatmentFileSorted(a) = c.TreatmentFile(r);
    FieldReader in(c.TreatmentFileSorted(a));
    c.TreatmentTitle(a) = in.ReadString();
    in.ReadString();
    c.TreatmentN(a) = ReadLong(in);
    in.ReadString();
    ReadLong(in);
    c.TreatmentB(a) = correctedB(r);
    c.TreatmentBootCount(a) = correctedB(r);
    c.TreatmentParameter(a) = in.ReadString();
    c.TreatmentN(a) = ReadLong(in);
    c.TreatmentOriginal(a) = in.ReadNumber();
    long k = 1;
    for (; k <= c.TreatmentB(a); ++k) {
      if (in.AtEnd()) break;
      const double x = in.ReadNumber();
      if (x == -1) break;
      c.BootValue(k, a) = x;
      c.BootValueSeen(k, a) = 1;
    }
    // Places beyond the treatment's values pair as 0.
    for (; k <= c.LargestB + 1 && k <= kMaxBootIndex; ++k) {
      c.BootValue(k, a) = 0;
      c.BootValueSeen(k, a) = 0;
    }
  }
}

void PairedBootTest::MultipleComparisonBasedOnCI() {
  Flow("MultipleComparisonBasedOnCI");
  const std::string path = P.ChooseFile("Open pooled file of treatments for paired bootstrap test");
  if (path.empty()) throw ProgramEnd{"No file was chosen.", kTitle};
  S.identity.DataFilePath = path;
  S.identity.DataFileBase = path.size() > 4 ? path.substr(0, path.size() - 4) : std::string();
}

void PairedBootTest::InputRawDataForCI() {
  Flow("InputRawDataForCI");
  auto& c = S.comparison;
  constexpr long kTries = 300010;
  {
    FieldReader in(S.identity.DataFilePath);
    c.ProjectTitle = in.ReadString();
    c.Description = in.ReadString();
    c.ParameterName = in.ReadString();
    c.TreatmentCount = CInt16(in.ReadNumber());
    SetPairCountAndAlpha();
    c.LargestB = 0;
    for (int t = 1; t <= c.TreatmentCount; ++t) {
      c.TreatmentTitle(t) = in.ReadString();
      c.SortedTitle(t) = c.TreatmentTitle(t);
      c.TreatmentN(t) = ReadLong(in);
      c.TreatmentOriginal(t) = in.ReadNumber();
      double sum = 0;
      std::int32_t b = 0;
      for (long k = 1; k <= kTries; ++k) {
        if (in.AtEnd()) break;
        const double x = in.ReadNumber();
        if (x == -1) break;
        c.BootValue(k, t) = x;  // the bound of the array stops a list that is too long
        sum += x;
        b = static_cast<std::int32_t>(k);
      }
      if (b == 0) throw ProgramEnd{"Division by zero: treatment " + std::to_string(t) + " has no values.", kTitle};
      c.TreatmentB(t) = b;
      c.FirstPassMean(t) = sum / b;
      if (b > c.LargestB) c.LargestB = b;
    }
  }
  const int n = c.TreatmentCount;
  OrderTreatmentsByMean(true);
  BuildRules();

  Vec<std::string, 0, kMaxTreatmentIndex> titles{"TreatmentTitle"};
  Vec<std::int32_t, 0, kMaxTreatmentIndex> sizes{"TreatmentN"};
  Vec<double, 0, kMaxTreatmentIndex> originals{"TreatmentOriginal"};
  for (int a = 1; a <= n; ++a) {
    titles(a) = c.TreatmentTitle(a);
    sizes(a) = c.TreatmentN(a);
    originals(a) = c.TreatmentOriginal(a);
  }
  // Second pass: the block in file position p goes to every place whose mapping is p.
  FieldReader in(S.identity.DataFilePath);
  in.ReadString();
  in.ReadString();
  in.ReadString();
  in.ReadNumber();
  for (int p = 1; p <= n && !in.AtEnd(); ++p) {
    in.ReadString();
    ReadLong(in);
    in.ReadNumber();
    long k = 1;
    for (; k <= kTries; ++k) {
      if (in.AtEnd()) break;
      const double x = in.ReadNumber();
      if (x == -1) break;
      for (int a = 1; a <= n; ++a)
        if (c.TreatmentOrderIndex(a) == p) {
          c.BootValue(k, a) = x;
          c.BootValueSeen(k, a) = 1;
        }
    }
    for (int a = 1; a <= n; ++a)
      if (c.TreatmentOrderIndex(a) == p) {
        c.TreatmentB(a) = static_cast<std::int32_t>(k - 1);
        c.TreatmentTitle(a) = titles(p);
        c.TreatmentN(a) = sizes(p);
        c.TreatmentOriginal(a) = originals(p);
        c.TreatmentParameter(a) = c.ParameterName;
        for (long q = k; q <= c.LargestB + 1 && q <= kMaxBootIndex; ++q) {
          c.BootValue(q, a) = 0;
          c.BootValueSeen(q, a) = 0;
        }
      }
    c.BootB = static_cast<std::int32_t>(k - 1);
  }
}

}  // namespace korvan
