#pragma once

namespace lineweir {

class Links;
class LoginExchange;
class SerialPortControl;
class ServerConnection;
class ServerLink;
struct ConsoleState;
struct SettingsRecord;

// The way to the studio that the settings name is taken at the start, if it isn't a serial port.
class FirstConnection {
 public:
  FirstConnection(ConsoleState& state, const Links& links, ServerLink& server,
                  ServerConnection& server_connection, LoginExchange& login_exchange,
                  SerialPortControl& port);

  void connect(const SettingsRecord* record);

  // Soon after the start the user is asked who he is, where the server didn't let him in.
  void ask_for_login();

 private:
  void connect_socket();
  void tell_failure();
  void LoginTimer_Timer();

  ConsoleState& state_;
  const Links& links_;
  ServerLink& server_;
  ServerConnection& server_connection_;
  LoginExchange& login_exchange_;
  SerialPortControl& port_;
  bool login_needed_ = false;
};

}  // namespace lineweir
