#pragma once

namespace lineweir {

// The characters of keys that a key press tells, besides those that are entered.
inline constexpr int tab_key = 9;
inline constexpr int enter_key = 13;
inline constexpr int escape_key = 27;

}  // namespace lineweir
