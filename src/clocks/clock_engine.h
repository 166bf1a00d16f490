#pragma once

#include <string>

namespace lineweir {

struct Console;

// The tick that drives every clock of the main form.
class ClockEngine {
 public:
  explicit ClockEngine(Console& console);

  void Timer1_Timer();

 private:
  void show_time_of_day();
  void show_row_clocks();

  Console& console_;
};

}  // namespace lineweir
