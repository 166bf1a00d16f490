// A console on a real serial line, with an interface box at its far end. That a wait which was
// ended doesn't come back at its limit is asked once here, and of each way to end it in virtual
// time.

#include <doctest/doctest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/console.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_serial_port.h"
#include "platform/scripted/scripted_platform.h"
#include "platform/services_with.h"
#include "pseudo_terminal.h"
#include "support/skipping_loop.h"
#include "waiting.h"

using namespace lineweir;
using namespace lineweir::platform;
using namespace std::chrono_literals;

namespace {

// Answers the request for the line monitor, and writes down all that it hears.
class InterfaceBox {
 public:
  explicit InterfaceBox(QtEventLoop& loop) : loop_(loop) { listen(); }
  ~InterfaceBox() { loop_.cancel(call_); }
  InterfaceBox(const InterfaceBox&) = delete;
  InterfaceBox& operator=(const InterfaceBox&) = delete;

  PseudoTerminal line;
  bool answers = true;
  std::string answer = "Line monitor ON";
  std::string heard;

 private:
  void listen() {
    const std::string words = line.read();
    heard += words;
    if (answers && words.find('M') != std::string::npos) line.write(answer);
    call_ = loop_.schedule(5ms, [this] { listen(); });
  }

  QtEventLoop& loop_;
  EventLoop::CallId call_ = 0;
};

struct ConsoleOnPort {
  QtEventLoop real_loop;
  test::SkippingLoop loop{real_loop};
  std::unique_ptr<InterfaceBox> box = std::make_unique<InterfaceBox>(real_loop);
  ScriptedPlatform rest;
  QtSerialPort comm1{real_loop, 1200, 1};
  std::vector<std::string> messages;
  std::vector<std::string> trace;
  Console console{services()};

  ConsoleOnPort() {
    for (int number = 1; number <= 4; ++number) set_device(number, "/nowhere/line");
    set_device(1, box->line.device());
    console.messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
    console.trace.on_line = [this](const std::string& line) { trace.push_back(line); };
    console.startup.Main("D");
  }
  ~ConsoleOnPort() { comm1.close(); }

  void click(const MenuItem& item) { item.on_click(); }

  // Of the wait that begins next the most is left out.
  void shorten_wait() {
    real_loop.schedule(50ms, [this] { loop.skip(2800ms); });
  }

 private:
  Services services() {
    return platform::services_with(rest.services(), {.loop = &loop, .comm1 = &comm1});
  }
};

}  // namespace

TEST_CASE_FIXTURE(ConsoleOnPort, "A box that answers is asked for all lines, and its items show") {
  click(console.Lineweir.PortOn);
  CHECK(console.Lineweir.PortOn.checked);
  CHECK(messages.empty());
  const std::string expected = "MQ00Q01Q02Q03Q04Q05Q06Q07Q08Q09";
  CHECK(wait_until(loop, [&] { return box->heard.size() >= expected.size(); }));
  CHECK(box->heard == expected);

  box->line.write("R04");
  CHECK(wait_until(loop, [&] { return console.lines.StatusLetter(4) == 'R'; }));
  box->line.write("N0");
  run_for(loop, 50ms);
  CHECK(console.lines.StatusLetter(4) == 'R');
  box->line.write("4");
  CHECK(wait_until(loop, [&] { return console.lines.StatusLetter(4) == 'N'; }));
  CHECK(console.Lineweir.LineStatus(4).caption == "On Air");
}

TEST_CASE_FIXTURE(ConsoleOnPort, "A box that doesn't answer is reported after a little over 3 s") {
  box->answers = false;
  shorten_wait();
  const auto start = loop.now();
  click(console.Lineweir.PortOn);
  CHECK(loop.now() - start > 3000ms);
  CHECK(loop.now() - start < 4000ms);
  CHECK(messages == std::vector<std::string>{
                        "Error communicating with Brenvox Interface Box!  Check cables and "
                        "settings!"});
  CHECK(comm1.is_open());
  CHECK_FALSE(console.Lineweir.PortOn.checked);
}

TEST_CASE_FIXTURE(ConsoleOnPort, "A line that vanishes is told once and comes back with a click") {
  click(console.Lineweir.PortOn);
  REQUIRE(console.Lineweir.PortOn.checked);
  box->line.hang_up();
  CHECK(wait_until(loop, [&] { return !comm1.is_open(); }));
  run_for(loop, 200ms);
  CHECK(messages == std::vector<std::string>{"This Com Port is not available at this time!"});
  CHECK(console.Lineweir.Off.checked);
  CHECK_FALSE(console.Lineweir.PortOn.checked);
  REQUIRE(trace.size() == 1);
  CHECK(trace[0].find(box->line.device()) != std::string::npos);

  messages.clear();
  const auto former = std::move(box);
  box = std::make_unique<InterfaceBox>(real_loop);
  set_device(1, box->line.device());
  click(console.Lineweir.PortOn);
  CHECK(console.Lineweir.PortOn.checked);
  CHECK(messages.empty());
  box->line.write("S07");
  CHECK(wait_until(loop, [&] { return console.lines.StatusLetter(7) == 'S'; }));
}

