// What seats and administrators note of callers, and what is told of it.

#include <doctest/doctest.h>

#include "base/iso_date.h"
#include "server/group_desk.h"
#include "server/returning_caller.h"
#include "server/short_requests.h"
#include "wire/caller_known.h"

using namespace lineweir;
using namespace lineweir::server;
using namespace lineweir::test;
using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;

namespace {

// The caller's number stands in the sixth field.
void enter_number(FrameConsole& console, int line, const std::string& number) {
  console.send(console.packet(CmdCallerData, line, "Anna\2Bob\2\2\2\2\2" + number + "\2"));
}

double malformed(const ServerRoom& room) {
  return room.figure("refusals_total{reason=\"malformed\"}");
}

platform::FlaggedCaller flagged(const std::string& number, CallerFlag flag,
                                const std::string& reason = {}) {
  return {.key = number, .number = number, .flag = flag, .reason = reason};
}

}  // namespace

TEST_SUITE("server/flagging") {
  TEST_CASE("a flag may hold for today alone, and not for a day that is over") {
    ServerRoom room;
    AdminTool tool(room);
    auto host = room.seat("host");
    const std::string today = iso_date_text(room.clock.local(room.clock.now()));
    const std::string number = "3125550100";
    SUBCASE("as a seat sets it") {
      send_flag(*host,
                {.flag = CallerFlag::Careful, .number = number, .reason = {}, .until = today});
      CHECK(malformed(room) == 0);
    }
    SUBCASE("as an administrator sets it") {
      CHECK(tool.refusal(
                {Command::CallerFlag,
                 {{Field::Number, number}, {Field::Flag, "careful"}, {Field::Until, today}}}) ==
            "");
    }
    const auto rows = tool.rows({Command::CallerList});
    REQUIRE(rows.size() == 1);
    CHECK(rows[0].at("until") == today);
    send_flag(*host,
              {.flag = CallerFlag::Barred, .number = number, .reason = {}, .until = "2020-01-01"});
    CHECK(malformed(room) == 1);
    CHECK(tool.rows({Command::CallerList}).at(0).at("flag") == "careful");
  }

  TEST_CASE("what a seat notes of a number that is none is refused, and the person told") {
    ServerRoom room;
    auto host = room.seat("host");
    host->take();
    send_flag(*host, {.flag = CallerFlag::Careful, .number = "999", .reason = {}, .until = {}});
    CHECK(host->take_last(SrvMessage).Buffer.find("at least four digits") != std::string::npos);
    CHECK(malformed(room) == 1);
    CHECK(room.store.content().flagged_callers.empty());
  }

  TEST_CASE("who takes a flag back stands in the audit, not who had set it") {
    ServerRoom room;
    AdminTool tool(room);
    auto host = room.seat("host");
    send_flag(*host,
              {.flag = CallerFlag::Barred, .number = "3125550100", .reason = {}, .until = {}});
    CHECK(tool.refusal(text(Command::CallerClear, Field::Number, "3125550100")) == "");
    CHECK(administrators_entries(tool) == Texts{"caller flagged: ...0100, none"});
  }

  TEST_CASE("of two numbers of a line the one that a seat has entered is shown with its flag") {
    ServerRoom room;
    AdminTool tool(room);
    const auto note = [&](const std::string& number, const std::string& reason) {
      CHECK(tool.refusal(
                {Command::CallerFlag,
                 {{Field::Number, number}, {Field::Flag, "careful"}, {Field::Text, reason}}}) ==
            "");
    };
    note("5550199", "of the exchange");
    note("3125550100", "as entered");
    auto host = room.seat("host");
    room.exchange().arrive(4, "5550199");
    room.wait(1s);
    const auto told = [&] {
      const ServerPacket packet = host->take_last(SrvCallerKnown);
      return decode_caller_known(packet.AltInfo, packet.Buffer).value();
    };
    CHECK(told().reason == "of the exchange");
    enter_number(*host, 4, "312 555 0100");
    room.wait(1s);
    const CallerKnown known = told();
    CHECK(known.number == "312 555 0100");
    CHECK(known.reason == "as entered");
    // The same once more is nothing new.
    enter_number(*host, 4, "312-555-0100");
    room.wait(1s);
    CHECK(host->take(SrvCallerKnown).empty());
  }

  TEST_CASE("a caller whose history is known is not looked up again by other data of the call") {
    ServerRoom room;
    auto host = room.seat("host");
    room.exchange().arrive(4, "3125550100");
    room.exchange().leave(4);
    room.wait(1s);
    room.exchange().arrive(4, "3125550100");
    room.wait(1s);
    CHECK(host->take(SrvCallerKnown).size() == 1);
    enter_number(*host, 4, "312 555 0100");
    room.wait(1s);
    CHECK(host->take(SrvCallerKnown).empty());
  }

  TEST_CASE("what is taken over from the store tells what has changed, and nothing else") {
    PartsDesk desk;
    // Also where nobody listens yet.
    desk.caller_memory.take_over({flagged("1", CallerFlag::Careful, "a"),
                                  flagged("2", CallerFlag::Careful),
                                  flagged("3", CallerFlag::Barred)});
    Texts told;
    desk.caller_memory.on_change = [&](const std::string& key) { told.push_back(key); };
    desk.caller_memory.take_over({flagged("1", CallerFlag::Careful, "b"),
                                  flagged("3", CallerFlag::Barred),
                                  flagged("4", CallerFlag::Regular)});
    CHECK(told == Texts{"2", "1", "4"});
    CHECK(desk.caller_memory.find("2") == nullptr);
    CHECK(desk.caller_memory.find("1")->reason == "b");
  }
}
