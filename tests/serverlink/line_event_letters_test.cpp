#include <doctest/doctest.h>

#include "serverlink/event_desk.h"
#include "support/all_letters.h"

namespace lineweir::test {
namespace {

TEST_SUITE("serverlink/line events: letters of their own") {
  TEST_CASE("without the bar the next call keeps its strip and is told by its text") {
    EventDesk desk;
    std::string told;
    for (const char letter : reported_letters()) {
      desk.prepare({.letter = letter, .old = 'R', .kind = 2, .bar = false});
      desk.report(letter);
      const LinePicture after = desk.picture();
      if (after.strip == "DataRowRed" && after.captions[status_column] == "Next") told += letter;
      CHECK(after.strip != "DataRowGreen");
    }
    CHECK(told == "SHPOEZ\x83");
  }

  TEST_CASE("C is the producer's handset at position 1 of equipment of kind 3") {
    EventDesk desk;
    for (int kind = 1; kind <= 4; ++kind) {
      CAPTURE(kind);
      LinePicture expected =
          desk.prepare({.letter = 'C', .old = 'S', .kind = kind, .next = false, .handset_1 = true});
      desk.report('C');
      const LinePicture after = desk.picture();
      set_row(expected, kind == 3 ? "White" : "Red", kind == 3 ? "GreenIcon" : "",
              kind == 3 ? "GreenIcon" : "RedIcon");
      CHECK(after.strip == expected.strip);
      CHECK(after.mark == expected.mark);
      CHECK(after.icon1 == expected.icon1);
      CHECK(after.icon2 == expected.icon2);
      CHECK(after.captions[status_column] == (kind == 3 ? "" : "On Air"));
    }
  }

  TEST_CASE("a call that ends is logged once, though its report comes twice") {
    for (const char letter : std::string("FBRE")) {
      CAPTURE(letter);
      EventDesk desk;
      desk.prepare({letter, 'N'});
      desk.report(letter);
      desk.report(letter);
      CHECK(logged_rows(desk).size() == 1);
    }
  }

  TEST_CASE("a call answered from the ring keeps its clock, a new call starts it") {
    EventDesk desk;
    for (const char letter : {'S', 'H'}) {
      CAPTURE(letter);
      desk.prepare({letter, 'R'});
      desk.report(letter);
      CHECK(desk.picture().clock_base == "09:00:00");
      desk.prepare({letter, 'R'});
      desk.console.lines.ClockBase(EventDesk::line) = "";
      desk.report(letter);
      CHECK(desk.picture().clock_base == now_as_base);
    }
  }

  TEST_CASE("a lock and its end are the same call on air") {
    EventDesk desk;
    const LinePicture before = desk.prepare({'L', 'N'});
    desk.report('L');
    LinePicture locked = before;
    locked.letter = 'L';
    locked.clock_running = 1;
    locked.caption(status_column) = "Locked";
    set_row(locked, "Red", "RedIcon", "");
    CHECK(differences(desk.picture(), locked) == "");
    desk.report('N');
    LinePicture unlocked = locked;
    unlocked.letter = 'N';
    unlocked.next_call = no_line;
    unlocked.next_call_set = false;
    unlocked.caption(status_column) = "On Air";
    CHECK(differences(desk.picture(), unlocked) == "");
  }
}

}  // namespace
}  // namespace lineweir::test
