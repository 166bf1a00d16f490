#include "platform/scripted/scripted_serial_port.h"

#include <doctest/doctest.h>

#include "platform/scripted/virtual_event_loop.h"
#include "support/failure_number.h"
#include "support/listen.h"

namespace lineweir::platform {
namespace {

using test::failure_number_of;

struct PortFixture {
  PortFixture() {
    listen(port.on_comm, [this](int comm_event) {
      CHECK(comm_event == comm_event_receive);
      events.push_back(port.input());
    });
  }

  VirtualEventLoop loop;
  ScriptedSerialPort port{loop};
  std::vector<std::string> events;
};

using Texts = std::vector<std::string>;

TEST_CASE_FIXTURE(PortFixture, "Each arrival is one event, from the loop") {
  port.open();
  port.arrive("N05");
  CHECK(events.empty());
  port.arrive("S01");
  loop.run_pending();
  CHECK(events == Texts{"N05", "S01"});
}

TEST_CASE_FIXTURE(PortFixture, "A read takes all that is there; what is discarded is gone") {
  port.on_comm.forget_handler();
  port.open();
  port.arrive("ab");
  port.arrive("cd");
  loop.run_pending();
  CHECK(port.input() == "abcd");
  CHECK(port.input().empty());
  port.arrive("x");
  loop.run_pending();
  port.discard_input();
  CHECK(port.input().empty());
}

TEST_CASE_FIXTURE(PortFixture, "What arrives at a closed port is lost") {
  port.arrive("N05");
  loop.run_pending();
  port.open();
  loop.run_pending();
  CHECK(events.empty());
  CHECK(port.input().empty());
}

TEST_CASE_FIXTURE(PortFixture, "Whoever is at the other end is told of each write") {
  Texts heard;
  port.on_written = [&] { heard = port.take_writes(); };
  port.open();
  port.output("N05");
  CHECK(heard == Texts{"N05"});
  port.output("F05");
  CHECK(heard == Texts{"F05"});
}

TEST_CASE_FIXTURE(PortFixture, "A write that is the request is answered 20 milliseconds later") {
  port.reply("M", "Line monitor ON");
  port.open();
  port.output("MM");
  port.output("M");
  loop.advance(Milliseconds(19));
  CHECK(events.empty());
  loop.advance(Milliseconds(1));
  CHECK(events == Texts{"Line monitor ON"});
  CHECK(port.take_writes() == Texts{"MM", "M"});
  CHECK(port.take_writes().empty());
}

TEST_CASE_FIXTURE(PortFixture, "A reply stays until it is replaced; an empty one is none") {
  port.reply("M", "first");
  port.reply("M", "second");
  port.open();
  port.output("M");
  loop.advance(Milliseconds(20));
  port.reply("M", "");
  port.output("M");
  loop.advance(Milliseconds(20));
  CHECK(events == Texts{"second"});
}

TEST_CASE_FIXTURE(PortFixture, "An answer is lost if the port is closed when it comes") {
  port.reply("M", "answer");
  port.open();
  port.output("M");
  port.close();
  loop.advance(Milliseconds(20));
  CHECK(events.empty());
  port.open();
  port.output("M");
  port.close();
  port.open();
  loop.advance(Milliseconds(20));
  CHECK(events == Texts{"answer"});
}

TEST_CASE_FIXTURE(PortFixture, "What the state forbids fails by its number") {
  CHECK(failure_number_of([&] { port.output("M"); }) == failure_number::port_not_open);
  CHECK(failure_number_of([&] { port.set_comm_port(5); }) == failure_number::bad_port_number);
  port.set_comm_port(4);
  port.open();
  CHECK(failure_number_of([&] { port.open(); }) == failure_number::port_already_open);
  CHECK(failure_number_of([&] { port.set_comm_port(1); }) == failure_number::port_already_open);
  CHECK(port.comm_port() == 4);
}

TEST_CASE_FIXTURE(PortFixture, "As many openings fail as were arranged") {
  port.fail_openings(8010, 2);
  CHECK(failure_number_of([&] { port.open(); }) == 8010);
  CHECK(failure_number_of([&] { port.open(); }) == 8010);
  CHECK_FALSE(port.is_open());
  port.open();
  CHECK(port.is_open());
}

TEST_CASE_FIXTURE(PortFixture, "For the next program the port is closed and has its first number") {
  port.reply("M", "answer");
  port.set_comm_port(3);
  port.open();
  port.restart();
  CHECK_FALSE(port.is_open());
  CHECK(port.comm_port() == 1);
  port.open();
  port.output("M");
  loop.advance(Milliseconds(20));
  CHECK(port.input() == "answer");
}

TEST_CASE_FIXTURE(PortFixture, "A port may begin with another number, also for the next program") {
  ScriptedSerialPort second(loop, 2);
  CHECK(second.comm_port() == 2);
  second.set_comm_port(4);
  second.restart();
  CHECK(second.comm_port() == 2);
}

TEST_CASE_FIXTURE(PortFixture, "An open port that vanishes is closed and told, a closed one not") {
  Texts told;
  listen(port.on_lost, [&](const std::string& description) { told.push_back(description); });
  port.vanish();
  CHECK(told.empty());
  port.open();
  port.vanish();
  CHECK_FALSE(port.is_open());
  CHECK(told == Texts{"Serial port 1 was lost"});
}

}  // namespace
}  // namespace lineweir::platform
