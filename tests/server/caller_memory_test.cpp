#include <doctest/doctest.h>

#include <algorithm>

#include "adminlink/admin_columns.h"
#include "base/iso_date.h"
#include "server/admin_tool.h"
#include "server/server_room.h"
#include "wire/caller_known.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;
using admin::Command;
using admin::Field;

constexpr const char* number = "+1 (312) 555-0100";

// A call on the line that is put on air and ends.
void whole_call(ServerRoom& room, FrameConsole& console, int line, const std::string& of = number) {
  room.exchange().arrive(line, of);
  room.wait(2s);
  console.word('P', line, 0);
  room.wait(2s);
  console.word('N', line);
  room.wait(2s);
  room.exchange().leave(line);
  room.wait(2s);
}

std::optional<CallerKnown> last_known(FrameConsole& console) {
  const ServerPacket told = console.take_last(SrvCallerKnown);
  return decode_caller_known(told.AltInfo, told.Buffer);
}

void send_flag(FrameConsole& console, const CallerFlagging& flagging) {
  ServerPacket packet = console.packet(CmdFlagCaller, no_value, encode_caller_flagging(flagging));
  packet.AltInfo = static_cast<std::uint8_t>(flagging.flag);
  console.send(packet);
}

const CallerFlagging barred{
    .flag = CallerFlag::Barred, .number = "312-555-0100", .reason = "abuse", .until = "2099-12-31"};

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
  room.exchange().arrive(0, number);
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
  room.exchange().arrive(0, number);
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

TEST_CASE("who has the right flags a caller, and all seats with him on a line see it at once") {
  ServerRoom room;
  auto host = room.seat("host", 2, 0);
  auto engineer = room.seat("host", 1, 1);
  AdminTool tool(room);
  const auto change_right = [&](const std::string& change) {
    return tool.refusal({Command::UserRight,
                         {{Field::Name, std::string("host")},
                          {Field::Group, std::int64_t{1}},
                          {Field::Changes, std::vector<std::string>{change}}}});
  };
  REQUIRE(change_right("-CallerFlagAllowed") == "");
  room.exchange(2).arrive(3, number);
  room.wait(1s);
  host->take();

  send_flag(*engineer, barred);
  room.wait(1s);
  CHECK(host->take(SrvCallerKnown).empty());
  CHECK(room.figure("refusals_total{reason=\"missing_right\"}") == 1);
  REQUIRE(change_right("+CallerFlagAllowed") == "");
  send_flag(*engineer, barred);
  room.wait(1s);
  const ServerPacket told = host->take_last(SrvCallerKnown);
  CHECK(told.LineNo == 3);
  CHECK(told.GroupNo == 2);
  const auto known = decode_caller_known(told.AltInfo, told.Buffer);
  REQUIRE(known);
  CHECK(known->flag == CallerFlag::Barred);
  CHECK(known->reason == "abuse");
  CHECK(known->until == "2099-12-31");
  CHECK(known->flagged_by == "host");
  CHECK(room.store.content().flagged_callers.at("3125550100").number == "312-555-0100");

  // It is there behind a restart, and goes when it is taken back.
  room.crash();
  room.start();
  room.wait(2s);
  engineer = room.seat("host", 1, 1);
  room.exchange().arrive(5, number);
  room.wait(1s);
  CHECK(last_known(*engineer).value().flag == CallerFlag::Barred);
  CallerFlagging none = barred;
  none.flag = CallerFlag::None;
  send_flag(*engineer, none);
  room.wait(1s);
  CHECK(engineer->take_last(SrvCallerKnown).Buffer.empty());
  CHECK(room.store.content().flagged_callers.empty());
}

TEST_CASE(
    "a caller who gives another number than the exchange tells is known by the sterner flag") {
  ServerRoom room;
  auto screener = room.seat("screener");
  AdminTool tool(room);
  const auto flag = [&](const std::string& of, const std::string& name) {
    return tool.refusal({Command::CallerFlag, {{Field::Number, of}, {Field::Flag, name}}});
  };
  CHECK(flag("5550100", "barred") == "");
  CHECK(flag("5550199", "regular") == "");
  room.exchange().arrive(0, "555-0100");
  room.wait(1s);
  CallerDetails data;
  data.sender = "Scr";
  data.fields[platform::told_phone_number] = "555 0199";
  screener->send(screener->packet(CmdCallerData, 0, encode_caller_data(data)));
  room.wait(1s);
  CHECK(last_known(*screener).value().flag == CallerFlag::Barred);
  REQUIRE(tool.refusal({Command::CallerClear, {{Field::Number, std::string("5550100")}}}) == "");
  CHECK(last_known(*screener).value().flag == CallerFlag::Regular);
}

