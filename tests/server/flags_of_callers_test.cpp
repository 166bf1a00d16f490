#include <doctest/doctest.h>

#include <algorithm>

#include "adminlink/admin_columns.h"
#include "base/iso_date.h"
#include "server/admin_tool.h"
#include "server/returning_caller.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;
using admin::Command;
using admin::Field;

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
  room.exchange(2).arrive(3, known_number);
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
  room.exchange().arrive(5, known_number);
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

}  // namespace
}  // namespace lineweir::server
