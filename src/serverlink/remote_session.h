#pragma once

#include <string>

namespace lineweir {

struct Console;

// The session over remote objects: how it begins and how it ends.
class RemoteSession {
 public:
  explicit RemoteSession(Console& console);

  // Whether the server holds a reference to this console.
  bool connected = false;

  void NetworkConnectionOption_Click();
  void NetworkDisconnect();

 private:
  void register_console();
  void take_studio_state();
  void name_lines(const std::string& numbers);

  Console& console_;
};

}  // namespace lineweir
