#include "callerdata/known_caller_text.h"

#include <doctest/doctest.h>

namespace lineweir::test {
namespace {

const CallerKnown known_anna{CallerFlag::Barred, "555 0100", 7,      3,
                             "2026-11-12 20:15", "Anna Lee", "Troy", "abuse",
                             "2026-12-31",       "bob"};

TEST_SUITE("callerdata/known caller text") {
  TEST_CASE("a flag is told with its last day, its reason and who set it") {
    CHECK(flag_text(known_anna) == "Barred until 12/31/2026: abuse (bob)");
    CHECK(flag_in_short(known_anna) == "Barred: abuse");
    CallerKnown known = known_anna;
    known.flag = CallerFlag::Careful;
    known.until.clear();
    CHECK(flag_text(known) == "Careful: abuse (bob)");
    known.reason.clear();
    CHECK(flag_text(known) == "Careful (bob)");
    CHECK(flag_in_short(known) == "Careful");
    known.flagged_by.clear();
    CHECK(flag_text(known) == "Careful");
    // Set by the administrator's tool, which isn't a user.
    known.flagged_by = "(admin)";
    CHECK(flag_text(known) == "Careful (admin)");
    known.flag = CallerFlag::None;
    CHECK(flag_text(known).empty());
    CHECK(flag_in_short(known).empty());
  }

  TEST_CASE("how often somebody has called is told in one line") {
    CHECK(calls_text(known_anna) == "On air 3 times, last 11/12/2026");
    CallerKnown known = known_anna;
    known.on_air = 1;
    known.last_on_air.clear();
    CHECK(calls_text(known) == "On air once");
    known.on_air = 0;
    CHECK(calls_text(known) == "Called 7 times, never on air");
    known.calls = 0;
    CHECK(calls_text(known).empty());
  }

  TEST_CASE("a person is told by name and city, or by what is known of both") {
    CHECK(person_text(known_anna) == "Anna Lee, Troy");
    CallerKnown known = known_anna;
    known.name.clear();
    CHECK(person_text(known) == "Troy");
    known.city.clear();
    CHECK(person_text(known).empty());
    known.name = "Anna Lee";
    CHECK(person_text(known) == "Anna Lee");
  }

  TEST_CASE("who knows more calls is shown, and the other one adds what that doesn't know") {
    CallerHistory log;
    log.calls = 6;
    log.known[name_entry - 1] = "Anna";
    log.known[entry_of(CallerField::City) - 1] = "Rome";
    const auto history = richer(log, &known_anna);
    CHECK(history->calls == 7);
    CHECK(history->last_on_air == "11/12/2026 8:15 PM");
    CHECK(history->known[name_entry - 1] == "Anna Lee");
    CallerKnown without_name = known_anna;
    without_name.name.clear();
    CHECK(richer(log, &without_name)->known[name_entry - 1] == "Anna");
    log.calls = 7;
    CHECK(richer(log, &known_anna) == log);
    CHECK(richer(log, nullptr) == log);
    CHECK(richer(std::nullopt, &known_anna) == history_of(known_anna));
    CHECK_FALSE(richer(std::nullopt, nullptr));
    without_name.calls = 0;
    CHECK_FALSE(richer(std::nullopt, &without_name));
  }

  TEST_CASE("a day is typed in three ways") {
    const platform::DateTime day{2026, 12, 31};
    for (const char* text : {"12/31/2026", "12/31/26", " 2026-12-31 ", "31.12.2026", "31.12.26"}) {
      CAPTURE(text);
      CHECK(typed_day(text) == day);
    }
    for (const char* text : {"", "31/12/2026", "2026-02-29", "12/31", "31.12.", "tomorrow", "..",
                             "12/31/2026 10:00"}) {
      CAPTURE(text);
      CHECK_FALSE(typed_day(text));
    }
    CHECK(shown_day("2026-12-31") == "12/31/2026");
    CHECK(shown_day("").empty());
  }
}

}  // namespace
}  // namespace lineweir::test
