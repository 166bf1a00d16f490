// What outlives the server, and what has ended while it was away.

#include <doctest/doctest.h>

#include "server/server_room.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;

TEST_CASE("a standing call, its data, the next call and the message outlive the server") {
  ServerRoom room;
  auto host = room.seat("host");
  room.exchange().arrive(5, "555 0101");
  room.exchange().obey("S05");
  const std::string data = "Anna\2Bob\2\2Troy\2\2\2\2\2\2likes jazz\2\2";
  host->send(host->packet(CmdCallerData, 5, data));
  host->send(host->packet(CmdSetNextCall, 5));
  host->send(host->packet(CmdFlashMessage, no_value, "1\0022\2Anna\3Hi"));
  room.wait(1s);
  room.crash();
  room.wait(1min);
  room.start();
  auto again = room.seat("screener");
  const auto told = again->take();
  const auto find = [&](ServerCommand command, int line) {
    for (const ServerPacket& packet : told) {
      const bool fits = packet.CMD == static_cast<std::uint8_t>(command);
      if (fits && (line < 0 || packet.LineNo == line)) return packet;
    }
    return ServerPacket{};
  };
  CHECK(find(SrvCallerData, 5).Buffer == data);
  CHECK(find(SrvNextCall, -1).LineNo == 5);
  CHECK(find(SrvFlashMessage, -1).Buffer == "1\0022\2Anna\3Hi");
  room.exchange().leave(5);
  room.wait(1s);
  std::vector<platform::CallRecord> calls;
  room.store.calls({}, [&](auto found) { calls = found.value(); });
  room.wait(1s);
  REQUIRE(calls.size() == 1);
  CHECK(calls[0].told[0] == "Bob");
  CHECK(calls[0].number == "555 0101");
  CHECK(calls[0].ended > calls[0].began);
}

TEST_CASE("data that somebody has changed in the store reach the consoles as data do") {
  ServerRoom room;
  room.exchange().arrive(5, "555 0101");
  room.wait(1s);
  room.crash();
  platform::CallRecord& call = room.store.content().calls.begin()->second;
  call.told_by = "An\2na";
  call.told.fill(std::string(70'000, 'x') + "\2");
  call.told[0] = "Bob\2Hill";
  room.start();
  const auto host = room.seat("host");
  const auto told = host->take(SrvCallerData);
  REQUIRE(told.size() > 5);
  const std::string hundred(100, 'x');
  CHECK(told[5].Buffer == "An na\2Bob Hill\2" + hundred + "\2" + hundred + "\2" + hundred + "\2" +
                              hundred + "\2" + hundred + "\2" + std::string(10, 'x') +
                              "\2xxxxxx\2" + std::string(500, 'x') + "\2" + hundred + "\2");
}

TEST_CASE("a next call on a line that the configuration has lost is none") {
  ServerRoom room;
  auto host = room.seat("host");
  room.exchange().arrive(5, {});
  room.exchange().obey("S05");
  host->send(host->packet(CmdSetNextCall, 5));
  room.wait(1s);
  room.crash();
  room.options.groups[0].missing_lines = {6};
  room.start();
  CHECK(room.seat("host")->take_last(SrvNextCall).LineNo == 255);
}

TEST_CASE("a next call that ended while the server was away stays ended") {
  ServerRoom room;
  auto host = room.seat("host");
  room.exchange().arrive(5, {});
  room.exchange().obey("S05");
  host->send(host->packet(CmdSetNextCall, 5));
  room.wait(1s);
  room.crash();
  room.exchange().leave(5);
  for (int i = 0; i < 2; ++i) {
    room.start();
    room.wait(1s);
    CHECK(room.seat("host")->take_last(SrvNextCall).LineNo == 255);
    room.wait(1s);
    room.crash();
  }
}

TEST_CASE("a call that ended while the server was away is closed") {
  ServerRoom room;
  room.exchange().arrive(5, {});
  room.wait(1s);
  room.crash();
  room.exchange().leave(5);
  room.start();
  room.wait(20s);
  std::vector<platform::CallRecord> calls;
  room.store.calls({}, [&](auto found) { calls = found.value(); });
  room.wait(1s);
  REQUIRE(calls.size() == 1);
  CHECK(calls[0].steps.back().action == "ended while the server was away");
}

}  // namespace
}  // namespace lineweir::server
