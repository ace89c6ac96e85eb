#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {
namespace {

TEST(CInt, TiesGoToTheEvenNumber) {
  struct Case {
    double in, out;
  } cases[] = {{0.5, 0},   {1.5, 2},   {2.5, 2},    {3.5, 4},   {-0.5, 0}, {-1.5, -2},
               {-2.5, -2}, {2.4999, 2}, {2.5001, 3}, {-2.6, -3}, {7, 7},    {1e9 + 0.5, 1e9}};
  for (const Case& c : cases) {
    EXPECT_EQ(CIntValue(c.in), c.out) << c.in;
    EXPECT_EQ(CInt(c.in), static_cast<std::int32_t>(c.out)) << c.in;
  }
  // The 32-bit range and what lies beyond it.
  EXPECT_EQ(CInt(2147483647.4), 2147483647);
  EXPECT_EQ(CInt(-2147483648.5), std::numeric_limits<std::int32_t>::min());  // the tie goes to the even end
  EXPECT_THROW(CInt(2147483647.5), OverflowFault);
  EXPECT_THROW(CInt(-2147483649.0), OverflowFault);
  EXPECT_THROW(CInt(std::nan("")), OverflowFault);
  EXPECT_THROW(CInt(std::numeric_limits<double>::infinity()), OverflowFault);
  // The 16-bit fields of the store.
  EXPECT_EQ(CInt16(32767.4), 32767);
  EXPECT_EQ(CInt16(-32768), -32768);
  EXPECT_EQ(CInt16(4.5), 4);
  EXPECT_THROW(CInt16(32767.5), OverflowFault);
  EXPECT_THROW(CInt16(-32769), OverflowFault);
  EXPECT_THROW(CInt16(40000), OverflowFault);
}

TEST(RoundDisplay, ScalesRoundsAndFailsBeyondThe32BitRange) {
  EXPECT_EQ(RoundDisplay(0.12345678, 4), 0.1235);
  EXPECT_EQ(RoundDisplay(-0.12345678, 4), -0.1235);
  EXPECT_EQ(RoundDisplay(2.5, 0), 2);
  EXPECT_EQ(RoundDisplay(3.5, 0), 4);
  EXPECT_EQ(RoundDisplay(0.125, 2), 0.12);  // 12.5 is a tie: to the even
  EXPECT_EQ(RoundDisplay(12345.6789, 2), 12345.68);
  EXPECT_EQ(RoundDisplay(214748.3647, 4), 214748.3647);
  // 10,000 with four decimals is 1e8: fine; 300,000 is 3e9: beyond the range.
  EXPECT_EQ(RoundDisplay(10000, 4), 10000);
  EXPECT_THROW(RoundDisplay(300000, 4), OverflowFault);
  EXPECT_THROW(RoundDisplay(-214749, 4), OverflowFault);
  EXPECT_THROW(RoundDisplay(3e9, 0), OverflowFault);
  EXPECT_EQ(FullPrecision(RoundDisplay(1.0 / 3, 4)), "0.3333");
}

// Answers of input boxes and fields read as numbers: the numeric head, blanks ignored wherever
// they stand; what the C library would also take (infinity, NaN, hexadecimal) is no number.
TEST(NumberOfText, TheNumericHeadOfATypedAnswer) {
  for (const auto& [text, value] : std::vector<std::pair<const char*, double>>{{"0.3", 0.3},
                                                                             {"  12abc", 12},
                                                                             {"-1.5e-2x", -0.015},
                                                                             {"1 000", 1000},
                                                                             {" - 2 . 5", -2.5},
                                                                             {"+.5", 0.5},
                                                                             {"1e", 1},
                                                                             {"2E+3", 2000},
                                                                             {"1.2.3", 1.2},
                                                                             {"", 0},
                                                                             {"abc", 0},
                                                                             {".", 0},
                                                                             {"-", 0},
                                                                             {"inf", 0},
                                                                             {"nan", 0},
                                                                             {"0x10", 0}})
    EXPECT_EQ(NumberOfText(text), value) << text;
  EXPECT_EQ(NumberOfText("1e999"), HUGE_VAL);
}

TEST(NumberText, FullPrecisionAndPrintForms) {
  struct Case {
    double v;
    const char* full;
    const char* print;
  } cases[] = {
      {0, "0", " 0 "},
      {-0.0, "0", " 0 "},
      {1, "1", " 1 "},
      {-1, "-1", "-1 "},
      {0.25, "0.25", " 0.25 "},
      {-0.25, "-0.25", "-0.25 "},
      {1e-07, "1E-07", " 1E-07 "},
      {-2.5e-07, "-2.5E-07", "-2.5E-07 "},
      {0.0001, "0.0001", " 0.0001 "},
      {0.00001, "1E-05", " 1E-05 "},
      {123456789012345.0, "123456789012345", " 123456789012345 "},
      {1e15, "1E+15", " 1E+15 "},
      {0.1 + 0.2, "0.3", " 0.3 "},
      {2.0 / 3, "0.666666666666667", " 0.666666666666667 "},
      {1234.5, "1234.5", " 1234.5 "},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FullPrecision(c.v), c.full);
    EXPECT_EQ(PrintNumber(c.v), c.print);
  }
  EXPECT_EQ(NumberText(12), "12");
}

