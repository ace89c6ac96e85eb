#pragma once
// The n x n table of treatments that the multiple comparison and the Tukey-Kramer table print:
// the titles along the top and down the side, a cell for every pair, a diagonal mark.
#include <functional>
#include <string>

#include "store/comparison.h"
#include "text/text_file.h"

namespace korvan {

// The line under a table of pairs that explains its stars.
inline constexpr const char* kSignificantNote =
    " *: Significant at 5% significance level. A P<=0.05 denotes significant difference.";

// A cell: beyond +-10000 a whole number, otherwise four decimals; "*" right after it.
std::string TableCell(double v, bool star);

// The table framed by the rules of the comparison (c.RuleTable, c.RuleTableThin): column c at
// tab (c - 1) * 11 + 17; cell(row, col) for every place off the diagonal. With `originals` the
// treatments' original values stand in a last column headed " Original".
void PrintTreatmentTable(TextFile& f, const ComparisonRecord& c, const char* diagonal,
                         const std::function<std::string(int row, int col)>& cell, bool originals = false);

}  // namespace korvan
