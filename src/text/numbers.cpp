#include "text/numbers.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <limits>

#include "store/faults.h"

namespace korvan {

double NumberOfText(std::string_view text) {
  std::string t;
  for (char c : text)
    if (c != ' ' && c != '\t') t += c;
  const auto digit = [&](std::size_t k) { return k < t.size() && t[k] >= '0' && t[k] <= '9'; };
  std::size_t i = 0;
  if (i < t.size() && (t[i] == '+' || t[i] == '-')) ++i;
  bool digits = false;
  for (; digit(i); ++i) digits = true;
  if (i < t.size() && t[i] == '.')
    for (++i; digit(i); ++i) digits = true;
  if (!digits) return 0;
  if (i < t.size() && (t[i] == 'e' || t[i] == 'E')) {
    std::size_t k = i + 1;
    if (k < t.size() && (t[k] == '+' || t[k] == '-')) ++k;
    if (digit(k)) {
      while (digit(k)) ++k;
      i = k;
    }
  }
  t.resize(i);
  return std::strtod(t.c_str(), nullptr);
}

std::optional<double> NumberAnswer(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t");
  if (begin == std::string_view::npos) return std::nullopt;
  const std::string t(text.substr(begin, text.find_last_not_of(" \t") + 1 - begin));
  char* end = nullptr;
  const double v = std::strtod(t.c_str(), &end);
  if (end != t.c_str() + t.size() || !std::isfinite(v) || t.find_first_of("xXnNiI") != std::string::npos)
    return std::nullopt;
  return v;
}

double RoundDisplay(double v, int decimals) {
  double scale = std::pow(10.0, decimals);
  return static_cast<double>(CInt(v * scale)) / scale;
}

namespace {

// The %.15G layout of the rounded digits d[0..count) (no trailing zeros) with the decimal
// exponent of the first: the exponent form below -4 and from 15 on, the fixed form between.
std::size_t LayoutOfDigits(bool negative, const char* digits, int count, int exponent, char* buf) {
  std::size_t n = 0;
  if (negative) buf[n++] = '-';
  if (exponent < -4 || exponent >= 15) {
    buf[n++] = digits[0];
    if (count > 1) {
      buf[n++] = '.';
      for (int k = 1; k < count; ++k) buf[n++] = digits[k];
    }
    buf[n++] = 'E';
    buf[n++] = exponent < 0 ? '-' : '+';
    const int e = exponent < 0 ? -exponent : exponent;
    if (e < 10) buf[n++] = '0';
    n = static_cast<std::size_t>(std::to_chars(buf + n, buf + kNumberTextSize, e).ptr - buf);
  } else if (exponent >= 0) {
    const auto whole = static_cast<std::size_t>(exponent + 1);  // digits before the point
    const auto given = static_cast<std::size_t>(count);
    if (given <= whole) {
      std::memcpy(buf + n, digits, given);
      std::memset(buf + n + given, '0', whole - given);
      n += whole;
    } else {
      std::memcpy(buf + n, digits, whole);
      buf[n + whole] = '.';
      std::memcpy(buf + n + whole + 1, digits + whole, given - whole);
      n += given + 1;
    }
  } else {
    const auto zeros = static_cast<std::size_t>(-exponent - 1);  // after the point
    buf[n++] = '0';
    buf[n++] = '.';
    std::memset(buf + n, '0', zeros);
    n += zeros;
    std::memcpy(buf + n, digits, static_cast<std::size_t>(count));
    n += static_cast<std::size_t>(count);
  }
  return n;
}

// The 15 digits of a whole number below 10^15 (leading zeros included) into out, in four
// independent groups of pairs.
void FifteenDigits(std::uint64_t v, char* out) {
  static constexpr char kPairs[] =
      "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
      "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
      "8081828384858687888990919293949596979899";
  const auto pair = [&](std::uint32_t p, int at) {
    out[at] = kPairs[2 * p];
    out[at + 1] = kPairs[2 * p + 1];
  };
  const auto high = static_cast<std::uint32_t>(v / 100000000), low = static_cast<std::uint32_t>(v % 100000000);
  const std::uint32_t a = high / 10000, b = high % 10000, c = low / 10000, d = low % 10000;
  out[0] = static_cast<char>('0' + a / 100);
  pair(a % 100, 1);
  pair(b / 100, 3);
  pair(b % 100, 5);
  pair(c / 100, 7);
  pair(c % 100, 9);
  pair(d / 100, 11);
  pair(d % 100, 13);
}

// The %.15G form of v with 1e-13 <= |v| < 1e15, in whole numbers: v = m 2^e with m below 2^53,
// so v 10^s = m 5^s 2^(e+s) is exact in 128 bits for s = 0..27, and the scale s that brings it
// into [1e14, 1e15) gives the 15 digits as its whole part, rounded by the bits below. An
// exact half is left to the exact routes (0), as are the sizes out of range.
std::size_t ScaledFormOf(double v, char* buf) {
  static constexpr auto kFives = [] {
    std::array<std::uint64_t, 28> p{};
    p[0] = 1;
    for (std::size_t k = 1; k < p.size(); ++k) p[k] = p[k - 1] * 5;  // 5^27 < 2^63
    return p;
  }();
  __extension__ typedef unsigned __int128 Wide;
  std::uint64_t bits = 0;
  std::memcpy(&bits, &v, sizeof bits);
  const int binary = static_cast<int>((bits >> 52) & 0x7ff) - 1023;  // v is normal
  const std::uint64_t m = (bits & ((1ULL << 52) - 1)) | (1ULL << 52);  // v = m 2^(binary - 52)
  // floor(binary * log10(2)), in whole numbers (exact for |binary| below 1,650)
  int scale = 14 - ((binary * 78913) >> 18);
  Wide whole = 0, rest = 0;
  int shift = 0;
  for (int tries = 0;; ++tries) {
    if (scale < 0 || scale > 27 || tries == 3) return 0;
    shift = 52 - binary - scale;  // v 10^s = m 5^s / 2^shift; shift is 3 to 70 here
    if (shift <= 0 || shift > 120) return 0;
    const Wide product = static_cast<Wide>(m) * kFives[static_cast<std::size_t>(scale)];
    whole = product >> shift;
    rest = product & ((static_cast<Wide>(1) << shift) - 1);
    if (whole < 100000000000000ULL)
      ++scale;
    else if (whole >= 1000000000000000ULL)
      --scale;
    else
      break;
  }
  const Wide half = static_cast<Wide>(1) << (shift - 1);
  if (rest == half) return 0;
  auto rounded = static_cast<std::uint64_t>(whole) + (rest > half ? 1 : 0);
  int first = 14 - scale;  // the decimal exponent of the first digit
  if (rounded == 1000000000000000ULL) {
    rounded = 100000000000000ULL;
    ++first;
  }
  char digits[16];
  FifteenDigits(rounded, digits);
  int count = 15;
  while (count > 1 && digits[count - 1] == '0') --count;
  return LayoutOfDigits(v < 0, digits, count, first, buf);
}

// The %.15G form of a normal v from its shortest round-trip digits, into buf; 0 where they
// cannot tell it. Two decimals of 15 digits lie further apart than two neighbouring doubles,
// so shortest digits of 15 or fewer are the rounding to 15 digits as well (trailing zeros
// dropped). Longer shortest digits are rounded at the 15th: a 16-digit half-way point
// (...d5) lies between v and its shortest digits S only if it is nearer to v than S and
// rounds to v, and then the shortest digits would be it or shorter. The rounding of S is
// therefore that of v, except where S is itself such a half-way point: that case is left to
// the exact route.
std::size_t ShortFormOf(double v, char* buf) {
  char sci[kNumberTextSize];
  const auto res = std::to_chars(sci, sci + sizeof sci, v, std::chars_format::scientific);
  if (res.ec != std::errc()) return 0;
  const char* p = sci;
  const bool negative = *p == '-';
  if (negative) ++p;
  char digits[24];
  int count = 0;
  for (; p < res.ptr && *p != 'e'; ++p)
    if (*p != '.') digits[count++] = *p;
  int exponent = 0;
  std::from_chars(p + 1 + (p[1] == '+'), res.ptr, exponent);
  if (count > 15) {
    if (count == 16 && digits[15] == '5') return 0;
    const bool up = digits[15] >= '5';
    count = 15;
    if (up) {
      int k = 14;
      for (; k >= 0 && digits[k] == '9'; --k) digits[k] = '0';
      if (k >= 0) {
        ++digits[k];
      } else {  // 999...9 carried into a new leading digit
        digits[0] = '1';
        count = 1;
        ++exponent;
      }
    }
    while (count > 1 && digits[count - 1] == '0') --count;
  }
  return LayoutOfDigits(negative, digits, count, exponent, buf);
}

}  // namespace

// The %.15G form of the C library: the exponent form when the exponent is below -4 or at
// least 15, trailing zeros dropped, at least two exponent digits, in capitals (E, INF, NAN).
// Whole numbers and the usual sizes take the quick routes above; what they leave (exact
// halves, the very small and large, subnormals) std::to_chars makes in its "general" form
// with 15 digits.
std::size_t FormatFullPrecision(double v, char* buf) {
  if (v == 0) {  // also turns -0 into 0
    buf[0] = '0';
    return 1;
  }
  // A whole number below 10^15 has at most 15 digits: the form is the integer itself.
  if (std::fabs(v) < 1e15) {
    const auto whole = static_cast<long long>(v);
    if (static_cast<double>(whole) == v)
      return static_cast<std::size_t>(std::to_chars(buf, buf + kNumberTextSize, whole).ptr - buf);
  }
  if (std::isnormal(v)) {  // a subnormal has fewer bits than 15 digits need
    std::size_t n = ScaledFormOf(v, buf);
    if (n == 0) n = ShortFormOf(v, buf);
    if (n > 0) return n;
  }
  const auto res = std::to_chars(buf, buf + kNumberTextSize, v, std::chars_format::general, 15);
  if (res.ec != std::errc()) {  // cannot happen for 15 digits; the C library as the fallback
    const int n = std::snprintf(buf, kNumberTextSize, "%.15G", v);
    return n > 0 ? static_cast<std::size_t>(n) : 0;
  }
  const std::size_t n = static_cast<std::size_t>(res.ptr - buf);
  for (std::size_t k = 0; k < n; ++k)
    if (buf[k] >= 'a' && buf[k] <= 'z') buf[k] = static_cast<char>(buf[k] - 'a' + 'A');
  return n;
}

std::size_t FormatPrintNumber(double v, char* buf) {
  std::size_t n = FormatFullPrecision(v, buf + 1);
  if (buf[1] == '-') {
    for (std::size_t k = 0; k < n; ++k) buf[k] = buf[k + 1];
  } else {
    buf[0] = ' ';
    ++n;
  }
  buf[n++] = ' ';
  return n;
}

std::string FullPrecision(double v) {
  char buf[kNumberTextSize];
  return std::string(buf, FormatFullPrecision(v, buf));
}

std::string PrintNumber(double v) {
  char buf[kNumberTextSize + 2];
  return std::string(buf, FormatPrintNumber(v, buf));
}

std::string DateTimeText() {
  const std::time_t now = std::time(nullptr);
  std::tm t{};
  localtime_r(&now, &t);
  const int hour12 = t.tm_hour % 12 == 0 ? 12 : t.tm_hour % 12;
  char buf[64];
  std::snprintf(buf, sizeof buf, "%d/%d/%d %d:%02d:%02d %s", t.tm_mon + 1, t.tm_mday, t.tm_year + 1900, hour12,
                t.tm_min, t.tm_sec, t.tm_hour < 12 ? "AM" : "PM");
  return buf;
}

double RoundDisplayOrWhole(double v, int decimals) {
  if (!std::isfinite(v)) return v;
  if (std::fabs(v) * std::pow(10.0, decimals) >= 2.0e9) return std::round(v);
  return RoundDisplay(v, decimals);
}

std::string ClockText(const char* format, double secondsLater) {
  std::time_t now = std::time(nullptr) + static_cast<std::time_t>(secondsLater);
  std::tm tm{};
  localtime_r(&now, &tm);
  char buf[32];
  std::strftime(buf, sizeof buf, format, &tm);
  return buf;
}

}  // namespace korvan
