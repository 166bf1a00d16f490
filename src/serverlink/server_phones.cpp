#include "serverlink/server_phones.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/integer16.h"
#include "base/text.h"
#include "callcontrol/modes.h"
#include "callerdata/known_callers.h"
#include "link/links.h"
#include "serverlink/reply_code.h"
#include "serverlink/server_alive.h"
#include "serverlink/server_link.h"
#include "state/console_state.h"
#include "state/window_caption.h"
#include "state/wire.h"

namespace lineweir {
namespace {

// The items that the menu has at design are hidden and never unloaded.
constexpr int phones_at_design = 2;

}  // namespace

ServerPhones::ServerPhones(ConsoleState& state, ServerLink& server, const Links& links,
                           Modes& modes, KnownCallers& known_callers)
    : state_(state), links_(links), modes_(modes), known_callers_(known_callers) {
  using enum ServerCommand;
  server.handle(SrvPhoneType, [this](const ServerPacket& packet) { this->SrvPhoneType(packet); });
  server.handle(SrvPhoneNames, [this](const ServerPacket& packet) { this->SrvPhoneNames(packet); });
  wire(state.Lineweir.GetPhones.on_timer, state.trace, "Lineweir_GetPhones_Timer",
       [this] { GetPhones_Timer(); });
}

void ServerPhones::SrvPhoneType(const ServerPacket& packet) {
  state_.lines.ThePhoneFlag = integer16(leading_number(packet.Buffer));
  packet.Bank == has_caller_memory ? known_callers_.begin() : known_callers_.forget();
  modes_.follow_equipment();
  state_.login.LastReplyCode = reply_phone_type;
  hear_running_server(state_);
}

void ServerPhones::GetPhones_Timer() {
  state_.Lineweir.GetPhones.enabled = false;
  links_.in_use().phone_names();
}

void ServerPhones::SrvPhoneNames(const ServerPacket& packet) {
  MainForm& form = state_.Lineweir;
  ControlArray<MenuItem>& phones = form.NextGenPhone;
  if (packet.Buffer.empty()) {
    form.NextGenPhoneMenu.visible = false;
    return check_chosen_phone();
  }
  const std::vector<std::string> names = decode_list(packet.Buffer);
  const int count = static_cast<int>(names.size());
  for (int phone = 0; phone < count; ++phone) {
    if (!phones.loaded(phone)) phones.load(phone);
    phones(phone).caption = names[static_cast<std::size_t>(phone)];
    phones(phone).visible = true;
  }
  if (phones.loaded(1)) phones(1).visible = count != 1;
  for (int phone = phones.upper_bound(); phone-- > std::max(count, phones_at_design);) {
    if (phones.loaded(phone)) phones.unload(phone);
  }
  check_chosen_phone();
}

void ServerPhones::check_chosen_phone() {
  ControlArray<MenuItem>& phones = state_.Lineweir.NextGenPhone;
  const int chosen = state_.program.ConsoleNumber;
  const int checked = phones.loaded(chosen) ? chosen : 0;
  for (int phone = 0; phone < phones.upper_bound(); ++phone) {
    if (phones.loaded(phone)) phones(phone).checked = phone == checked;
  }
  renew_window_caption(state_);
}

}  // namespace lineweir
