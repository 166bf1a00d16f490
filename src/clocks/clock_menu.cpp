#include "clocks/clock_menu.h"

#include "base/number_reply.h"
#include "clocks/time_offset.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr const char* unit_of_answers = "seconds";
constexpr const char* offset_prompt = "Please enter a new delay offset in seconds (0 to 59).";
constexpr const char* warning1_prompt =
    "Please enter the new warning time in seconds to mark when the event clock turns red.";
constexpr const char* warning2_prompt =
    "Please enter the new warning time in seconds to mark when the event clock begins blinking.";

}  // namespace

ClockMenu::ClockMenu(ConsoleState& state) : state_(state) {
  MainForm& form = state.Lineweir;
  wire(form.Clock.on_click, state_.trace, "Lineweir_Clock_Click", [this] { Clock_Click(); });
  wire(form.TimeOffsetMenu.on_click, state_.trace, "Lineweir_TimeOffsetMenu_Click",
       [this] { TimeOffsetMenu_Click(); });
  wire(form.DigiClock.on_click, state_.trace, "Lineweir_DigiClock_Click",
       [this] { DigiClock_Click(); });
  wire(form.DigiClockCheck.on_timer, state_.trace, "Lineweir_DigiClockCheck_Timer",
       [this] { DigiClockCheck_Timer(); });
  wire(form.WarningTime1Menu.on_click, state_.trace, "Lineweir_WarningTime1Menu_Click",
       [this] { WarningTime1Menu_Click(); });
  wire(form.WarningTime2Menu.on_click, state_.trace, "Lineweir_WarningTime2Menu_Click",
       [this] { WarningTime2Menu_Click(); });
}

void ClockMenu::Clock_Click() {
  state_.Form3.show();
  state_.Form3.Text1.set_focus();
}

void ClockMenu::TimeOffsetMenu_Click() {
  const auto reply = state_.services.dialogs.ask_input(
      {offset_prompt, std::to_string(state_.clock_state.DelayOffset), unit_of_answers});
  if (!reply || reply->empty()) return;
  const double number = whole_number_in(*reply);
  if (number > largest_time_offset) {
    state_.messages.ShowMessage("Invalid Entry");
    return;
  }
  // A negative number is taken, although no time can be made of it.
  state_.clock_state.DelayOffset = whole_16_bits(number);
}

void ClockMenu::DigiClock_Click() {
  if (state_.Lineweir.DigiClock.checked) {
    show_dials();
  } else {
    show_digits();
  }
  if (state_.program.VisibleLines > lines_of_small_layout) {
    state_.Lineweir.DigiClockCheck.enabled = true;
  }
}

void ClockMenu::DigiClockCheck_Timer() {
  MainForm& form = state_.Lineweir;
  form.DigiClockCheck.enabled = false;
  if (state_.program.VisibleLines <= lines_of_small_layout || !form.DigiClock.checked) return;
  form.DigiClock.on_click();
  show_chosen_dials();
}

void ClockMenu::WarningTime1Menu_Click() {
  ClockState& state = state_.clock_state;
  const auto number = number_reply(state_.services.dialogs.ask_input(
      {warning1_prompt, std::to_string(state.Warning1), unit_of_answers}));
  if (number) state.Warning1 = whole_16_bits(*number);
}

void ClockMenu::WarningTime2Menu_Click() {
  ClockState& state = state_.clock_state;
  const auto number = number_reply(state_.services.dialogs.ask_input(
      {warning2_prompt, std::to_string(state.Warning2), unit_of_answers}));
  if (!number) return;
  if (*number > state.Warning1) {
    state_.messages.ShowMessage("Warning2 must be less than Warning1.  Time has not been changed!");
    return;
  }
  state.Warning2 = whole_16_bits(*number);
}

void ClockMenu::show_dials() {
  MainForm& form = state_.Lineweir;
  form.DigiClock.checked = false;
  show_chosen_dials();
  for (TextBox* digits : {&form.CountDownTime2, &form.StatusText2, &form.RealTime2}) {
    digits->visible = false;
  }
  form.EventClockMenu.enabled = true;
  form.TimeClockMenuItem.enabled = true;
}

void ClockMenu::show_digits() {
  MainForm& form = state_.Lineweir;
  form.DigiClock.checked = true;
  form.picShowTimeClock.visible = false;
  form.picRealTimeClock.visible = false;
  for (TextBox* digits : {&form.CountDownTime2, &form.StatusText2, &form.RealTime2}) {
    digits->visible = true;
    digits->bring_to_front();
  }
  form.EventClockMenu.enabled = false;
  form.TimeClockMenuItem.enabled = false;
}

void ClockMenu::show_chosen_dials() {
  MainForm& form = state_.Lineweir;
  form.picShowTimeClock.visible = form.EventClockMenu.checked.get();
  form.picRealTimeClock.visible = form.TimeClockMenuItem.checked.get();
}

}  // namespace lineweir
