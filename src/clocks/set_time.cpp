#include "clocks/set_time.h"

#include <string>
#include <utility>

#include "base/text.h"
#include "base/time_text.h"
#include "clocks/time_entry.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {

SetTime::SetTime(ConsoleState& state) : state_(state) {
  SetTimeForm& form = state.Form3;
  wire(form.on_load, state_.trace, "Form3_Form_Load", [this] {
    state_.Form3.Text1.text = "";
    state_.Form3.AM.value = true;
    state_.Form3.PM.value = false;
  });
  wire(form.Command3D1.on_click, state_.trace, "Form3_Command3D1_Click",
       [this] { Command3D1_Click(); });
  wire(form.Command3D1.on_key_press, state_.trace, "Form3_Command3D1_KeyPress",
       [this](int& key) { run_on_enter(key); });
  wire(form.AM.on_key_press, state_.trace, "Form3_AM_KeyPress",
       [this](int& key) { run_on_enter(key); });
  wire(form.Cancel5.on_click, state_.trace, "Form3_Cancel5_Click",
       [this] { state_.Form3.unload(); });
  wire(form.Text1.on_key_press, state_.trace, "Form3_Text1_KeyPress",
       [this](int& key) { Text1_KeyPress(key); });
}

void SetTime::Command3D1_Click() {
  SetTimeForm& form = state_.Form3;
  const std::string entered =
      std::string(trimmed(form.Text1.text)) + (form.PM.value ? " PM" : " AM");
  const int seconds = required_time_of_day(entered);
  platform::DateTime moment = state_.services.clock.now();
  moment.hour = seconds / 3600;
  moment.minute = seconds / 60 % 60;
  moment.second = seconds % 60;
  attempt([&] { state_.services.clock.set(moment); },
          [&](const Failure& failure) {
            // The user may lack the right: the description says what to do about it.
            report_failure(state_.trace, "Form3_Command3D1_Click", failure);
            state_.messages.tell(failure);
          });
  form.unload();
}

void SetTime::run_on_enter(int& key) {
  if (key != enter_key) return;
  key = 0;
  state_.Form3.Command3D1.on_click();
}

void SetTime::Text1_KeyPress(int& key) {
  if (key == tab_key) return;
  SetTimeForm& form = state_.Form3;
  const int pressed = std::exchange(key, 0);
  if (pressed == enter_key) {
    if (form.Text1.text.get().size() == full_time_length) {
      form.Command3D1.on_click();
    } else {
      form.unload();
    }
    return;
  }
  if (const auto typed = typed_time(clock_time_entry, form.Text1.text, pressed)) {
    form.Text1.text = *typed;
    form.Text1.caret_to_end();
  }
}

}  // namespace lineweir
