// Letters of the multiple comparison for every pattern of significant pairs of three, four and
// five treatments.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "comparison/letter_table.h"

namespace korvan {
namespace {

using V = std::vector<std::string>;

V Letters(int n, const PairFlags& sig) {
  V out;
  for (const auto& [t, l] : LetterRows(n, sig)) out.push_back(std::to_string(t) + l);
  return out;
}
V Letters(int n, const std::string& pairs) { return Letters(n, PairFlags::FromText(pairs)); }

// The pairs (i < j) of n treatments in the order 12 13 .. 1n 23 ..; bit k of a pattern sets
// the k-th pair.
std::vector<std::pair<int, int>> Pairs(int n) {
  std::vector<std::pair<int, int>> p;
  for (int i = 1; i < n; ++i)
    for (int j = i + 1; j <= n; ++j) p.emplace_back(i, j);
  return p;
}

struct Pattern {
  PairFlags flags;
  std::string text;  // "12 13 25"
};

Pattern PatternOf(int n, unsigned bits) {
  Pattern p;
  const auto pairs = Pairs(n);
  for (std::size_t k = 0; k < pairs.size(); ++k) {
    if (!(bits >> k & 1u)) continue;
    p.flags.Set(pairs[k].first, pairs[k].second);
    if (!p.text.empty()) p.text += ' ';
    p.text += std::to_string(pairs[k].first) + std::to_string(pairs[k].second);
  }
  return p;
}

// The rule of maximal groups by another route: Bron-Kerbosch over the graph of the pairs that
// do not differ; the groups in lexicographic order get a, b, c...
void Extend(const std::vector<int>& r, std::vector<int> p, std::vector<int> x, const PairFlags& sig,
            std::vector<std::vector<int>>& out) {
  if (p.empty() && x.empty()) {
    out.push_back(r);
    return;
  }
  while (!p.empty()) {
    const int v = p.front();
    auto alike = [&](const std::vector<int>& s) {
      std::vector<int> k;
      for (int u : s)
        if (u != v && !sig(u, v)) k.push_back(u);
      return k;
    };
    std::vector<int> r2 = r;
    r2.push_back(v);
    Extend(r2, alike(p), alike(x), sig, out);
    p.erase(p.begin());
    x.push_back(v);
  }
}

V ByMaximalGroups(int n, const PairFlags& sig) {
  std::vector<int> all;
  for (int t = 1; t <= n; ++t) all.push_back(t);
  std::vector<std::vector<int>> groups;
  Extend({}, all, {}, sig, groups);
  for (auto& g : groups) std::sort(g.begin(), g.end());
  std::sort(groups.begin(), groups.end());
  V letters(static_cast<std::size_t>(n));
  for (std::size_t g = 0; g < groups.size(); ++g)
    for (int t : groups[g]) letters[static_cast<std::size_t>(t - 1)] += static_cast<char>('a' + g);
  V rows;
  for (int t = 1; t <= n; ++t) rows.push_back(std::to_string(t) + letters[static_cast<std::size_t>(t - 1)]);
  return rows;
}

V Rows(const V& letters) {
  V rows;
  for (std::size_t t = 0; t < letters.size(); ++t) rows.push_back(std::to_string(t + 1) + letters[t]);
  return rows;
}

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

// All 64 patterns: the hand-made rows, the doubled first row, the patterns without rows, and
// the rule of maximal groups for the rest.
TEST(LetterTable, EveryPatternOfFourTreatments) {
  const std::map<std::string, V> hand = {
      {"12 13", {"a", "bd", "bc", "ac"}},        {"13 23", {"ac", "ac", "b", "bc"}},
      {"13 24", {"ac", "ab", "bd", "cd"}},       {"23 24", {"abc", "a", "bc", "c"}},
      {"13 23 24", {"ac", "a", "b", "bc"}},      {"12 13 34", {"a", "bc", "c", "ab"}},
      {"23 34", {"abc", "ac", "b", "c"}},        {"12 14 23 34", {"a", "bc", "a", "c"}},
      {"13 24 34", {"ac", "ab", "b", "c"}},      {"12 13 24 34", {"a", "bc", "c", "a"}},
      {"13 23 24 34", {"ac", "a", "b", "c"}},    {"13 14 23", {"a", "ac", "b", "bc"}},
      {"13 14 23 34", {"a", "ac", "b", "c"}},
  };
  const std::vector<std::string> doubled = {"14 23", "14 23 24", "14 23 34", "14 23 24 34"};
  const std::vector<std::string> empty = {"12",       "12 23",    "12 24",    "12 23 24",
                                          "12 34",    "12 23 34", "12 24 34", "12 23 24 34"};
  int seenHand = 0, seenDoubled = 0, seenEmpty = 0;
  for (unsigned bits = 0; bits < 64; ++bits) {
    const Pattern p = PatternOf(4, bits);
    const V got = Letters(4, p.flags);
    if (auto it = hand.find(p.text); it != hand.end()) {
      EXPECT_EQ(got, Rows(it->second)) << p.text;
      ++seenHand;
    } else if (std::find(doubled.begin(), doubled.end(), p.text) != doubled.end()) {
      V expected = ByMaximalGroups(4, p.flags);
      expected.insert(expected.begin(), "1a");
      EXPECT_EQ(got, expected) << p.text;
      ++seenDoubled;
    } else if (std::find(empty.begin(), empty.end(), p.text) != empty.end()) {
      EXPECT_TRUE(got.empty()) << p.text;
      ++seenEmpty;
    } else {
      EXPECT_EQ(got, ByMaximalGroups(4, p.flags)) << p.text;
    }
  }
  EXPECT_EQ(seenHand, 13);
  EXPECT_EQ(seenDoubled, 4);
  EXPECT_EQ(seenEmpty, 8);
  // Two monotone patterns spelt out.
  EXPECT_EQ(Letters(4, "14"), (V{"1a", "2ab", "3ab", "4b"}));
  EXPECT_EQ(Letters(4, "13 14 24"), (V{"1a", "2ab", "3bc", "4c"}));
}

// All 1024 patterns: the rule of maximal groups but for four monotone patterns printed as the
// program always has.
TEST(LetterTable, EveryPatternOfFiveTreatments) {
  const std::map<std::string, V> exceptions = {
      {"14 15 25", {"a", "ab", "ac", "bc", "c"}},
      {"14 15 24 25 34 35", {"a", "a", "a", "bc", "c"}},
      {"13 14 15 24 25 34 35", {"a", "ab", "b", "c", "d"}},
      {"12 13 14 15 25 35 45", {"a", "bc", "b", "c", "d"}},
  };
  int seen = 0;
  for (unsigned bits = 0; bits < 1024; ++bits) {
    const Pattern p = PatternOf(5, bits);
    if (auto it = exceptions.find(p.text); it != exceptions.end()) {
      EXPECT_EQ(Letters(5, p.flags), Rows(it->second)) << p.text;
      EXPECT_NE(Letters(5, p.flags), ByMaximalGroups(5, p.flags)) << p.text;
      ++seen;
    } else {
      ASSERT_EQ(Letters(5, p.flags), ByMaximalGroups(5, p.flags)) << p.text;
    }
  }
  EXPECT_EQ(seen, 4);
  EXPECT_EQ(Letters(5, "24"), (V{"1ab", "2a", "3ab", "4b", "5ab"}));
}

}  // namespace
}  // namespace korvan
