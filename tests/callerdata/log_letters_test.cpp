#include <doctest/doctest.h>

#include "state/guard.h"
#include "support/call_log_file.h"
#include "support/call_viewer.h"

// Calls of languages with other letters, from the row to the log and back, and a log that consoles
// with different sets of letters write.

namespace lineweir::test {
namespace {

using Names = std::vector<std::string>;

const CodePage& set_named(std::string_view name) { return *find_code_page(name); }

std::string in_set(std::string_view set, std::string_view utf8) {
  return CodePageLetters(set_named(set)).from_utf8(utf8);
}

// A call of that name and city ends on a console with that set, which logs it.
void end_call(ScriptedConsole& test, std::string_view set, const std::string& name,
              const std::string& city) {
  CallerRecord& record = test.console.lines.CallerData(0);
  record.set(CallerField::CallerName, in_set(set, name));
  record.set(CallerField::PhoneNumber, "5550100");
  test.console.Lineweir.LineName(0).caption = in_set(set, name);
  test.console.Lineweir.LineCity(0).caption = in_set(set, city);
  test.console.call_log.log(0);
}

struct Language {
  const char* set;
  const char* name;
  const char* city;
};

constexpr Language languages[] = {
    {"windows-1250", "Grażyna Żółć", "Łódź"},
    {"windows-1251", "Иван Щукин", "Нижний Новгород"},
    {"windows-1253", "Ελένη Παπαδοπούλου", "Αθήνα"},
    {"windows-1258", "Nguyễn Thị Ngọc", "Đà Nẵng"},
};

TEST_SUITE("callerdata/log in many letters") {
  TEST_CASE("a call is logged in Unicode, and the caller is known again by it") {
    for (const Language& language : languages) {
      CAPTURE(language.set);
      ScriptedConsole test(set_named(language.set));
      choose_log(test);
      end_call(test, language.set, language.name, language.city);
      const auto row = logged_rows(test).at(0);
      CHECK(row[0] == language.name);
      CHECK(row[2] == language.city);
      const auto known =
          find_history(test.console.call_log.recordset(), test.platform.letters, "555-0100");
      REQUIRE(known);
      CHECK(known->known[name_entry - 1] == in_set(language.set, language.name));
      CHECK(known->known[entry_of(CallerField::City) - 1] == in_set(language.set, language.city));
    }
  }

  TEST_CASE("the user's column has its name in Unicode") {
    ScriptedConsole test(set_named("windows-1250"));
    choose_log(test);
    test.console.call_log.rename_user_field(in_set("windows-1250", "Życzenie"));
    CHECK(test.console.call_log.recordset().fields().back().name == "Życzenie");
  }

  TEST_CASE("the trace file is UTF-8") {
    ScriptedConsole test(set_named("windows-1251"));
    test.console.trace.WriteTrace(in_set("windows-1251", "Иван"));
    CHECK(test.platform.files.read(std::string(trace_file_name))->ends_with("  Иван\r\n"));
  }

  TEST_CASE("the viewer shows and finds what all consoles have logged, whatever its own set") {
    CallViewer test;
    test.log_call("Grażyna Żółć", "Łódź");
    test.log_call("Иван Щукин", "Нижний Новгород");
    test.log_call("Ελένη Παπαδοπούλου", "Αθήνα");
    test.log_call("José", "Köln");
    test.open();
    CHECK(test.names() == Names{"José", "Ελένη Παπαδοπούλου", "Иван Щукин", "Grażyna Żółć"});
    test.search("lodz");
    CHECK(test.names() == Names{"Grażyna Żółć"});
    test.search("ZOLC łódź");
    CHECK(test.names() == Names{"Grażyna Żółć"});
    test.search("иван НИЖНИЙ");
    CHECK(test.names() == Names{"Иван Щукин"});
    test.search("αθηνα");
    CHECK(test.names() == Names{"Ελένη Παπαδοπούλου"});
    test.grid().select(1);
    CHECK(test.form().DetailText(4).caption == "Αθήνα");
    test.search("koln");
    CHECK(test.names() == Names{"José"});
  }

  TEST_CASE("what a console's set doesn't hold is offered without it") {
    ScriptedConsole test;
    choose_log(test);
    const auto database = test.platform.databases.open(log_path);
    const auto rows = database->open_recordset(std::string(call_log_table));
    rows->add_new();
    rows->set_field(0, "Łukasz");
    rows->set_field(5, "5550100");
    rows->update();
    const auto known =
        find_history(test.console.call_log.recordset(), test.platform.letters, "5550100");
    REQUIRE(known);
    CHECK(known->known[name_entry - 1] == "?ukasz");
  }

  TEST_CASE("calls wait for a file of any name, which the user reads in the console's letters") {
    ScriptedConsole test(set_named("windows-1250"));
    test.console.Lineweir.Data1.database_name = in_set("windows-1250", "Łódź.mdb");
    test.platform.failing_databases.fail(failure_number::disk_full);
    end_call(test, "windows-1250", "Grażyna Żółć", "Łódź");
    test.platform.loop.advance(platform::Milliseconds(1000));
    const auto troubles = test.platform.journal.state().troubles;
    REQUIRE(troubles.size() == 1);
    CHECK(troubles[0].file == "Łódź.mdb");
    const auto messages = test.take_messages();
    REQUIRE(messages.size() == 1);
    CHECK(messages[0].starts_with(
        in_set("windows-1250", "There is no room left on the disk for 'Łódź.mdb'. ")));
  }

  TEST_CASE("a failure tells of a file in the console's letters") {
    ScriptedConsole test(set_named("windows-1250"));
    const Failure failure(failure_number::file_access, "Can't write Łódź: no room");
    CHECK(description_of(test.console.services.letters, failure) ==
          in_set("windows-1250", "Can't write Łódź: no room"));
  }
}

}  // namespace
}  // namespace lineweir::test
