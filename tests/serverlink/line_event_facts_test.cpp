#include <doctest/doctest.h>

#include <map>
#include <vector>

#include "serverlink/event_desk.h"
#include "support/all_letters.h"

namespace lineweir::test {
namespace {

// A report and what came of it.
struct Walked {
  Situation given;
  // The letter as it is taken: with equipment of kind 2 a held caller with data counts as screened.
  char letter;
  bool news;
  LinePicture before;
  LinePicture after;
  // What of record and row is said of the caller who is on the line.
  EntryTexts said_before;
  EntryTexts said_after;
  bool fresh_after;
  bool ring_confirmed_after;
  // What the log holds of it, one row a call.
  std::vector<std::vector<std::string>> logged;

  const std::string& record(CallerField field) const { return after.record[field]; }
  bool of_no_set() const { return status_letter(letter) == nullptr; }
  bool kind_2() const { return given.kind == 2; }
  bool back_from_lock() const { return one_of(given.old, "LK") && one_of(letter, "NC"); }
  // Somebody else is on the line from now on, or nobody.
  bool call_ends() const { return one_of(letter, "FB") || (one_of(letter, "RE") && !kind_2()); }
  bool line_is_empty() const { return one_of(letter, "FB") || (letter == 'E' && !kind_2()); }
};

// Each record has the caller's name for its number, by which its call is found in the log.
std::string name_of_call(std::size_t number) { return "call " + std::to_string(number); }

std::vector<Walked> walk_all() {
  EventDesk desk;
  std::vector<Walked> walked;
  for (const char letter : reported_letters()) {
    for (const char old : stored_letters()) {
      for (int kind = 1; kind <= 4; ++kind) {
        for (const bool fresh : {false, true}) {
          for (const bool next : {false, true}) {
            const Situation given{letter, old, kind, fresh, next};
            const char taken = letter == 'H' && kind == 2 ? 'S' : letter;
            const bool news = taken != old && !(letter == 'F' && old == ' ');
            desk.prepare(given);
            desk.console.Lineweir.LineName(EventDesk::line).caption = name_of_call(walked.size());
            LineTexts& texts = desk.console.line_texts;
            texts.renewed(EventDesk::line);
            const LinePicture before = desk.picture();
            const EntryTexts said_before = texts.of(EventDesk::line);
            desk.report(letter);
            walked.push_back({given,
                              taken,
                              news,
                              before,
                              desk.picture(),
                              said_before,
                              texts.of(EventDesk::line),
                              desk.console.lines.FreshConnect,
                              desk.console.lines.RingConfirm[EventDesk::line],
                              {}});
          }
        }
      }
    }
  }
  std::map<std::string, std::size_t> numbers;
  for (std::size_t i = 0; i < walked.size(); ++i) numbers[name_of_call(i)] = i;
  for (auto& row : logged_rows(desk)) walked.at(numbers.at(row[0])).logged.push_back(row);
  return walked;
}

// Every letter after every letter, with every kind of equipment, in a first pass and later, with
// the line being the next call and not.
const std::vector<Walked>& all_walked() {
  static const std::vector<Walked> walked = walk_all();
  return walked;
}

// Asks each report of which `holds` is true, of which there are so many or, with more letters,
// more.
template <class Holds, class Ask>
void ask_where(std::size_t at_least, Holds&& holds, Ask&& ask) {
  std::size_t seen = 0;
  for (const Walked& report : all_walked()) {
    if (!holds(report)) continue;
    ++seen;
    CAPTURE(report.given.letter);
    CAPTURE(report.given.old);
    CAPTURE(report.given.kind);
    CAPTURE(report.given.fresh);
    CAPTURE(report.given.next);
    ask(report);
  }
  REQUIRE(seen >= at_least);
}

// The same of all reports that are news.
template <class Ask>
void ask_news(Ask&& ask) {
  ask_where(
      3136, [](const Walked& report) { return report.news; }, ask);
}

TEST_SUITE("serverlink/line events: what holds of all letters") {
  TEST_CASE("a report that is no news changes nothing and logs nothing") {
    const auto no_news = [](const Walked& report) { return !report.news; };
    ask_where(240, no_news, [](const Walked& report) {
      REQUIRE(differences(report.after, report.before) == "");
      REQUIRE(report.logged.empty());
    });
  }

  TEST_CASE("each report ends the first pass and the wait for a second ring") {
    const auto any = [](const Walked&) { return true; };
    ask_where(3600, any, [](const Walked& report) {
      REQUIRE_FALSE(report.fresh_after);
      REQUIRE_FALSE(report.ring_confirmed_after);
    });
  }

  TEST_CASE("the letter is kept, and that of a line that has gone free is the blank") {
    ask_news([](const Walked& report) {
      REQUIRE(report.after.letter == (report.letter == 'F' ? ' ' : report.letter));
    });
  }

  TEST_CASE("who goes on air, rings or leaves the line isn't the next call any more") {
    ask_news([](const Walked& report) {
      const bool given_up = one_of(report.letter, "NCR") || report.line_is_empty();
      const bool keeps = !report.given.next || !given_up;
      REQUIRE(report.after.next_call == (keeps ? report.before.next_call : no_line));
      REQUIRE(report.after.next_call_set == keeps);
    });
  }

  TEST_CASE("the row looks as its letter does, and green for the next call where that may be") {
    constexpr std::array icons = {"", "RedIcon", "GreenIcon", "YellowIcon", "BlueIcon"};
    constexpr std::array strips = {"White", "Green", "Red"};
    ask_news([&](const Walked& report) {
      const LetterLook look = reported_look(report.letter, false);
      const bool next = report.given.next && look.may_be_next && !report.line_is_empty();
      LinePicture expected = report.after;
      set_row(expected, strips.at(static_cast<std::size_t>(next ? RowColor::Green : look.row)),
              icons.at(static_cast<std::size_t>(look.icon1)),
              icons.at(static_cast<std::size_t>(look.icon2)));
      if (report.letter != 'F') {
        expected.caption(status_column) =
            next && report.letter != 'Y' ? "Next" : std::string(look.status_text);
      }
      REQUIRE(differences(report.after, expected) == "");
    });
  }

  TEST_CASE("only a ring makes the rows blink") {
    ask_news([](const Walked& report) {
      REQUIRE(report.after.blink_enabled == (report.letter == 'R'));
    });
  }

  TEST_CASE("the clock runs while somebody is on the line") {
    ask_news([](const Walked& report) {
      REQUIRE(report.after.clock_running == (report.line_is_empty() ? 0 : 1));
    });
  }

  TEST_CASE("the clock counts from the ring, from being ready or held, or from going on air") {
    ask_news([](const Walked& report) {
      const bool begins = one_of(report.letter, "RSHNC") && !report.given.fresh;
      const bool goes_on =
          report.back_from_lock() || (one_of(report.letter, "SH") && report.given.old == 'R');
      const bool has_none = report.line_is_empty() || report.of_no_set();
      if (has_none) {
        REQUIRE(report.after.clock_base == "");
      } else {
        REQUIRE(report.after.clock_base == (begins && !goes_on ? now_as_base : "09:00:00"));
      }
    });
  }

  TEST_CASE("a caller stands in the row until the line is freed or another one rings") {
    ask_news([](const Walked& report) {
      const bool row_goes = report.letter == 'F' && !report.given.fresh;
      const bool caller_goes = report.letter == 'R' && !report.kind_2() && !report.given.fresh;
      for (int column = first_caller_column; column < column_count; ++column) {
        REQUIRE(report.after.captions[static_cast<std::size_t>(column)] ==
                (row_goes || caller_goes
                     ? ""
                     : report.before.captions[static_cast<std::size_t>(column)]));
      }
      REQUIRE(report.after.captions[number_column] == "row 0");
      if (report.letter == 'F') {
        REQUIRE(report.after.captions[status_column] == (row_goes ? "" : "row 1"));
      }
      const bool time_goes = row_goes || one_of(report.letter, "EHPOYB") || report.of_no_set();
      REQUIRE(report.after.captions[time_column] == (time_goes ? "" : "row 2"));
    });
  }

  TEST_CASE("a call that ends is logged once, with the times until now, and no other is") {
    const auto ends = [](const Walked& report) { return report.news && report.call_ends(); };
    ask_where(784, ends, [](const Walked& report) {
      const bool was_on_air = one_of(report.given.old, report.letter == 'F' ? "NCLK" : "NC");
      REQUIRE(report.logged.size() == 1);
      const auto& row = report.logged[0];
      const bool closes = report.letter != 'E';
      REQUIRE(row[10] == (closes && report.given.old == 'S' ? "00:01:30" : "00:00:01"));
      REQUIRE(row[11] == "09:59:00 AM");
      REQUIRE(row[12] == (closes && was_on_air ? "00:01:00" : "00:00:02"));
    });
    const auto goes_on = [](const Walked& report) { return report.news && !report.call_ends(); };
    ask_where(2576, goes_on, [](const Walked& report) { REQUIRE(report.logged.empty()); });
  }

  TEST_CASE("the record of a call that ends is cleared, but that a first pass keeps the data") {
    const auto ends = [](const Walked& report) { return report.news && report.call_ends(); };
    ask_where(784, ends, [](const Walked& report) {
      CallerRecord expected;
      if (report.given.fresh && report.letter != 'R') {
        expected = report.before.record;
        // The date is filled in when the call is logged.
        expected.set(CallerField::CallDate, "1/5/2026");
        expected.clear_times();
      }
      REQUIRE(report.after.record == expected);
    });
  }

  TEST_CASE("a call that goes on keeps its data, and closes the times that have been counting") {
    const auto goes_on = [](const Walked& report) { return report.news && !report.call_ends(); };
    ask_where(2576, goes_on, [](const Walked& report) {
      const bool on_air_now = one_of(report.letter, "NC") && !report.back_from_lock();
      const bool rings = report.letter == 'R';
      const bool hold_ends = on_air_now || (rings && report.given.old == 'S');
      const bool air_ends =
          one_of(report.letter, "SH") || (rings && one_of(report.given.old, "NC"));
      REQUIRE(report.record(CallerField::TimeOnHold) == (hold_ends ? "00:01:30" : "00:00:01"));
      REQUIRE(report.record(CallerField::TimeOnAir) == (air_ends ? "00:01:00" : "00:00:02"));
      REQUIRE(report.record(CallerField::TimePlacedOnAir) ==
              (on_air_now ? now_as_clock : "09:59:00 AM"));
      for (std::size_t i = 0; i < data_field_count; ++i) {
        const CallerField field = caller_fields[i].field;
        REQUIRE(report.record(field) == report.before.record[field]);
      }
    });
  }

  TEST_CASE("what still stands there of a caller who has gone is nobody's") {
    ask_news([](const Walked& report) {
      const bool another_rings =
          report.letter == 'R' && (!report.kind_2() || is_empty(report.given.old));
      const bool gone = another_rings || (report.call_ends() && !report.given.fresh);
      REQUIRE(report.said_before != EntryTexts());
      REQUIRE(report.said_after == (gone ? EntryTexts() : report.said_before));
    });
  }

  TEST_CASE("the wait counts from being ready or held, and ends with the call") {
    ask_news([](const Walked& report) {
      std::string_view expected = "1/5/2026 9:58:30 AM";
      if (one_of(report.letter, "SH")) expected = now_as_stamp;
      // Equipment that takes the line leaves the stamp.
      if (report.call_ends() && report.letter != 'E') expected = "";
      REQUIRE(report.after.hold_stamp == expected);
    });
  }
}

}  // namespace
}  // namespace lineweir::test
