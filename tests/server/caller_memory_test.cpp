#include <doctest/doctest.h>

#include <algorithm>

#include "server/returning_caller.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;

TEST_CASE("a caller who was on air is known when he calls again, to every seat of the group") {
  ServerRoom room;
  auto host = room.seat("host");
  auto screener = room.seat("screener", 1, 1);
  whole_call(room, *host, 2);
  host->take();
  screener->take();

  room.exchange().arrive(4, "312.555.0100");
  room.wait(1s);
  for (FrameConsole* console : {host.get(), screener.get()}) {
    const auto told = console->take(SrvCallerKnown);
    REQUIRE(told.size() == 1);
    CHECK(told[0].LineNo == 4);
    const auto known = decode_caller_known(told[0].AltInfo, told[0].Buffer);
    REQUIRE(known);
    CHECK(known->number == "312.555.0100");
    CHECK(known->calls == 1);
    CHECK(known->on_air == 1);
    CHECK(known->last_on_air.size() == std::string("2026-12-31 20:15").size());
    CHECK(known->flag == CallerFlag::None);
  }
  // One that comes now is told too, and all that the call has ended.
  auto late = room.seat("screener", 1, 2);
  room.wait(1s);
  CHECK(last_known(*late).value().calls == 1);
  room.exchange().leave(4);
  room.wait(1s);
  const ServerPacket cleared = host->take_last(SrvCallerKnown);
  CHECK(cleared.LineNo == 4);
  CHECK(cleared.Buffer.empty());
}

TEST_CASE("who waits on a line has his history anew when another call of his has ended") {
  ServerRoom room;
  auto host = room.seat("host");
  room.exchange().arrive(4, "312.555.0100");
  room.wait(1s);
  CHECK(host->take(SrvCallerKnown).empty());
  whole_call(room, *host, 2);
  const ServerPacket told = host->take_last(SrvCallerKnown);
  CHECK(told.LineNo == 4);
  const auto known = decode_caller_known(told.AltInfo, told.Buffer);
  REQUIRE(known);
  CHECK(known->calls == 1);
  CHECK(known->on_air == 1);
}

TEST_CASE("who waits on the first line has his history anew too") {
  ServerRoom room;
  auto host = room.seat("host");
  room.exchange().arrive(0, known_number);
  room.wait(1s);
  whole_call(room, *host, 2);
  const ServerPacket told = host->take_last(SrvCallerKnown);
  CHECK_FALSE(told.Buffer.empty());
  CHECK(told.LineNo == 0);
}

TEST_CASE("the other group and a caller of whom nothing is known are told nothing") {
  ServerRoom room;
  auto host = room.seat("host");
  auto other = room.seat("host", 2, 1);
  whole_call(room, *host, 2);
  other->take();
  host->take();
  room.exchange().arrive(0, known_number);
  room.exchange().arrive(1, "555 9999");
  room.exchange().arrive(3, "");
  room.wait(1s);
  CHECK(host->take(SrvCallerKnown).size() == 1);
  CHECK(other->take(SrvCallerKnown).empty());
}

TEST_CASE("a number that a screener enters is looked up, and the newer name and city are known") {
  ServerRoom room;
  auto screener = room.seat("screener");
  const auto enter = [&](const std::string& of, const std::string& name) {
    CallerDetails data;
    data.sender = "Scr";
    data.fields[platform::told_name] = name;
    data.fields[platform::told_city] = "Bath";
    data.fields[platform::told_phone_number] = of;
    screener->send(screener->packet(CmdCallerData, 0, encode_caller_data(data)));
    room.wait(1s);
  };
  room.exchange().arrive(0, "");
  room.wait(1s);
  enter("5550100", "Ann");
  room.exchange().leave(0);
  room.wait(1s);
  room.exchange().arrive(0, "");
  room.wait(1s);
  screener->take();
  enter("555-0100", "");
  const auto known = last_known(*screener);
  REQUIRE(known);
  CHECK(known->calls == 1);
  CHECK(known->on_air == 0);
  CHECK(known->name == "Ann");
  CHECK(known->city == "Bath");
  // Another one is another caller.
  enter("555-0199", "");
  CHECK(screener->take_last(SrvCallerKnown).Buffer.empty());
}

