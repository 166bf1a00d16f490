// What is entered of callers, and what becomes of it when calls come and go.

#include <doctest/doctest.h>

#include "server/server_room.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;

}  // namespace

TEST_SUITE("server/caller data") {
  TEST_CASE("what was entered of a line without a call isn't the next caller's") {
    ServerRoom room;
    auto host = room.seat("host");
    auto screener = room.seat("screener");
    screener->send(screener->packet(CmdCallerData, 4, "Anna\2Bob\2"));
    CHECK(host->take_last(SrvCallerData).Buffer.starts_with("Anna\2Bob\2"));
    SUBCASE("of whom no number is told") {
      room.exchange().arrive(4, {});
      const ServerPacket told = host->take_last(SrvCallerData);
      CHECK(told.LineNo == 4);
      CHECK(told.Buffer.empty());
    }
    SUBCASE("whose number stands in its place") {
      room.exchange().arrive(4, "5550100");
      CHECK(host->take_last(SrvCallerData)
                .Buffer.starts_with("\2\2\2\2\2\2"
                                    "5550100\2"));
    }
  }

  TEST_CASE("the name under which a seat enters data is its own from then on") {
    ServerRoom room;
    auto host = room.seat("host");
    room.exchange().arrive(4, {});
    host->send(host->packet(CmdCallerData, 4, "Anna\2Bob\2"));
    CHECK(host->take_last(SrvCallerData).Buffer.starts_with("Anna\2Bob\2"));
    // A clearing that comes late is answered with the data, which its console takes from no other.
    host->send(host->packet(CmdCallerData, 4));
    CHECK(host->take_last(SrvCallerData).Buffer.starts_with("\2Bob\2"));
  }

  TEST_CASE("a caller of whom nothing is known is told to nobody as data") {
    ServerRoom room;
    auto host = room.seat("host");
    host->take();
    room.exchange().arrive(4, {});
    room.exchange().leave(4);
    CHECK(host->take(SrvCallerData).empty());
  }
}

}  // namespace lineweir::server
