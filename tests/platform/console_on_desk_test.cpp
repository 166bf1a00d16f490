// A console with a switch console on a real serial line: keys, lamps, and a line that vanishes.

#include <doctest/doctest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "core/console.h"
#include "desk/desk.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_serial_port.h"
#include "platform/scripted/scripted_platform.h"
#include "platform/services_with.h"
#include "pseudo_terminal.h"
#include "waiting.h"

using namespace lineweir;
using namespace lineweir::platform;
using namespace std::chrono_literals;
using desk::Layout;

namespace {

using Texts = std::vector<std::string>;

// The simulated switch console at the far end of a line.
class DeskOnLine {
 public:
  DeskOnLine(QtEventLoop& loop, Layout layout) : desk(layout), loop_(loop) { listen(); }
  ~DeskOnLine() { loop_.cancel(call_); }
  DeskOnLine(const DeskOnLine&) = delete;
  DeskOnLine& operator=(const DeskOnLine&) = delete;

  void press(const std::string& key) { line.write(desk.press(key).value()); }

  PseudoTerminal line;
  desk::Desk desk;
  std::size_t received = 0;

 private:
  void listen() {
    const std::string bytes = line.read();
    received += bytes.size();
    desk.receive(bytes);
    call_ = loop_.schedule(5ms, [this] { listen(); });
  }

  QtEventLoop& loop_;
  EventLoop::CallId call_ = 0;
};

struct ConsoleOnDesk {
  explicit ConsoleOnDesk(Layout desk_layout) : layout(desk_layout) {
    for (int number = 1; number <= 4; ++number) set_device(number, "/nowhere/line");
    plug_in();
    console.messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
    console.startup.Main("");
    rest.comm1.open();
    const bool twenty = layout == Layout::TwentyLines;
    main.Line20Mode.checked = twenty;
    console.layout.set_line_count(desk::lines_of(layout));
    console.layout.RedefineScreen();
    for (int line = 0; line < desk::lines_of(layout); ++line) {
      main.OnHybrid1(line).visible = true;
      main.OnHybrid2(line).visible = true;
    }
  }
  ~ConsoleOnDesk() { comm2.close(); }

  void plug_in() {
    switch_console = std::make_unique<DeskOnLine>(loop, layout);
    set_device(2, switch_console->line.device());
  }

  // What pressing the key writes to the equipment.
  Texts press(const std::string& key) {
    rest.comm1.take_writes();
    Texts words;
    switch_console->press(key);
    wait_until(loop, [&] {
      for (const std::string& word : rest.comm1.take_writes()) words.push_back(word);
      return !words.empty();
    });
    return words;
  }

  bool shows(const std::string& lamp, const std::string& text) {
    return wait_until(loop, [&] { return switch_console->desk.shown(lamp) == text; });
  }

  Layout layout;
  QtEventLoop loop;
  std::unique_ptr<DeskOnLine> switch_console;
  ScriptedPlatform rest;
  QtSerialPort comm2{loop, 9600, 2};
  Texts messages;
  Console console{services()};
  MainForm& main = console.Lineweir;

 private:
  Services services() {
    return platform::services_with(rest.services(), {.loop = &loop, .comm2 = &comm2});
  }
};

const Texts told = {"Could Not Open Switch Console Port"};

}  // namespace

TEST_CASE("A desk for ten lines: its keys press the buttons, its lamps show the lines") {
  ConsoleOnDesk test(Layout::TenLines);
  test.main.RemoteOn.on_click();
  REQUIRE(test.messages.empty());
  CHECK(test.press("main 3") == Texts{"N02"});
  CHECK(test.press("conf 10") == Texts{"C09"});
  for (int line = 0; line < 10; ++line) test.console.lines.StatusLetter(line) = "NCHSRPOE N"[line];
  CHECK(test.press("drop1") == Texts{"F00", "F09"});
  CHECK(test.press("hold2") == Texts{"H01"});
  const Texts main_lamps = {"AIR", "on", "hold", "rdy", "ring", "on", "on", "on", "", "AIR"};
  const Texts conference_lamps = {"on", "AIR", "hold", "rdy", "ring", "on", "on", "on", "", "on"};
  for (std::size_t line = 0; line < 10; ++line) {
    const std::string number = std::to_string(line + 1);
    CAPTURE(number);
    CHECK(test.shows("main " + number, main_lamps[line]));
    CHECK(test.shows("conf " + number, conference_lamps[line]));
  }
  test.switch_console->press("dial 5");
  CHECK(wait_until(test.loop, [&] { return test.console.DialForm.visible.get(); }));
  CHECK(test.switch_console->desk.noise() == 0);
}

