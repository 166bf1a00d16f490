#include <doctest/doctest.h>

#include "serverlink/event_desk.h"

namespace lineweir::test {
namespace {

constexpr int kind_2_line = EventDesk::line;

TEST_SUITE("serverlink/line events: equipment of kind 2") {
  void clear_row_texts(EventDesk & desk) {
    for (int column = 0; column < column_count; ++column) {
      desk.console.Lineweir.column_labels(column)(kind_2_line).caption = "";
    }
  }

  TEST_CASE("a held caller counts as screened when a shown column behind the third has data") {
    struct Row {
      int column;
      std::string text;
      char letter;
    };
    for (const Row& row : {Row{column_of(CallerField::CallerName), "Ann", 'S'},
                           Row{column_of(CallerField::Comments), " x", 'S'},
                           Row{column_of(CallerField::CallerName), "   ", 'H'},
                           Row{column_of(CallerField::CallerName),
                               "\x1F"
                               "Ann",
                               'H'},
                           Row{column_of(CallerField::CallerName), "\xE9", 'S'},
                           Row{time_column, "0:01:00", 'H'}, Row{status_column, "Held", 'H'},
                           Row{user_column, "Ann", 'H'}, Row{number_column, "6", 'H'}}) {
      CAPTURE(row.column);
      CAPTURE(row.text);
      EventDesk desk;
      desk.prepare({'H', 'P', 2});
      clear_row_texts(desk);
      desk.console.Lineweir.column_labels(row.column)(kind_2_line).caption = row.text;
      desk.report('H');
      CHECK(desk.console.lines.StatusLetter(kind_2_line) == row.letter);
    }
  }

  TEST_CASE("with other kinds a held caller with data is held") {
    for (const int kind : {1, 3, 4}) {
      EventDesk desk;
      desk.prepare({'H', 'P', kind});
      desk.report('H');
      CHECK(desk.console.lines.StatusLetter(kind_2_line) == 'H');
    }
  }

  TEST_CASE("a ring that follows hold counts in the second pass running") {
    for (const char old : {'H', 'S'}) {
      EventDesk desk;
      desk.prepare({'R', old, 2});
      desk.console.lines.RingConfirm[kind_2_line] = false;
      const LinePicture before = line_picture(desk.console, kind_2_line);
      desk.report('R');
      CHECK(differences(line_picture(desk.console, kind_2_line), before) == "");
      CHECK(desk.console.lines.RingConfirm[kind_2_line]);
      desk.report('R');
      CHECK(desk.console.lines.StatusLetter(kind_2_line) == 'R');
      CHECK_FALSE(desk.console.lines.RingConfirm[kind_2_line]);
    }
  }

  TEST_CASE("another report in between begins the count anew") {
    EventDesk desk;
    desk.prepare({'R', 'S', 2});
    desk.console.lines.RingConfirm[kind_2_line] = false;
    for (int pass = 0; pass < 3; ++pass) {
      desk.report('R');
      CHECK(desk.console.lines.StatusLetter(kind_2_line) == 'S');
      desk.report('S');
    }
  }

  TEST_CASE("a ring is taken at once from other letters and with other kinds") {
    EventDesk desk;
    for (const char old : std::string(" NPOE")) {
      desk.prepare({'R', old, 2});
      desk.console.lines.RingConfirm[kind_2_line] = false;
      desk.report('R');
      CHECK(desk.console.lines.StatusLetter(kind_2_line) == 'R');
    }
    desk.prepare({'R', 'H', 1});
    desk.console.lines.RingConfirm[kind_2_line] = false;
    desk.report('R');
    CHECK(desk.console.lines.StatusLetter(kind_2_line) == 'R');
  }
}

}  // namespace
}  // namespace lineweir::test