TEST_CASE("a console that asks is told that there is a memory, and answered alone") {
  ServerRoom room;
  auto host = room.seat("host");
  whole_call(room, *host, 2);
  auto screener = room.connect();
  screener->log_in("screener", host_password);
  screener->join(1, 1);
  room.wait(1s);
  CHECK(screener->take_last(SrvPhoneType).Bank == has_caller_memory);
  host->take();
  screener->send(screener->packet(CmdAskCaller, no_value, "3125550100"));
  screener->send(screener->packet(CmdAskCaller, no_value, "999"));
  room.wait(1s);
  const auto told = screener->take(SrvCallerKnown);
  REQUIRE(told.size() == 2);
  CHECK(told[0].LineNo == no_value);
  const auto known = decode_caller_known(told[0].AltInfo, told[0].Buffer);
  const auto short_one = decode_caller_known(told[1].AltInfo, told[1].Buffer);
  REQUIRE((known && short_one));
  CHECK(short_one->number == "999");
  CHECK(short_one->calls == 0);
  CHECK(known->number == "3125550100");
  CHECK(known->on_air == 1);
  CHECK(host->take(SrvCallerKnown).empty());
}

TEST_CASE("a last day or a moment on air that no calendar has hides nothing of a caller") {
  ServerRoom room;
  room.crash();
  room.store.content().apply(platform::FlaggedCaller{
      .key = "5550100", .number = "555 0100", .flag = CallerFlag::Barred, .until = "2026-13-32"});
  platform::CallRecord call;
  call.id = call.group = 1;
  call.number = "5550100";
  call.aired = call.ended = platform::Moment{9'000'000'000'000'000};
  room.store.content().apply(call);
  room.start();
  auto host = room.seat("host");
  room.exchange().arrive(0, "5550100");
  room.wait(2s);
  const auto known = last_known(*host);
  REQUIRE(known);
  CHECK(known->flag == CallerFlag::Barred);
  CHECK(known->until.empty());
  CHECK(known->on_air == 1);
  CHECK(known->last_on_air.empty());
}

TEST_CASE("who was never on air is known without a last time on air") {
  ServerRoom room;
  auto host = room.seat("host");
  room.exchange().arrive(0, "5550100");
  room.exchange().leave(0);
  room.wait(1s);
  room.exchange().arrive(0, "5550100");
  room.wait(1s);
  const auto known = last_known(*host);
  REQUIRE(known);
  CHECK(known->calls == 1);
  CHECK(known->last_on_air.empty());
}

TEST_CASE("what was asked of one number is never told of another one on the line") {
  ServerRoom room;
  auto screener = room.seat("screener");
  whole_call(room, *screener, 1, "5550100");
  const auto enter = [&](const std::string& of) {
    CallerDetails data;
    data.fields[platform::told_phone_number] = of;
    screener->send(screener->packet(CmdCallerData, 0, encode_caller_data(data)));
  };
  room.exchange().arrive(0, "");
  SUBCASE("as the store answers late") {
    room.store.take(400ms);
    enter("5550100");
    enter("5550199");
    room.wait(100ms);
    screener->take();
    room.wait(5s);
    CHECK(screener->take(SrvCallerKnown).empty());
  }
  SUBCASE("as the store can't be asked for the second") {
    enter("5550100");
    room.wait(1s);
    CHECK(last_known(*screener).value().calls == 1);
    room.store.fail(true);
    enter("5550199");
    room.wait(1s);
    CHECK(screener->take_last(SrvCallerKnown).LineNo == 0);
    CHECK(room.seat("screener", 1, 1)->take(SrvCallerKnown).empty());
  }
  SUBCASE("as the call has ended before the store was back") {
    room.store.fail(true);
    enter("5550100");
    room.wait(1s);
    room.exchange().leave(0);
    room.wait(1s);
    room.store.fail(false);
    room.wait(5s);
    CHECK(screener->take(SrvCallerKnown).empty());
  }
}

TEST_CASE("texts of callers that are longer than consoles take are cut") {
  ServerRoom room;
  auto host = room.seat("host");
  room.store.content().apply(platform::FlaggedCaller{.key = "5550100",
                                                     .number = "5550100",
                                                     .flag = CallerFlag::Barred,
                                                     .reason = std::string(150, 'r'),
                                                     .by = std::string(150, 'b')});
  room.crash();
  room.start();
  host = room.seat("host");
  const std::string long_number = "5550100" + std::string(143, '-');
  host->send(host->packet(CmdAskCaller, no_value, long_number));
  room.wait(1s);
  const auto known = last_known(*host);
  REQUIRE(known);
  CHECK(known->number.size() == 100);
  CHECK(known->reason.size() == 100);
  CHECK(known->flagged_by.size() == 100);
}

TEST_CASE("a seat that asked and left, or a server that ended, is told nothing and harms nothing") {
  ServerRoom room;
  auto host = room.seat("host");
  auto stays = room.seat("host", 1, 1);
  room.store.take(500ms);
  host->send(host->packet(CmdAskCaller, no_value, known_number));
  host->hang_up();
  room.wait(2s);
  for (int i = 0; i < 2; ++i) {
    stays->send(stays->packet(CmdAskCaller, no_value, known_number));
    room.wait(2s);
    CHECK(stays->take(SrvCallerKnown).size() == 1);
  }
  stays->send(stays->packet(CmdAskCaller, no_value, known_number));
  room.exchange().arrive(0, known_number);
  room.crash();
  room.wait(5s);
}

TEST_CASE("a seat that asks faster than the store answers is answered for its last number") {
  ServerRoom room;
  auto host = room.seat("host");
  auto quiet = room.seat("screener", 1, 1);
  whole_call(room, *host, 2);
  host->take();
  quiet->take();
  room.store.take(50ms);
  for (int i = 0; i < 100; ++i) {
    host->send(host->packet(CmdAskCaller, no_value, "555 0" + std::to_string(100 + i)));
  }
  host->send(host->packet(CmdAskCaller, no_value, known_number));
  quiet->send(quiet->packet(CmdAskCaller, no_value, known_number));
  room.wait(300ms);
  CHECK(quiet->take(SrvCallerKnown).size() == 1);
  const auto answers = host->take(SrvCallerKnown);
  REQUIRE(!answers.empty());
  CHECK(answers.size() <= 2);
  CHECK(decode_caller_known(answers.back().AltInfo, answers.back().Buffer)->number == known_number);
}

TEST_CASE("who rings while the store is away is known once it is back") {
  ServerRoom room;
  auto host = room.seat("host");
  whole_call(room, *host, 2);
  host->take();
  room.store.fail(true);
  room.exchange().arrive(0, known_number);
  host->send(host->packet(CmdAskCaller, no_value, "312-555-0100"));
  room.wait(5s);
  CHECK(host->take(SrvCallerKnown).empty());
  room.store.fail(false);
  room.wait(5s);
  const auto told = host->take(SrvCallerKnown);
  REQUIRE(told.size() == 2);
  CHECK(std::ranges::count(told, 0, &ServerPacket::LineNo) == 1);
  CHECK(std::ranges::count(told, no_value, &ServerPacket::LineNo) == 1);
  // A seat that comes then is told of the first line too.
  const auto late = room.seat("screener", 1, 2)->take(SrvCallerKnown);
  REQUIRE(late.size() == 1);
  CHECK(late[0].LineNo == 0);
}

}  // namespace
}  // namespace lineweir::server
