#include "bootstrap/sort_file.h"

#include <cmath>

#include "bootstrap/column_file.h"
#include "bootstrap/general_bootstrap.h"
#include "bootstrap/sorting.h"
#include "input/field_reader.h"
#include "store/faults.h"
#include "text/numbers.h"
#include "text/text_file.h"

namespace korvan {

namespace {

constexpr const char* kTitle = "Sort and count";

std::string BaseOf(const std::string& path) { return path.size() > 4 ? path.substr(0, path.size() - 4) : path; }

// A name from the user's words that stays one file name.
std::string InName(std::string s) {
  for (char& c : s)
    if (c == '/' || c == '\\') c = '-';
  return s;
}

// The differences of a paired test: "A vs B", B, the parameter, B, "Original means" with the
// two originals, the column heads, then "boot no., difference" rows.
void ReadDifferences(const std::string& path, bool serial, SortFile& f, std::vector<double>& serials,
                     std::vector<double>& values) {
  FieldReader in(path);
  f.Title = in.ReadString();
  in.ReadString();
  f.HeadB = in.ReadNumber();
  f.Variable = "Difference of " + in.ReadString();
  in.ReadNumber();
  in.ReadString();
  const double first = in.ReadNumber();
  const double second = in.ReadNumber();
  f.Original = first - second;
  in.ReadString();
  in.ReadString();
  while (in.HasMoreData()) {
    const int line = in.Line();
    double v = in.ReadNumber();
    bool valid = in.LastNumberValid();
    if (valid && serial) {
      if (!in.HasMoreData()) break;
      serials.push_back(v);
      v = in.ReadNumber();
      valid = in.LastNumberValid();
    }
    if (!valid)
      throw ProgramEnd{"Line " + std::to_string(line) + " of " + path + " holds \"" + in.LastText() +
                           "\" where a number should stand.",
                       kTitle};
    values.push_back(v);
  }
}

}  // namespace

double LimitDecimals(double v, int d) {
  if (d < 0) return v;
  const double scale = std::pow(10.0, d);
  return std::floor(scale * v + 0.5) / scale;
}

void SortFile::Read(std::vector<double>& serial, std::vector<double>& values) {
  switch (Kind) {
    case SortFileKind::General: {
      GeneralData d = ReadGeneralData(Path, SerialNumbers);
      Title = d.treatment;
      Variable = d.variable;
      serial = std::move(d.serial);
      values = std::move(d.values);
      HeadN = HeadB = static_cast<double>(values.size());
      break;
    }
    case SortFileKind::Boot: {
      ColumnFile c = ReadColumnFile(Path, SerialNumbers, kTitle);
      Title = c.treatment;
      Variable = c.name;
      Original = c.cohort;
      HeadN = c.n;
      HeadB = static_cast<double>(c.B);
      serial = std::move(c.serial);
      values = std::move(c.values);
      break;
    }
    case SortFileKind::Differences:
      ReadDifferences(Path, SerialNumbers, *this, serial, values);
      HeadN = HeadB;
      break;
  }
  if (values.empty()) throw ProgramEnd{"The file " + Path + " holds no values to sort.", kTitle};
}

void SortFile::SortForBootstrapResults() {
  Flow("SortForBootstrapResults");
  std::vector<double> serial, values;
  Read(serial, values);
  SortStore& s = S.boot.sort;
  const long m = static_cast<long>(values.size());
  s.SortInValue.CheckRange(1, m);
  double sum = 0;
  for (long i = 1; i <= m; ++i) {
    const double v = LimitDecimals(values[static_cast<std::size_t>(i - 1)], Decimals);
    sum += v;
    s.SortInValue(i) = v;
    s.SortInIndex(i) = static_cast<std::int32_t>(i);
  }
  Count = m;
  Mean = sum / static_cast<double>(m);
  s.SortCount = static_cast<std::int32_t>(m);
  s.QuickRangesWanted = 1024;
  QuickSort(s);
  CountEqualGroups(s, s.OtherGroups, m);
  FormCumulativeProbits(s.OtherGroups, m, s.OtherCumulativeFrequency, s.OtherProbit);

  const std::string base = BaseOf(Path);
  const bool general = Kind == SortFileKind::General;
  auto serialOf = [&](long i) {
    const long k = s.SortIndex(i);
    return serial.empty() ? static_cast<double>(k) : serial[static_cast<std::size_t>(k - 1)];
  };
  SortedPath = base + "-2_Sorted.txt";
  {
    TextFile out(SortedPath);
    out.Write(Title);
    out.Write(Variable);
    out.Write("Sample size =", m);
    if (general)
      out.Write("Sample mean = ", Mean);
    else
      out.Write("Original mean =", Original);
    out.Write("Bootstrap sample size (n) = ", HeadN);
    out.Write("Total effective bootstrap number (B) = ", HeadB);
    out.Write("Sorted serial no.", "Original serial no.", "Sorted data");
    for (long i = 1; i <= m; ++i) out.Write(i, serialOf(i), s.SortValue(i));
  }
  static const double kP[3] = {0.025, 0.5, 0.975};
  PercentilePath = base + "-1_0.025, 0.5 and 0.975 " + InName(Variable) + ".txt";
  {
    TextFile out(PercentilePath);
    out.Write(Title);
    out.Write(Variable);
    out.Write("Sample size =", m);
    for (int t = 0; t < 3; ++t) {
      const long i = std::max(1L, PercentileIndex(m, kP[t]));
      Percentile[t] = s.SortValue(i);
      out.Write(FullPrecision(kP[t]) + " percentile =", Percentile[t], "Original serial no.", serialOf(i));
    }
  }
  CountsPath = base + "-3_Counts.txt";
  {
    TextFile out(CountsPath);
    out.Write(Title);
    out.Write(Variable);
    out.Write("Sample size =", m, "Different values =", static_cast<double>(s.OtherGroups.Count));
    out.Write("Value", "Count", "Cumu. Freq.", "Cumu. Freq. in Probit");
    for (long g = 1; g <= s.OtherGroups.Count; ++g) {
      if (g == s.OtherGroups.Count)
        out.Write(s.OtherGroups.Value(g), s.OtherGroups.Members(g), s.OtherCumulativeFrequency(g));
      else
        out.Write(s.OtherGroups.Value(g), s.OtherGroups.Members(g), s.OtherCumulativeFrequency(g),
                  s.OtherProbit(g));
    }
  }
}

void SortFile::SortForBootstrapResults3columns() {
  Flow("SortForBootstrapResults3columns");
  FieldReader in(Path);
  Title = in.ReadString();
  Variable = in.ReadString();
  std::vector<double> rows;  // serial, value, third
  while (in.HasMoreData()) {
    const int line = in.Line();
    double row[3];
    for (double& x : row) {
      if (!in.HasMoreData())
        throw ProgramEnd{"Line " + std::to_string(line) + " of " + Path + " holds fewer than three columns.", kTitle};
      x = in.ReadNumber();
      if (!in.LastNumberValid())
        throw ProgramEnd{"Line " + std::to_string(line) + " of " + Path + " holds \"" + in.LastText() +
                             "\" where a number should stand.",
                         kTitle};
    }
    rows.insert(rows.end(), row, row + 3);
  }
  const long m = static_cast<long>(rows.size() / 3);
  if (m == 0) throw ProgramEnd{"The file " + Path + " holds no rows to sort.", kTitle};
  SortStore& s = S.boot.sort;
  s.SortInValue.CheckRange(1, m);
  for (long i = 1; i <= m; ++i) {
    s.SortInValue(i) = LimitDecimals(rows[static_cast<std::size_t>(3 * (i - 1) + 1)], Decimals);
    s.SortInIndex(i) = static_cast<std::int32_t>(i);
  }
  s.SortCount = static_cast<std::int32_t>(m);
  s.QuickRangesWanted = 1024;
  QuickSort(s);
  Count = m;
  SortedPath = BaseOf(Path) + "_Sorted data.txt";
  TextFile out(SortedPath);
  out.Write(Title);
  out.Write(Variable);
  out.Write("Sorted serial no.", "Original serial no.", "Sorted data", "Third column");
  for (long i = 1; i <= m; ++i) {
    const std::size_t r = static_cast<std::size_t>(3 * (s.SortIndex(i) - 1));
    out.Write(i, rows[r], s.SortValue(i), rows[r + 2]);
  }
  const long half = std::max(1L, PercentileIndex(m, 0.5));
  const std::size_t r = static_cast<std::size_t>(3 * (s.SortIndex(half) - 1));
  Percentile[1] = s.SortValue(half);
  out.Write("Sorted 0.5 mort age", Percentile[1]);
  out.Write("The 0.5 percentile life table of " + Variable + " is " + FullPrecision(rows[r]));
}

}  // namespace korvan
