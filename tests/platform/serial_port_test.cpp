#include <doctest/doctest.h>

#include <filesystem>
#include <fstream>
#include <vector>

#include "base/failure.h"
#include "in_child.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_serial_port.h"
#include "processor_time.h"
#include "pseudo_terminal.h"
#include "support/listen.h"
#include "temporary_directory.h"
#include "waiting.h"

using namespace lineweir;
using namespace lineweir::platform;
using namespace std::chrono_literals;

namespace {

struct SerialPortFixture {
  PseudoTerminal line;
  PseudoTerminal other_line;
  QtEventLoop loop;
  QtSerialPort port{loop, 1200, 1};
  std::string received;
  std::vector<std::string> losses;
  int events = 0;

  SerialPortFixture() {
    for (int number = 1; number <= 4; ++number) set_device(number, "/nowhere/line");
    set_device(1, line.device());
    listen(port.on_comm, [this](int event) {
      CHECK(event == comm_event_receive);
      ++events;
      received += port.input();
    });
    listen(port.on_lost, [this](const std::string& description) { losses.push_back(description); });
  }
};

struct Refusal {
  int number = 0;
  std::string description;
};

Refusal refusal_of(QtSerialPort& port) {
  try {
    port.open();
  } catch (const Failure& failure) {
    return {failure.number(), failure.what()};
  }
  return {};
}

}  // namespace

TEST_CASE_FIXTURE(SerialPortFixture, "Characters go both ways, and their arrival is an event") {
  port.open();
  CHECK(port.is_open());
  port.output("M");
  port.output("Q00");
  std::string sent;
  CHECK(wait_until(loop, [&] { return (sent += line.read()).size() >= 4; }));
  CHECK(sent == "MQ00");

  line.write("N05\r");
  CHECK(received.empty());
  CHECK(wait_until(loop, [&] { return received.size() >= 4; }));
  CHECK(received == "N05\r");
  CHECK(events >= 1);
  CHECK(port.input().empty());
}

TEST_CASE_FIXTURE(SerialPortFixture, "All 256 characters arrive as they are") {
  std::string all;
  for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
  port.open();
  line.write(all);
  CHECK(wait_until(loop, [&] { return received.size() >= all.size(); }));
  CHECK(received == all);
  port.output(all);
  std::string sent;
  CHECK(wait_until(loop, [&] { return (sent += line.read()).size() >= all.size(); }));
  CHECK(sent == all);
}

TEST_CASE_FIXTURE(SerialPortFixture, "A handler that waits within its event gets the next event") {
  std::string inner;
  listen(port.on_comm, [&](int) {
    received += port.input();
    if (received == "M") {
      line.write("F00");
      CHECK(wait_until(loop, [&] { return received.size() >= 4; }));
      inner = received;
    }
  });
  port.open();
  line.write("M");
  CHECK(wait_until(loop, [&] { return !inner.empty(); }));
  CHECK(inner == "MF00");
}

TEST_CASE_FIXTURE(SerialPortFixture, "Discarded input is neither read nor told") {
  port.open();
  line.write("old");
  port.on_comm.forget_handler();
  // The characters are in the program's own buffer by then.
  run_for(loop, 50ms);
  listen(port.on_comm, [this](int) {
    ++events;
    received += port.input();
  });
  port.discard_input();
  CHECK(port.input().empty());
  line.write("new");
  CHECK(wait_until(loop, [&] { return received.size() >= 3; }));
  CHECK(received == "new");
}

TEST_CASE_FIXTURE(SerialPortFixture, "A closed port says so") {
  CHECK_FALSE(port.is_open());
  CHECK(port.input().empty());
  port.discard_input();
  port.close();
  try {
    port.output("M");
    FAIL("output on a closed port");
  } catch (const Failure& failure) {
    CHECK(failure.number() == 8012);
  }
}

TEST_CASE_FIXTURE(SerialPortFixture, "The number of an open port stays") {
  port.set_comm_port(3);
  CHECK(port.comm_port() == 3);
  port.set_comm_port(1);
  port.open();
  CHECK_THROWS_AS(port.set_comm_port(2), Failure);
  CHECK(port.comm_port() == 1);
  port.close();
  port.set_comm_port(2);
  CHECK(refusal_of(port).number == 8010);
}

TEST_CASE_FIXTURE(SerialPortFixture, "What can't be opened tells why by its number") {
  SUBCASE("no such device") {
    port.set_comm_port(4);
    const Refusal refusal = refusal_of(port);
    CHECK(refusal.number == 8010);
    CHECK(refusal.description == "Can't open /nowhere/line: No such file or directory");
  }
  SUBCASE("no such port") {
    for (int number : {-1, 0, 5, 1000}) {
      port.set_comm_port(number);
      CHECK(refusal_of(port).number == 8002);
    }
  }
  SUBCASE("already open here") {
    port.open();
    CHECK(refusal_of(port).number == 8005);
    CHECK(port.is_open());
  }
  SUBCASE("open elsewhere") {
    QtSerialPort other(loop, 9600, 1);
    other.open();
    const Refusal refusal = refusal_of(port);
    CHECK(refusal.number == 8005);
    CHECK(refusal.description == "Can't open " + line.device() + ": Device or resource busy");
    other.close();
    CHECK(refusal_of(port).number == 0);
  }
  SUBCASE("open elsewhere under another name") {
    const TemporaryDirectory directory;
    std::filesystem::create_symlink(line.device(), directory.path() / "line");
    set_device(2, (directory.path() / "line").string());
    QtSerialPort other(loop, 9600, 2);
    other.open();
    CHECK(refusal_of(port).number == 8005);
  }
  SUBCASE("not a serial line") {
    const TemporaryDirectory directory;
    const std::string file = (directory.path() / "file").string();
    std::ofstream(file) << "text";
    set_device(1, file);
    const Refusal refusal = refusal_of(port);
    CHECK(refusal.number == 68);
    CHECK(refusal.description.starts_with("Can't open " + file + ": "));
  }
  SUBCASE("not permitted") {
    const TemporaryDirectory directory;
    const std::string file = (directory.path() / "file").string();
    std::ofstream(file) << "text";
    std::filesystem::permissions(file, std::filesystem::perms{0});
    std::filesystem::permissions(directory.path(), std::filesystem::perms{0755});
    set_device(1, file);
    const int number = test::in_child_without_power([&] {
      const Refusal refusal = refusal_of(port);
      const bool is_told = refusal.description == "Can't open " + file + ": Permission denied";
      return is_told ? refusal.number : 1;
    });
    CHECK(number == 68);
  }
}

