#pragma once
// Cell texts of the tables of the main output.
#include <cmath>
#include <string>

#include "run/run_context.h"
#include "text/numbers.h"

namespace korvan {

// A number of a table at a fixed count of decimals; beyond plus or minus 10,000, whole.
inline std::string FixedText(double v, int decimals) {
  if (!(std::fabs(v) < 10000)) return PrintNumber(CIntValue(v));
  return PrintNumber(RoundDisplay(v, decimals));
}

// A cell of an age-stage table: 4 decimals up to 1, 2 up to 300, 1 up to 3000, else whole.
inline std::string CellText(double v) {
  const double a = std::fabs(v);
  const int decimals = a <= 1 ? 4 : a <= 300 ? 2 : a <= 3000 ? 1 : 0;
  return PrintNumber(RoundDisplay(v, decimals));
}

// The page mark before a table of the main output: a form feed (none before the first page),
// then "Page" and its number at column 70.
inline void NewMainPage(Channels& C) {
  if (C.MainPageNumber > 0) C.MainOutput.RawText("\f");
  C.MainOutput.Print(Tab{70}, "Page", ++C.MainPageNumber);
}

// The page mark and the number of the next table.
inline int NewMainTablePage(Channels& C) {
  NewMainPage(C);
  return ++C.MainTableNumber;
}

}  // namespace korvan