TEST_CASE_FIXTURE(ConsoleOnPort, "A missing device gives the message, and the trace says why") {
  click(console.Lineweir.Com2);
  click(console.Lineweir.PortOn);
  CHECK(messages == std::vector<std::string>{"Could Not Open Port"});
  CHECK(console.Lineweir.Off.checked);
  REQUIRE(trace.size() == 1);
  CHECK(trace[0].starts_with("PortOn_Click Error - "));
  CHECK(trace[0].find("/nowhere/line") != std::string::npos);
}

TEST_CASE_FIXTURE(ConsoleOnPort, "A device that somebody has open gives the message") {
  QtSerialPort somebody(real_loop, 1200, 1);
  somebody.open();
  click(console.Lineweir.PortOn);
  CHECK(messages == std::vector<std::string>{"Could Not Open Port"});
  REQUIRE(trace.size() == 1);
  CHECK(trace[0].find(box->line.device()) != std::string::npos);
  somebody.close();
  click(console.Lineweir.PortOn);
  CHECK(console.Lineweir.PortOn.checked);
}

TEST_CASE_FIXTURE(ConsoleOnPort, "Off while a box is still answering stays off") {
  box->answer = "Line mon";
  loop.schedule(500ms, [this] { click(console.Lineweir.Off); });
  const auto start = loop.now();
  click(console.Lineweir.PortOn);
  CHECK(loop.now() - start < 2000ms);
  // The limit of the wait for the rest, which must do nothing any more.
  loop.skip(5300ms);
  run_for(loop, 50ms);
  CHECK_FALSE(comm1.is_open());
  CHECK(console.Lineweir.Off.checked);
  CHECK_FALSE(console.Lineweir.PortOn.checked);
  CHECK(messages.empty());
  CHECK(box->heard == "M");
}

TEST_CASE_FIXTURE(ConsoleOnPort, "A box that answers is heard although another still answers") {
  const auto second = std::make_unique<InterfaceBox>(real_loop);
  set_device(2, second->line.device());
  box->answer = "%&#";
  loop.schedule(500ms, [this] { click(console.Lineweir.Com2); });
  const auto start = loop.now();
  click(console.Lineweir.PortOn);
  CHECK(loop.now() - start < 2000ms);
  CHECK(console.Lineweir.PortOn.checked);
  run_for(loop, 300ms);
  CHECK(messages.empty());
  CHECK(comm1.is_open());
  CHECK(comm1.comm_port() == 2);
  CHECK(second->heard == "MQ00Q01Q02Q03Q04Q05Q06Q07Q08Q09");
  CHECK(console.Lineweir.no_link.get().empty());
}

TEST_CASE_FIXTURE(ConsoleOnPort, "The program's end closes the port for good while a box answers") {
  box->answer = "Line mon";
  loop.schedule(500ms, [this] { click(console.Lineweir.ExitMenu); });
  const auto start = loop.now();
  click(console.Lineweir.PortOn);
  CHECK(loop.now() - start < 2000ms);
  CHECK(rest.ended);
  run_for(loop, 300ms);
  CHECK_FALSE(comm1.is_open());
  CHECK_FALSE(console.MyMsgbox.visible);
  CHECK(messages.empty());
}

TEST_CASE_FIXTURE(ConsoleOnPort,
                  "A box that is unplugged while it answers is told as gone, no more") {
  box->answer = "Line mon";
  loop.schedule(500ms, [this] { box->line.hang_up(); });
  click(console.Lineweir.PortOn);
  run_for(loop, 300ms);
  CHECK(messages == std::vector<std::string>{"This Com Port is not available at this time!"});
  CHECK(console.Lineweir.Off.checked);
}

TEST_CASE_FIXTURE(ConsoleOnPort, "A box that answers the start late is on as soon as it does") {
  box->answers = false;
  shorten_wait();
  console.port.open_at_start();
  CHECK(messages.size() == 1);
  CHECK_FALSE(console.Lineweir.no_link.get().empty());
  box->line.write("Line monitor ON");
  CHECK(wait_until(loop, [&] { return console.Lineweir.PortOn.checked.get(); }));
  CHECK(wait_until(loop, [&] { return box->heard.ends_with("Q09"); }));
  CHECK(console.Lineweir.no_link.get().empty());
}
