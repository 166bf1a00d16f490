#include "serverlink/remote_session.h"

#include "boxlink/serial_port_control.h"
#include "link/link_watch.h"
#include "link/links.h"
#include "serverlink/held_objects.h"
#include "serverlink/remote_objects_link.h"
#include "serverlink/remote_studio.h"
#include "serverlink/server_alive.h"
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
                             RemoteStudio& studio, SerialPortControl& port, LinkWatch& link,
                             RemoteObjectsLink& remote_link)
    : state_(state),
      links_(links),
      objects_(objects),
      studio_(studio),
      port_(port),
      link_(link),
      remote_link_(remote_link) {
  wire(state.Lineweir.NetworkConnectionOption.on_click, state_.trace, connect_handler,
       [this] { NetworkConnectionOption_Click(); });
}

void RemoteSession::NetworkConnectionOption_Click() {
  MainForm& form = state_.Lineweir;
  const int attempt_number = ++attempts_;
  bool begun = false;
  stands_ = false;
  attempt(
      [&] {
        const Hourglass hourglass(form);
        port_.close();
        form.uncheck_coms();
        links_.let_go_but(form.NetworkConnectionOption);
        links_.uncheck_ways();
        form.NetworkConnectionOption.checked = true;
        form.SyncTimeTimer.enabled = false;
        begun = begin();
        if (!begun) state_.messages.ShowMessage(connect_failed);
      },
      [&](const Failure& failure) {
        // While it waited the user has chosen another way, or this one anew.
        if (attempt_number != attempts_ || !form.NetworkConnectionOption.checked) return;
        report_failure(state_.trace, connect_handler, failure);
        // A server that was only late would call a console that has gone.
        if (failure.number() == failure_number::no_answer) remote_link_.let_go();
        state_.messages.ShowMessage(failure.number() == failure_number::no_such_class
                                        ? "Cannot find server"
                                        : connect_failed);
      });
  if (attempt_number != attempts_) return;
  stands_ = begun;
  if (begun) remote_link_.set_silence({});
  if (!begun && form.NetworkConnectionOption.checked) end();
  link_.review();
}

bool RemoteSession::begin() {
  platform::RemoteObjects& remote = state_.services.remote_objects;
  objects_.SerialInputObject = remote.create(commands_class);
  objects_.CallbackServer = remote.create(registration_class);
  check_present_group(state_);
  renew_window_caption(state_);
  if (!register_console()) return false;
  studio_.GetStudioStat();
  studio_.RefreshStudioNames();
  renew_window_caption(state_);
  studio_.GetTheTimes();
  studio_.take_lines();
  state_.lines.FreshConnect = true;
  state_.Lineweir.Timer4.enabled = true;
  state_.Lineweir.Timer1.enabled = true;
  hear_server(state_);
  return true;
}

bool RemoteSession::resume() {
  const int attempt_number = ++attempts_;
  bool begun = false;
  attempt([&] { begun = begin(); },
          [&](const Failure& failure) { report_failure(state_.trace, connect_handler, failure); });
  return begun && attempt_number == attempts_;
}

bool RemoteSession::enter_group() {
  const auto report = [&](const Failure& failure) {
    report_failure(state_.trace, "DisplayOptionForm_ExitCommand_Click", failure);
  };
  attempt(
      [&] {
        studio_.GetStudioStat();
        studio_.take_lines();
      },
      report);
  bool entered = false;
  attempt([&] { entered = register_console(); }, report);
  if (!entered) state_.messages.ShowMessage(connect_failed);
  studio_.GetTheTimes();
  link_.review();
  return entered;
}

bool RemoteSession::register_console() {
  objects_.connected = false;
  objects_.connected = is_true(objects_.CallbackServer->call(
      "AddObjectReference", {callback_class, std::int64_t{state_.program.GroupNumber}}));
  return objects_.connected;
}

void RemoteSession::end() {
  remote_link_.set_silence({});
  state_.Lineweir.NetworkConnectionOption.checked = false;
  objects_.release();
  port_.want_other_way(connection_remote_objects);
  port_.show_as_way();
}

}  // namespace lineweir
