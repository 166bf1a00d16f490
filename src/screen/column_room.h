#pragma once

#include <cstddef>
#include <span>

namespace lineweir {

// Between a strip's left edge and its first column.
inline constexpr int first_column_gap = 60;

// How many of the columns, which stand one after the other, have room for the whole of their width.
constexpr std::size_t columns_with_room(std::span<const int> widths, int room) {
  long long right = 0;
  std::size_t fitting = 0;
  for (const int width : widths) {
    right += width;
    if (right > room) break;
    ++fitting;
  }
  return fitting;
}

}  // namespace lineweir
