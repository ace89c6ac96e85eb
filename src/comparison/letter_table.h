#pragma once
// Marking of treatments by letters: two treatments that do not differ significantly share a
// letter. Treatments are numbered 1..n in descending order of their means.
#include <string>
#include <utility>
#include <vector>

namespace korvan {

// Significance of the pairs (i, j), 1 <= i < j <= 11; either order reads the same flag.
class PairFlags {
 public:
  void Set(int i, int j, bool on = true) { s_[Lo(i, j)][Hi(i, j)] = on; }
  bool operator()(int i, int j) const { return s_[Lo(i, j)][Hi(i, j)]; }
  // Flags given as pairs of digits, "12 13 25": the pairs (1,2), (1,3), (2,5).
  static PairFlags FromText(const std::string& pairs);

 private:
  static int Lo(int i, int j) { return i < j ? i : j; }
  static int Hi(int i, int j) { return i < j ? j : i; }
  bool s_[12][12] = {};
};

// One printed row of the letter table: the treatment and its letters.
using LetterRow = std::pair<int, std::string>;

// Letters by the rule of maximal groups: each maximal set of treatments whose pairs are all
// not significant gets a letter, a, b, c... in the lexicographic order of its members.
std::vector<LetterRow> MaximalGroupRows(int n, const PairFlags& sig);

// The rows of the letter table for 2 to 5 treatments. Four and five treatments follow the rule
// of maximal groups but for the hand-made rows of patterns kept as the program has always
// printed them; some four-treatment patterns print no rows, and four print treatment 1 twice.
std::vector<LetterRow> LetterRows(int n, const PairFlags& sig);

}  // namespace korvan
