#include "clocks/clock_engine.h"

#include "core/console.h"
#include "core/guard.h"
#include "core/text.h"
#include "core/time_text.h"

namespace lineweir {

ClockEngine::ClockEngine(Console& console) : console_(console) {
  console.Lineweir.Timer1.on_timer = [this] { Timer1_Timer(); };
}

void ClockEngine::Timer1_Timer() {
  guard(console_, "Lineweir_Timer1_Timer", [&] {
    show_time_of_day();
    show_row_clocks();
  });
}

void ClockEngine::show_time_of_day() {
  const std::string now = clock_text(seconds_of_day(console_.services.clock.now()));
  const auto without_half_day = left_part(now, now.size() - 3);
  console_.Lineweir.RealTime.caption = without_half_day;
  console_.Lineweir.RealTime2.text = without_half_day;
}

void ClockEngine::show_row_clocks() {
  const LineTable& lines = console_.lines;
  const int now = seconds_of_day(console_.services.clock.now());
  // A running line without a base shows what the line before it showed in this pass.
  std::string shown;
  for (int line = 0; line < lines.LineCount; ++line) {
    if (lines.ClockRunning(line) != 1) continue;
    if (!trimmed(lines.ClockBase(line)).empty()) {
      shown = short_hms_text(now - required_time_of_day(lines.ClockBase(line)));
    }
    console_.Lineweir.LineTime(line).caption = shown;
  }
}

}  // namespace lineweir
