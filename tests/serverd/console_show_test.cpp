// A screener and a host work a show on the program itself, over real sockets: two whole consoles,
// headless, and callers that an administrator lets arrive.

#include <doctest/doctest.h>

#include "lines/status_letters.h"
#include "serverd/console_at_server.h"

using namespace lineweir;
using lineweir::test::ConsoleAtServer;
using lineweir::test::Studio;

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

}  // namespace

TEST_CASE("a screener and a host work a show") {
  platform::QtEventLoop loop;
  const Studio studio(configuration);
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
