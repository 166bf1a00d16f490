#include "serverlink/login_dialogs.h"

#include <optional>
#include <string>

#include "base/failure.h"
#include "base/text.h"
#include "boxlink/serial_port_control.h"
#include "elements/key_characters.h"
#include "link/links.h"
#include "screen/window_size.h"
#include "serverlink/server_connection.h"
#include "serverlink/server_link.h"
#include "serverlink/session_start.h"
#include "serverlink/user_profile.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/hourglass.h"
#include "state/server_addresses.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr int trace_key = 114;

template <std::size_t length, class Box>
std::string cut_to(Box& box) {
  if (box.text.get().size() > length) box.text = std::string(left_part(box.text.get(), length));
  return box.text;
}

}  // namespace

LoginDialogs::LoginDialogs(ConsoleState& state, const Links& links, ServerLink& server,
                           ServerConnection& connection, LoginExchange& exchange,
                           UserProfile& profile, WindowSize& window, SerialPortControl& port)
    : state_(state),
      links_(links),
      server_(server),
      connection_(connection),
      exchange_(exchange),
      profile_(profile),
      window_(window),
      port_(port) {
  Trace& trace = state.trace;
  wire(state.Lineweir.WinsockMenu.on_click, trace, "Lineweir_WinsockMenu_Click",
       [this] { WinsockMenu_Click(); });

  WinsockOptionsForm& options = state.WinsockOptions;
  wire(options.on_load, trace, "WinsockOptions_Form_Load", [this] { WinsockOptions_Load(); });
  wire(options.SockConnect.on_click, trace, "WinsockOptions_SockConnect_Click",
       [this] { SockConnect_Click(); });

  UserLoginForm& login = state.LoginForm;
  wire(login.on_load, trace, "LoginForm_Form_Load", [this] { LoginForm_Load(); });
  wire(login.on_unload, trace, "LoginForm_Form_Unload",
       [this] { state_.LoginForm.ChangeUser = false; });
  wire(login.LoginCombo.on_change, trace, "LoginForm_LoginCombo_Change",
       [this] { LoginCombo_Change(); });
  wire(login.PasswordTextBox.on_change, trace, "LoginForm_PasswordTextBox_Change",
       [this] { PasswordTextBox_Change(); });
  wire(login.PasswordTextBox.on_key_press, trace, "LoginForm_PasswordTextBox_KeyPress",
       [this](int& key) { PasswordTextBox_KeyPress(key); });
  wire(login.on_key_down, trace, "LoginForm_Form_KeyDown",
       [this](int& key_code, int) { LoginForm_KeyDown(key_code); });
  wire(login.ConnectButton.on_click, trace, "LoginForm_ConnectButton_Click",
       [this] { ConnectButton_Click(); });
  wire(state.MyMsgbox.ReconnectButton.on_click, trace, "MyMsgBox_ReconnectButton_Click",
       [this] { ReconnectButton_Click(); });
}

void LoginDialogs::WinsockMenu_Click() {
  leave_other_ways();
  state_.WinsockOptions.show();
}

void LoginDialogs::leave_other_ways() {
  MainForm& form = state_.Lineweir;
  port_.close();
  form.uncheck_coms();
  links_.let_go_but(form.WinsockMenu);
  links_.uncheck_ways(&form.WinsockMenu);
}

void LoginDialogs::WinsockOptions_Load() {
  WinsockOptionsForm& form = state_.WinsockOptions;
  form.Text1.text = state_.login.ServerHost;
  form.Text2.text = std::to_string(state_.login.ServerPort);
  form.Text1.set_focus();
}

void LoginDialogs::SockConnect_Click() {
  WinsockOptionsForm& form = state_.WinsockOptions;
  const std::string address(trimmed(form.Text1.text.get()));
  if (!can_be(address)) return;
  // One that is none leaves all as it is.
  const auto port = port_number(form.Text2.text.get());
  // The user may have chosen another way while the form stood open.
  leave_other_ways();
  const ServerConnection::Turn turn(connection_);
  connection_.close();
  state_.services.loop.yield();
  const Hourglass hourglass(state_.Lineweir);
  state_.login.ServerHost = address;
  state_.login.ServerPort = port;
  window_.RestartingSocket = true;
  connection_.begin();
  state_.Lineweir.WinsockMenu.checked = true;
  if (!stands()) return;
  const LoginResult result = exchange_.TextWrit_PasswordA(false);
  if (result == LoginResult::NoServer) return tell_failure();
  if (result == LoginResult::Rejected) {
    state_.LoginForm.show();
  } else {
    go_on(result);
  }
  if (result != LoginResult::Superseded) form.unload();
}

bool LoginDialogs::can_be(const std::string& address) {
  return attempt([&] { studio_servers(address, highest_port); },
                 [&](const Failure& failure) { state_.messages.tell(failure); });
}

