#include "callcontrol/next_key.h"

#include "callcontrol/phone_command.h"
#include "link/command_word.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr std::string_view on_word = "X";
constexpr std::string_view off_word = "R";

}  // namespace

NextKey::NextKey(ConsoleState& state, PhoneCommands& phone) : state_(state), phone_(phone) {
  wire(state.Lineweir.RemoteNext.on_click, state_.trace, "Lineweir_RemoteNext_Click",
       [this] { RemoteNext_Click(); });
  wire(state.Lineweir.RemoteNextTimer.on_timer, state_.trace, "Lineweir_RemoteNextTimer_Timer",
       [this] { RemoteNextTimer_Timer(); });
}

void NextKey::RemoteNext_Click() {
  MainForm& form = state_.Lineweir;
  const bool on = !form.RemoteNext.checked;
  form.RemoteNext.checked = on;
  phone_.PhoneCommand(on ? on_word : off_word, bank_none);
  form.RemoteNextTimer.enabled = on;
}

void NextKey::RemoteNextTimer_Timer() { phone_.PhoneCommand(on_word, bank_none); }

}  // namespace lineweir
