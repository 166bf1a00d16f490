#include "serverlink/remote_session.h"

#include "boxlink/serial_port_control.h"
#include "link/link_watch.h"
#include "link/links.h"
#include "serverlink/held_objects.h"
#include "serverlink/remote_objects_link.h"
#include "serverlink/remote_studio.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/hourglass.h"
#include "state/settings_record.h"
#include "state/window_caption.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr auto connect_handler = "Lineweir_NetworkConnectionOption_Click";
constexpr auto commands_class = "Quorlink.SerialInput";
constexpr auto registration_class = "Quorlink.CBServerClass";
constexpr auto connect_failed = "Connect Failed";

}  // namespace

RemoteSession::RemoteSession(ConsoleState& state, const Links& links, HeldObjects& objects,
                             RemoteStudio& studio, SerialPortControl& port, LinkWatch& link)
    : state_(state), links_(links), objects_(objects), studio_(studio), port_(port), link_(link) {
  wire(state.Lineweir.NetworkConnectionOption.on_click, state_.trace, connect_handler,
       [this] { NetworkConnectionOption_Click(); });
}

void RemoteSession::NetworkConnectionOption_Click() {
  MainForm& form = state_.Lineweir;
  bool begun = false;
  attempt(
      [&] {
        const Hourglass hourglass(form);
        port_.close();
        form.uncheck_coms();
        links_.uncheck_ways();
        form.NetworkConnectionOption.checked = true;
        form.SyncTimeTimer.enabled = false;
        objects_.SerialInputObject = state_.services.remote_objects.create(commands_class);
        objects_.CallbackServer = state_.services.remote_objects.create(registration_class);
        check_present_group(state_);
        renew_window_caption(state_);
        if (!register_console()) return state_.messages.ShowMessage(connect_failed);
        studio_.GetStudioStat();
        studio_.RefreshStudioNames();
        studio_.GetTheTimes();
        studio_.take_lines();
        state_.lines.FreshConnect = true;
        form.Timer4.enabled = true;
        form.Timer1.enabled = true;
        begun = true;
      },
      [&](const Failure& failure) {
        report_failure(state_.trace, connect_handler, failure);
        state_.messages.ShowMessage(failure.number() == failure_number::no_such_class
                                        ? "Cannot find server"
                                        : connect_failed);
      });
  if (!begun) end();
  link_.review();
}

bool RemoteSession::enter_group() {
  bool entered = false;
  attempt(
      [&] {
        studio_.GetStudioStat();
        studio_.take_lines();
        entered = register_console();
      },
      [&](const Failure& failure) {
        report_failure(state_.trace, "DisplayOptionForm_ExitCommand_Click", failure);
      });
  if (entered) {
    studio_.GetTheTimes();
  } else {
    state_.messages.ShowMessage(connect_failed);
    end();
  }
  link_.review();
  return entered;
}

bool RemoteSession::register_console() {
  objects_.connected = is_true(objects_.CallbackServer->call(
      "AddObjectReference", {callback_class, std::int64_t{state_.program.GroupNumber}}));
  return objects_.connected;
}

void RemoteSession::end() {
  state_.Lineweir.NetworkConnectionOption.checked = false;
  objects_.connected = false;
  objects_.SerialInputObject.reset();
  objects_.CallbackServer.reset();
  port_.want_other_way(connection_remote_objects);
  port_.show_as_way();
}

}  // namespace lineweir
