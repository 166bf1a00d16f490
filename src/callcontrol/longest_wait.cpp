#include "callcontrol/longest_wait.h"

#include "base/time_text.h"
#include "lines/line_table.h"

namespace lineweir {

int longest_wait(std::span<const LineWait> lines, char letter) {
  int best_line = no_line;
  int best_wait = 0;
  for (std::size_t line = 0; line < lines.size(); ++line) {
    if (lines[line].letter != letter) continue;
    const int wait = time_of_day(lines[line].shown_time).value_or(0);
    if (wait <= best_wait) continue;
    best_wait = wait;
    best_line = static_cast<int>(line);
  }
  return best_line;
}

}  // namespace lineweir
