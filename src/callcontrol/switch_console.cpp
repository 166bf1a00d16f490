#include "callcontrol/switch_console.h"

#include <string>

#include "base/text.h"
#include "callcontrol/dial_words.h"
#include "callcontrol/switch_console_lamps.h"
#include "forms/picture_names.h"
#include "screen/row_display.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

bool pressable(const Control& control) { return control.shown() && control.enabled; }

void press_button(const Control& button) {
  if (pressable(button)) button.on_click();
}

void press_row_button(const ControlArray<Picture>& buttons, int line) {
  if (buttons.loaded(line)) press_button(buttons(line));
}

// A conference button is hidden under the large main button, where that shows.
void press_beside(const Picture& main_button, const Picture& button) {
  if (main_button.picture != pictures::DropLargeUp) press_button(button);
}

}  // namespace

SwitchConsole::SwitchConsole(ConsoleState& state, RowDisplay& rows) : state_(state), rows_(rows) {
  wire(state.services.comm2.on_comm, state_.trace, "Lineweir_Comm2_OnComm",
       [this](int comm_event) { Comm2_OnComm(comm_event); });
  wire(state.Lineweir.SwitchConsoleTimer.on_timer, state_.trace,
       "Lineweir_SwitchConsoleTimer_Timer", [this] { SwitchConsoleTimer_Timer(); });
}

void SwitchConsole::Comm2_OnComm(int comm_event) {
  if (comm_event != platform::comm_event_receive) return;
  const std::string received = state_.services.comm2.input();
  if (received.empty()) return;
  press(switch_console_key(code_of(received.front()), state_.lines.twenty_lines()));
}

void SwitchConsole::press(const SwitchConsoleKey& key) {
  const MainForm& form = state_.Lineweir;
  switch (key.action) {
    case SwitchConsoleAction::Nothing:
      return;
    case SwitchConsoleAction::MainButtonOfRow:
      return press_row_button(form.OnHybrid1, key.target);
    case SwitchConsoleAction::ConferenceButtonOfRow:
      return press_row_button(form.OnHybrid2, key.target);
    case SwitchConsoleAction::Drop1:
      return press_button(form.Drop1);
    case SwitchConsoleAction::Hold1:
      return press_button(form.Hold1);
    case SwitchConsoleAction::Drop2:
      return press_beside(form.Drop1, form.Drop2);
    case SwitchConsoleAction::Hold2:
      return press_beside(form.Hold1, form.Hold2);
    case SwitchConsoleAction::Next:
      return press_next();
    case SwitchConsoleAction::DialKey:
      return press_dial_key(key.target);
  }
}

void SwitchConsole::press_next() {
  const MainForm& form = state_.Lineweir;
  const bool main = form.StudioMode.checked && pressable(form.NextButton);
  press_button(main ? form.NextButton : form.NextToConfButton);
}

// The key is pressed once for each line that this seat talks on.
void SwitchConsole::press_dial_key(int key) {
  DialPadForm& dial = state_.DialForm;
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    const bool talent = state_.Lineweir.StudioMode.checked;
    if (!talks_on(state_.lines.StatusLetter(line), talent)) continue;
    if (!dial.visible) press_button(state_.Lineweir.Dial);
    if (dial.visible) press_button(dial.DialButton(key));
  }
}

void SwitchConsole::SwitchConsoleTimer_Timer() {
  platform::SerialPort& port = state_.services.comm2;
  if (!port.is_open()) return;
  const MainForm& form = state_.Lineweir;
  const bool twenty_lines = state_.lines.twenty_lines();
  std::string message;
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    const bool visible = form.OnHybrid1(line).visible;
    // A hidden line has the lamps of the line before sent again.
    const auto own = lamp_message(line, twenty_lines, visible, rows_.GetCadence(line));
    if (own) message = *own;
    if (!message.empty()) port.output(message);
  }
}

}  // namespace lineweir
