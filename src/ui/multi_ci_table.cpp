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

}  // namespace

MultiCITable ShowMultiCIofDifference(const SessionStore& S) {
  const auto& c = S.comparison;
  const int n = c.TreatmentCount;
  MultiCITable t;
  t.rows = t.columns = n + 1;
  t.cells.assign(static_cast<std::size_t>(n + 1), std::vector<std::string>(static_cast<std::size_t>(n + 1)));
  for (int k = 1; k <= n; ++k) t.cells[0][k] = t.cells[k][0] = c.TreatmentTitle(k);
  for (int r = 1; r <= n; ++r)
    for (int col = 1; col <= n; ++col) {
      std::string& cell = t.cells[r][col];
      if (r == col) {
        cell = " ----";
      } else if (col > r) {
        cell = DifferenceText(c.MeanDifference(r, col));
      } else {
        cell = (c.PairLower(col, r) > 0 ? "*" : "") + FullPrecision(RoundDisplay(c.PairP(col, r), 4));
      }
    }
  return t;
}

}  // namespace korvan
