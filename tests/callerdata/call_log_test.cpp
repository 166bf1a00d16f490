#include "callerdata/call_log.h"

#include <doctest/doctest.h>

#include <array>

#include "forms/call_log_columns.h"
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

  TEST_CASE("a row is set column by column, three of them from the screen") {
    RecordingDatabases engine;
    platform::ScriptedPlatform p;
    Console console(p.services(p.files, engine));
    console.startup.Main("");
    console.Lineweir.Data1.database_name = "log";
    CallerRecord& record = console.lines.CallerData(0);
    for (const auto& rule : caller_fields) record.set(rule.field, rule.name);
    console.Lineweir.LineName(0).caption = "shown name";
    console.Lineweir.LineCity(0).caption = "shown city";
    console.Lineweir.LineComments(0).caption = "shown comments";

    console.call_log.log(0);

    CHECK(engine.steps == Steps{"open log", "table Caller Records", "add", "Caller Name=shown name",
                                "Street Address=StreetAddress", "City=shown city", "State=State",
                                "ZipCode=ZipCode", "PhoneNumber=PhoneNumber",
                                "Comments=shown comments", "Station=Station   ", "Gender=Gender",
                                "Date=1/5/2026", "Time_On_Hold=TimeOnHold",
                                "Time_Placed_On_Air=TimePlacedOn", "Time_On_Air=TimeOnAir",
                                "13=UserField" + std::string(91, ' '), "update"});

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

  TEST_CASE("a log that isn't there is no failure, and takes the call when it is") {
    ScriptedConsole test;
    test.console.Lineweir.Data1.database_name = log_path;
    fill(test, 0, 3);
    test.console.call_log.log(0);
    CHECK(test.platform.journal.state().waiting == 1);
    create_log(test.platform);
    test.platform.loop.advance(platform::Milliseconds(300));
    CHECK(logged_rows(test).size() == 1);
    CHECK(test.platform.journal.state() == platform::CallJournalState{});
  }
}

struct EndedCalls : ScriptedConsole {
  EndedCalls() {
    console.call_log.on_call_ended = [this](const EndedCall& ended) { last = ended; };
  }

  // A call on line 2 whose caller is called so ends.
  platform::LoggedCall end(const std::string& name) {
    CallerRecord& record = console.lines.CallerData(2);
    record.clear();
    record.set(CallerField::CallerName, name);
    record.set(CallerField::TimeOnAir, "00:02:00");
    console.Lineweir.LineName(2).caption = name;
    console.call_log.log(2);
    return last.record;
  }

  EndedCall last;

  static EntryTexts texts(const std::string& name, const std::string& city = {}) {
    EntryTexts all;
    all[name_entry - 1] = name;
    all[entry_of(CallerField::City) - 1] = city;
    return all;
  }
};

TEST_SUITE("callerdata/call log: calls that have ended") {
  TEST_CASE("each call on a line has a number of its own") {
    EndedCalls test;
    const auto call = test.console.call_log.call_on(2);
    CHECK(call != 0);
    CHECK(test.console.call_log.call_on(2) == call);
    CHECK(test.console.call_log.call_on(3) != call);
    test.end("");
    CHECK(test.last.call == call);
    CHECK(test.console.call_log.call_on(2) != call);
  }

  TEST_CASE("a call that was logged has its row changed, but for its times") {
    EndedCalls test;
    choose_log(test);
    const auto call = test.end("Ann");
    test.end("Bob");
    test.console.lines.CallerData(2).set(CallerField::CallerName, "Carla, the next caller");
    CHECK(test.console.call_log.complete(call, EndedCalls::texts("Ann Smith", "Salem")));

    const auto rows = logged_rows(test);
    REQUIRE(rows.size() == 2);
    CHECK(rows[0][0] == "Ann Smith");
    CHECK(rows[0][2] == "Salem");
    CHECK(rows[0][8] == "      ");
    CHECK(rows[0][9] == "1/5/2026");
    CHECK(rows[0][12] == "00:02:00");
    CHECK(rows[1][0] == "Bob");
    CHECK(test.console.lines.CallerData(2)[CallerField::CallerName] == "Carla, the next caller");
  }

  TEST_CASE("a call that was not logged is added, with its times") {
    EndedCalls test;
    choose_log(test);
    const auto call = test.end("");
    CHECK(call.file == "");
    CHECK(logged_rows(test).empty());
    CHECK(test.console.call_log.complete(call, EndedCalls::texts("Ann", "Salem")));
    const auto rows = logged_rows(test);
    REQUIRE(rows.size() == 1);
    CHECK(rows[0][2] == "Salem");
    CHECK(rows[0][9] == "1/5/2026");
    CHECK(rows[0][12] == "00:02:00");
  }

  TEST_CASE("without a log there is nothing to complete; with one chosen since, there is") {
    EndedCalls test;
    const auto call = test.end("Ann");
    CHECK_FALSE(test.console.call_log.complete(call, EndedCalls::texts("Ann")));
    choose_log(test);
    CHECK(test.console.call_log.complete(call, EndedCalls::texts("Ann")));
    CHECK(logged_rows(test).size() == 1);
  }

  TEST_CASE("a call that leaves its line without an end isn't logged, and is told of") {
    EndedCalls test;
    choose_log(test);
    test.console.Lineweir.LineName(2).caption = "Ann";
    test.console.lines.CallerData(2).set(CallerField::CallerName, "Ann");
    const CallNumber call = test.console.call_log.call_on(2);
    test.console.call_log.leave(2, CallEnd::HungUp);
    CHECK(logged_rows(test).empty());
    CHECK(test.last.call == call);
    CHECK(test.last.how == CallEnd::HungUp);
    CHECK(test.last.record.file == "");
    CHECK(test.last.record.columns.at(0).value == "Ann");
    CHECK(test.console.call_log.call_on(2) != call);
  }

  TEST_CASE("a number that the column has no room for loses its separators, not its digits") {
    EndedCalls test;
    choose_log(test);
    test.console.lines.CallerData(2).set(CallerField::PhoneNumber, "+1 (312) 555-0100");
    test.console.call_log.log(2);
    CHECK(logged_rows(test).at(0)[5] == "+13125550100");
  }

  TEST_CASE("a call that is completed while it waits is logged as completed") {
    EndedCalls test;
    choose_log(test);
    test.platform.failing_databases.fail(failure_number::disk_full);
    const auto call = test.end("Ann");
    CHECK(test.console.call_log.complete(call, EndedCalls::texts("Ann Smith")));
    test.platform.failing_databases.fail(0);
    test.platform.loop.advance(platform::Milliseconds(300));
    const auto rows = logged_rows(test);
    REQUIRE(rows.size() == 1);
    CHECK(rows[0][0] == "Ann Smith");
  }

  TEST_CASE("a call that has its row in one log keeps it when another is chosen") {
    EndedCalls test;
    choose_log(test);
    const auto call = test.end("Ann");
    test.platform.dialogs.answer_file("other.mdb");
    test.console.Lineweir.DatabasePathMenuItem.on_click();
    test.console.call_log.complete(call, EndedCalls::texts("Ann Smith"));
    CHECK(logged_rows(test).at(0)[0] == "Ann Smith");
    CHECK(test.platform.databases.rows("other.mdb", call_log_table).empty());
  }
}

}  // namespace
}  // namespace lineweir::test
