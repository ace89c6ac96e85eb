// The tables of the multiple-comparison report: five n x n tables of differences, limits and
// P-values, and the table that marks the treatments with letters.
#include <cmath>
#include <string>

#include "comparison/letter_table.h"
#include "comparison/paired_test.h"
#include "comparison/treatment_table.h"
#include "text/numbers.h"

namespace korvan {

namespace {

int Column(int c) { return (c - 1) * 11 + 17; }


}  // namespace

std::string TableCell(double v, bool star) {
  const double shown = std::fabs(v) > 10000 ? CIntValue(v) : RoundDisplay(v, 4);
  return PrintNumber(shown) + (star ? "*" : "");
}

void PrintTreatmentTable(TextFile& f, const ComparisonRecord& c, const char* diagonal,
                         const std::function<std::string(int row, int col)>& cell, bool originals) {
  const int n = c.TreatmentCount;
  f.Print(" " + c.RuleTable);
  f.PrintPart(" ");
  for (int col = 1; col <= n; ++col) f.PrintPart(Tab{Column(col)}, c.TreatmentTitle(col));
  if (originals) f.PrintPart(Tab{n * 11 + 18}, " Original");
  f.NewLine();
  f.Print(" " + c.RuleTableThin);
  for (int row = 1; row <= n; ++row) {
    f.PrintPart(" " + c.TreatmentTitle(row));
    for (int col = 1; col <= n; ++col) f.PrintPart(Tab{Column(col)}, col == row ? std::string(diagonal) : cell(row, col));
    if (originals) f.PrintPart(Tab{n * 11 + 18}, c.TreatmentOriginal(row));
    f.NewLine();
  }
  f.Print(" " + c.RuleTableThin);
}

void PairedBootTest::PrintPairTestTable() {
  Flow("PrintPairTestTable");
  auto& c = S.comparison;
  auto& f = report_;
  const bool cartesian = c.CartesianRun == "Yes";
  const std::string testName = cartesian ? ". Differences between treatments (Cartesian product test)"
                                         : ". Differences between treatments (Paired bootstrap test)";
  auto sig = [&](int i, int j) { return c.PairP(i, j) <= 0.05; };

  for (int table = 1; table <= 5; ++table) {
    f.Print("");
    const std::string heading = table == 1   ? ". Differences between treatments and lower CI"
                                : table == 2 ? ". Differences between treatments and P-value"
                                             : testName;
    f.Print(" Table", ++c.TableNumber, heading);
    switch (table) {
      case 1:
        f.Print(cartesian ? " (This is the t confidence interval based on Cartesian product differences)"
                          : " (This is the t confidence interval based on paired bootstrap differences)");
        f.Print(" [Upper right triangle: The difference between means (i,j)]");
        f.Print(" [Lower left triangle: Lower CI of difference between means (i,j) based on t]");
        break;
      case 2:
        f.Print(" [Upper right triangle: The difference between means (i,j)]");
        f.Print(" [Lower left triangle: P-value of the test between (i,j)]");
        break;
      case 3:
      case 4:
        f.Print(" [Upper right triangle: P-value of the test between (i,j)]");
        f.Print(" [Lower left triangle: The difference between means (i,j)]");
        break;
      default:
        f.Print(" [Upper right triangle: P-value of the test between (i,j)]");
        f.Print(" [Lower left triangle: P-value of the test between (j,i)]");
    }
    f.Print(table == 4 ? " The original values are listed in the last column" : " ");
    auto cell = [&](int row, int col) {
      const bool upper = col > row;
      const int i = upper ? row : col, j = upper ? col : row;  // the pair, i < j
      switch (table) {
        case 1:
          return upper ? TableCell(c.MeanDifference(i, j), false) : TableCell(c.PairLower(i, j), c.PairLower(i, j) > 0);
        case 2:
          return upper ? TableCell(c.MeanDifference(i, j), sig(i, j)) : TableCell(c.PairP(i, j), sig(i, j));
        case 3:
        case 4:
          return upper ? TableCell(c.PairP(i, j), sig(i, j)) : TableCell(c.MeanDifference(i, j), sig(i, j));
        default:
          return TableCell(c.PairP(row, col), c.PairP(row, col) <= 0.05);
      }
    };
    PrintTreatmentTable(f, c, table <= 3 ? " ----" : " ------", cell, table == 4);
    f.Print(kSignificantNote);
    if (table == 1) {
      f.Print(" The bootstrap t confidence interval might be different from the bootstrap percentile ");
      f.Print(" confidence interval. ");
    }
  }
  PrintLetterTable();
}

void PairedBootTest::PrintLetterRow(int t, const std::string& letters) {
  const auto& c = S.comparison;
  report_.Print(" " + c.TreatmentTitle(t), Tab{15}, c.TreatmentOriginal(t), Tab{35}, c.TreatmentN(t), Tab{45},
                c.BootSE(t), Tab{70}, " " + letters);
}

void PairedBootTest::PrintLetterTable() {
  auto& c = S.comparison;
  auto& f = report_;
  const int n = c.TreatmentCount;
  f.Print("");
  f.Print(" Table", ++c.TableNumber, ". Preliminary table of differences between treatments.");
  f.Print(" You can use the following table to mark the differences between treatments.");
  f.Print(" Only the differences between the first few treatments are marked for you.");
  f.Print(" Note well! If this table is not completed, you have to complete the rest \"_\" ");
  f.Print(" yourself. Attention! Not every \"_\" needs to be filled with a letter. ");
  f.Print(" This is a good practice of \"critical thinking\".");
  f.Print(" Note well: \"Thinking is the most important thing in science\".");
  f.Print(" " + std::string(78, '='));
  f.Print(" Treatment", Tab{15}, " Original", Tab{35}, " n", Tab{45}, " SE", Tab{70}, "Difference");
  f.Print(" " + std::string(78, '-'));
  if (n <= 5) {
    PairFlags flags;
    for (int i = 1; i < n; ++i)
      for (int j = i + 1; j <= n; ++j) flags.Set(i, j, c.PairP(i, j) <= 0.05);
    if (n == 4) PrintPairTestTable4Treats();
    if (n == 5) PrintPairTestTable5Treats();
    for (const auto& [t, letters] : LetterRows(n, flags)) PrintLetterRow(t, letters);
  } else {
    for (int t = 1; t <= n; ++t) {
      f.PrintPart(" " + c.TreatmentTitle(t), Tab{15}, c.TreatmentOriginal(t), Tab{45}, c.BootSE(t));
      if (t == 1)
        f.Print(Tab{65}, std::string(static_cast<std::size_t>(n - 1), '_') + " a");
      else if (t == 2)
        f.Print(Tab{65}, std::string(static_cast<std::size_t>(n - 1), '_') + (c.PairP(1, 2) <= 0.05 ? " b" : " a"));
      else
        f.Print(Tab{66}, std::string(static_cast<std::size_t>(n), '_'));
    }
  }
  f.Print(" " + std::string(78, '-'));
}

// The rows of four and five treatments come from LetterRows; these record in the flow which
// of the historical procedures the pattern belongs to.
void PairedBootTest::PrintPairTestTable4Treats() { Flow("PrintPairTestTable4Treats"); }

void PairedBootTest::PrintPairTestTable5Treats() {
  const auto& c = S.comparison;
  auto s = [&](int j) { return c.PairP(1, j) <= 0.05; };
  static const char* const kNames[16] = {"A09", "A10", "A11", "A13", "A12", "A16", "A14", "A15",
                                         "A08", "A06", "A07", "A04", "A05", "A03", "A02", "A01"};
  const int index = (s(2) ? 8 : 0) + (s(3) ? 4 : 0) + (s(4) ? 2 : 0) + (s(5) ? 1 : 0);
  Flow(std::string("PrintPairTestTable5Treats") + kNames[index]);
}

}  // namespace korvan
