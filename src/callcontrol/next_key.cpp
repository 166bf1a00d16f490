#include "callcontrol/next_key.h"

#include "callcontrol/phone_command.h"
#include "lines/equipment_kinds.h"
#include "link/command_word.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

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
  phone_.PhoneCommand(on ? next_key_word : off_word, bank_none);
  form.RemoteNextTimer.enabled = on;
}

void NextKey::give() {
  const EquipmentMenus* menus = menus_of(state_.lines.ThePhoneFlag);
  if (menus != nullptr && menus->remote_next && state_.program.RemoteNextAllowed) {
    state_.Lineweir.RemoteNext.enabled = true;
  }
}

void NextKey::take_away() {
  if (state_.Lineweir.RemoteNext.checked) {
    silence();
    phone_.PhoneCommand(off_word, bank_none);
  }
  state_.Lineweir.RemoteNext.enabled = false;
}

void NextKey::silence() {
  state_.Lineweir.RemoteNext.checked = false;
  state_.Lineweir.RemoteNextTimer.enabled = false;
}

void NextKey::RemoteNextTimer_Timer() { phone_.PhoneCommand(next_key_word, bank_none); }

}  // namespace lineweir
