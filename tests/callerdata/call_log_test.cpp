#include "callerdata/call_log.h"

#include <doctest/doctest.h>

#include <array>

#include "callerdata/call_log_columns.h"
#include "support/call_log_file.h"
#include "support/failure_number.h"
#include "support/recording_databases.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

using Steps = std::vector<std::string>;

void fill(ScriptedConsole& test, int line, std::size_t length) {
  CallerRecord& record = test.console.lines.CallerData(line);
  for (const auto& rule : caller_fields) record.set(rule.field, std::string(length, 'r'));
  for (int column = 0; column < column_count; ++column) {
    test.console.Lineweir.column_labels(column)(line).caption = std::string(length, 's');
  }
}

TEST_SUITE("callerdata/call log") {
  TEST_CASE("the columns have their names and sizes") {
    struct Row {
      std::string_view name;
      std::size_t size;
    };
    constexpr std::array expected = {
        Row{"Caller Name", 30},  Row{"Street Address", 40},
        Row{"City", 25},         Row{"State", 15},
        Row{"ZipCode", 12},      Row{"PhoneNumber", 15},
        Row{"Comments", 100},    Row{"Station", 10},
        Row{"Gender", 6},        Row{"Date", 10},
        Row{"Time_On_Hold", 10}, Row{"Time_Placed_On_Air", 12},
        Row{"Time_On_Air", 10},  Row{"", 100},
    };
    REQUIRE(call_log_columns.size() == expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
      CHECK(call_log_columns[i].name == expected[i].name);
      CHECK(call_log_columns[i].size == expected[i].size);
    }
    CHECK(call_log_table == "Caller Records");
  }

  TEST_CASE("a row is set column by column in its order, three of them from the screen") {
    RecordingDatabases engine;
    platform::ScriptedPlatform p;
    Console console(platform::Services{p.loop,
                                       p.clock,
                                       p.random,
                                       p.files,
                                       p.dialogs,
                                       engine,
                                       p.printer,
                                       p.letters,
                                       p.comm1,
                                       p.comm2,
                                       p.winsock1,
                                       p.remote_objects,
                                       1,
                                       {}});
    console.startup.Main("");
    console.Lineweir.Data1.database_name = "log";
    CallerRecord& record = console.lines.CallerData(0);
    for (const auto& rule : caller_fields) record.set(rule.field, rule.name);
    console.Lineweir.LineName(0).caption = "shown name";
    console.Lineweir.LineCity(0).caption = "shown city";
    console.Lineweir.LineComments(0).caption = "shown comments";

    console.call_log.log(0);

    CHECK(engine.steps == Steps{"open log", "table Caller Records", "add", "Caller Name=shown name",
                                "City=shown city", "Comments=shown comments", "Station=Station   ",
                                "Gender=Gender", "Street Address=StreetAddress", "State=State",
                                "ZipCode=ZipCode", "PhoneNumber=PhoneNumber",
                                "13=UserField" + std::string(91, ' '), "Date=1/5/2026",
                                "Time_On_Hold=TimeOnHold", "Time_Placed_On_Air=TimePlacedOn",
                                "Time_On_Air=TimeOnAir", "update"});

    engine.steps.clear();
    console.call_log.log(0);
    CHECK(engine.steps.front() == "add");
    console.Lineweir.Data1.database_name = "other";
    engine.steps.clear();
    console.call_log.log(0);
    CHECK(engine.steps.front() == "open other");
  }

  TEST_CASE("a value longer than its column is cut") {
    ScriptedConsole test;
    choose_log(test);
    fill(test, 3, 500);
    test.console.call_log.log(3);

    const auto rows = logged_rows(test);
    REQUIRE(rows.size() == 1);
    for (std::size_t i = 0; i < call_log_columns.size(); ++i) {
      CAPTURE(i);
      const bool from_screen = i == 0 || i == 2 || i == 6;
      if (call_log_columns[i].name == "Date") {
        CHECK(rows[0][i] == "1/5/2026");
      } else {
        CHECK(rows[0][i] == std::string(call_log_columns[i].size, from_screen ? 's' : 'r'));
      }
    }
  }

  TEST_CASE("the longest date fits") {
    ScriptedConsole test;
    choose_log(test);
    test.platform.clock.put({2026, 12, 31, 23, 59, 59});
    fill(test, 0, 1);
    test.console.call_log.log(0);
    CHECK(logged_rows(test).at(0)[9] == "12/31/2026");
  }

  TEST_CASE("the date of the call is written into the record too") {
    ScriptedConsole test;
    choose_log(test);
    test.console.lines.CallerData(0).set(CallerField::City, "Springfield");
    test.console.call_log.log(0);
    CHECK(test.console.lines.CallerData(0)[CallerField::CallDate] == "1/5/2026");
  }

  TEST_CASE("a record without data isn't logged, and the times alone are none") {
    ScriptedConsole test;
    choose_log(test);
    CallerRecord& record = test.console.lines.CallerData(0);
    record.set(CallerField::TimeOnHold, "00:01:00");
    record.set(CallerField::TimePlacedOnAir, "10:00:00 AM");
    record.set(CallerField::TimeOnAir, "00:02:00");
    test.console.Lineweir.LineName(0).caption = "on the screen only";
    test.console.call_log.log(0);
    CHECK(logged_rows(test).empty());
    CHECK(record[CallerField::CallDate] == "");
  }

  TEST_CASE("without a database nothing is logged and nothing fails") {
    ScriptedConsole test;
    for (const auto* none : {"", "   "}) {
      test.console.Lineweir.Data1.database_name = none;
      fill(test, 0, 3);
      test.console.call_log.log(0);
      CHECK(test.console.lines.CallerData(0)[CallerField::CallDate] == "rrr");
    }
  }

  TEST_CASE("a missing database is failure 3024, and the next call tries again") {
    ScriptedConsole test;
    test.console.Lineweir.Data1.database_name = log_path;
    fill(test, 0, 3);
    CHECK(failure_number_of([&] { test.console.call_log.log(0); }) == 3024);
    create_log(test.platform);
    test.console.call_log.log(0);
    CHECK(logged_rows(test).size() == 1);
  }
}

}  // namespace
}  // namespace lineweir::test
