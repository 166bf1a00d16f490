// Studios spread over several servers with one database.

#include <doctest/doctest.h>
#include <signal.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <thread>

#include "platform/postgres/postgres_cluster.h"
#include "serverd/console_at_server.h"

using namespace lineweir;
using namespace std::chrono_literals;
using lineweir::test::ConsoleAtServer;
using lineweir::test::PostgresCluster;
using lineweir::test::StartedServer;
using lineweir::test::studio_password;

namespace {

// A server of one group, in a folder of its own.
class StudioServerProgram {
 public:
  StudioServerProgram(const std::string& store, int group, int wanted_port = 0)
      : group_(group), store_(store) {
    start(wanted_port);
  }

  void start(int wanted_port) {
    server = nullptr;
    server = std::make_unique<StartedServer>(folder_, configuration(wanted_port));
    port = server->wait_until_ready();
    REQUIRE(port > 0);
  }
  // Now that the port is known the others can be told.
  void tell_address() {
    server->signal(SIGTERM);
    REQUIRE(server->wait_for_end() == 0);
    start(port);
  }
  bool admin(const std::string& words) const {
    const std::string command = "cd '" + folder_.path().string() + "' && echo '" + studio_password +
                                "' > password && " LINEWEIR_ADMIN " --socket admin.sock " + words +
                                " > answer 2> trouble";
    return std::system(command.c_str()) == 0;  // NOLINT(concurrency-mt-unsafe)
  }
  std::string answer() const {
    std::ifstream file(folder_.path() / "answer");
    return {std::istreambuf_iterator<char>(file), {}};
  }

  // What another server did comes by way of the database, a moment later.
  bool will_tell(const std::string& words, const std::string& text) const {
    return will(words,
                [&](const std::string& told) { return told.find(text) != std::string::npos; });
  }
  bool will_forget(const std::string& words, const std::string& text) const {
    return will(words,
                [&](const std::string& told) { return told.find(text) == std::string::npos; });
  }

  std::unique_ptr<StartedServer> server;
  int port = 0;

 private:
  template <typename IsRight>
  bool will(const std::string& words, IsRight is_right) const {
    const auto limit = std::chrono::steady_clock::now() + 20s;
    while (!admin(words) || !is_right(answer())) {
      if (std::chrono::steady_clock::now() > limit) return false;
      std::this_thread::sleep_for(50ms);
    }
    return true;
  }

  std::string configuration(int wanted_port) const {
    const std::string number = std::to_string(group_);
    return "listen = \"127.0.0.1:" + std::to_string(wanted_port) + "\"\n" +
           (wanted_port == 0 ? std::string()
                             : "address = \"127.0.0.1:" + std::to_string(wanted_port) + "\"\n") +
           "store = \"" + store_ + "\"\nadmin_socket = \"admin.sock\"\nshutdown_seconds = 0\n" +
           "[[group]]\nnumber = " + number + "\nname = \"Studio " + number + "\"\n";
  }

  TemporaryDirectory folder_;
  int group_;
  std::string store_;
};

struct Spread {
  Spread() {
    REQUIRE(first.admin("user add host --template host --password-stdin < password"));
    second.tell_address();
    first.tell_address();
  }

  void choose(Console& console, int group) { console.Lineweir.StudioGr(group - 1).on_click(); }
  bool is_at(ConsoleAtServer& seat, const StudioServerProgram& program, int line) {
    return seat.wait([&] {
      MainForm& form = seat.console.Lineweir;
      const std::string place = "127.0.0.1, port " + std::to_string(program.port);
      const std::string& linked = form.linked_to.get();
      const bool is_there = linked.empty() || linked.starts_with(place);
      return is_there && seat.console.lines.StatusLetter(line) == 'R' &&
             !form.ServerSilence.visible;
    });
  }

  std::string store = PostgresCluster::the().new_database();
  StudioServerProgram first{store, 1};
  StudioServerProgram second{store, 2};
  platform::QtEventLoop loop;
};

}  // namespace

TEST_CASE_FIXTURE(Spread, "a seat that asks for a studio of another server is there by itself") {
  REQUIRE(first.admin("call 1 3"));
  REQUIRE(second.admin("call 2 7"));
  ConsoleAtServer seat(loop, "127.0.0.1", first.port, "host");
  REQUIRE(is_at(seat, first, 2));
  Console& console = seat.console;
  REQUIRE(seat.wait([&] { return console.Lineweir.StudioGr.loaded(1); }));
  CHECK(console.Lineweir.StudioGr(1).caption.get().find("Studio 2") != std::string::npos);

  choose(console, 2);
  CHECK(is_at(seat, second, 6));
  CHECK(console.program.GroupNumber == 2);
  CHECK(second.will_tell("seats", "host"));
  CHECK_FALSE(console.LoginForm.visible);
  // And back.
  choose(console, 1);
  CHECK(is_at(seat, first, 2));
  for (const std::string& message : seat.messages) INFO(message);
  CHECK(seat.messages.empty());
  // What the user typed as the address stays.
  CHECK(console.login.ServerHost == "127.0.0.1");
  CHECK(console.login.ServerPort == first.port);
}

TEST_CASE_FIXTURE(Spread, "a seat that was sent elsewhere comes back there when that server does") {
  REQUIRE(first.admin("call 1 3"));
  ConsoleAtServer seat(loop, "127.0.0.1", first.port, "host");
  REQUIRE(is_at(seat, first, 2));
  REQUIRE(seat.wait([&] { return seat.console.Lineweir.StudioGr.loaded(1); }));
  choose(seat.console, 2);
  REQUIRE(second.admin("call 2 7"));
  REQUIRE(is_at(seat, second, 6));
  const auto limit = std::chrono::steady_clock::now() + 6s;
  seat.wait([&] { return std::chrono::steady_clock::now() > limit; });
  second.server->signal(SIGKILL);
  second.server->wait_for_end();
  REQUIRE(seat.wait([&] { return seat.console.Lineweir.ServerSilence.visible.get(); }));
  second.start(second.port);
  REQUIRE(second.admin("call 2 9"));
  CHECK(is_at(seat, second, 8));
  CHECK(seat.console.program.GroupNumber == 2);
}

TEST_CASE_FIXTURE(Spread, "users, flags and calls of one server become the others'") {
  REQUIRE(second.admin("user add anna --template screener --password-stdin < password"));
  CHECK(first.will_tell("user list", "anna"));
  REQUIRE(first.admin("caller flag 312-555-0100 barred --reason abuse"));
  CHECK(second.will_tell("caller list", "312-555-0100"));
  REQUIRE(first.admin("call 1 1 --number 3125550100"));
  REQUIRE(first.admin("hangup 1 1"));
  CHECK(second.will_tell("caller show '+1 312 555 0100'", "barred"));
  CHECK(second.will_tell("--json calls", "3125550100"));
  REQUIRE(first.admin("user remove anna"));
  CHECK(second.will_forget("user list", "anna"));
  CHECK_FALSE(second.admin("user lock anna"));
  CHECK(second.admin("audit verify"));
}

TEST_CASE_FIXTURE(Spread, "no two servers have one group") {
  TemporaryDirectory folder;
  StartedServer third(folder, "listen = \"127.0.0.1:0\"\nstore = \"" + store +
                                  "\"\n[[group]]\nnumber = 3\n[[group]]\nnumber = 2\n");
  CHECK(third.wait_for_end() == 1);
  CHECK(third.wait_for_log().find("another server has group 2 of the store") != std::string::npos);
}
