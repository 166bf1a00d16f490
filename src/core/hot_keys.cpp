#include "core/hot_keys.h"

#include <array>
#include <string_view>

#include "callcontrol/line_actions.h"
#include "callcontrol/next_caller.h"
#include "callerdata/caller_data.h"
#include "messages/quick_line.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {
enum class KeyAction {
  MessageDialog,
  TraceWindow,
  ResetSize,
  QuickLine,
  Login,
  MainButtonOfRow,
  ConferenceButtonOfRow,
  CallerDataOfRow,
  Dial,
  Drop1,
  Hold1,
  Drop2,
  Hold2,
  Next,
  NextToConference,
  Setup,
};

struct KeyRule {
  int code;
  unsigned shift;
  unsigned conditions;
  KeyAction action;
  // The row of the first of the ten digit keys; digit 0 is the last of them.
  int first_row = 0;
};

namespace {

constexpr std::string_view not_available = "That command or line is not available at this time!";

// What must hold for a key besides its shift.
enum KeyCondition : unsigned {
  always = 0,
  quick_line_hidden = 1,
  quick_line_allowed = 2,
  trace_on = 4,
  talent = 8,
  producer = 16,
  not_passive = 32,
};

// Sets of shift values.
constexpr unsigned shifts(int value) { return 1U << static_cast<unsigned>(value); }
constexpr unsigned any_shift = ~0U;
constexpr unsigned plain = shifts(0);
constexpr unsigned shift_key = shifts(1);
constexpr unsigned control_key = shifts(2);
constexpr unsigned control_and_shift = shifts(3);
constexpr unsigned alt_key = shifts(4);
constexpr unsigned alt_and_shift = shifts(5);

// Stands for the digit keys in a rule.
constexpr int digit_keys = -1;
constexpr int function_key(int number) { return 111 + number; }

constexpr unsigned line_key = quick_line_hidden;
constexpr unsigned action_key = quick_line_hidden | not_passive;

// Walked from the top; the first rule that fits runs.
constexpr std::array key_rules = {
    KeyRule{function_key(2), any_shift, always, KeyAction::MessageDialog},
    KeyRule{function_key(3), any_shift, trace_on, KeyAction::TraceWindow},
    KeyRule{function_key(5), any_shift, always, KeyAction::ResetSize},
    KeyRule{function_key(6), any_shift, quick_line_allowed | quick_line_hidden,
            KeyAction::QuickLine},
    KeyRule{function_key(7), any_shift, always, KeyAction::Login},
    KeyRule{digit_keys, plain, line_key, KeyAction::MainButtonOfRow, 0},
    KeyRule{digit_keys, shift_key, line_key, KeyAction::MainButtonOfRow, 10},
    KeyRule{'I', plain | shift_key, action_key, KeyAction::Dial},
    KeyRule{'D', plain | shift_key, action_key, KeyAction::Drop1},
    KeyRule{'H', plain | shift_key, action_key, KeyAction::Hold1},
    KeyRule{'R', plain | shift_key, action_key, KeyAction::Drop2},
    KeyRule{'L', plain | shift_key, action_key | talent, KeyAction::Hold2},
    KeyRule{'N', plain | shift_key, action_key | talent, KeyAction::Next},
    KeyRule{'X', plain | shift_key, action_key | talent, KeyAction::NextToConference},
    KeyRule{'E', plain | shift_key, action_key | producer, KeyAction::Next},
    KeyRule{'A', plain | shift_key, action_key | producer, KeyAction::NextToConference},
    KeyRule{'S', plain | shift_key, quick_line_hidden, KeyAction::Setup},
    KeyRule{digit_keys, control_key, always, KeyAction::ConferenceButtonOfRow, 0},
    KeyRule{digit_keys, control_and_shift, always, KeyAction::ConferenceButtonOfRow, 10},
    KeyRule{digit_keys, alt_key, always, KeyAction::CallerDataOfRow, 0},
    KeyRule{digit_keys, alt_and_shift, always, KeyAction::CallerDataOfRow, 10},
};

bool is_digit_key(int code) { return code >= '0' && code <= '9'; }

bool fits(const KeyRule& rule, int code, int shift) {
  if (shift < 0 || shift > 31 || (rule.shift & shifts(shift)) == 0) return false;
  return rule.code == digit_keys ? is_digit_key(code) : rule.code == code;
}

int row_of(const KeyRule& rule, int code) {
  return rule.first_row + (code == '0' ? 9 : code - '1');
}

bool hold(unsigned conditions, const ConsoleState& state) {
  const MainForm& form = state.Lineweir;
  const auto demands = [&](KeyCondition condition) { return (conditions & condition) != 0; };
  return !(demands(quick_line_hidden) && form.Text2.visible) &&
         !(demands(quick_line_allowed) && !state.program.MessagesAllowed) &&
         !(demands(trace_on) && !state.program.DebugMode) &&
         !(demands(talent) && !form.StudioMode.checked) &&
         !(demands(producer) && !form.ScreenerMode.checked);
}

bool locked(unsigned conditions, const ConsoleState& state) {
  return (conditions & not_passive) != 0 && state.Lineweir.PassiveMode.checked;
}

// A button acts only while it is visible and the user has a right to it. Whether it finds work is
// asked before it is pressed, since pressing it may change that.
bool press(Picture& button, bool finds_work = true) {
  if (!button.shown() || button.withheld || !button.on_click) return false;
  button.on_click();
  return finds_work;
}

}  // namespace

