#include "comparison/tukey.h"

#include <cmath>
#include <string>

#include "comparison/treatment_table.h"
#include "input/data_file_reader.h"
#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {

namespace {

constexpr const char* kTitle = "Tukey-Kramer procedure";

// q(0.05; k, df), k = 2..10 along a row; df 0 stands for infinity. Three significant figures
// of the studentized range's upper 5% points.
struct TabledRow {
  int df;
  double q[9];
};
constexpr TabledRow kTabled[] = {
    {1, {18.0, 27.0, 32.8, 37.1, 40.4, 43.1, 45.4, 47.4, 49.1}},
    {2, {6.08, 8.33, 9.8, 10.9, 11.7, 12.4, 13.0, 13.5, 14.0}},
    {3, {4.5, 5.91, 6.82, 7.5, 8.04, 8.48, 8.85, 9.18, 9.46}},
    {4, {3.93, 5.04, 5.76, 6.29, 6.71, 7.05, 7.35, 7.6, 7.83}},
    {5, {3.64, 4.6, 5.22, 5.67, 6.03, 6.33, 6.58, 6.8, 6.99}},
    {6, {3.46, 4.34, 4.9, 5.3, 5.63, 5.9, 6.12, 6.32, 6.49}},
    {7, {3.34, 4.16, 4.68, 5.06, 5.36, 5.61, 5.82, 6.0, 6.16}},
    {8, {3.26, 4.04, 4.53, 4.89, 5.17, 5.4, 5.6, 5.77, 5.92}},
    {9, {3.2, 3.95, 4.41, 4.76, 5.02, 5.24, 5.43, 5.59, 5.74}},
    {10, {3.15, 3.88, 4.33, 4.65, 4.91, 5.12, 5.3, 5.46, 5.6}},
    {11, {3.11, 3.82, 4.26, 4.57, 4.82, 5.03, 5.2, 5.35, 5.49}},
    {12, {3.08, 3.77, 4.2, 4.51, 4.75, 4.95, 5.12, 5.27, 5.39}},
    {13, {3.06, 3.73, 4.15, 4.45, 4.69, 4.88, 5.05, 5.19, 5.32}},
    {14, {3.03, 3.7, 4.11, 4.41, 4.64, 4.83, 4.99, 5.13, 5.25}},
    {15, {3.01, 3.67, 4.08, 4.37, 4.59, 4.78, 4.94, 5.08, 5.2}},
    {16, {3.0, 3.65, 4.05, 4.33, 4.56, 4.74, 4.9, 5.03, 5.15}},
    {17, {2.98, 3.63, 4.02, 4.3, 4.52, 4.7, 4.86, 4.99, 5.11}},
    {18, {2.97, 3.61, 4.0, 4.28, 4.49, 4.67, 4.82, 4.96, 5.07}},
    {19, {2.96, 3.59, 3.98, 4.25, 4.47, 4.65, 4.79, 4.92, 5.04}},
    {20, {2.95, 3.58, 3.96, 4.23, 4.45, 4.62, 4.77, 4.9, 5.01}},
    {24, {2.92, 3.53, 3.9, 4.17, 4.37, 4.54, 4.68, 4.81, 4.92}},
    {30, {2.89, 3.49, 3.85, 4.1, 4.3, 4.46, 4.6, 4.72, 4.82}},
    {40, {2.86, 3.44, 3.79, 4.04, 4.23, 4.39, 4.52, 4.63, 4.73}},
    {60, {2.83, 3.4, 3.74, 3.98, 4.16, 4.31, 4.44, 4.55, 4.65}},
    {120, {2.8, 3.36, 3.68, 3.92, 4.1, 4.24, 4.36, 4.47, 4.56}},
    {0, {2.77, 3.31, 3.63, 3.86, 4.03, 4.17, 4.29, 4.39, 4.47}},
};

constexpr int kInfinity = 121;

std::string Rounded4(double v) { return PrintNumber(RoundDisplay(v, 4)); }

}  // namespace