TEST_CASE("A mode change leaves the desk working") {
  ConsoleOnDesk test(Layout::TenLines);
  test.main.RemoteOn.on_click();
  test.main.MitelPhone1.checked = true;
  test.main.ScreenerMode.on_click();
  CHECK(test.comm2.is_open());
  CHECK(test.press("main 3") == Texts{"P02"});
  test.main.StudioMode.on_click();
  CHECK(test.press("main 3") == Texts{"N02"});
  test.console.lines.StatusLetter(2) = 'N';
  CHECK(test.shows("main 3", "AIR"));
  CHECK(test.messages.empty());
}

TEST_CASE("A desk for twenty lines: its keys press the buttons, its lamps show the lines") {
  ConsoleOnDesk test(Layout::TwentyLines);
  test.main.RemoteOn.on_click();
  for (int line = 0; line < 20; ++line) {
    CHECK(test.press("line " + std::to_string(line + 1)) == Texts{numbered_word('N', line)});
  }
  for (int line = 0; line < 20; ++line) {
    test.console.lines.StatusLetter(line) = "NHSRP"[line % 5];
  }
  const Texts lamps = {"AIR", "hold", "rdy", "ring", "on"};
  for (std::size_t line = 0; line < 19; ++line) {
    const std::string number = std::to_string(line + 1);
    CAPTURE(number);
    CHECK(test.shows("line " + number, lamps[line % 5]));
  }
  // The lamp of the last line is always dark.
  CHECK(test.shows("line 20", ""));
  CHECK(test.press("hold1") == Texts{"H00", "H05", "H10", "H15"});
  CHECK(test.switch_console->desk.noise() == 0);
}

TEST_CASE("The lamps of twenty lines take 60 characters a tick, of the 240 that the line carries") {
  ConsoleOnDesk test(Layout::TwentyLines);
  for (int line = 0; line < 20; ++line) test.console.lines.StatusLetter(line) = 'S';
  test.main.RemoteOn.on_click();
  run_for(test.loop, 1100ms);
  test.main.RemoteOff.on_click();
  run_for(test.loop, 50ms);
  const std::size_t received = test.switch_console->received;
  CHECK(received % 60 == 0);
  CHECK(received >= 180U);
  // A late test may have had more ticks than four, but never more than the line could carry.
  CHECK(received <= 1100U * 960 / 1000);
}

TEST_CASE("A desk that is unplugged is told once; choosing its port brings it back") {
  ConsoleOnDesk test(Layout::TenLines);
  test.main.RemoteCom2.on_click();
  test.main.RemoteOn.on_click();
  test.console.lines.StatusLetter(0) = 'N';
  REQUIRE(test.shows("main 1", "AIR"));

  const auto former = std::move(test.switch_console);
  former->line.hang_up();
  CHECK(wait_until(test.loop, [&] { return !test.comm2.is_open(); }));
  run_for(test.loop, 700ms);
  CHECK(test.messages == told);
  CHECK(test.main.RemoteOn.checked);
  test.main.OnHybrid1(4).on_click();
  CHECK(test.rest.comm1.take_writes() == Texts{"N04"});
  test.main.ScreenerMode.on_click();
  test.main.StudioMode.on_click();
  CHECK(test.messages == told);

  // While it is still out, its device is gone.
  set_device(2, "/nowhere/line");
  test.messages.clear();
  test.main.RemoteCom2.on_click();
  CHECK(test.messages == told);

  test.messages.clear();
  test.plug_in();
  test.main.RemoteCom2.on_click();
  CHECK(test.messages.empty());
  CHECK(test.shows("main 1", "AIR"));
  CHECK(test.press("main 3") == Texts{"N02"});
}

TEST_CASE("A device that is missing gives the message, and the menu stays off") {
  ConsoleOnDesk test(Layout::TenLines);
  test.main.RemoteCom3.on_click();
  test.main.RemoteOn.on_click();
  CHECK(test.messages == told);
  CHECK(test.main.RemoteOff.checked);
  CHECK_FALSE(test.main.RemoteOn.checked);
}

TEST_CASE("Garbage from the line presses what it happens to name, and nothing breaks") {
  ConsoleOnDesk test(Layout::TenLines);
  test.main.RemoteOn.on_click();
  for (int round = 0; round < 256; ++round) {
    std::string garbage;
    for (int byte = 0; byte < 64; ++byte) garbage += static_cast<char>(round + byte * round);
    test.switch_console->line.write(garbage);
    run_for(test.loop, 1ms);
  }
  CHECK(test.press("main 1") == Texts{"N00"});
  CHECK(test.messages.empty());
}
