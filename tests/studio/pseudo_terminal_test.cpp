#include "studio/pseudo_terminal.h"

#include <doctest/doctest.h>
#include <poll.h>

#include <sstream>
#include <string>

#include "serial_client.h"
#include "studio/output.h"

using namespace lineweir::studio;

namespace {

bool has_input(const PseudoTerminal& terminal, int wait_ms) {
  pollfd waiting{terminal.descriptor(), POLLIN, 0};
  return poll(&waiting, 1, wait_ms) == 1 && (waiting.revents & POLLIN) != 0;
}

}  // namespace

TEST_CASE("bytes of every value pass both ways unchanged") {
  PseudoTerminal terminal;
  SerialClient client(terminal.device());
  std::string all;
  for (int code = 0; code < 256; ++code) all += static_cast<char>(code);
  CHECK(terminal.write(all) == 0);
  CHECK(client.receive(256) == all);
  client.send(all);
  std::string got;
  while (got.size() < 256 && has_input(terminal, 10'000)) got += terminal.read();
  CHECK(got == all);
}

TEST_CASE("the device lives on when the console closes it and opens it again") {
  PseudoTerminal terminal;
  for (int i = 0; i < 5; ++i) {
    SerialClient client(terminal.device());
    client.send("M");
    REQUIRE(has_input(terminal, 10'000));
    CHECK(terminal.read() == "M");
    CHECK(terminal.write("N05") == 0);
    CHECK(client.receive(3) == "N05");
  }
  CHECK_FALSE(has_input(terminal, 0));
  CHECK(terminal.read() == "");
}

TEST_CASE("with nobody reading a write returns, and what is lost is the old") {
  PseudoTerminal terminal;
  // The system hands characters on in its own time, so how many it takes before is its affair.
  constexpr int many = 1'000'000;
  int writes = 0;
  while (terminal.write("stale") == 0 && writes < many) ++writes;
  REQUIRE(writes < many);
  int tries = 0;
  while (terminal.write("latest") != 0 && tries < many) ++tries;
  REQUIRE(tries < many);
  SerialClient late(terminal.device());
  CHECK(late.receive_until("latest").ends_with("latest"));
}

TEST_CASE("the log tells that nobody reads, and the show goes on") {
  BoxedExchangeOptions options;
  options.callers.call_every = Moment(1000);
  options.auto_operator.emplace();
  BoxedExchange exchange(options);
  PseudoTerminal terminal;
  std::ostringstream out;
  StudioLog log("-", out);
  constexpr int many = 100'000;
  int seconds = 0;
  while (out.str().find("note nobody reads the device, ") == std::string::npos && seconds < many) {
    const Moment now(1000 * ++seconds);
    exchange.advance(now);
    pass_output(exchange, terminal, log, now);
  }
  REQUIRE(seconds < many);
  CHECK(out.str().ends_with(" characters lost\n"));
}
