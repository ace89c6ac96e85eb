#include "comparison/letter_table.h"

#include <algorithm>
#include <map>
#include <sstream>

namespace korvan {

namespace {

// The significant pairs as "12 13 25", the key of the hand-made rows.
std::string PatternKey(int n, const PairFlags& sig) {
  std::string key;
  for (int i = 1; i < n; ++i)
    for (int j = i + 1; j <= n; ++j)
      if (sig(i, j)) {
        if (!key.empty()) key += ' ';
        key += static_cast<char>('0' + i);
        key += static_cast<char>('0' + j);
      }
  return key;
}

std::vector<LetterRow> Rows(const std::vector<std::string>& letters) {
  std::vector<LetterRow> rows;
  for (std::size_t t = 0; t < letters.size(); ++t) rows.emplace_back(static_cast<int>(t) + 1, letters[t]);
  return rows;
}

// Rows of four treatments that the rule of maximal groups does not give.
const std::map<std::string, std::vector<std::string>>& HandRowsFour() {
  static const std::map<std::string, std::vector<std::string>> rows = {
      {"12 13", {"a", "bd", "bc", "ac"}},       {"13 23", {"ac", "ac", "b", "bc"}},
      {"13 24", {"ac", "ab", "bd", "cd"}},      {"23 24", {"abc", "a", "bc", "c"}},
      {"13 23 24", {"ac", "a", "b", "bc"}},     {"12 13 34", {"a", "bc", "c", "ab"}},
      {"23 34", {"abc", "ac", "b", "c"}},       {"12 14 23 34", {"a", "bc", "a", "c"}},
      {"13 24 34", {"ac", "ab", "b", "c"}},     {"12 13 24 34", {"a", "bc", "c", "a"}},
      {"13 23 24 34", {"ac", "a", "b", "c"}},   {"13 14 23", {"a", "ac", "b", "bc"}},
      {"13 14 23 34", {"a", "ac", "b", "c"}},
  };
  return rows;
}

// Rows of five treatments kept as printed where they differ from the rule.
const std::map<std::string, std::vector<std::string>>& HandRowsFive() {
  static const std::map<std::string, std::vector<std::string>> rows = {
      {"14 15 25", {"a", "ab", "ac", "bc", "c"}},
      {"14 15 24 25 34 35", {"a", "a", "a", "bc", "c"}},
      {"13 14 15 24 25 34 35", {"a", "ab", "b", "c", "d"}},
      {"12 13 14 15 25 35 45", {"a", "bc", "b", "c", "d"}},
  };
  return rows;
}

}  // namespace

PairFlags PairFlags::FromText(const std::string& pairs) {
  PairFlags f;
  std::istringstream in(pairs);
  std::string p;
  while (in >> p)
    if (p.size() == 2) f.Set(p[0] - '0', p[1] - '0');
  return f;
}

std::vector<LetterRow> MaximalGroupRows(int n, const PairFlags& sig) {
  // Every subset of the treatments is tried (n <= 11): a group holds no significant pair, and
  // it is maximal when no further treatment can join it.
  std::vector<std::vector<int>> groups;
  const unsigned full = 1u << n;
  for (unsigned m = 1; m < full; ++m) {
    bool clique = true;
    for (int i = 0; i < n && clique; ++i)
      for (int j = i + 1; j < n && clique; ++j)
        if ((m >> i & 1u) && (m >> j & 1u) && sig(i + 1, j + 1)) clique = false;
    if (!clique) continue;
    bool maximal = true;
    for (int t = 0; t < n && maximal; ++t) {
      if (m >> t & 1u) continue;
      bool joins = true;
      for (int i = 0; i < n && joins; ++i)
        if ((m >> i & 1u) && sig(i + 1, t + 1)) joins = false;
      if (joins) maximal = false;
    }
    if (!maximal) continue;
    std::vector<int> members;
    for (int i = 0; i < n; ++i)
      if (m >> i & 1u) members.push_back(i + 1);
    groups.push_back(members);
  }
  std::sort(groups.begin(), groups.end());
  std::vector<std::string> letters(static_cast<std::size_t>(n));
  for (std::size_t g = 0; g < groups.size(); ++g)
    for (int t : groups[g]) letters[static_cast<std::size_t>(t - 1)] += static_cast<char>('a' + g);
  return Rows(letters);
}

std::vector<LetterRow> LetterRows(int n, const PairFlags& sig) {
  if (n == 2) return Rows({"a", sig(1, 2) ? "b" : "a"});
  const std::string key = PatternKey(n, sig);
  if (n == 4) {
    if (auto it = HandRowsFour().find(key); it != HandRowsFour().end()) return Rows(it->second);
    // Treatment 1 differs from 2 only: the rows are left to the user.
    if (sig(1, 2) && !sig(1, 3) && !sig(1, 4)) return {};
    std::vector<LetterRow> rows = MaximalGroupRows(n, sig);
    // With 1-4 and 2-3 different but 1 like 2 and 3, the first row is printed twice, first
    // with the single letter a.
    if (sig(1, 4) && sig(2, 3) && !sig(1, 2) && !sig(1, 3)) rows.insert(rows.begin(), LetterRow{1, "a"});
    return rows;
  }
  if (n == 5) {
    if (auto it = HandRowsFive().find(key); it != HandRowsFive().end()) return Rows(it->second);
  }
  return MaximalGroupRows(n, sig);
}

}  // namespace korvan
