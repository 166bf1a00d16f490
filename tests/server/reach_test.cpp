// What a server does while it can't ask its telephone equipment.

#include <doctest/doctest.h>

#include <algorithm>

#include "server/server_room.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;

bool is_logged(const ServerRoom& room, const std::string& line) {
  return std::ranges::count(room.log, line) > 0;
}

// The host's seat, which has chosen who waits on line 6 as the next call; then the server dies.
void leave_a_next_call(ServerRoom& room) {
  auto host = room.seat("host");
  room.exchange().arrive(5, "5550100");
  room.exchange().obey("S05");
  host->send(host->packet(CmdSetNextCall, 5));
  room.wait(1s);
  room.crash();
}

std::string status(FrameConsole& console) {
  console.send(console.packet(CmdRequestStatus));
  return console.take_last(SrvFullStatus).Buffer;
}

}  // namespace

TEST_SUITE("server/reach") {
  TEST_CASE("seats are told when the equipment doesn't answer, and the log tells both") {
    ServerRoom room;
    auto host = room.seat("host");
    auto other = room.seat("host", 2);
    host->take();
    other->take();
    room.trunks.at(1)->reach(false);
    CHECK(host->take_last(SrvMessage).Buffer ==
          "The telephone equipment of Studio 1 does not answer. The lines show what was last "
          "known of them.");
    CHECK(other->take(SrvMessage).empty());
    CHECK(is_logged(room, "Studio 1: the exchange can't be reached"));
    CHECK(room.figure("exchange_reached{group=\"1\"}") == 0);
    CHECK(room.figure("exchange_reached{group=\"2\"}") == 1);
    // One that comes now is told too.
    CHECK(room.seat("screener", 1, 1)->take(SrvMessage).size() == 1);
    room.trunks.at(1)->reach(true);
    CHECK(is_logged(room, "Studio 1: the exchange is reached"));
    CHECK(host->take(SrvMessage).empty());
    CHECK(room.seat("screener", 1, 1)->take(SrvMessage).empty());
  }

  TEST_CASE("a server serves once all lines are told, and within a second in any case") {
    ServerRoom room;
    leave_a_next_call(room);
    room.exchanges_are_away = true;
    room.start();
    const auto serves = [&] {
      auto console = room.connect();
      return console->is_open();
    };
    SUBCASE("as the equipment tells them a little later") {
      CHECK_FALSE(serves());
      room.wait(300ms);
      CHECK_FALSE(serves());
      for (auto& [number, trunk] : room.trunks) {
        trunk->reach(true);
        trunk->tell_all();
      }
      room.wait(25ms);
      CHECK(serves());
    }
    SUBCASE("as one of two doesn't") {
      room.trunks.at(1)->reach(true);
      room.trunks.at(1)->tell_all();
      room.wait(950ms);
      CHECK_FALSE(serves());
      room.wait(80ms);
      CHECK(serves());
    }
    auto host = room.seat("host");
    CHECK(status(*host).substr(15, 3) == "S05");
  }

  TEST_CASE("the lines stand as they did last until the equipment tells them") {
    ServerRoom room;
    leave_a_next_call(room);
    room.exchanges_are_away = true;
    room.start();
    room.wait(2s);
    auto host = room.seat("host");
    CHECK(status(*host).substr(15, 3) == "S05");
    CHECK(room.store.content().calls.begin()->second.ended == platform::Moment{0});

    SUBCASE("and the call goes on where it still is") {
      room.trunks.at(1)->reach(true);
      room.wait(1s);
      CHECK(status(*host).substr(15, 3) == "S05");
      room.trunks.at(1)->tell_all();
      room.wait(15s);
      CHECK(status(*host).substr(15, 3) == "S05");
      CHECK(room.store.content().calls.size() == 1);
      CHECK(room.store.content().calls.begin()->second.ended == platform::Moment{0});
      CHECK(room.seat("screener", 1, 1)->take_last(SrvNextCall).LineNo == 5);
    }
    SUBCASE("and the call and its choice are over where it has gone") {
      room.exchange().leave(5);
      room.trunks.at(1)->reach(true);
      room.wait(500ms);
      CHECK(room.seat("screener", 1, 1)->take_last(SrvNextCall).LineNo == 5);
      room.trunks.at(1)->tell_all();
      room.wait(25ms);
      CHECK(status(*host).substr(15, 3) == "F05");
      room.wait(1s);
      CHECK(room.store.content().calls.begin()->second.ended != platform::Moment{0});
      CHECK(room.seat("screener", 1, 2)->take_last(SrvNextCall).LineNo == 255);
      CHECK(room.store.content().groups.at(1).next_call == -1);
    }
    SUBCASE("and no longer than ten seconds for what it doesn't tell") {
      room.exchange().leave(5);
      room.trunks.at(1)->reach(true);
      room.wait(9900ms);
      CHECK(status(*host).substr(15, 3) == "S05");
      room.wait(200ms);
      CHECK(status(*host).substr(15, 3) == "F05");
    }
    SUBCASE("and as they did where it goes away once more") {
      room.trunks.at(1)->reach(true);
      room.wait(1s);
      room.trunks.at(1)->reach(false);
      room.wait(20s);
      CHECK(status(*host).substr(15, 3) == "S05");
    }
    SUBCASE("and as they did behind a configuration that is read again") {
      room.server->reconfigure(ServerRoom::two_studios());
      room.wait(1s);
      CHECK(status(*host).substr(15, 3) == "S05");
      // It is reached, and hasn't told its lines yet.
      room.trunks.at(1)->reach(true);
      room.server->reconfigure(ServerRoom::two_studios());
      room.wait(1s);
      CHECK(status(*host).substr(15, 3) == "S05");
      CHECK(room.store.content().calls.begin()->second.ended == platform::Moment{0});
      CHECK(room.seat("screener", 1, 1)->take_last(SrvNextCall).LineNo == 5);
    }
    SUBCASE("and nothing is asked of a group that has ended meanwhile") {
      ServerOptions second = ServerRoom::two_studios();
      second.groups.erase(second.groups.begin());
      room.trunks.at(1)->reach(true);
      host->hang_up();
      room.server->reconfigure(second);
      room.wait(20s);
      CHECK(room.figure("seats{group=\"1\"}") == -1);
    }
  }
}

}  // namespace lineweir::server
