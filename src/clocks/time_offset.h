#pragma once

namespace lineweir {

// Seconds that can be added to the time of day for the clocks, from 0 on.
inline constexpr int largest_time_offset = 59;

}  // namespace lineweir
