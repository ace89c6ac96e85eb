#include "text/numbers.h"

#include <cfenv>
#include <cmath>
#include <cstdio>
#include <limits>

#include "store/faults.h"

namespace korvan {

double CIntValue(double v) {
  // nearbyint follows the current rounding mode, which is round-to-nearest-even unless
  // someone changed it; make sure of it.
  if (std::fegetround() != FE_TONEAREST) std::fesetround(FE_TONEAREST);
  return std::nearbyint(v);
}

std::int32_t CInt(double v) {
  double r = CIntValue(v);
  if (!(r >= std::numeric_limits<std::int32_t>::min() && r <= std::numeric_limits<std::int32_t>::max()))
    throw OverflowFault();
  return static_cast<std::int32_t>(r);
}

std::int16_t CInt16(double v) {
  double r = CIntValue(v);
  if (!(r >= std::numeric_limits<std::int16_t>::min() && r <= std::numeric_limits<std::int16_t>::max()))
    throw OverflowFault();
  return static_cast<std::int16_t>(r);
}

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
