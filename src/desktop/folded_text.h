#pragma once

namespace lineweir {

// Set on a text field of several lines in which Enter breaks none, as it shows one line folded.
inline constexpr const char* folded_property = "folded";

}  // namespace lineweir
