#include "screen/row_states.h"

#include <doctest/doctest.h>

#include <vector>

#include "state/seat.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

using enum RowState;

constexpr Seat host = {true, 1, false, false};
constexpr Seat screener_1 = {false, 1, true, false};
constexpr Seat screener_2 = {false, 1, false, true};
constexpr Seat conference_screener = {false, 3, true, false};
constexpr Seat conference_host = {true, 3, true, false};
constexpr Seat numbered_seat = {false, 4, true, false};

char position(int number) { return static_cast<char>(first_position_code + number); }

TEST_SUITE("screen/row states") {
  TEST_CASE("what a row tells by its line's letter, for each seat") {
    struct Row {
      char letter;
      Seat seat;
      RowState state;
    };
    const std::vector<Row> rows = {
        {' ', host, Idle},
        {'F', host, Idle},
        {'B', host, SetBusy},
        {'R', host, Ringing},
        {'S', host, Ready},
        {'H', host, Held},
        {'Y', host, Locked},
        {'E', host, Taken},
        {'?', host, Taken},
        {'N', host, OnAir},
        {'C', host, OnAir},
        {'L', host, LockedOnAir},
        {'K', host, LockedOnAir},
        {'P', host, AtOtherHandset},
        {'O', host, AtOtherHandset},
        {'P', screener_1, AtHandset},
        {'O', screener_1, AtOtherHandset},
        {'P', screener_2, AtOtherHandset},
        {'O', screener_2, AtHandset},
        {'C', conference_screener, AtHandset},
        {'C', conference_host, AtOtherHandset},
        {'N', conference_screener, OnAir},
        {position(5), numbered_seat, AtHandset},
        {position(6), numbered_seat, AtOtherHandset},
        {position(5), host, AtOtherHandset},
    };
    constexpr int console_number = 5;
    for (const Row& row : rows) {
      CAPTURE(row.letter);
      CHECK(row_state(row.letter, RowColor::White, row.seat, console_number) == row.state);
    }
  }

  TEST_CASE("a red or a green strip tells more than the letter") {
    for (const StatusLetter& row : status_letters) {
      const char letter = row.look.letter;
      CAPTURE(letter);
      CHECK(row_state(letter, RowColor::Green, host, 0) == Next);
      CHECK(row_state(letter, RowColor::Red, host, 0) ==
            (letter == 'L' || letter == 'K' ? LockedOnAir : OnAir));
    }
  }

  TEST_CASE("of each change of a letter somebody is told, also where no element changes with it") {
    ScriptedConsole desk;
    std::vector<int> told;
    desk.console.row_states.on_change = [&](int line) { told.push_back(line); };
    desk.box_sends("P03");
    told.clear();
    desk.box_sends("O03");
    CHECK(told == std::vector{3});
    desk.box_sends("O03");
    CHECK(told == std::vector{3});
  }

  TEST_CASE("a caller's wait is counted from the ring, through hold and handset, to the air") {
    ScriptedConsole desk;
    const RowStates& rows = desk.console.row_states;
    const auto pass = [&](int seconds) {
      desk.platform.loop.advance(std::chrono::seconds(seconds));
    };
    CHECK_FALSE(rows.waited(2));
    desk.box_sends("R02");
    const auto begun = rows.waited(2);
    REQUIRE(begun);
    pass(60);
    desk.box_sends("P02");
    pass(60);
    desk.box_sends("H02");
    pass(60);
    CHECK(*rows.waited(2) - *begun >= std::chrono::seconds(180));
    desk.box_sends("N02");
    CHECK_FALSE(rows.waited(2));
    pass(60);
    // Who has been on air and is parted from it waits anew.
    desk.box_sends("H02");
    CHECK(*rows.waited(2) < std::chrono::seconds(5));
    desk.box_sends("F02");
    CHECK_FALSE(rows.waited(2));
  }

  TEST_CASE("lines that are gone and come back wait for nobody") {
    ScriptedConsole desk;
    desk.console.layout.set_line_count(20);
    desk.console.lines.StatusLetter(15) = 'H';
    CHECK(desk.console.row_states.waited(15));
    desk.console.layout.set_line_count(10);
    CHECK_FALSE(desk.console.row_states.waited(15));
    CHECK(desk.console.row_states.of(15) == Idle);
    desk.console.layout.set_line_count(20);
    CHECK_FALSE(desk.console.row_states.waited(15));
    CHECK_FALSE(desk.console.row_states.waited(-1));
    CHECK_FALSE(desk.console.row_states.waited(99));
  }
}

}  // namespace
}  // namespace lineweir::test
