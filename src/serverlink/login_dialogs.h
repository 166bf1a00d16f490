#pragma once

#include <string>

#include "serverlink/login_exchange.h"

namespace lineweir {

class Links;
class SerialPortControl;
class ServerConnection;
class ServerLink;
class UserProfile;
class WindowSize;
struct ConsoleState;

// How the user gets to a server: WinsockOptions takes its address, LoginForm his name and password,
// and MyMsgbox offers to connect again when the server is lost.
class LoginDialogs {
 public:
  LoginDialogs(ConsoleState& state, const Links& links, ServerLink& server,
               ServerConnection& connection, LoginExchange& exchange, UserProfile& profile,
               WindowSize& window, SerialPortControl& port);

 private:
  void WinsockMenu_Click();
  void leave_other_ways();
  // Whether an address can be one; tells the user of one that can't.
  bool can_be(const std::string& address);
  void WinsockOptions_Load();
  void SockConnect_Click();

  void LoginForm_Load();
  void LoginCombo_Change();
  void PasswordTextBox_Change();
  void PasswordTextBox_KeyPress(int& key);
  void LoginForm_KeyDown(int& key_code);
  void ConnectButton_Click();
  bool change_user();
  // Waits for the connection; tells the user of one that fails.
  bool stands();
  void tell_failure();
  void take_typed();

  void ReconnectButton_Click();

  // Begins the session of a user whom the server has let in; tells any other why he isn't. Returns
  // whether he is in.
  bool go_on(LoginResult result);
  void show_user_name();

  ConsoleState& state_;
  const Links& links_;
  ServerLink& server_;
  ServerConnection& connection_;
  LoginExchange& exchange_;
  UserProfile& profile_;
  WindowSize& window_;
  SerialPortControl& port_;
};

}  // namespace lineweir
