// InputRawData: the file of several treatments' bootstrap (or general) results from which the
// Tukey table is made. The file is read twice: once for the means, by which the treatments
// are put in descending order, and once more so that each treatment's values land in its
// sorted place.
#include <cmath>

#include "input/data_file_reader.h"
#include "input/field_reader.h"
#include "text/numbers.h"

namespace korvan {

namespace {

constexpr long kMaxTries = 300010;

struct TreatmentBlock {
  std::string title;
  std::int32_t n = 0;
  long count = 0;
  double sum = 0;
};

// Reads one treatment: its title, its count and its values up to the closing -1 (or the end
// of the file), each value stored and flagged at place `place` (kept nowhere for place 0).
TreatmentBlock ReadBlock(FieldReader& in, ComparisonRecord& c, long place) {
  TreatmentBlock b;
  b.title = in.ReadString();
  b.n = CInt(in.ReadNumber());
  for (long k = 1; k <= kMaxTries; ++k) {
    if (in.AtEnd()) break;
    const double x = in.ReadNumber();
    if (x == -1) break;
    if (place > 0) {
      c.BootValue(k, place) = x;
      c.BootValueSeen(k, place) = 1;
    }
    b.sum += x;
    b.count = k;
  }
  return b;
}

}  // namespace

void DataFileReader::InputRawData() {
  Flow("InputRawData");
  ComparisonRecord& c = S.comparison;
  // Values of an earlier reading go first, so that no flag stays behind.
  for (long a = 1; a <= kMaxTreatmentIndex; ++a) {
    for (long k = 1; k <= c.TreatmentB(a); ++k) {
      c.BootValue(k, a) = 0;
      c.BootValueSeen(k, a) = 0;
    }
    c.TreatmentB(a) = 0;
  }
  long t = 0;
  {
    FieldReader in(S.identity.DataFilePath);
    S.identity.ProjectName = in.ReadString();
    S.identity.UserName = in.ReadString();
    c.ParameterName = in.ReadString();
    t = CInt16(in.ReadNumber());
    c.TreatmentCount = static_cast<int>(t);
    if (t < 3) {
      P.MsgBox("There are only " + std::to_string(t) + " treatments.", "Treatments <3");
      return;
    }
    // First reading: the mean of each treatment in file order.
    for (long p = 1; p <= t; ++p) {
      const TreatmentBlock b = ReadBlock(in, c, p);
      c.TreatmentTitle(p) = b.title;
      c.SortedTitle(p) = b.title;
      c.TreatmentN(p) = b.n;
      c.TreatmentB(p) = static_cast<std::int32_t>(b.count);
      c.FirstPassMean(p) = b.count > 0 ? b.sum / static_cast<double>(b.count) : 0;
      c.OriginalOrder(p) = static_cast<double>(p);
    }
  }

  c.PairCount = CInt16(static_cast<double>(t * (t - 1) / 2));
  c.PairAlphaSidak = 1 - std::pow(0.95, 1.0 / c.PairCount);

  // Exchange sort of a copy of the means, descending; the titles and file positions go along.
  Vec<double, 0, kMaxTreatmentIndex> mean{"SortedMean"};
  for (long a = 1; a <= t; ++a) mean(a) = c.FirstPassMean(a);
  for (long a = 1; a <= t - 1; ++a)
    for (long b = a + 1; b <= t; ++b)
      if (mean(a) < mean(b)) {
        std::swap(mean(a), mean(b));
        std::swap(c.OriginalOrder(a), c.OriginalOrder(b));
        std::swap(c.SortedTitle(a), c.SortedTitle(b));
      }
  // The file position of each sorted place: the first treatment whose mean equals it exactly.
  for (long a = 1; a <= t; ++a) {
    c.TreatmentOrderIndex(a) = 0;
    for (long p = 1; p <= t; ++p)
      if (c.FirstPassMean(p) == mean(a)) {
        c.TreatmentOrderIndex(a) = static_cast<int>(p);
        break;
      }
  }

  const auto width = [](long k) { return static_cast<std::size_t>(k < 0 ? 0 : k); };
  c.RuleWide = std::string(width((t + 1) * 11 + 5), '=');
  c.RuleWideThin = std::string(width((t + 1) * 11 + 5), '-');
  c.RuleEighty = std::string(80, '=');
  c.RuleEightyThin = std::string(80, '-');
  c.RuleShort = std::string(width((t - 1) * 11 + 15), '=');
  c.RuleShortThin = std::string(width((t - 1) * 11 + 15), '-');
  c.RuleTable = std::string(width(t * 11 + 15), '=');
  c.RuleTableThin = std::string(width(t * 11 + 15), '-');

  // Second reading: the block at file position p goes to every place mapped to p.
  for (long a = 1; a <= t; ++a)
    for (long k = 1; k <= c.TreatmentB(a); ++k) {
      c.BootValue(k, a) = 0;
      c.BootValueSeen(k, a) = 0;
    }
  FieldReader in(S.identity.DataFilePath);
  for (int k = 0; k < 3; ++k) in.ReadString();
  in.ReadNumber();
  for (long p = 1; p <= t; ++p) {
    if (in.AtEnd()) break;
    long first = 0;
    for (long a = 1; a <= t; ++a)
      if (c.TreatmentOrderIndex(a) == p) {
        first = a;
        break;
      }
    const TreatmentBlock b = ReadBlock(in, c, first);
    for (long a = 1; a <= t; ++a) {
      if (c.TreatmentOrderIndex(a) != p) continue;
      c.TreatmentTitle(a) = b.title;
      c.TreatmentN(a) = b.n;
      c.TreatmentB(a) = static_cast<std::int32_t>(b.count);
      if (a == first) continue;
      for (long k = 1; k <= b.count; ++k) {
        c.BootValue(k, a) = c.BootValue(k, first);
        c.BootValueSeen(k, a) = 1;
      }
    }
  }
}

}  // namespace korvan
