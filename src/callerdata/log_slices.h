#pragma once

#include <cstddef>

namespace lineweir {

// How much of a long log is read, or sorted, between two looks at what the user does meanwhile.
inline constexpr int log_rows_a_slice = 4000;
inline constexpr std::size_t log_rows_sorted_a_slice = 30000;

}  // namespace lineweir
