// A console that knows two servers, and what it does when one of them is killed, hangs or is shut
// down: the programs themselves, over real sockets.

#include <doctest/doctest.h>

#include <signal.h>

#include <chrono>

#include "serverd/console_at_server.h"

using namespace lineweir;
using namespace std::chrono_literals;
using lineweir::test::ConsoleAtServer;
using lineweir::test::Studio;

namespace {

std::string configuration(const std::string& studio) {
  return R"(
listen = "127.0.0.1:0"
store = "sqlite:server.db"
admin_socket = "admin.sock"
shutdown_seconds = 8

[[group]]
number = 1
name = ")" +
         studio + "\"\n";
}

struct TwoServers {
  TwoServers() {
    REQUIRE(first.port > 0);
    REQUIRE(second.port > 0);
    // So that it is seen which server's studio the screen shows.
    REQUIRE(first.admin("call 1 3"));
    REQUIRE(second.admin("call 1 7"));
    CHECK(console.shows(2, 'R'));
    // Long enough for a heartbeat to be known.
    const auto limit = std::chrono::steady_clock::now() + 6s;
    console.wait([&] { return std::chrono::steady_clock::now() > limit; });
  }

  std::string address() const {
    return "127.0.0.1:" + std::to_string(first.port) + ", 127.0.0.1:" + std::to_string(second.port);
  }
  bool is_at(const Studio& studio, int line) {
    return console.wait([&] {
      MainForm& form = console.console.Lineweir;
      return form.linked_to.get().starts_with("127.0.0.1, port " + std::to_string(studio.port)) &&
             console.console.lines.StatusLetter(line) == 'R' && !form.ServerSilence.visible;
    });
  }

  platform::QtEventLoop loop;
  Studio first{configuration("First")};
  Studio second{configuration("Second")};
  ConsoleAtServer console{loop, address(), 2001, "host"};
  std::chrono::steady_clock::time_point began = std::chrono::steady_clock::now();
  void begin() { began = std::chrono::steady_clock::now(); }
  std::chrono::milliseconds elapsed() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                 began);
  }
};

}  // namespace

TEST_CASE_FIXTURE(TwoServers, "a console whose server is killed is at the other within seconds") {
  begin();
  first.server.signal(SIGKILL);
  CHECK(is_at(second, 6));
  MESSAGE("after a kill: ", elapsed().count(), " ms");
  CHECK(console.console.lines.StatusLetter(2) != 'R');
  CHECK_FALSE(console.console.MyMsgbox.visible);
}

TEST_CASE_FIXTURE(TwoServers,
                  "a console whose server stands still is at the other within seconds") {
  begin();
  first.server.signal(SIGSTOP);
  CHECK(is_at(second, 6));
  MESSAGE("after a stop: ", elapsed().count(), " ms");
  first.server.signal(SIGCONT);
}

TEST_CASE_FIXTURE(TwoServers, "a console whose server is shut down goes to the other ahead of it") {
  begin();
  first.server.signal(SIGTERM);
  CHECK(is_at(second, 6));
  MESSAGE("after the notice: ", elapsed().count(), " ms");
}