// The writers format numbers without the C library; its %.15G is the reference, on the edges
// of the two forms (exponent -5/-4 and 14/15), on rounding carries (9.999...), on halves, on
// any bit pattern (subnormals, infinities, NaN) and on values of every size.
TEST(NumberText, FullPrecisionIsTheCLibraryForm) {
  auto expectSame = [](double v) {
    char ref[64];
    std::snprintf(ref, sizeof ref, "%.15G", v);
    if (v == 0) std::strcpy(ref, "0");
    char buf[kNumberTextSize + 2];
    ASSERT_EQ(std::string(buf, FormatFullPrecision(v, buf)), ref) << std::hexfloat << v;
    ASSERT_EQ(FullPrecision(v), ref);
    const std::string print = v < 0 || (std::signbit(v) && std::isnan(v)) ? std::string(ref) + " " : " " + std::string(ref) + " ";
    ASSERT_EQ(std::string(buf, FormatPrintNumber(v, buf)), print) << ref;
  };
  const double inf = std::numeric_limits<double>::infinity();
  for (double v : {1e-5, 9.99999999999999e-5, 0.0001, 0.000099999999999999995, 99999999999999.9, 999999999999999.0,
                   999999999999999.5, 9999999999999995.0, 1e15, 0.5, 2.5e-7, 5e-324, 2.2250738585072014e-308, 1e308,
                   std::numeric_limits<double>::max(), inf, -inf, std::nan(""), 1.0 / 3, 1e22, 1e23})
    for (double s : {1.0, -1.0}) expectSame(s * v);
  std::mt19937_64 gen(42);
  std::uniform_real_distribution<double> u(0, 1);
  for (int i = 0; i < 300000; ++i) {
    double v = 0;
    if (i % 3 == 0) {
      const std::uint64_t bits = gen();
      std::memcpy(&v, &bits, sizeof v);
    } else if (i % 3 == 1) {
      v = u(gen) * std::pow(10.0, static_cast<int>(gen() % 40) - 20);
      if (i % 2) v = std::round(v * 1e6) / std::pow(10.0, static_cast<int>(gen() % 30));  // few digits
    } else if (i % 6 == 2) {
      v = static_cast<double>(gen() % 100000000) / 64.0 - 500000;  // exact binary fractions
    } else {
      // 16 digits ending in 5, the half-way points of the 15-digit rounding, and their
      // neighbours: the shortest digits of these cannot always tell the rounding
      char text[48];
      std::snprintf(text, sizeof text, "%llu5e%d", 100000000000000ULL + gen() % 900000000000000ULL,
                    static_cast<int>(gen() % 40) - 20);
      const double half = std::strtod(text, nullptr), step = gen() % 3 == 0 ? inf : gen() % 2 ? -inf : half;
      v = std::nextafter(half, step);
    }
    expectSame(v);
  }
}

}  // namespace
}  // namespace korvan