void LoginDialogs::LoginForm_Load() {
  UserLoginForm& form = state_.LoginForm;
  // What emptying the box would make of the password.
  const auto password = state_.login.UserPassword;
  form.TheOldName = state_.login.UserName.trimmed();
  form.LoginCombo.text = form.TheOldName;
  form.PasswordTextBox.text = "";
  state_.login.UserPassword = password;
  form.LoginCombo.set_focus();
}

void LoginDialogs::LoginCombo_Change() {
  UserLoginForm& form = state_.LoginForm;
  state_.login.UserName = cut_to<user_name_length>(form.LoginCombo);
}

void LoginDialogs::PasswordTextBox_Change() {
  UserLoginForm& form = state_.LoginForm;
  state_.login.UserPassword = cut_to<password_length>(form.PasswordTextBox);
}

void LoginDialogs::PasswordTextBox_KeyPress(int& key) {
  if (key != enter_key) return;
  key = 0;
  state_.LoginForm.ConnectButton.on_click();
}

void LoginDialogs::LoginForm_KeyDown(int& key_code) {
  if (key_code != trace_key || !state_.program.DebugMode) return;
  key_code = 0;
  state_.DebugForm.show();
}

void LoginDialogs::take_typed() {
  UserLoginForm& form = state_.LoginForm;
  state_.login.UserName = left_part(trimmed(form.LoginCombo.text.get()), user_name_length);
  state_.login.UserPassword = left_part(trimmed(form.PasswordTextBox.text.get()), password_length);
}

void LoginDialogs::ConnectButton_Click() {
  UserLoginForm& form = state_.LoginForm;
  take_typed();
  const ServerConnection::Turn turn(connection_);
  const Hourglass hourglass(state_.Lineweir);
  if (form.ChangeUser && !change_user()) return;
  // While a session runs its lines are as they are, whatever comes of this login.
  if (!state_.login.ServerAlive) connection_.expect_free_lines();
  const bool other_way_is_in_use =
      state_.Lineweir.chosen_com() != 0 && state_.services.comm1.is_open();
  if (!other_way_is_in_use) state_.Lineweir.WinsockMenu.checked = true;
  if (state_.services.winsock1.state() != platform::socket_connected) {
    state_.messages.show_box();
    form.unload();
    return;
  }
  const LoginResult result = exchange_.TextWrit_PasswordB();
  if (go_on(result)) form.unload();
  if (result != LoginResult::Superseded) show_user_name();
}

bool LoginDialogs::stands() {
  const auto outcome = connection_.await();
  if (outcome == ServerConnection::Outcome::Failed) tell_failure();
  return outcome == ServerConnection::Outcome::Stands;
}

void LoginDialogs::tell_failure() {
  if (!connection_.failure_is_asked()) state_.messages.ShowMessage(connection_.failure());
}

bool LoginDialogs::change_user() {
  UserLoginForm& form = state_.LoginForm;
  form.ChangeUser = false;
  if (state_.services.winsock1.state() == platform::socket_connected) {
    // The server stores the former user's options.
    profile_.SendUserProfile(form.TheOldName);
    take_typed();
  }
  leave_other_ways();
  connection_.close();
  state_.services.loop.yield();
  connection_.begin();
  return stands();
}

void LoginDialogs::ReconnectButton_Click() {
  if (links_.in_use().reconnect()) return;
  const ServerConnection::Turn turn(connection_);
  connection_.close();
  state_.services.loop.yield();
  std::optional<Hourglass> main_hourglass(state_.Lineweir);
  std::optional<Hourglass> box_hourglass(state_.MyMsgbox);
  connection_.begin();
  const auto outcome = connection_.await();
  if (outcome == ServerConnection::Outcome::Superseded) return;
  const auto result = outcome == ServerConnection::Outcome::Failed ? LoginResult::NoServer
                                                                   : exchange_.TextWrit_PasswordB();
  if (result == LoginResult::NoServer) {
    main_hourglass.reset();
    box_hourglass.reset();
    if (connection_.failure_is_asked()) return;
    // The box goes on offering what has just failed.
    return state_.services.dialogs.message(connection_.failure());
  }
  const bool is_in = go_on(result);
  if (result != LoginResult::Superseded) show_user_name();
  if (is_in) state_.MyMsgbox.unload();
}

bool LoginDialogs::go_on(LoginResult result) {
  switch (result) {
    case LoginResult::Accepted:
      TextWrit_SockConnecter(state_, server_, SessionReason::Login);
      return true;
    case LoginResult::Rejected:
      state_.messages.ShowMessage(password_rejected_message);
      return false;
    case LoginResult::NoAnswer:
      state_.messages.ShowMessage("Password Response Not Received!");
      return false;
    case LoginResult::NoServer:
      tell_failure();
      return false;
    case LoginResult::Superseded:
      return false;
  }
  return false;
}

void LoginDialogs::show_user_name() {
  state_.login.DisplayUserName = state_.login.UserName.trimmed();
  state_.Lineweir.Label1.caption = state_.login.DisplayUserName;
}

}  // namespace lineweir
