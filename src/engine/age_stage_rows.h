#pragma once
// Clearing the cells of the age-stage tables that a pass fills, row by row.
#include <array>
#include <cstddef>
#include <utility>

#include "store/limits.h"

namespace korvan {
namespace detail {

// Cells 0..K-1 of rows 0..ages-1 of each array set to +0 (the rows `stride` apart): a few
// stores a row, inline. One form for each K up to kMaxStage + 1.
template <int K>
void ClearRows(double* const* arrays, int count, long stride, long ages) {
  for (long x = 0; x < ages; ++x) {
    for (int a = 0; a < count; ++a) {
      double* row = arrays[a] + x * stride;
      for (int j = 0; j < K; ++j) row[j] = 0;
    }
  }
}
using RowClearer = void (*)(double* const*, int, long, long);
template <int... K>
constexpr std::array<RowClearer, sizeof...(K)> RowClearers(std::integer_sequence<int, K...>) {
  return {&ClearRows<K>...};
}
inline constexpr auto kRowClearers =
    RowClearers(std::make_integer_sequence<int, static_cast<int>(kMaxStage) + 2>{});

}  // namespace detail

// Cells 0..cells-1 (cells <= kMaxStage + 1) of rows 0..ages-1 of `count` arrays, each given by
// its first cell of row 0, the rows `stride` apart.
inline void ClearAgeStageRows(double* const* arrays, int count, long stride, int cells, long ages) {
  detail::kRowClearers[static_cast<std::size_t>(cells)](arrays, count, stride, ages);
}

}  // namespace korvan
