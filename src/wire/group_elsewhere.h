#pragma once

#include <cstdint>

namespace lineweir {

// The Bank of SrvGroupElsewhere. A server that means something else by that code leads nobody away.
inline constexpr std::uint8_t group_elsewhere_mark = 'E';

}  // namespace lineweir
