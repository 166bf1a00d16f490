#pragma once

#include <functional>
#include <string>

#include "exchange/simulated_exchange.h"

namespace lineweir::endurance {

inline constexpr int week_lines = 10;

// An exchange to which nobody calls by himself, as a server that isn't ours has one.
class WeekExchange {
 public:
  explicit WeekExchange(platform::EventLoop& loop)
      : lines_(loop, {.line_count = week_lines, .callers = {}, .seed = 1}) {
    lines_.quieten();
    lines_.on_change = [this](exchange::LineChange change, const std::string& /*number*/) {
      if (on_change) on_change(change);
    };
  }

  exchange::SimulatedExchange& lines() { return lines_; }
  char letter(int line) const { return lines_.letter(line); }
  // "F00R01" and so on.
  std::string status_text() const {
    std::string text;
    for (int line = 0; line < week_lines; ++line) {
      text += exchange::status_item(line, lines_.letter(line));
    }
    return text;
  }

  std::function<void(exchange::LineChange change)> on_change;

 private:
  exchange::SimulatedExchange lines_;
};

}  // namespace lineweir::endurance
