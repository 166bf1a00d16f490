#pragma once

#include <doctest/doctest.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "base/text.h"
#include "core/console.h"
#include "driver/hands.h"
#include "platform/qt/qt_client_socket.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_system_clock.h"
#include "platform/scripted/scripted_platform.h"
#include "platform/services_with.h"
#include "platform/waiting.h"
#include "serverd/started_server.h"

namespace lineweir::test {

inline constexpr const char* studio_password = "on air";

// A server with a host and a screener among its users.
class Studio {
 public:
  explicit Studio(const std::string& configuration)
      : server(folder, configuration), port(server.wait_until_ready()) {
    for (const std::string user : {"host", "screener"}) {
      REQUIRE(admin("user add " + user + " --template " + user + " --password-stdin < password"));
    }
  }

  // Whether the administrator's tool has done it.
  bool admin(const std::string& words) const {
    const std::string command = "cd '" + folder.path().string() + "' && echo '" + studio_password +
                                "' > password && " LINEWEIR_ADMIN " --socket admin.sock " + words +
                                " > answer";
    return std::system(command.c_str()) == 0;  // NOLINT(concurrency-mt-unsafe)
  }

  TemporaryDirectory folder;
  StartedServer server;
  int port;
};

// A whole console without a window whose user has logged in.
class ConsoleAtServer {
 public:
  ConsoleAtServer(platform::QtEventLoop& shared_loop, const Studio& studio, const std::string& user)
      : ConsoleAtServer(shared_loop, "127.0.0.1", studio.port, user) {}
  ConsoleAtServer(platform::QtEventLoop& shared_loop, const std::string& address, int port,
                  const std::string& user)
      : loop(shared_loop) {
    console.messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
    console.startup.Main("");
    console.Lineweir.WinsockMenu.on_click();
    WinsockOptionsForm& where = console.WinsockOptions;
    driver::replace_text(console, where.Text1, address);
    driver::replace_text(console, where.Text2, std::to_string(port));
    driver::click(console, {where, where.SockConnect});
    // Nobody is let in without a password.
    REQUIRE(console.LoginForm.visible);
    console.LoginForm.LoginCombo.text = user;
    console.LoginForm.LoginCombo.on_change();
    driver::replace_text(console, console.LoginForm.PasswordTextBox, studio_password);
    driver::click(console, {console.LoginForm, console.LoginForm.ConnectButton});
    CHECK(wait([this] { return console.Lineweir.Shape1.fill_color == color_green; }));
  }
  ~ConsoleAtServer() { socket.close(); }

  bool wait(const std::function<bool()>& condition) { return wait_until(loop, condition); }
  bool shows(int line, char letter) {
    return wait([this, line, letter] { return console.lines.StatusLetter(line) == letter; });
  }
  bool shows_name(int line, const std::string& name) {
    return wait([&] { return trimmed(console.Lineweir.LineName(line).caption.get()) == name; });
  }
  void press(char key) { driver::key(console, key, 0); }

  platform::QtEventLoop& loop;
  platform::QtClientSocket socket{loop};
  platform::QtSystemClock clock;
  platform::ScriptedPlatform workstation;
  std::vector<std::string> messages;
  Console console{platform::services_with(workstation.services(),
                                          {.loop = &loop, .clock = &clock, .winsock1 = &socket})};
};

}  // namespace lineweir::test
