#include "text/numbers.h"

#include <cmath>
#include <cstdio>
#include <limits>

#include "store/faults.h"

namespace korvan {

double RoundDisplay(double v, int decimals) {
  double scale = std::pow(10.0, decimals);
  return static_cast<double>(CInt(v * scale)) / scale;
}

std::string FullPrecision(double v) {
  if (v == 0) return "0";  // also turns -0 into 0
  char buf[40];
  std::snprintf(buf, sizeof buf, "%.15G", v);
  return buf;
}

std::string PrintNumber(double v) {
  std::string s = FullPrecision(v);
  if (s[0] != '-') s.insert(s.begin(), ' ');
  s.push_back(' ');
  return s;
}

}  // namespace korvan