void FillTukeyQTable(ComparisonRecord& c) {
  for (const TabledRow& row : kTabled)
    for (int k = 2; k <= 10; ++k) c.TukeyQ(k, row.df == 0 ? kInfinity : row.df) = row.q[k - 2];
  // The df between two tabled rows lie on the straight line between them.
  for (std::size_t r = 19; r + 2 < std::size(kTabled); ++r) {
    const int lo = kTabled[r].df, hi = kTabled[r + 1].df;
    for (int df = lo + 1; df < hi; ++df)
      for (int k = 2; k <= 10; ++k)
        c.TukeyQ(k, df) = c.TukeyQ(k, lo) + (c.TukeyQ(k, hi) - c.TukeyQ(k, lo)) * (df - lo) / (hi - lo);
  }
}

bool TukeyKramer::RunTukey(const std::string& outputPath) {
  Flow("RunTukey");
  auto& c = S.comparison;
  c.Alpha = 5;
  DataFileReader(S, P).InputRawData();
  if (c.TreatmentCount < 3) return false;
  BasicAnalysis();
  out_.Open(outputPath);
  PrintBasicData();
  PrintTukeyTableForBootstrap();
  out_.Close();
  return true;
}

void TukeyKramer::BasicAnalysis() {
  Flow("BasicAnalysis");
  auto& c = S.comparison;
  const int t = c.TreatmentCount;
  double dfWithin = 0, pooled = 0, grandSum = 0, grandSumSq = 0, sumSqOverB = 0, N = 0;
  for (int i = 1; i <= t; ++i) {
    long B = 0;
    double sum = 0, sumSq = 0;
    for (long k = 1; k <= c.TreatmentB(i); ++k) {
      if (!c.BootValueSeen(k, i)) continue;
      const double x = c.BootValue(k, i);
      ++B;
      sum += x;
      sumSq += x * x;
    }
    if (B < 2)
      throw ProgramEnd{"Division by zero: treatment " + c.TreatmentTitle(i) + " has " + std::to_string(B) +
                           " value(s); at least two are needed for its variance.",
                       kTitle};
    if (c.TreatmentN(i) <= 0)
      throw ProgramEnd{"Division by zero: the sample size (n) of treatment " + c.TreatmentTitle(i) + " is " +
                           std::to_string(c.TreatmentN(i)) + ".",
                       kTitle};
    const double mean = sum / static_cast<double>(B);
    double ss = 0;
    for (long k = 1; k <= c.TreatmentB(i); ++k)
      if (c.BootValueSeen(k, i)) ss += (c.BootValue(k, i) - mean) * (c.BootValue(k, i) - mean);
    c.BootCount(i) = static_cast<std::int32_t>(B);
    c.BootSum(i) = sum;
    c.BootSumSq(i) = sumSq;
    c.BootMean(i) = mean;
    c.BootVar2(i) = ss / static_cast<double>(B - 1);
    c.BootSE(i) = std::sqrt(c.BootVar2(i));
    dfWithin += static_cast<double>(B - 1);
    pooled += static_cast<double>(B - 1) * c.BootVar2(i);
    grandSum += sum;
    grandSumSq += sumSq;
    sumSqOverB += sum * sum / static_cast<double>(B);
    N += static_cast<double>(B);
  }
  c.MSE = pooled / dfWithin;
  c.dfW = N - t;
  for (int i = 1; i <= t; ++i)
    for (int j = 1; j <= t; ++j)
      c.TukeySE(i, j) = std::sqrt((1.0 / c.TreatmentN(i) + 1.0 / c.TreatmentN(j)) * c.MSE / 2);
  // The analysis of variance of the values.
  const double correction = grandSum * grandSum / N;
  c.SSTotal = grandSumSq - correction;
  c.SSAmong = sumSqOverB - correction;
  c.SSWithin = c.SSTotal - c.SSAmong;
  c.MSAmong = c.SSAmong / (t - 1);
  c.FValue = c.MSE != 0 ? c.MSAmong / c.MSE : 0;
}

