#include "core/first_connection.h"

#include "boxlink/serial_port_control.h"
#include "core/start_step.h"
#include "link/links.h"
#include "serverlink/login_exchange.h"
#include "serverlink/server_connection.h"
#include "serverlink/session_start.h"
#include "state/console_state.h"
#include "state/settings_record.h"
#include "state/wire.h"

namespace lineweir {

FirstConnection::FirstConnection(ConsoleState& state, const Links& links, ServerLink& server,
                                 ServerConnection& server_connection, LoginExchange& login_exchange,
                                 SerialPortControl& port)
    : state_(state),
      links_(links),
      server_(server),
      server_connection_(server_connection),
      login_exchange_(login_exchange),
      port_(port) {
  wire(state.Lineweir.LoginTimer.on_timer, state.trace, "Lineweir_LoginTimer_Timer",
       [this] { LoginTimer_Timer(); });
}

void FirstConnection::connect(const SettingsRecord* record) {
  if (record == nullptr) return;
  if (record->CommPort == connection_socket) return connect_socket();
  MenuItem* way = links_.item_of(record->CommPort);
  if (way == nullptr) return;
  click(*way);
  if (!way->checked) state_.Lineweir.Shape1.fill_color = color_red;
}

void FirstConnection::connect_socket() {
  MainForm& form = state_.Lineweir;
  const ServerConnection::Turn turn(server_connection_);
  start_step(state_, [&] { server_connection_.begin(); });
  port_.close();
  form.uncheck_coms();
  links_.uncheck_ways(&form.WinsockMenu);
  const auto outcome = server_connection_.await();
  if (outcome == ServerConnection::Outcome::Superseded) return;
  if (outcome == ServerConnection::Outcome::Failed) return tell_failure();
  switch (login_exchange_.TextWrit_PasswordA(true)) {
    case LoginResult::Accepted:
      return TextWrit_SockConnecter(state_, server_, SessionReason::ProgramStart);
    case LoginResult::Rejected:
    case LoginResult::NoAnswer:
      login_needed_ = true;
      return;
    case LoginResult::NoServer:
      return tell_failure();
    case LoginResult::Superseded:
      return;
  }
}

void FirstConnection::tell_failure() {
  if (!server_connection_.failure_is_asked()) {
    state_.messages.ShowMessage(server_connection_.failure());
  }
  state_.Lineweir.Shape1.fill_color = color_red;
  // One of several servers may have been there for a moment.
  state_.Lineweir.WinsockMenu.checked = false;
  port_.want_other_way(connection_socket);
}

void FirstConnection::LoginTimer_Timer() {
  state_.Lineweir.LoginTimer.enabled = false;
  state_.LoginForm.show();
}

void FirstConnection::ask_for_login() { state_.Lineweir.LoginTimer.enabled = login_needed_; }

}  // namespace lineweir
