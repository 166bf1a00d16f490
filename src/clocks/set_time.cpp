#include "clocks/set_time.h"

#include <string>
#include <utility>

#include "base/text.h"
#include "base/time_text.h"
#include "clocks/time_entry.h"
#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {

SetTime::SetTime(ConsoleState& state) : state_(state) {
  SetTimeForm& form = state.Form3;
  form.on_load = [this] {
    guard(state_.trace, "Form3_Form_Load", [&] {
      state_.Form3.Text1.text = "";
      state_.Form3.AM.value = true;
      state_.Form3.PM.value = false;
    });
  };
  form.Command3D1.on_click = [this] { Command3D1_Click(); };
  form.Command3D1.on_key_press = [this](int& key) { run_on_enter(key); };
  form.AM.on_key_press = [this](int& key) { run_on_enter(key); };
  form.Cancel5.on_click = [this] {
    guard(state_.trace, "Form3_Cancel5_Click", [&] { state_.Form3.unload(); });
  };
  form.Text1.on_key_press = [this](int& key) {
    guard(state_.trace, "Form3_Text1_KeyPress", [&] { Text1_KeyPress(key); });
  };
}

void SetTime::Command3D1_Click() {
  guard(state_.trace, "Form3_Command3D1_Click", [&] {
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
              state_.messages.ShowMessage(description_of(state_.services.letters, failure));
            });
    form.unload();
  });
}

void SetTime::run_on_enter(int& key) {
  if (key != enter_key) return;
  key = 0;
  Command3D1_Click();
}

void SetTime::Text1_KeyPress(int& key) {
  if (key == tab_key) return;
  SetTimeForm& form = state_.Form3;
  const int pressed = std::exchange(key, 0);
  if (pressed == enter_key) {
    if (form.Text1.text.get().size() == full_time_length) {
      Command3D1_Click();
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
