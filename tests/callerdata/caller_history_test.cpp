#include "callerdata/caller_history.h"

#include <doctest/doctest.h>

#include "callerdata/call_log.h"
#include "forms/call_log_columns.h"
#include "letters/code_page_letters.h"
#include "platform/scripted/memory_databases.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

struct LogOfCallers {
  LogOfCallers() {
    database = engine.create("log");
    database->create_table(std::string(call_log_table), new_log_columns("User"));
    rows = database->open_recordset(std::string(call_log_table));
  }

  void add(const std::string& number, const std::string& name, const std::string& city,
           const std::string& date = "1/5/2026", const std::string& on_air = "") {
    rows->add_new();
    rows->set_field("PhoneNumber", number);
    rows->set_field("Caller Name", letters.to_utf8(name));
    rows->set_field("City", letters.to_utf8(city));
    rows->set_field("Date", date);
    rows->set_field("Time_Placed_On_Air", on_air);
    rows->update();
  }

  std::optional<CallerHistory> find(std::string_view number) const {
    return find_history(*rows, letters, number);
  }

  CodePageLetters letters;
  platform::MemoryDatabases engine;
  std::unique_ptr<platform::Database> database;
  std::unique_ptr<platform::Recordset> rows;
};

EntryTexts known(const std::string& name, const std::string& city) {
  EntryTexts texts;
  texts[name_entry - 1] = name;
  texts[entry_of(CallerField::City) - 1] = city;
  return texts;
}

TEST_SUITE("callerdata/caller history") {
  TEST_CASE("a number is looked up without separators, with and without the country code") {
    CHECK(number_forms("555-0100") == Texts{"5550100"});
    CHECK(number_forms(" (312) 555-0100 ") == Texts{"3125550100", "13125550100", "0013125550100"});
    CHECK(number_forms("+1 312.555.0100") == Texts{"13125550100", "3125550100", "0013125550100"});
    CHECK(number_forms("001 312 555 0100") == Texts{"0013125550100", "3125550100", "13125550100"});
    CHECK(number_forms("+49 30 1234567") == Texts{"49301234567", "0049301234567"});
    CHECK(number_forms("0049 30 1234567") == Texts{"0049301234567", "49301234567"});
    CHECK(number_forms("1234") == Texts{"1234"});
    CHECK(number_forms("call 555-0100") == Texts{"5550100"});
    CHECK(number_forms("0000001") == Texts{"0000001"});
    for (const char* none : {"", "   ", "123", "private", "--------", "0000000", "000 000-0000",
                             "1 (000) 000-0000", "1111", "99999999999"}) {
      CAPTURE(none);
      CHECK(number_forms(none).empty());
    }
  }

  TEST_CASE("a number that the log doesn't know has no history") {
    LogOfCallers log;
    log.add("555-0101", "Ann", "Bath");
    CHECK_FALSE(log.find("555-0100"));
    CHECK_FALSE(log.find("5550"));
    CHECK_FALSE(log.find(""));
  }

  TEST_CASE("a logged number is known by its digits, whatever stands between them") {
    for (const char* logged :
         {"503-555-1212", "503\u00a0555\u00a01212", "503\u2013555\u20131212", "503:555,1212",
          "503_555_1212", "5035551212#", "*5035551212", "T 5035551212", "503'555'1212"}) {
      CAPTURE(logged);
      LogOfCallers log;
      log.add(logged, "Ann", "Bath");
      CHECK(log.find("(503) 555-1212"));
      CHECK_FALSE(log.find("503555121"));
    }
  }

  TEST_CASE("the newest name and city count, and the last time on air") {
    LogOfCallers log;
    log.add("312-555-0100", "Ann", "Bath", "1/5/2026", "10:00:00 AM");
    log.add("(312) 555-0100", "Anna Lee  ", "", "2/6/2026", "11:30:00 PM");
    log.add("1 312 555 0100", "", "", "3/7/2026");
    const CallerHistory expected{3, 2, "2/6/2026 11:30:00 PM", known("Anna Lee", "Bath")};
    CHECK(log.find("3125550100") == expected);
    CHECK(log.find("+1 (312) 555-0100") == expected);
  }

  TEST_CASE("the newest is told by the date, also where old calls were stored later") {
    LogOfCallers log;
    log.add("555-0100", "Ann Smith", "Salem", "1/5/2026", "10:00:00 AM");
    log.add("555-0100", "Ann Brown", "Reno", "12/31/2019", "11:00:00 AM");
    const auto history = log.find("555-0100");
    REQUIRE(history);
    CHECK(history->known == known("Ann Smith", "Salem"));
    CHECK(history->last_on_air == "1/5/2026 10:00:00 AM");
  }

  TEST_CASE("letters beyond ASCII come back as the console has them") {
    LogOfCallers log;
    log.add("555-0100", "Ren\xE9\x65", "K\xF6ln");
    CHECK(log.find("5550100") == CallerHistory{1, 0, "", known("Ren\xE9\x65", "K\xF6ln")});
  }

  TEST_CASE("of a caller with very many calls the newest are looked at") {
    LogOfCallers log;
    log.add("5550100", "first", "", "1/5/2026", "10:00:00 AM");
    for (int i = 0; i < CallerHistory::most_calls; ++i) log.add("5550100", "later", "");
    CHECK(log.find("5550100") ==
          CallerHistory{CallerHistory::most_calls, 0, "", known("later", "")});
  }

  TEST_CASE("the history as the user reads it") {
    CHECK(history_text({1, 0, "", {}}) == "Called once, never on air");
    CHECK(history_text({2, 1, "1/5/2026 10:00:00 AM", known("Ann", "Bath")}) ==
          "Called 2 times, on air once\r\nLast on air 1/5/2026 10:00:00 AM\r\nAnn, Bath");
    CHECK(history_text({1000, 999, "1/5/2026 10:00:00 AM", known("", "Bath")}) ==
          "Called 1000 times or more, on air 999 times\r\nLast on air 1/5/2026 10:00:00 "
          "AM\r\nBath");
  }

  TEST_CASE("the history in a few words") {
    CHECK(history_in_short(std::nullopt) == "first call");
    CHECK(history_in_short(CallerHistory{1, 0, "", {}}) == "called once before, never on air");
    CHECK(history_in_short(CallerHistory{4, 2, "1/5/2026 10:00:00 AM", {}}) ==
          "on air 2 times before, last 1/5/2026");
  }

  TEST_CASE("filling in never takes away what is something else") {
    CHECK(completes("", "Ann Lee"));
    CHECK(completes("  ", "Ann Lee"));
    CHECK(completes("ann", "Ann Lee"));
    CHECK_FALSE(completes("Bob", "Ann Lee"));
    CHECK_FALSE(completes("Ann Lee", "Ann Lee"));
    CHECK_FALSE(completes("Ann Lee Jr", "Ann Lee"));
    CHECK_FALSE(completes("Bob", ""));
    CHECK_FALSE(completes("  ", ""));
  }
}

}  // namespace
}  // namespace lineweir::test
