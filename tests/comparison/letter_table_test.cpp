// Letters of the multiple comparison for three, four and five treatments.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "comparison/letter_table.h"

namespace korvan {
namespace {

std::vector<std::string> Letters(int n, const std::string& pairs) {
  std::vector<std::string> out;
  for (const auto& [t, l] : LetterRows(n, PairFlags::FromText(pairs))) out.push_back(std::to_string(t) + l);
  return out;
}

using V = std::vector<std::string>;

TEST(LetterTable, TwoAndThreeTreatments) {
  EXPECT_EQ(Letters(2, ""), (V{"1a", "2a"}));
  EXPECT_EQ(Letters(2, "12"), (V{"1a", "2b"}));
  const std::vector<std::pair<std::string, V>> three = {
      {"", {"1a", "2a", "3a"}},         {"12", {"1a", "2b", "3ab"}},      {"13", {"1a", "2ab", "3b"}},
      {"12 13", {"1a", "2b", "3b"}},    {"23", {"1ab", "2a", "3b"}},      {"12 23", {"1a", "2b", "3a"}},
      {"13 23", {"1a", "2a", "3b"}},    {"12 13 23", {"1a", "2b", "3c"}},
  };
  for (const auto& [pairs, rows] : three) EXPECT_EQ(Letters(3, pairs), rows) << pairs;
}

TEST(LetterTable, FourTreatments) {
  // Monotone patterns follow the maximal groups.
  EXPECT_EQ(Letters(4, "14"), (V{"1a", "2ab", "3ab", "4b"}));
  EXPECT_EQ(Letters(4, "13 14 24"), (V{"1a", "2ab", "3bc", "4c"}));
  EXPECT_EQ(Letters(4, "12 13 14 23 24 34"), (V{"1a", "2b", "3c", "4d"}));
  // Hand-made rows.
  EXPECT_EQ(Letters(4, "12 13"), (V{"1a", "2bd", "3bc", "4ac"}));
  EXPECT_EQ(Letters(4, "23 24"), (V{"1abc", "2a", "3bc", "4c"}));
  EXPECT_EQ(Letters(4, "13 14 23 34"), (V{"1a", "2ac", "3b", "4c"}));
  // 1-4 and 2-3 differ, 1-2 and 1-3 not: row 1 doubled, first with the single a.
  const V doubled = Letters(4, "14 23");
  ASSERT_GE(doubled.size(), 5u);
  EXPECT_EQ(doubled[0], "1a");
  EXPECT_EQ(doubled[1].substr(0, 1), "1");
  for (const char* p : {"14 23 24", "14 23 34", "14 23 24 34"}) EXPECT_EQ(Letters(4, p).size(), 5u) << p;
  // 1-2 differs but not 1-3, 1-4: no rows at all.
  for (const char* p : {"12", "12 23", "12 24", "12 23 24", "12 34", "12 23 34", "12 24 34", "12 23 24 34"})
    EXPECT_TRUE(Letters(4, p).empty()) << p;
}

TEST(LetterTable, FiveTreatments) {
  EXPECT_EQ(Letters(5, "14 15 25"), (V{"1a", "2ab", "3ac", "4bc", "5c"}));
  EXPECT_EQ(Letters(5, "14 15 24 25 34 35"), (V{"1a", "2a", "3a", "4bc", "5c"}));
  EXPECT_EQ(Letters(5, "13 14 15 24 25 34 35"), (V{"1a", "2ab", "3b", "4c", "5d"}));
  EXPECT_EQ(Letters(5, "12 13 14 15 25 35 45"), (V{"1a", "2bc", "3b", "4c", "5d"}));
  // Other patterns by the maximal groups, monotone or not.
  EXPECT_EQ(Letters(5, "15"), (V{"1a", "2ab", "3ab", "4ab", "5b"}));
  EXPECT_EQ(Letters(5, "13 14 15 24 25 35"), (V{"1a", "2ab", "3bc", "4cd", "5d"}));
  EXPECT_EQ(Letters(5, "24"), (V{"1ab", "2a", "3ab", "4b", "5ab"}));
}

}  // namespace
}  // namespace korvan