TEST_CASE("with the store away flags are still seen") {
  ServerRoom room;
  AdminTool tool(room);
  REQUIRE(tool.refusal({Command::CallerFlag,
                        {{Field::Number, std::string("5550100")},
                         {Field::Flag, std::string("careful")}}}) == "");
  auto host = room.seat("host");
  room.store.fail(true);
  room.exchange().arrive(0, "5550100");
  room.wait(2s);
  CHECK(last_known(*host).value().flag == CallerFlag::Careful);
}

TEST_CASE("a flag holds until its last day is over, and is forgotten in the night behind it") {
  ServerRoom room;
  AdminTool tool(room);
  const platform::DateTime today = room.clock.local(room.clock.now());
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d", today.year, today.month, today.day);
  REQUIRE(tool.refusal({Command::CallerFlag,
                        {{Field::Number, std::string("5550100")},
                         {Field::Flag, std::string("barred")},
                         {Field::Until, std::string(text)}}}) == "");
  auto host = room.seat("host");
  room.exchange().arrive(0, "5550100");
  room.wait(2s);
  CHECK(last_known(*host).value().flag == CallerFlag::Barred);
  room.wait(25h);
  room.exchange().leave(0);
  room.wait(5s);
  CHECK(tool.rows({Command::CallerList, {}}).empty() ==
        (room.store.content().flagged_callers.empty()));
  room.wait(24h);
  CHECK(room.store.content().flagged_callers.empty());
  const auto& audit = room.store.content().audit;
  CHECK(std::ranges::any_of(audit, [](const platform::AuditEntry& entry) {
    return entry.event.action == "flags forgotten" &&
           entry.event.detail == "1 caller, whose last day has passed";
  }));
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

TEST_CASE("of several flags only those whose last day is over are forgotten") {
  ServerRoom room;
  AdminTool tool(room);
  const auto flag = [&](const std::string& of, const std::string& until) {
    CHECK(tool.refusal({Command::CallerFlag,
                        {{Field::Number, of},
                         {Field::Flag, std::string("careful")},
                         {Field::Until, until}}}) == "");
  };
  flag("5550100", iso_date_text(room.clock.local(room.clock.now())));
  flag("5550101", iso_date_text(room.clock.local(room.clock.now())));
  flag("5550102", "2099-01-01");
  flag("5550103", "");
  room.wait(48h);
  const auto& left = room.store.content().flagged_callers;
  CHECK(left.size() == 2);
  CHECK(left.contains("5550102"));
  CHECK(left.contains("5550103"));
  CHECK(tool.rows({Command::CallerList}).size() == 2);
}

TEST_CASE("what the administrator is shown of a caller") {
  ServerRoom room;
  AdminTool tool(room);
  auto screener = room.seat("screener");
  room.exchange().arrive(0, "5550100");
  CallerDetails data;
  data.sender = "Scr";
  data.fields[platform::told_name] = "Zo\xEB";
  data.fields[platform::told_city] = "Bath";
  data.fields[platform::told_phone_number] = "5550100";
  screener->send(screener->packet(CmdCallerData, 0, encode_caller_data(data)));
  room.exchange().leave(0);
  room.wait(1s);
  const auto show = [&](const std::string& of) {
    return tool.rows({Command::CallerShow, {{Field::Number, of}}}).at(0);
  };
  auto row = show("555-0100");
  CHECK(row.at("name") == "Zo\u00EB");
  CHECK(row.at("city") == "Bath");
  CHECK(row.at("calls") == 1);
  CHECK(row.at("on_air") == 0);
  CHECK(row.at("last_on_air") == 0);
  CHECK(row.at("flag") == "none");
  CHECK(row.at("number") == "555-0100");
  auto host = room.seat("host");
  whole_call(room, *host, 2, "5550100");
  row = show("5550100");
  CHECK(row.at("on_air") == 1);
  CHECK(row.at("last_on_air") > room.clock.now().count() - 10'000);
  CHECK(show("5550177").at("name") == "");
  CHECK(tool.refusal({Command::CallerShow, {{Field::Number, std::string("12")}}}) ==
        "A caller is known by a number of at least 4 digits.");
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

TEST_CASE("a flag is seen at once on a line whose caller only a screener has told the number of") {
  ServerRoom room;
  auto screener = room.seat("screener");
  room.exchange().arrive(0, "");
  room.exchange().arrive(1, "5550188");
  CallerDetails data;
  data.fields[platform::told_phone_number] = "5550100";
  screener->send(screener->packet(CmdCallerData, 0, encode_caller_data(data)));
  room.wait(1s);
  screener->take();
  AdminTool tool(room);
  CHECK(tool.refusal({Command::CallerFlag,
                      {{Field::Number, std::string("5550100")},
                       {Field::Flag, std::string("careful")}}}) == "");
  const auto told = screener->take(SrvCallerKnown);
  REQUIRE(told.size() == 1);
  CHECK(told[0].LineNo == 0);
  CHECK(told[0].AltInfo == static_cast<int>(CallerFlag::Careful));
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
  host->send(host->packet(CmdAskCaller, no_value, number));
  host->hang_up();
  room.wait(2s);
  for (int i = 0; i < 2; ++i) {
    stays->send(stays->packet(CmdAskCaller, no_value, number));
    room.wait(2s);
    CHECK(stays->take(SrvCallerKnown).size() == 1);
  }
  stays->send(stays->packet(CmdAskCaller, no_value, number));
  room.exchange().arrive(0, number);
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
  host->send(host->packet(CmdAskCaller, no_value, number));
  quiet->send(quiet->packet(CmdAskCaller, no_value, number));
  room.wait(300ms);
  CHECK(quiet->take(SrvCallerKnown).size() == 1);
  const auto answers = host->take(SrvCallerKnown);
  REQUIRE(!answers.empty());
  CHECK(answers.size() <= 2);
  CHECK(decode_caller_known(answers.back().AltInfo, answers.back().Buffer)->number == number);
}

TEST_CASE("who rings while the store is away is known once it is back") {
  ServerRoom room;
  auto host = room.seat("host");
  whole_call(room, *host, 2);
  host->take();
  room.store.fail(true);
  room.exchange().arrive(0, number);
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

TEST_CASE("a flag whose last day is over already is refused, and the person told") {
  ServerRoom room;
  auto host = room.seat("host");
  CallerFlagging past = barred;
  past.until = "2020-01-01";
  host->take();
  send_flag(*host, past);
  room.wait(1s);
  CHECK(host->take_last(SrvMessage).Buffer.find("the last day 2020-01-01 is over already") !=
        std::string::npos);
  CHECK(room.store.content().flagged_callers.empty());
}

TEST_CASE(
    "each night it is forgotten who called before the configured days, and the audit says so") {
  for (const auto what :
       {platform::Store::Forgetting::Callers, platform::Store::Forgetting::Calls}) {
    ServerOptions options = ServerRoom::two_studios();
    options.retention = {.days = 3, .what = what};
    ServerRoom room(options);
    {
      auto host = room.seat("host");
      for (int i = 0; i < 3; ++i) whole_call(room, *host, i);
    }
    const auto known = [&] { return room.store.content().caller_history("3125550100").calls; };
    room.wait(48h);
    CHECK(known() == 3);
    room.wait(48h);
    CHECK(known() == 0);
    const bool whole = what == platform::Store::Forgetting::Calls;
    CHECK(room.store.content().calls.size() == (whole ? 0 : 3));
    const auto& audit = room.store.content().audit;
    CHECK(std::ranges::count_if(audit, [&](const platform::AuditEntry& entry) {
            return entry.event.action == (whole ? "calls forgotten" : "callers forgotten") &&
                   entry.event.detail.starts_with("3 calls that ended before ");
          }) == 1);
    CHECK(room.store.content().verdict().first_wrong == 0);
  }
}

TEST_CASE("what a store that is away couldn't forget is forgotten once it is back") {
  ServerOptions options = ServerRoom::two_studios();
  options.retention = {.days = 1};
  ServerRoom room(options);
  {
    auto host = room.seat("host");
    whole_call(room, *host, 1);
  }
  room.wait(26h);
  room.store.fail(true);
  room.wait(24h);
  const auto known = [&] { return room.store.content().caller_history("3125550100").calls; };
  CHECK(known() == 1);
  room.store.fail(false);
  room.wait(6min);
  CHECK(known() == 0);
}

TEST_CASE("a night's turn comes also behind a start shortly before it") {
  ServerOptions options = ServerRoom::two_studios();
  options.retention = {.days = 1};
  ServerRoom room(options);
  const auto hour = [&] { return room.clock.local(room.clock.now()).hour; };
  while (hour() != 2) room.wait(10min);
  {
    auto host = room.seat("host");
    whole_call(room, *host, 1);
  }
  // At one it isn't due yet, at four it is.
  while (hour() != 1) room.wait(10min);
  room.crash();
  room.start();
  const auto known = [&] { return room.store.content().caller_history("3125550100").calls; };
  while (hour() != 3) room.wait(10min);
  CHECK(known() == 1);
  while (hour() != 5) room.wait(10min);
  CHECK(known() == 0);
}

TEST_CASE("an administrator lists, shows, flags and clears callers") {
  ServerRoom room;
  AdminTool tool(room);
  auto host = room.seat("host");
  whole_call(room, *host, 1);
  const auto flag = [&](const std::string& of, const std::string& name, const std::string& until) {
    return tool.refusal({Command::CallerFlag,
                         {{Field::Number, of},
                          {Field::Flag, name},
                          {Field::Text, std::string("why")},
                          {Field::Until, until}}});
  };
  CHECK(flag("12", "barred", "2099-01-01") ==
        "A caller is known by a number of at least 4 digits.");
  CHECK(flag(number, "bad", "2099-01-01") == "A flag is \"regular\", \"careful\" or \"barred\".");
  CHECK(flag(number, "none", "2099-01-01") == "A flag is \"regular\", \"careful\" or \"barred\".");
  CHECK(flag(number, "barred", "1.1.2099") == "\"1.1.2099\" is no date; 2026-12-31 is.");
  CHECK(flag(number, "barred", "2020-01-01") == "The last day 2020-01-01 is over already.");
  CHECK(flag("5550100\n", "barred", "") == "The number holds a control character.");
  CHECK(flag("5550100" + std::string(94, '-'), "barred", "") ==
        "The number is too long: at most 100 characters.");
  const auto why = [&](const std::string& reason) {
    return tool.refusal({Command::CallerFlag,
                         {{Field::Number, std::string("5550199")},
                          {Field::Flag, std::string("careful")},
                          {Field::Text, reason}}});
  };
  CHECK(why("a\tb") == "The reason holds a control character.");
  CHECK(why(std::string(1000, 'x')).starts_with("The reason is too long: at most "));
  CHECK(room.store.content().flagged_callers.empty());
  CHECK(flag(number, "barred", "2099-01-01") == "");
  auto rows = tool.rows({Command::CallerList, {}});
  REQUIRE(rows.size() == 1);
  CHECK(rows[0].at("number") == number);
  CHECK(rows[0].at("flag") == "barred");
  CHECK(rows[0].at("reason") == "why");
  CHECK(rows[0].at("until") == "2099-01-01");
  CHECK(rows[0].at("by") == "(admin)");
  CHECK(rows[0].at("at") >= room.clock.now().count() - 1000);
  rows = tool.rows({Command::CallerShow, {{Field::Number, std::string("3125550100")}}});
  REQUIRE(rows.size() == 1);
  CHECK(rows[0].at("calls") == 1);
  CHECK(rows[0].at("on_air") == 1);
  CHECK(rows[0].at("flag") == "barred");
  const auto clear = [&](const std::string& of) {
    return tool.refusal({Command::CallerClear, {{Field::Number, of}}});
  };
  CHECK(clear("312 555 0100") == "");
  CHECK(clear("312 555 0100") == "Nothing is noted of the number 312 555 0100.");
  CHECK(tool.rows({Command::CallerList, {}}).empty());
  const auto audited = [&](std::string_view detail) {
    return std::ranges::count_if(room.store.content().audit,
                                 [&](const auto& entry) { return entry.event.detail == detail; });
  };
  CHECK(audited("...0100, barred until 2099-01-01") == 1);
  CHECK(audited("...0100, none") == 1);
  CHECK(flag("12345", "careful", "") == "");
  CHECK(audited("...2345, careful") == 1);
  // Nobody learns a number from the audit.
  for (const platform::AuditEntry& entry : room.store.content().audit) {
    CHECK(entry.event.detail.find("555") == std::string::npos);
  }
}

}  // namespace
}  // namespace lineweir::server
