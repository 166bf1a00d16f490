#include "state/socket_trap.h"

#include <doctest/doctest.h>

#include <functional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

constexpr int some_failure = 40020;

// A console that writes down its reports and messages and counts the passes of its loop.
struct Trapped : ScriptedConsole {
  Trapped() : ScriptedConsole("D") {
    console.trace.on_line = [this](const std::string& line) { reports.push_back(line); };
    console.messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
    count_pass();
  }

  // A call that is due at once runs once in each pass.
  void count_pass() {
    platform.loop.schedule(platform::Milliseconds{0}, [this] {
      ++passes;
      if (in_pass) in_pass();
      if (counting) count_pass();
    });
  }

  Texts reports;
  Texts messages;
  int passes = 0;
  bool counting = true;
  std::function<void()> in_pass;
};

TEST_SUITE("state/socket_trap") {
  TEST_CASE("a body that succeeds runs once") {
    Trapped desk;
    int tries = 0;
    CHECK(socket_trap(desk.console, "Handler", [&] { ++tries; }));
    CHECK(tries == 1);
    CHECK(desk.passes == 0);
    CHECK(desk.reports.empty());
  }

  TEST_CASE("40006 shows its message and drops the action without a retry") {
    Trapped desk;
    int tries = 0;
    CHECK_FALSE(socket_trap(desk.console, "Handler", [&] {
      ++tries;
      throw Failure(failure_number::socket_wrong_state, "Wrong state");
    }));
    CHECK(tries == 1);
    CHECK(desk.passes == 0);
    CHECK(desk.messages == Texts{"Lineweir is not currently connected to a server."});
    CHECK(desk.console.MyMsgbox.visible);
    CHECK(desk.reports.empty());
  }

  TEST_CASE("another failure is tried again 20 times and then reported under the handler's name") {
    Trapped desk;
    int tries = 0;
    CHECK_FALSE(socket_trap(desk.console, "Lineweir_FindNext", [&] {
      ++tries;
      throw Failure(some_failure, "Out of buffers");
    }));
    CHECK(tries == 21);
    CHECK(desk.reports == Texts{"Lineweir_FindNext Error - Out of buffers"});
    CHECK(desk.messages.empty());
  }

  TEST_CASE("between two tries the loop runs for 1 to 1000 passes, at random") {
    Trapped desk;
    std::vector<int> passes;
    socket_trap(desk.console, "Handler", [&] {
      passes.push_back(desk.passes);
      desk.passes = 0;
      throw Failure(some_failure, "x");
    });
    REQUIRE(passes.size() == 21);
    CHECK(passes.front() == 0);
    bool different = false;
    for (std::size_t i = 1; i < passes.size(); ++i) {
      CHECK(passes[i] >= 1);
      CHECK(passes[i] <= 1000);
      different = different || passes[i] != passes[1];
    }
    CHECK(different);
  }

  TEST_CASE("a retry that succeeds leaves no mark") {
    Trapped desk;
    int tries = 0;
    CHECK(socket_trap(desk.console, "Handler", [&] {
      if (++tries < 4) throw Failure(some_failure, "x");
    }));
    CHECK(tries == 4);
    CHECK(desk.reports.empty());
    CHECK(desk.messages.empty());
  }

  TEST_CASE("40006 at a retry shows the message and ends") {
    Trapped desk;
    int tries = 0;
    CHECK_FALSE(socket_trap(desk.console, "Handler", [&] {
      throw Failure(++tries == 1 ? some_failure : failure_number::socket_wrong_state, "x");
    }));
    CHECK(tries == 2);
    CHECK(desk.messages.size() == 1);
  }

  TEST_CASE("a handler that waits for its next try isn't entered again; others are") {
    Trapped desk;
    int same = 0;
    int other = 0;
    desk.in_pass = [&] {
      CHECK_FALSE(socket_trap(desk.console, "Handler", [&] { ++same; }));
      CHECK(socket_trap(desk.console, "Other", [&] { ++other; }));
    };
    int tries = 0;
    CHECK(socket_trap(desk.console, "Handler", [&] {
      if (++tries == 1) throw Failure(some_failure, "x");
    }));
    CHECK(same == 0);
    CHECK(other > 0);
    desk.in_pass = nullptr;
    CHECK(socket_trap(desk.console, "Handler", [&] { ++same; }));
    CHECK(same == 1);
  }

  TEST_CASE("two handlers that both wait both end") {
    Trapped desk;
    int inner_tries = 0;
    bool entered = false;
    desk.in_pass = [&] {
      if (std::exchange(entered, true)) return;
      desk.counting = false;
      socket_trap(desk.console, "Other", [&] {
        ++inner_tries;
        throw Failure(some_failure, "inner");
      });
    };
    int tries = 0;
    socket_trap(desk.console, "Handler", [&] {
      ++tries;
      throw Failure(some_failure, "outer");
    });
    CHECK(tries == 21);
    CHECK(inner_tries == 21);
    CHECK(desk.reports == Texts{"Other Error - inner", "Handler Error - outer"});
  }
}

}  // namespace
}  // namespace lineweir::test
