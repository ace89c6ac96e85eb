#include "ui/multi_ci_table.h"

#include <cmath>

#include "text/numbers.h"

namespace korvan {

namespace {

// A mean difference: below 1 to 3 decimals, from 1 to 100 to 2, beyond 100 whole.
std::string DifferenceText(double v) {
  const double a = std::fabs(v);
  if (a < 1) return FullPrecision(RoundDisplay(v, 3));
  if (a <= 100) return FullPrecision(RoundDisplay(v, 2));
  return FullPrecision(CIntValue(v));
}


// The grid of n treatments: titles along row 0 and column 0, " ----" on the diagonal, and
// above(i, j), below(i, j) for the pair i < j in the upper right and lower left.
template <class Above, class Below>
MultiCITable TreatmentGrid(const ComparisonRecord& c, Above above, Below below) {
  const int n = c.TreatmentCount;
  MultiCITable t;
  t.rows = t.columns = n + 1;
  t.cells.assign(static_cast<std::size_t>(n + 1), std::vector<std::string>(static_cast<std::size_t>(n + 1)));
  for (int k = 1; k <= n; ++k) t.cells[0][k] = t.cells[k][0] = c.TreatmentTitle(k);
  for (int r = 1; r <= n; ++r)
    for (int col = 1; col <= n; ++col)
      t.cells[r][col] = r == col ? " ----" : col > r ? above(r, col) : below(col, r);
  return t;
}

}  // namespace

MultiCITable ShowMultiCIofDifference(const SessionStore& S) {
  const auto& c = S.comparison;
  return TreatmentGrid(
      c, [&](int i, int j) { return DifferenceText(c.MeanDifference(i, j)); },
      [&](int i, int j) { return (c.PairLower(i, j) > 0 ? "*" : "") + FullPrecision(RoundDisplay(c.PairP(i, j), 4)); });
}

MultiCITable ShowTukeyBootstrapResult(const SessionStore& S) {
  const auto& c = S.comparison;
  return TreatmentGrid(
      c, [&](int i, int j) { return DifferenceText(c.MSD(i, j)); },
      [&](int i, int j) { return (c.TukeyDiff(i, j) > c.MSD(i, j) ? "*" : "") + DifferenceText(c.TukeyDiff(i, j)); });
}

}  // namespace korvan
