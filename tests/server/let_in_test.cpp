// Who is let in, by what, and who is kept out.

#include <doctest/doctest.h>

#include <algorithm>
#include <set>

#include "server/server_room.h"
#include "wire/rights_layout.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;

TEST_CASE("a console is let in by its password and told its rights") {
  ServerRoom room;
  auto console = room.connect();
  console->log_in("host", host_password);
  const ServerPacket answer = console->take_last(SrvPasswordResult);
  CHECK(answer.AltInfo == 'T');
  CHECK(answer.Buffer == rights_of(RightsTemplate::Host));
  console->log_in("host", host_password, CmdLoginCheck);
  CHECK(console->take_last(SrvLoginCheckResult).AltInfo == 'F');
}

TEST_CASE("who has no rights in a group is let in, told so, and told of the first that is open") {
  ServerRoom room;
  auto console = room.connect();
  console->log_in("only2", host_password);
  CHECK(console->take_last(SrvPasswordResult).Buffer == no_rights);
  console->log_in("only2", host_password, CmdRequestFirstUnblocked);
  CHECK(console->take_last(SrvFirstUnblocked).AltInfo == 2);
  console->join(1);
  const auto told = console->take();
  REQUIRE(told.size() == 2);
  CHECK(told[0].Buffer == "Studio 1\3Studio 2\3");
  CHECK(told[1].Buffer == "ERROR");
  console->join(2);
  CHECK(console->take(SrvFullStatus).size() == 1);
}

TEST_CASE("the wrong password, a name that is none and no password are answered alike") {
  ServerRoom room;
  for (const char* user : {"host", "nobody", ""}) {
    auto console = room.connect();
    const auto asked = room.loop.now();
    console->log_in(user, "wrong");
    CHECK(console->take_last(SrvPasswordResult).AltInfo == 'F');
    console->join(1);
    CHECK(console->take().empty());
    CHECK(room.loop.now() - asked > 300ms);
  }
  CHECK(room.figure("refusals_total{reason=\"wrong_password\"}") == 3);
  room.wait(1s);
  // A console that has no name yet asks without one, which is nobody's try.
  std::vector<std::string> refused;
  for (const platform::AuditEntry& entry : room.store.content().audit) {
    if (entry.event.action == "login refused") refused.push_back(entry.event.user);
  }
  CHECK(refused == std::vector<std::string>{"host", "nobody"});
}

TEST_CASE("five wrong passwords lock the user for a minute, and the next time for two") {
  ServerRoom room;
  const auto try_wrong = [&] {
    for (int i = 0; i < 5; ++i) room.connect()->log_in("host", "wrong");
  };
  const auto is_let_in = [&] {
    auto console = room.connect();
    console->log_in("host", host_password);
    return console->take_last(SrvPasswordResult).AltInfo == 'T';
  };
  try_wrong();
  CHECK_FALSE(is_let_in());
  room.wait(58s);
  CHECK(is_let_in());
  try_wrong();
  CHECK_FALSE(is_let_in());
  room.wait(1min);
  CHECK(is_let_in());
}

TEST_CASE("nobody has rights in a group that isn't there") {
  ServerRoom room;
  auto host = room.connect();
  host->group = 9;
  host->log_in("host", host_password);
  const ServerPacket answer = host->take_last(SrvPasswordResult);
  CHECK(answer.AltInfo == 'T');
  CHECK(answer.Buffer == no_rights);
}

TEST_CASE("a check without credentials is for who has been let in on the connection") {
  ServerRoom room;
  auto stranger = room.connect();
  stranger->send(stranger->packet(CmdLoginCheck));
  CHECK(stranger->take().empty());
  room.wait(400ms);
  CHECK(stranger->take_last(SrvLoginCheckResult).AltInfo == 'T');
  auto host = room.seat("host");
  host->send(host->packet(CmdLoginCheck));
  CHECK(host->take_last(SrvLoginCheckResult).AltInfo == 'F');
}

