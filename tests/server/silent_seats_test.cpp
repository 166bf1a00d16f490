// Consoles that say nothing, that don't read, and that come back.

#include <doctest/doctest.h>

#include <algorithm>

#include "server/server_room.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;

TEST_CASE("a connection that says nothing for ten seconds is closed, one whose user types is not") {
  ServerRoom room;
  auto mute = room.connect();
  auto dripping = room.connect();
  auto typing = room.connect();
  typing->log_in("host", "wrong");
  for (int i = 0; i < 9; ++i) {
    room.wait(1s);
    dripping->send_bytes("\4");
  }
  CHECK(mute->is_open());
  room.wait(3s);
  CHECK_FALSE(mute->is_open());
  CHECK_FALSE(dripping->is_open());
  room.wait(2min);
  CHECK(typing->is_open());
  room.wait(4min);
  CHECK_FALSE(typing->is_open());
}

TEST_CASE("a silent seat is dropped and its caller goes on hold") {
  ServerRoom room;
  auto screener = room.seat("screener");
  room.exchange().arrive(6, {});
  screener->word('P', 6, 0);
  for (int i = 0; i < 5; ++i) {
    room.wait(20s);
    screener->send(screener->packet(CmdTimeRequest));
  }
  CHECK(screener->is_open());
  room.wait(34s);
  CHECK(room.exchange().letter(6) == 'P');
  room.wait(3s);
  CHECK_FALSE(screener->is_open());
  CHECK(room.exchange().letter(6) == 'H');
  CHECK(room.figure("seats_dropped_total{reason=\"silent\"}") == 1);
  CHECK(std::ranges::count(room.log,
                           "seat ends: user \"screener\" at 10.0.0.1, silent for too long") == 1);
  CHECK(room.figure("seats_dropped_total{reason=\"slow\"}") == 0);
}

TEST_CASE("a server that stood still drops nobody for it") {
  ServerRoom room;
  auto screener = room.seat("screener");
  room.exchange().arrive(6, {});
  screener->word('P', 6, 0);
  room.wait(5s);
  room.server_loop.stop_for(60s);
  room.wait(5s);
  CHECK(screener->is_open());
  CHECK(room.exchange().letter(6) == 'P');
  room.wait(37s);
  CHECK_FALSE(screener->is_open());
}

TEST_CASE("a server that stands still again and again drops nobody for it") {
  ServerRoom room;
  auto screener = room.seat("screener");
  for (int second = 0; second < 25; ++second) {
    room.server_loop.stop_for(1500ms);
    room.wait(1s);
  }
  CHECK(screener->is_open());
}

TEST_CASE("a server that stood still drops no stranger who came just before") {
  ServerRoom room;
  auto stranger = room.connect();
  room.wait(2s);
  room.server_loop.stop_for(60s);
  room.wait(5s);
  CHECK(stranger->is_open());
  room.wait(6s);
  CHECK_FALSE(stranger->is_open());
}

TEST_CASE("a server that is always a little late still drops who is silent") {
  ServerRoom room;
  auto screener = room.seat("screener");
  for (int second = 0; second < 26; ++second) {
    room.server_loop.stop_for(500ms);
    room.wait(1s);
  }
  CHECK_FALSE(screener->is_open());
}

TEST_CASE("a stranger who asks for the time is heard, and dropped when he does so no more") {
  ServerRoom room;
  auto stranger = room.connect("10.0.0.8");
  for (int i = 0; i < 6; ++i) {
    room.wait(8s);
    stranger->send(stranger->packet(CmdTimeRequest));
    CHECK(stranger->take(SrvTime).size() == 1);
  }
  room.wait(9s);
  CHECK(stranger->is_open());
  room.wait(2s);
  CHECK_FALSE(stranger->is_open());
  CHECK(room.log.back() == "connection ends: 10.0.0.8, said nothing");
}

TEST_CASE("a seat that comes back in time keeps its caller at the handset") {
  ServerRoom room;
  auto screener = room.seat("screener");
  room.exchange().arrive(6, {});
  screener->word('P', 6, 0);
  screener->hang_up();
  room.wait(10s);
  screener = room.seat("screener");
  for (int i = 0; i < 6; ++i) {
    room.wait(10s);
    screener->send(screener->packet(CmdTimeRequest));
  }
  CHECK(room.exchange().letter(6) == 'P');
  screener->hang_up();
  room.wait(37s);
  CHECK(room.exchange().letter(6) == 'H');
}

TEST_CASE("a seat that doesn't read is dropped alone, and told why at its next login") {
  ServerRoom room;
  auto stuck = room.seat("screener");
  auto other = room.seat("host");
  stuck->stop_reading();
  for (int i = 0; i < 3000 && stuck->is_open(); ++i) {
    room.exchange().arrive(0, "555 0100");
    room.exchange().leave(0);
    room.wait(1ms);
  }
  CHECK_FALSE(stuck->is_open());
  CHECK(other->is_open());
  const auto is_told_why = [&] {
    auto again = room.connect();
    again->log_in("screener", host_password);
    return again->take_last(SrvMessage).Buffer.find("too slowly") != std::string::npos;
  };
  CHECK(is_told_why());
  CHECK(room.figure("seats_dropped_total{reason=\"slow\"}") == 1);
  // Once is enough.
  CHECK_FALSE(is_told_why());
}

}  // namespace
}  // namespace lineweir::server
