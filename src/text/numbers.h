#pragma once
// Number conversions shared by every writer and by the statistics: CInt, display rounding,
// the two text forms of a number.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "store/faults.h"

namespace korvan {

// Nearest integer, a tie to the even one (0.5 -> 0, 1.5 -> 2, 2.5 -> 2, -0.5 -> 0). Done by
// hand, whatever the rounding mode of the thread: v - floor(v) is exact. Inline: the engine
// rounds in its inner loops.
inline double CIntValue(double v) {
  const double f = std::floor(v);
  const double diff = v - f;
  if (diff < 0.5) return f;
  if (diff > 0.5) return f + 1;
  return std::fmod(f, 2) == 0 ? f : f + 1;
}
// CInt onto a 32-bit integer; beyond its range the overflow fault.
inline std::int32_t CInt(double v) {
  const double r = CIntValue(v);
  if (!(r >= std::numeric_limits<std::int32_t>::min() && r <= std::numeric_limits<std::int32_t>::max()))
    throw OverflowFault();
  return static_cast<std::int32_t>(r);
}
// CInt onto a 16-bit integer (the store's "16-bit integer" fields); beyond -32768..32767 the
// overflow fault.
inline std::int16_t CInt16(double v) {
  const double r = CIntValue(v);
  if (!(r >= std::numeric_limits<std::int16_t>::min() && r <= std::numeric_limits<std::int16_t>::max()))
    throw OverflowFault();
  return static_cast<std::int16_t>(r);
}
// Display rounding: scale by 10^decimals, CInt to a 32-bit integer, scale back.
double RoundDisplay(double v, int decimals);
// Display rounding where the scaled value fits 32 bits; beyond, the value rounded to a whole
// number (and a value that is not finite as it is): for the new reports that need no fault.
double RoundDisplayOrWhole(double v, int decimals);

// Val: the number at the head of a typed answer or a field. Blanks and tabs are skipped
// wherever they stand ("1 000" is 1000); then a sign, digits with at most one decimal point and
// an exponent make the number, and reading stops at the first other character. No digit gives 0.
double NumberOfText(std::string_view text);
// The number of an answer that is a number and nothing else (blanks around it allowed), as
// NumberOfText reads it; nullopt for any other answer ("", "abc", "2 days", "1e999").
std::optional<double> NumberAnswer(std::string_view text);

// A number "at full precision": up to 15 significant digits, no trailing zeros, exponent
// written as E-07 where the plain form would need it. Used by the Write form.
std::string FullPrecision(double v);
// The same characters into buf, which holds at least kNumberTextSize; returns their count.
// The writers of large files use it: no string is made.
inline constexpr std::size_t kNumberTextSize = 32;
std::size_t FormatFullPrecision(double v, char* buf);
// The Print form into buf (at least kNumberTextSize + 2); returns the count.
std::size_t FormatPrintNumber(double v, char* buf);
// A number as the Print form shows it: a leading blank when not negative, a trailing blank.
std::string PrintNumber(double v);
// The number at full precision with no blanks: ages "as text without the leading blank".
inline std::string NumberText(double v) { return FullPrecision(v); }

// Date and time of the clock as the console shows them ("m/d/yyyy h:mm:ss AM").
std::string DateTimeText();
// The local time of the clock, or so many seconds later, in a strftime format (at most 31
// characters).
std::string ClockText(const char* format, double secondsLater = 0);

}  // namespace korvan
