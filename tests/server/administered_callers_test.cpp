#include <doctest/doctest.h>

#include <algorithm>

#include "adminlink/admin_columns.h"
#include "server/admin_tool.h"
#include "server/returning_caller.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;
using admin::Command;
using admin::Field;

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
  CHECK(flag(known_number, "bad", "2099-01-01") ==
        "A flag is \"regular\", \"careful\" or \"barred\".");
  CHECK(flag(known_number, "none", "2099-01-01") ==
        "A flag is \"regular\", \"careful\" or \"barred\".");
  CHECK(flag(known_number, "barred", "1.1.2099") == "\"1.1.2099\" is no date; 2026-12-31 is.");
  CHECK(flag(known_number, "barred", "2020-01-01") == "The last day 2020-01-01 is over already.");
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
  CHECK(flag(known_number, "barred", "2099-01-01") == "");
  auto rows = tool.rows({Command::CallerList, {}});
  REQUIRE(rows.size() == 1);
  CHECK(rows[0].at("number") == known_number);
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
  CHECK(clear("312 555 0100") == "Nothing is noted of the number \"312 555 0100\".");
  CHECK(clear(std::string(60'000, 'x')) ==
        "Nothing is noted of the number \"" + std::string(100, 'x') + "…\".");
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
