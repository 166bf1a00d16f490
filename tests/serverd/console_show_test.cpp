// A screener and a host work a show on the program itself, over real sockets: two whole consoles,
// headless, and callers that an administrator lets arrive.

#include <doctest/doctest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "base/text.h"
#include "core/console.h"
#include "driver/hands.h"
#include "lines/status_letters.h"
#include "platform/qt/qt_client_socket.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_system_clock.h"
#include "platform/scripted/scripted_platform.h"
#include "platform/services_with.h"
#include "platform/waiting.h"
#include "serverd/started_server.h"

using namespace lineweir;
using namespace std::chrono_literals;
using lineweir::test::StartedServer;

namespace {

constexpr const char* configuration = R"(
listen = "127.0.0.1:0"
store = "sqlite:server.db"
admin_socket = "admin.sock"

[[group]]
number = 1
name = "Morning"
line_names = ["Hotline"]

[[group]]
number = 2
name = "Late Show"
)";

constexpr const char* password = "on air";

class Studio {
 public:
  Studio() : server(folder, configuration), port(server.wait_until_ready()) {
    for (const std::string user : {"host", "screener"}) {
      REQUIRE(admin("user add " + user + " --template " + user + " --password-stdin < password"));
    }
  }

  // Whether the administrator's tool has done it.
  bool admin(const std::string& words) const {
    const std::string command = "cd '" + folder.path().string() + "' && echo '" + password +
                                "' > password && " LINEWEIR_ADMIN " --socket admin.sock " + words +
                                " > answer";
    return std::system(command.c_str()) == 0;  // NOLINT(concurrency-mt-unsafe)
  }

  TemporaryDirectory folder;
  StartedServer server;
  int port;
};

class ConsoleAtServer {
 public:
  ConsoleAtServer(platform::QtEventLoop& shared_loop, const Studio& studio, const std::string& user)
      : loop(shared_loop) {
    console.messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
    console.startup.Main("");
    console.Lineweir.WinsockMenu.on_click();
    WinsockOptionsForm& where = console.WinsockOptions;
    driver::replace_text(console, where.Text1, "127.0.0.1");
    driver::replace_text(console, where.Text2, std::to_string(studio.port));
    driver::click(console, {where, where.SockConnect});
    // Nobody is let in without a password.
    REQUIRE(console.LoginForm.visible);
    console.LoginForm.LoginCombo.text = user;
    console.LoginForm.LoginCombo.on_change();
    driver::replace_text(console, console.LoginForm.PasswordTextBox, password);
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

}  // namespace

TEST_CASE("a screener and a host work a show") {
  platform::QtEventLoop loop;
  const Studio studio;
  REQUIRE(studio.port > 0);
  ConsoleAtServer screener(loop, studio, "screener");
  ConsoleAtServer host(loop, studio, "host");
  Console& desk = screener.console;
  CHECK(desk.Lineweir.caption.get().find("Morning") != std::string::npos);
  desk.Lineweir.MitelPhone1.on_click();
  desk.Lineweir.ScreenerMode.on_click();

  REQUIRE(studio.admin("call 1 3 --number '555 0100'"));
  CHECK(screener.shows(2, 'R'));
  CHECK(host.shows(2, 'R'));
  CHECK(host.wait([&] {
    return trimmed(host.console.Lineweir.labels_of(CallerField::PhoneNumber)(2).caption.get()) ==
           "555 0100";
  }));

  // Who has waited for no second yet is not the next to be answered.
  CHECK(screener.wait([&] { return desk.Lineweir.LineTime(2).caption.get() > "0:00:00"; }));
  driver::click(desk, {desk.Lineweir, desk.Lineweir.NextToConfButton});
  CHECK(screener.shows(2, 'P'));
  CHECK(host.shows(2, 'P'));
  REQUIRE(desk.Form4.visible);
  driver::replace_text(desk, desk.Form4.TheText(1), "Bob Hill");
  driver::click(desk, {desk.Form4, desk.Form4.Command3D1});
  CHECK(host.shows_name(2, "Bob Hill"));
  driver::click(desk, {desk.Lineweir, desk.Lineweir.NextButton});
  CHECK(host.shows(2, 'S'));
  CHECK(host.wait([&] { return host.console.lines.TheNextCall == 2; }));
  CHECK(screener.wait([&] { return desk.lines.TheNextCall == 2; }));

  driver::click(host.console, {host.console.Lineweir, host.console.Lineweir.NextButton});
  CHECK(screener.shows(2, 'N'));
  CHECK(host.shows(2, 'N'));

  // One who comes in now has all of it.
  ConsoleAtServer late(loop, studio, "host");
  CHECK(late.shows(2, 'N'));
  CHECK(late.shows_name(2, "Bob Hill"));

  REQUIRE(studio.admin("hangup 1 3"));
  CHECK(screener.shows(2, ' '));
  CHECK(host.shows(2, ' '));
  CHECK(host.shows_name(2, ""));
  REQUIRE(studio.admin("calls --csv"));
  REQUIRE(studio.admin("audit verify"));
  CHECK(host.messages.empty());
}
