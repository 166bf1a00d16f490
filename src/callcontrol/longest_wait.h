#pragma once

#include <span>
#include <string_view>

namespace lineweir {

// What the choice of a caller looks at: the line's letter, and its wait as the row shows it, a time
// of day. A text that is no time is a wait of 0.
struct LineWait {
  char letter;
  std::string_view shown_time;
};

// The line among those of this letter that has waited longest: no_line where none has waited at
// all; of equal waits the lowest line. Lines count from 0 in the order given.
int longest_wait(std::span<const LineWait> lines, char letter);

}  // namespace lineweir
