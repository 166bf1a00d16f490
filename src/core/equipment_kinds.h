#pragma once

namespace lineweir {

// Sets of kinds of telephone equipment, as the rule tables name them. A kind that nobody knows
// belongs to those sets that leave kinds out.
constexpr unsigned kind(int number) {
  return number >= 1 && number <= 4 ? 1U << static_cast<unsigned>(number) : 1U;
}

inline constexpr unsigned any_kind = ~0U;
constexpr unsigned all_but_kind(int number) { return ~kind(number); }

}  // namespace lineweir
