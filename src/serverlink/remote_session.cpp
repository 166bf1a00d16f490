#include "serverlink/remote_session.h"

#include "base/integer16.h"
#include "base/text.h"
#include "boxlink/serial_port_control.h"
#include "callcontrol/modes.h"
#include "link/link_watch.h"
#include "link/links.h"
#include "serverlink/held_objects.h"
#include "serverlink/line_events.h"
#include "serverlink/remote_objects_link.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/settings_record.h"
#include "state/window_caption.h"
#include "state/wire.h"

namespace lineweir {
namespace {

using platform::RemoteValue;

constexpr auto connect_handler = "Lineweir_NetworkConnectionOption_Click";
constexpr auto commands_class = "Quorlink.SerialInput";
constexpr auto registration_class = "Quorlink.CBServerClass";

constexpr std::size_t digits_of_a_line = 2;

std::string text(const RemoteValue& value) {
  const std::string* characters = std::get_if<std::string>(&value);
  return characters == nullptr ? std::string() : *characters;
}

int number(const RemoteValue& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return integer16(*whole);
  return leading_number(text(value));
}

}  // namespace

RemoteSession::RemoteSession(ConsoleState& state, const Links& links, HeldObjects& objects,
                             Modes& modes, LineEvents& line_events, SerialPortControl& port,
                             LinkWatch& link)
    : state_(state),
      links_(links),
      objects_(objects),
      modes_(modes),
      line_events_(line_events),
      port_(port),
      link_(link) {
  wire(state.Lineweir.NetworkConnectionOption.on_click, state_.trace, connect_handler,
       [this] { NetworkConnectionOption_Click(); });
}

void RemoteSession::NetworkConnectionOption_Click() {
  MainForm& form = state_.Lineweir;
  bool begun = false;
  attempt(
      [&] {
        form.mouse_pointer = pointer_hourglass;
        port_.close();
        form.uncheck_coms();
        links_.uncheck_ways();
        form.NetworkConnectionOption.checked = true;
        form.SyncTimeTimer.enabled = false;
        objects_.SerialInputObject = state_.services.remote_objects.create(commands_class);
        objects_.CallbackServer = state_.services.remote_objects.create(registration_class);
        check_present_group(state_);
        renew_window_caption(state_);
        objects_.connected = is_true(objects_.CallbackServer->call(
            "AddObjectReference", {callback_class, std::int64_t{state_.program.GroupNumber}}));
        if (!objects_.connected) return state_.messages.ShowMessage("Connect Failed");
        take_studio_state();
        begun = true;
      },
      [&](const Failure& failure) {
        report_failure(state_.trace, connect_handler, failure);
        state_.messages.ShowMessage(failure.number() == failure_number::no_such_class
                                        ? "Cannot find server"
                                        : "Connect Failed");
      });
  if (!begun) {
    form.NetworkConnectionOption.checked = false;
    objects_.connected = false;
    objects_.SerialInputObject.reset();
    objects_.CallbackServer.reset();
    port_.want_other_way(connection_remote_objects);
    port_.show_as_way();
  }
  form.mouse_pointer = pointer_default;
  link_.review();
}

void RemoteSession::take_studio_state() {
  MainForm& form = state_.Lineweir;
  platform::RemoteObject& server = objects_.serial_input();
  const std::vector<RemoteValue> group = {std::int64_t{state_.program.GroupNumber}};
  line_events_.TheStatusText = text(server.call("OutputSerialPort", group));
  state_.lines.ThePhoneFlag = number(server.call("GetDimType", group));
  modes_.follow_equipment();
  name_lines(text(server.call("GetLineNumbers", group)));
  state_.lines.FreshConnect = true;
  form.Timer4.enabled = true;
  form.Timer1.enabled = true;
}

void RemoteSession::name_lines(const std::string& numbers) {
  MainForm& form = state_.Lineweir;
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    const std::size_t place = digits_of_a_line * static_cast<std::size_t>(line);
    const bool named = form.DimLineNumMenu.checked && place + digits_of_a_line <= numbers.size();
    form.LineNumb(line).caption =
        std::to_string(named ? leading_number(numbers.substr(place, digits_of_a_line)) : line + 1);
  }
}

}  // namespace lineweir
