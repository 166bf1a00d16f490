#pragma once

#include <string_view>

#include "clocks/plan_builder.h"
#include "support/scripted_console.h"

namespace lineweir::test {

// A started console whose clock stands where a test puts it. Its timers don't run unless the test
// lets time pass; a test ticks by hand.
class ClockConsole : public ScriptedConsole {
 public:
  explicit ClockConsole(std::string_view command_line = {}) : ScriptedConsole(command_line) {}

  void put_clock(std::string_view time) {
    platform::DateTime moment{2026, 1, 5, 0, 0, 0};
    const int seconds = required_time_of_day(time);
    moment.hour = seconds / 3600;
    moment.minute = seconds / 60 % 60;
    moment.second = seconds % 60;
    platform.clock.put(moment);
  }

  void tick_at(std::string_view time) {
    put_clock(time);
    console.Lineweir.Timer1.on_timer();
  }

  MainForm& form = console.Lineweir;
  ShowPlan& plan = console.show_plan.plan;
  ClockState& state = console.clock_state;
};

}  // namespace lineweir::test
