#pragma once

namespace lineweir {

struct ConsoleState;

// The menu "Time Clocks", but for its time synchronisation, and what the digital clock hides and
// shows.
class ClockMenu {
 public:
  explicit ClockMenu(ConsoleState& state);

  // The dials in place of the digital clock, with the menu items that choose among them: what there
  // is room for beside more than ten rows. The check of `DigiClock` goes off with it.
  void show_dials();

 private:
  void DigiClockCheck_Timer();
  void Clock_Click();
  void TimeOffsetMenu_Click();
  void DigiClock_Click();
  void WarningTime1Menu_Click();
  void WarningTime2Menu_Click();

  void show_digits();
  void show_chosen_dials();

  ConsoleState& state_;
};

}  // namespace lineweir
