#pragma once

#include <functional>
#include <string_view>

#include "clocks/hands.h"
#include "clocks/show_timing.h"

namespace lineweir {

class Line;
class LinkWatch;
class ShowPlanStore;
struct ConsoleState;

// The tick that drives every clock of the main form, and the warnings of the event clock.
class ClockEngine {
 public:
  // Takes the lengths of the hands from the form as it is designed.
  ClockEngine(ConsoleState& state, ShowPlanStore& show_plan, LinkWatch& link);

  // Runs at the end of each tick that went through.
  std::function<void()> after_tick;

  // Writes the event clock's texts, on the dial and in large type.
  void show_event(const ShownEvent& event);

 private:
  void Timer2_Timer();
  void Timer1_Timer();
  void CountDownTime_Change();

  void tick();
  void show_time_of_day(int time_with_offset);
  void turn_time_hands();
  TickGoesOn show_timing(int time_of_day, int offset, int& event_length);
  void turn_event_hand(int event_length);
  void rest_event_hand();
  void show_row_clocks(int time_of_day);

  void show_warning();
  void end_warning();

  ConsoleState& state_;
  ShowPlanStore& show_plan_;
  LinkWatch& link_;
};

}  // namespace lineweir
