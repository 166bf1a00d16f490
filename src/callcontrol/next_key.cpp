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
  const bool is_known = menus_of(state_.lines.ThePhoneFlag) != nullptr;
  if (is_known && next_key_may_be_used(state_)) state_.Lineweir.RemoteNext.enabled = true;
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

void NextKey::RemoteNextTimer_Timer() {
  // Nobody has pressed a key: what is offered to the user stays.
  if (!state_.messages.offers_reconnection()) phone_.PhoneCommand(next_key_word, bank_none);
}

bool next_key_may_be_used(const ConsoleState& state) {
  const EquipmentMenus* menus = menus_of(state.lines.ThePhoneFlag);
  return state.program.RemoteNextAllowed && (menus == nullptr || menus->remote_next);
}

}  // namespace lineweir
