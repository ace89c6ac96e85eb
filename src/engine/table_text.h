#pragma once
// Cell texts of the tables of the main output.
#include <cmath>
#include <ctime>
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

// "Date: " and "Time: " of the moment, as the age tables head them.
inline void PrintDateAndTime(TextFile& out) {
  std::time_t now = std::time(nullptr);
  std::tm tm{};
  localtime_r(&now, &tm);
  char date[16], clock[16];
  std::strftime(date, sizeof date, "%m-%d-%Y", &tm);
  std::strftime(clock, sizeof clock, "%H:%M:%S", &tm);
  out.Print("Date: ", date, Tab{63}, "Time: ", clock);
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
