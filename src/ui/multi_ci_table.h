#pragma once
// The grid of a multiple comparison as the console shows it: n + 1 rows and columns, titles in
// row 0 and column 0, mean differences above the diagonal, P-values below it ("*" in front
// when the lower t limit of the pair is above 0). The desktop program copies it into its grid.
#include <string>
#include <vector>

#include "store/session_store.h"

namespace korvan {

struct MultiCITable {
  int rows = 0, columns = 0;
  int dataColumnWidth = 500;  // width of each data column, in the grid's units
  bool centred = true;
  std::vector<std::vector<std::string>> cells;  // cells[row][column]
  const std::string& Cell(int row, int column) const { return cells.at(row).at(column); }
};

// ShowMultiCIofDifference: the table from the comparison in the store.
MultiCITable ShowMultiCIofDifference(const SessionStore& S);
// ShowTukeyBootstrapResult: the same grid of a Tukey-Kramer table, minimum significant
// differences above the diagonal, differences below it ("*" in front when beyond the MSD).
MultiCITable ShowTukeyBootstrapResult(const SessionStore& S);

}  // namespace korvan