TEST_CASE_FIXTURE(SerialPortFixture, "A line that vanishes is closed and told once, at no cost") {
  port.open();
  line.hang_up();
  CHECK(losses.empty());
  CHECK(wait_until(loop, [&] { return !losses.empty(); }));
  CHECK_FALSE(port.is_open());

  const auto before = processor_time();
  run_for(loop, 300ms);
  CHECK(processor_time() - before < 20ms);
  CHECK(losses == std::vector<std::string>{line.device() +
                                           " was lost: the device or its other end has gone."});

  SUBCASE("and opens again when it is back") {
    set_device(1, other_line.device());
    port.open();
    other_line.write("M");
    CHECK(wait_until(loop, [&] { return !received.empty(); }));
    CHECK(received == "M");
    port.output("Q00");
    std::string sent;
    CHECK(wait_until(loop, [&] { return (sent += other_line.read()).size() >= 3; }));
    run_for(loop, 50ms);
    CHECK(port.is_open());
    CHECK(losses.size() == 1);
  }
}

TEST_CASE_FIXTURE(SerialPortFixture, "A line that vanishes under characters to send is told once") {
  port.open();
  port.output(std::string(60000, 'x'));
  line.hang_up();
  CHECK(wait_until(loop, [&] { return !losses.empty(); }));
  run_for(loop, 100ms);
  CHECK(losses.size() == 1);
  CHECK_FALSE(port.is_open());
}

TEST_CASE_FIXTURE(SerialPortFixture, "A vanished line may be closed before it is noticed") {
  port.open();
  port.output("M");
  line.hang_up();
  port.close();
  run_for(loop, 50ms);
  CHECK_FALSE(port.is_open());
  CHECK(losses.empty());
}

TEST_CASE_FIXTURE(SerialPortFixture, "A close directly after a write loses nothing") {
  for (int round = 0; round < 20; ++round) {
    port.open();
    port.output("M");
    port.output("Q00");
    port.close();
    CHECK(line.read() == "MQ00");
  }
}

TEST_CASE_FIXTURE(SerialPortFixture, "A probe may close and open the port with no pause") {
  listen(port.on_comm, [&](int) {
    received += port.input();
    if (received != "M") return;
    port.close();
    port.discard_input();
    port.open();
    port.output("Q00");
  });
  port.open();
  line.write("M");
  std::string sent;
  CHECK(wait_until(loop, [&] { return (sent += line.read()).size() >= 3; }));
  CHECK(sent == "Q00");
  line.write("F00");
  CHECK(wait_until(loop, [&] { return received.size() >= 4; }));
  CHECK(received == "MF00");
}

TEST_CASE_FIXTURE(SerialPortFixture, "A line that takes nothing has a limit and closes in time") {
  port.open();
  const std::string thousand(1000, 'x');
  int refused = 0;
  for (int i = 0; i < 200; ++i) {
    try {
      port.output(thousand);
    } catch (const Failure& failure) {
      CHECK(failure.number() == 68);
      ++refused;
    }
    loop.run_pending();
  }
  CHECK(refused > 0);
  CHECK(port.is_open());
  const auto before_waiting = processor_time();
  run_for(loop, 300ms);
  CHECK(processor_time() - before_waiting < 20ms);
  const auto begin = loop.now();
  port.close();
  CHECK(loop.now() - begin < 5 * QtSerialPort::longest_flush);
  CHECK(losses.empty());
}

TEST_CASE_FIXTURE(SerialPortFixture, "Characters that nobody takes are kept up to a limit") {
  port.on_comm.forget_handler();
  port.open();
  const std::string thousand(1000, 'x');
  for (int i = 0; i < 200; ++i) {
    try {
      line.write(thousand);
    } catch (const std::runtime_error&) {
      break;
    }
    run_for(loop, 1ms);
  }
  const auto before_waiting = processor_time();
  run_for(loop, 300ms);
  CHECK(processor_time() - before_waiting < 20ms);
  const auto kept = static_cast<qint64>(port.input().size());
  CHECK(kept > QtSerialPort::most_unread / 2);
  CHECK(kept <= QtSerialPort::most_unread);
  do run_for(loop, 20ms);
  while (!port.input().empty());
  listen(port.on_comm, [this](int) { received += port.input(); });
  line.write("new");
  CHECK(wait_until(loop, [&] { return received.ends_with("new"); }));
}

TEST_CASE_FIXTURE(SerialPortFixture, "A port that goes while it is open tells nothing afterwards") {
  {
    QtSerialPort short_lived(loop, 9600, 1);
    listen(short_lived.on_comm, [](int) { FAIL("an event of a port that is gone"); });
    listen(short_lived.on_lost, [](const std::string&) { FAIL("a loss of a port that is gone"); });
    short_lived.open();
    line.write("M");
  }
  run_for(loop, 50ms);
}