void TukeyKramer::PrintBasicData() {
  Flow("PrintBasicData");
  auto& c = S.comparison;
  auto& f = out_;
  const int t = c.TreatmentCount;
  c.TableNumber = 1;
  f.Print("Program: Tukey-Kramer test (bootstrap)");
  f.Print("");
  f.Print("Project: " + S.identity.ProjectName + " " + S.identity.VersionStamp);
  f.Print("Date: " + DateTimeText());
  f.Print("");
  f.Print("Table " + std::to_string(c.TableNumber) + ".  Basic Analysis of Original Data in File " +
          S.identity.DataFilePath);
  auto titles = [&] {
    for (int i = 1; i <= t; ++i) f.PrintPart(Tab{(i - 1) * 11 + 17}, c.TreatmentTitle(i));
    f.NewLine();
  };
  auto row = [&](const char* label, auto value) {
    f.PrintPart(label);
    for (int i = 1; i <= t; ++i) f.PrintPart(Tab{(i - 1) * 11 + 17}, value(i));
    f.NewLine();
  };
  f.Print(c.RuleWide);
  titles();
  f.Print(c.RuleWideThin);
  row("Bootstraps (B)", [&](int i) { return PrintNumber(c.BootCount(i)); });
  row("Samp. size (n)", [&](int i) { return PrintNumber(c.TreatmentN(i)); });
  row("Mean (X)", [&](int i) { return Rounded4(c.BootMean(i)); });
  row("SE", [&](int i) {
    return c.BootSE(i) > 10000 ? PrintNumber(CIntValue(c.BootSE(i))) : Rounded4(c.BootSE(i));
  });
  f.Print(c.RuleWideThin);
  titles();
  f.Print(c.RuleWide);
}

void TukeyKramer::PrintTukeyTableForBootstrap() {
  Flow("PrintTukeyTableForBootstrap");
  auto& c = S.comparison;
  auto& f = out_;
  const int t = c.TreatmentCount;
  // Beyond df 120 the row of infinity; k is the span of the two places in the order of the
  // means, so a pair of neighbours is judged with k = 2 however many treatments there are.
  const int df = c.dfW > 120 ? kInfinity : static_cast<int>(c.dfW);
  for (int i = 1; i <= t - 1; ++i)
    for (int j = i + 1; j <= t; ++j) {
      const int k = j - i + 1;
      c.MSD(i, j) = c.TukeySE(i, j) * c.TukeyQ(k, df);
      c.TukeyDiff(i, j) = std::fabs(c.BootMean(i) - c.BootMean(j));
    }
  f.Print("");
  f.Print("Table " + std::to_string(++c.TableNumber) + ".  Differences between means (Tukey-Kramer procedure)");
  f.Print("[Lower left triangle: differneces between (i,j)]");
  f.Print("[Upper right triangle: MSD(i,j), the minimum significant difference]");
  f.Print(" ");
  PrintTreatmentTable(f, c, " ----", [&](int row, int col) {
    if (col > row) return TableCell(c.MSD(row, col), false);
    return TableCell(c.TukeyDiff(col, row), c.TukeyDiff(col, row) > c.MSD(col, row));
  });
  f.Print(c.Alpha, "%.");
  // The note on the stars goes to the main output of a Basic Run, not to this table. With that
  // file closed the run cannot go on; the table is whole by then.
  const char* note = kSignificantNote;
  if (!S.channels.MainOutput.IsOpen()) {
    const std::string path = out_.Path();
    out_.Close();
    throw ProgramEnd{"The Tukey-Kramer table is complete in\n" + path +
                         "\n\nIts closing note (\"" + std::string(note + 1) +
                         "\") goes to the main output of a Basic Run, and no such file is open.\n"
                         "Bad file name or number: the program ends here.",
                     kTitle};
  }
  S.channels.MainOutput.Print(note);
}

}  // namespace korvan