TEST_CASE("a crowd of connections that say nothing keeps nobody out") {
  ServerOptions options = ServerRoom::two_studios();
  options.seats = 20;
  options.seats_of_address = 10;
  ServerRoom room(options);
  auto host = room.seat("host", 1, 0, "10.0.0.2");
  std::vector<std::unique_ptr<FrameConsole>> crowd;
  for (int i = 0; i < 50; ++i) {
    crowd.push_back(room.connect("10.0.1." + std::to_string(i % 5)));
    room.wait(1ms);
  }
  CHECK(host->is_open());
  auto screener = room.seat("screener", 1, 0, "10.0.1.1");
  CHECK(screener->is_open());
  CHECK(screener->take(SrvFullStatus).size() == 1);
  CHECK(room.figure("connections") <= 20);
}

TEST_CASE("a server whose seats are all taken says so in its log, once until somebody gets in") {
  ServerOptions options = ServerRoom::two_studios();
  options.seats = 2;
  ServerRoom room(options);
  auto host = room.seat("host", 1, 0, "10.0.0.2");
  auto screener = room.seat("screener", 1, 0, "10.0.0.3");
  const auto told = [&] {
    return std::ranges::count_if(room.log, [](const std::string& line) {
      return line.ends_with("a connection is refused: all 2 seats are taken");
    });
  };
  for (int i = 0; i < 3; ++i) CHECK_FALSE(room.connect("10.0.0.4")->is_open());
  CHECK(told() == 1);
  screener->hang_up();
  room.wait(1s);
  CHECK(room.connect("10.0.0.4")->is_open());
  screener = room.seat("screener", 1, 0, "10.0.0.3");
  CHECK_FALSE(room.connect("10.0.0.4")->is_open());
  CHECK(told() == 2);
}

TEST_CASE("a seat whose place is known is let in without a password, and comes back so") {
  ServerOptions options = ServerRoom::two_studios();
  options.fixed_seats = {{"10.0.0.9", "host"}};
  ServerRoom room(options);
  auto console = room.connect("10.0.0.9");
  console->send(console->packet(CmdLoginCheck));
  CHECK(console->take_last(SrvLoginCheckResult).AltInfo == 'F');
  auto again = room.connect("10.0.0.9");
  again->log_in("", "");
  CHECK(again->take_last(SrvPasswordResult).AltInfo == 'T');
  again->log_in("host", "guessed");
  CHECK(again->take_last(SrvPasswordResult).AltInfo == 'F');
  // Its user has typed a name once.
  auto named = room.connect("10.0.0.9");
  named->log_in("host", "");
  CHECK(named->take_last(SrvPasswordResult).AltInfo == 'T');
  named = room.connect("10.0.0.9");
  named->log_in("screener", "");
  room.wait(5s);
  CHECK(named->take_last(SrvPasswordResult).AltInfo == 'F');
  for (const char* user : {"", "host"}) {
    auto elsewhere = room.connect("10.0.0.8");
    elsewhere->log_in(user, "");
    room.wait(5s);
    CHECK(elsewhere->take_last(SrvPasswordResult).AltInfo == 'F');
  }
}

TEST_CASE("a new store gets one engineer with a password that is told once") {
  ServerRoom room;
  room.crash();
  room.store.content() = {};
  room.start();
  room.wait(1s);
  REQUIRE(!room.first_password.empty());
  auto console = room.connect();
  console->log_in("engineer", room.first_password);
  const ServerPacket answer = console->take_last(SrvPasswordResult);
  CHECK(answer.AltInfo == 'T');
  CHECK(answer.Buffer == rights_of(RightsTemplate::Engineer));
  CHECK(room.first_password.size() == 14);
  CHECK(std::set(room.first_password.begin(), room.first_password.end()).size() > 7);
  // Once with the users of the store before, and once with the new one.
  CHECK(room.servings == 2);
}

}  // namespace
}  // namespace lineweir::server
