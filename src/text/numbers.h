#pragma once
// Number conversions shared by every writer and by the statistics: CInt, display rounding,
// the two text forms of a number.
#include <cstdint>
#include <string>

namespace korvan {

// Nearest integer, a tie to the even one (0.5 -> 0, 1.5 -> 2, 2.5 -> 2, -0.5 -> 0).
double CIntValue(double v);
// CInt onto a 32-bit integer; beyond its range the overflow fault.
std::int32_t CInt(double v);
// CInt onto a 16-bit integer (the store's "16-bit integer" fields); beyond -32768..32767 the
// overflow fault.
std::int16_t CInt16(double v);
// Display rounding: scale by 10^decimals, CInt to a 32-bit integer, scale back.
double RoundDisplay(double v, int decimals);

// A number "at full precision": up to 15 significant digits, no trailing zeros, exponent
// written as E-07 where the plain form would need it. Used by the Write form.
std::string FullPrecision(double v);
// A number as the Print form shows it: a leading blank when not negative, a trailing blank.
std::string PrintNumber(double v);
// The number at full precision with no blanks: ages "as text without the leading blank".
inline std::string NumberText(double v) { return FullPrecision(v); }

}  // namespace korvan
