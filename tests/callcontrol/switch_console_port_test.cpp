#include "callcontrol/switch_console_port.h"

#include <doctest/doctest.h>

#include "support/dial_desk.h"

namespace lineweir::test {
namespace {

using Words = std::vector<std::string>;

const Words told_of_port = {"Could Not Open Switch Console Port"};

struct PortDesk : DialDesk {
  MainForm& main = console.Lineweir;
  platform::ScriptedSerialPort& port = platform.comm2;

  void choose(int number) { main.RemoteCom(number).on_click(); }
  int checked_ports() {
    int ports = 0;
    for (int number = 1; number <= 4; ++number)
      ports = ports * 10 + (main.RemoteCom(number).checked ? number : 0);
    return ports;
  }
};

constexpr std::array port_failures = {68, 8002, 8005, 8006, 8010, 8011, 8013};

TEST_SUITE("callcontrol/switch_console_port: menu") {
  TEST_CASE("the port begins as 2; choosing one while it is closed only selects") {
    PortDesk desk;
    CHECK(desk.port.comm_port() == 2);
    desk.choose(3);
    CHECK(desk.checked_ports() == 30);
    CHECK(desk.port.comm_port() == 3);
    CHECK_FALSE(desk.port.is_open());
    desk.choose(4);
    CHECK_FALSE(desk.port.is_open());
  }

  TEST_CASE("choosing a port moves an open one") {
    PortDesk desk;
    desk.main.RemoteOn.on_click();
    desk.choose(4);
    CHECK(desk.checked_ports() == 4);
    CHECK(desk.port.comm_port() == 4);
    CHECK(desk.port.is_open());
  }

  TEST_CASE("on and off") {
    PortDesk desk;
    desk.main.RemoteOn.on_click();
    CHECK(desk.port.is_open());
    CHECK(desk.main.RemoteOn.checked);
    CHECK_FALSE(desk.main.RemoteOff.checked);
    CHECK(desk.main.SwitchConsoleTimer.enabled);
    desk.main.RemoteOn.on_click();
    CHECK(desk.port.is_open());
    desk.main.RemoteOff.on_click();
    CHECK_FALSE(desk.port.is_open());
    CHECK_FALSE(desk.main.RemoteOn.checked);
    CHECK(desk.main.RemoteOff.checked);
    CHECK_FALSE(desk.main.SwitchConsoleTimer.enabled);
    CHECK(desk.take_messages().empty());
  }
}

TEST_SUITE("callcontrol/switch_console_port: failures") {
  TEST_CASE("a port that can't be opened is told, and the menu stays off") {
    for (const int number : port_failures) {
      CAPTURE(number);
      PortDesk desk;
      desk.port.fail_openings(number, 1);
      desk.main.RemoteOn.on_click();
      CHECK(desk.take_messages() == told_of_port);
      CHECK_FALSE(desk.main.RemoteOn.checked);
      CHECK(desk.main.RemoteOff.checked);
      CHECK_FALSE(desk.main.SwitchConsoleTimer.enabled);
      desk.main.RemoteOn.on_click();
      desk.port.fail_openings(number, 1);
      desk.choose(1);
      CHECK(desk.take_messages() == told_of_port);
      CHECK(desk.checked_ports() == 1000);
    }
  }

  TEST_CASE("any other failure goes to the trace") {
    PortDesk desk;
    desk.take_trace();
    desk.port.fail_openings(57, 1);
    desk.main.RemoteOn.on_click();
    CHECK(desk.take_messages().empty());
    CHECK(desk.take_trace() ==
          Words{"Lineweir_RemoteOn_Click Error - Serial port 2 can't be opened"});
    desk.main.RemoteOn.on_click();
    desk.port.fail_openings(57, 1);
    desk.choose(3);
    CHECK(desk.take_trace() ==
          Words{"Lineweir_RemoteCom3_Click Error - Serial port 3 can't be opened"});
  }

  TEST_CASE("a port that didn't open in place of another is opened by the next choice") {
    PortDesk desk;
    desk.main.RemoteOn.on_click();
    desk.port.fail_openings(8010, 1);
    desk.choose(3);
    CHECK_FALSE(desk.port.is_open());
    desk.choose(2);
    CHECK(desk.port.is_open());
  }
}

TEST_SUITE("callcontrol/switch_console_port: a port that vanishes") {
  TEST_CASE("it is told once, the console goes on, and choosing the port brings it back") {
    PortDesk desk;
    desk.choose(2);
    desk.main.RemoteOn.on_click();
    desk.take_trace();
    desk.port.vanish();
    CHECK(desk.take_messages() == told_of_port);
    CHECK(desk.main.RemoteOn.checked);
    CHECK(desk.take_trace().size() == 1);
    desk.pass(60000);
    desk.produce(1);
    CHECK(desk.take_messages().empty());
    CHECK(desk.take_trace().empty());
    desk.port.fail_openings(8010, 1);
    desk.choose(2);
    CHECK(desk.take_messages() == told_of_port);
    desk.choose(2);
    CHECK(desk.take_messages().empty());
    CHECK(desk.port.is_open());
    desk.port.take_writes();
    desk.pass(250);
    CHECK(desk.port.take_writes().size() == 10);
  }

  TEST_CASE("switching it on brings it back too") {
    PortDesk desk;
    desk.main.RemoteOn.on_click();
    desk.port.vanish();
    desk.main.RemoteOn.on_click();
    CHECK(desk.port.is_open());
  }

  TEST_CASE("once it is switched off a choice only selects") {
    PortDesk desk;
    desk.main.RemoteOn.on_click();
    desk.port.vanish();
    desk.main.RemoteOff.on_click();
    desk.choose(2);
    CHECK_FALSE(desk.port.is_open());
  }

  TEST_CASE("a mode change that can't open it again tells so") {
    PortDesk desk;
    desk.main.RemoteOn.on_click();
    desk.port.fail_openings(8010, 1);
    desk.take_trace();
    desk.produce(1);
    CHECK(desk.take_messages() == told_of_port);
    CHECK(desk.take_trace() ==
          Words{"Lineweir_ScreenerMode_Click Error - Serial port 2 can't be opened"});
    desk.choose(2);
    CHECK(desk.port.is_open());
  }
}

}  // namespace
}  // namespace lineweir::test