HotKeys::HotKeys(ConsoleState& state, CallerDataEntry& caller_data, NextCaller& next_caller,
                 LineActions& line_actions, QuickLine& quick_line)
    : state_(state),
      caller_data_(caller_data),
      next_caller_(next_caller),
      line_actions_(line_actions),
      quick_line_(quick_line) {
  wire(state.Lineweir.on_key_down, state_.trace, "Lineweir_Form_KeyDown",
       [this](int& key_code, int shift) { Form_KeyDown(key_code, shift); });
}

bool HotKeys::press_row_button(Picture& button) {
  if (!button.visible || !button.enabled || !button.on_click) return false;
  const bool finds_work = line_actions_.finds_work(button);
  button.on_click();
  return finds_work;
}

bool HotKeys::open_caller_data(int row) {
  if (!state_.Lineweir.OnHybrid1(row).visible) return false;
  caller_data_.show_for_line(row);
  return true;
}

bool HotKeys::run(const KeyRule& rule, int code) {
  MainForm& form = state_.Lineweir;
  switch (rule.action) {
    case KeyAction::MessageDialog:
      state_.Lineweir.Text1.on_dbl_click();
      return true;
    case KeyAction::TraceWindow:
      state_.DebugForm.show();
      return true;
    case KeyAction::ResetSize:
      state_.Lineweir.ResetLineweirSize.on_click();
      return true;
    case KeyAction::QuickLine:
      quick_line_.open();
      return true;
    case KeyAction::Login:
      if (!state_.program.HasUsers) return false;
      state_.LoginForm.ChangeUser = true;
      state_.LoginForm.show();
      return true;
    case KeyAction::MainButtonOfRow:
      return press_row_button(form.OnHybrid1(row_of(rule, code)));
    case KeyAction::ConferenceButtonOfRow:
      return press_row_button(form.OnHybrid2(row_of(rule, code)));
    case KeyAction::CallerDataOfRow:
      return open_caller_data(row_of(rule, code));
    case KeyAction::Dial:
      return press(form.Dial);
    case KeyAction::Drop1:
      return press(form.Drop1, line_actions_.finds_work(form.Drop1));
    case KeyAction::Hold1:
      return press(form.Hold1, line_actions_.finds_work(form.Hold1));
    case KeyAction::Drop2:
      return press(form.Drop2, line_actions_.finds_work(form.Drop2));
    case KeyAction::Hold2:
      return press(form.Hold2, line_actions_.finds_work(form.Hold2));
    case KeyAction::Next:
      return press(form.NextButton, next_caller_.NextButton_finds_work());
    case KeyAction::NextToConference:
      return press(form.NextToConfButton, next_caller_.NextToConf_finds_work());
    case KeyAction::Setup:
      return press(form.OptionsButton);
  }
  return false;
}

void HotKeys::Form_KeyDown(int& key_code, int shift) {
  attempt(
      [&] {
        for (const KeyRule& rule : key_rules) {
          if (!fits(rule, key_code, shift)) continue;
          if (!hold(rule.conditions, state_)) continue;
          const int code = key_code;
          key_code = 0;
          const bool acted = !locked(rule.conditions, state_) && run(rule, code);
          if (!acted) state_.messages.ShowMessage(not_available);
          return;
        }
      },
      [&](const Failure& failure) {
        report_failure(state_.trace, "Lineweir_Form_KeyDown", failure);
        state_.messages.ShowMessage(not_available);
      });
}

}  // namespace lineweir
