#include "server/group_lines.h"

#include <doctest/doctest.h>

#include "lines/equipment_kinds.h"
#include "server/group_desk.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ServerCommand;
using Words = std::vector<std::string>;

// Of the call that stands on the line, or of the last one that has ended: "user: action" of each
// step.
Words steps(const platform::CallRecord& call) {
  Words found;
  for (const platform::CallStep& step : call.steps) found.push_back(step.user + ": " + step.action);
  return found;
}

TEST_CASE("a change is the seat's whose order has brought it about") {
  GroupDesk desk;
  NotingSeat anna(1, "anna");
  desk.exchange->report(3, 'R', "555 0100");
  CHECK(desk.order(anna, "P03", 3));
  CHECK(desk.exchange->words == Words{"P03"});
  desk.wait(4s);
  desk.exchange->report(3, 'P');
  CHECK(desk.group.lines().line(3).worked_by == "anna");
  CHECK(desk.group.lines().line(3).handset_of == 1);
  desk.order(anna, "N03", 3);
  desk.exchange->report(3, 'N');
  desk.order(anna, "F03", 3);
  desk.exchange->report(3, 'F');
  const auto calls = desk.ended_calls();
  REQUIRE(calls.size() == 1);
  CHECK(steps(calls[0]) == Words{": ring", "anna: answer", "anna: air", "anna: drop"});
  CHECK(desk.audited() == Words{"anna: on air", "anna: drop"});
}

TEST_CASE("a change that comes by itself is nobody's") {
  GroupDesk desk;
  NotingSeat anna(1, "anna");
  desk.exchange->report(3, 'R');
  desk.order(anna, "P03", 3);
  // Behind the order, but of another letter, and on another line.
  desk.exchange->report(4, 'P');
  desk.exchange->report(3, 'H');
  CHECK(desk.group.lines().line(4).handset_of == 0);
  CHECK(desk.group.lines().line(3).worked_by.empty());
  desk.exchange->report(3, 'F');
  CHECK(steps(desk.ended_calls().at(0)).back() == ": hang up");
  CHECK(desk.audited().empty());
}

TEST_CASE("an order brings about one change, and the same one behind it is nobody's") {
  GroupDesk desk;
  NotingSeat anna(1, "anna");
  desk.exchange->report(3, 'R');
  desk.order(anna, "N03", 3);
  for (const char letter : std::string("NHN")) desk.exchange->report(3, letter);
  const platform::CallRecord* const call = desk.calls.find(1, 3);
  REQUIRE(call != nullptr);
  CHECK(steps(*call) == Words{": ring", "anna: air", ": hold", ": air"});
}

TEST_CASE("an order holds for five seconds") {
  GroupDesk desk;
  NotingSeat anna(1, "anna");
  for (const auto& [line, later] : {std::pair{1, 5000ms}, std::pair{2, 5001ms}}) {
    desk.exchange->report(line, 'R');
    desk.order(anna, line == 1 ? "N01" : "N02", line);
    desk.wait(later);
    desk.exchange->report(line, 'N');
  }
  CHECK(desk.group.lines().line(1).worked_by == "anna");
  CHECK(desk.group.lines().line(2).worked_by.empty());
}

TEST_CASE("orders of several seats are told apart by what they bring about") {
  GroupDesk desk;
  NotingSeat anna(1, "anna");
  NotingSeat bert(2, "bert");
  desk.exchange->report(3, 'N');
  desk.order(anna, "H03", 3);
  desk.order(bert, "S03", 3);
  desk.exchange->report(3, 'H');
  CHECK(desk.group.lines().line(3).worked_by == "anna");
  desk.exchange->report(3, 'S');
  CHECK(desk.group.lines().line(3).worked_by == "bert");

  // The second order's change says that the first one's won't come.
  desk.order(anna, "H03", 3);
  desk.order(bert, "F03", 3);
  desk.exchange->report(3, 'F');
  desk.exchange->report(3, 'R');
  desk.exchange->report(3, 'H');
  CHECK(desk.group.lines().line(3).worked_by.empty());
}

TEST_CASE("of orders that bring nothing about the last eight are remembered") {
  GroupDesk desk;
  std::vector<std::unique_ptr<NotingSeat>> seats;
  desk.exchange->report(3, 'R');
  for (std::uint64_t number = 1; number <= 9; ++number) {
    seats.push_back(std::make_unique<NotingSeat>(number, "seat " + std::to_string(number)));
    desk.order(*seats.back(), "H03", 3);
  }
  CHECK(desk.group.lines().line(3).asked.size() == 8);
  desk.exchange->report(3, 'H');
  CHECK(desk.group.lines().line(3).worked_by == "seat 2");
}

TEST_CASE("the word of a lock brings any letter of a line on air") {
  for (const char* letters : {"NL", "LN", "CK", "KC"}) {
    GroupDesk desk;
    NotingSeat anna(1, "anna");
    desk.exchange->report(0, letters[0]);
    desk.order(anna, "L00", 0);
    desk.exchange->report(0, letters[1]);
    CHECK(desk.group.lines().line(0).worked_by == "anna");
  }
}

TEST_CASE("who releases a handset drops its caller") {
  for (const char letter : {'P', 'O'}) {
    GroupDesk desk;
    NotingSeat anna(1, "anna");
    desk.exchange->report(6, 'R');
    desk.exchange->report(6, letter);
    CHECK(desk.order(anna, std::string(1, letter) + "15", -1));
    CHECK(desk.exchange->words == Words{std::string(1, letter) + "15"});
    desk.exchange->report(6, 'F');
    CHECK(steps(desk.ended_calls().at(0)).back() == "anna: drop");
  }
}

TEST_CASE("of two seats that take a caller at the same moment the first has him") {
  GroupDesk desk;
  NotingSeat anna(1, "anna");
  NotingSeat bert(2, "bert");
  desk.exchange->report(3, 'R');
  CHECK(desk.order(anna, "P03", 3));
  CHECK(desk.order(anna, "P03", 3));
  desk.wait(249ms);
  CHECK_FALSE(desk.order(bert, "N03", 3));
  CHECK(bert.told_of(SrvLineStatus).size() == 1);
  // Other words are no taking.
  CHECK(desk.order(bert, "H03", 3));
  desk.wait(1ms);
  CHECK(desk.order(bert, "N03", 3));
}

TEST_CASE("who has just been put on air or to a handset isn't taken away at the same moment") {
  for (const char letter : {'N', 'C', 'P', 'O'}) {
    CAPTURE(letter);
    GroupDesk desk;
    NotingSeat anna(1, "anna");
    NotingSeat bert(2, "bert");
    desk.exchange->report(0, 'R');
    const std::string word = std::string(1, letter) + "00";
    CHECK(desk.order(anna, word, 0));
    desk.exchange->report(0, letter);
    desk.wait(100ms);
    CHECK_FALSE(desk.order(bert, letter == 'N' ? "P00" : "N00", 0));
    REQUIRE(bert.told_of(SrvLineStatus).size() == 1);
    CHECK(bert.told_of(SrvLineStatus)[0].Buffer == std::string(1, letter));
    desk.wait(200ms);
    CHECK(desk.order(bert, letter == 'N' ? "P00" : "N00", 0));
  }
}

TEST_CASE("what is told of a call is told of its line, from its beginning to its end") {
  GroupDesk desk;
  NotingSeat anna(1, "anna");
  desk.exchange->report(0, 'R', std::string(150, '5'));
  CHECK(desk.calls.find(1, 0)->number == std::string(100, '5'));
  CHECK(desk.group.lines().line(0).clock == desk.clock.now());
  desk.order(anna, "P00", 0);
  desk.exchange->report(0, 'P');
  desk.exchange->words.clear();
  desk.group.lines().hold_handset(anna.number);
  CHECK(desk.exchange->words == Words{"H00"});
  desk.order(anna, "N00", 0);
  desk.exchange->report(0, 'N');
  desk.exchange->report(0, 'F');
  CHECK(desk.group.lines().line(0).clock == platform::Moment{0});
  desk.wait(1s);
  REQUIRE(desk.store.content().audit.size() == 1);
  CHECK(desk.store.content().audit[0].event.detail == ", line 1");
}

TEST_CASE("who is refused as the exchange is held up is told how the line stands") {
  GroupDesk desk;
  NotingSeat flood(1, "flood");
  desk.exchange->report(0, 'R');
  desk.exchange->held_up_for = 10s;
  const auto order = [&](int line) {
    return desk.group.lines().obey(flood, {LineOrder::Kind::Word, "H00", line});
  };
  while (!order(0)) CHECK(flood.told.empty());
  REQUIRE(flood.told_of(SrvLineStatus).size() == 1);
  CHECK(flood.told_of(SrvLineStatus)[0].LineNo == 0);
  CHECK(flood.told_of(SrvLineStatus)[0].Buffer == "R");
  // A word that is no line's tells of none.
  flood.told.clear();
  CHECK(order(-1) == Refusal::TooMany);
  CHECK(flood.told.empty());
}

TEST_CASE("a caller who is ready, held or gone may be taken at once") {
  for (const char letter : {'S', 'H', 'F'}) {
    GroupDesk desk;
    NotingSeat anna(1, "anna");
    NotingSeat bert(2, "bert");
    desk.exchange->report(3, 'R');
    desk.order(anna, "P03", 3);
    desk.exchange->report(3, 'P');
    CHECK_FALSE(desk.order(bert, "N03", 3));
    desk.exchange->report(3, letter);
    CHECK(desk.order(bert, "N03", 3));
  }
}

TEST_CASE("who has gone leaves the callers at his own handset on hold, or to who comes back") {
  GroupOptions options;
  options.kind = 4;
  GroupDesk desk(options);
  NotingSeat anna(1, "anna");
  NotingSeat bert(2, "bert");
  anna.console = 5;
  bert.console = 6;
  const auto to_own = [&](NotingSeat& seat, int line) {
    desk.group.lines().obey(seat, {LineOrder::Kind::ToOwnPosition, {}, line});
    desk.exchange->report(line, static_cast<char>(first_position_code + seat.console));
  };
  to_own(anna, 1);
  to_own(bert, 2);
  to_own(anna, 3);
  CHECK(desk.exchange->words == Words{"line 1 to 5", "line 2 to 6", "line 3 to 5"});
  desk.exchange->report(3, 'N');
  desk.exchange->words.clear();
  desk.group.lines().hold_handset(anna.number);
  CHECK(desk.exchange->words == Words{"H01"});
  desk.exchange->words.clear();
  desk.group.lines().pass_handset(bert.number, 9);
  desk.group.lines().hold_handset(bert.number);
  CHECK(desk.exchange->words.empty());
  desk.group.lines().hold_handset(9);
  CHECK(desk.exchange->words == Words{"H02"});
}

TEST_CASE("with numbered positions a place's word is for all lines at the place") {
  GroupOptions options;
  options.kind = 4;
  GroupDesk desk(options);
  NotingSeat host(1, "host");
  NotingSeat screener(2, "screener");
  screener.screener = true;
  screener.console = 3;
  for (const auto& [line, letter] : {std::pair{0, 'N'}, {4, 'N'}, {5, 'C'}, {6, '\x83'}}) {
    desk.exchange->report(line, letter);
  }
  const auto words_of = [&](Seat& seat, LineOrder::Kind kind, int bank) {
    desk.exchange->words.clear();
    desk.group.lines().obey(seat, {kind, {}, -1, bank});
    return desk.exchange->words;
  };
  CHECK(words_of(host, LineOrder::Kind::DropPlace, 0) == Words{"F00", "F04"});
  CHECK(words_of(host, LineOrder::Kind::HoldPlace, 1) == Words{"H05"});
  CHECK(words_of(screener, LineOrder::Kind::HoldPlace, 0) == Words{"H06"});
  CHECK(words_of(screener, LineOrder::Kind::DropPlace, 1) == Words{"F06"});
  desk.exchange->report(6, 'F');
  CHECK(steps(desk.ended_calls().at(0)).back() == "screener: drop");
}

TEST_CASE("a line that doesn't exist is told of by nobody and to nobody") {
  GroupOptions options;
  options.missing_lines = {4};
  GroupDesk desk(options);
  NotingSeat anna(1, "anna");
  desk.group.join(anna);
  anna.told.clear();
  desk.exchange->report(3, 'R');
  desk.exchange->on_change({-1, 'R'}, {});
  desk.exchange->on_change({10, 'R'}, {});
  CHECK(anna.told.empty());
  CHECK(desk.calls.standing() == 0);
  CHECK_FALSE(desk.group.lines().exists(3));
  CHECK_FALSE(desk.group.lines().exists(-1));
  CHECK_FALSE(desk.group.lines().exists(10));
  CHECK(desk.group.lines().exists(4));
}

TEST_CASE("the letter that a line has already is no change") {
  GroupDesk desk;
  NotingSeat anna(1, "anna");
  desk.group.join(anna);
  desk.group.lines().tell_status(anna);
  desk.exchange->report(3, 'R');
  anna.told.clear();
  desk.exchange->report(3, 'R');
  CHECK(anna.told.empty());
}

TEST_CASE("positions go out as P and O, numbered ones as P with their number") {
  GroupDesk desk;
  NotingSeat anna(1, "anna");
  desk.group.join(anna);
  desk.group.lines().tell_status(anna);
  struct Row {
    char letter;
    const char* told;
    int number;
  };
  for (const Row& row :
       {Row{'P', "P", 255}, Row{'O', "O", 255}, Row{'\x80', "P", 0}, Row{'\x85', "P", 5},
        Row{'\xFE', "P", 126}, Row{'N', "N", 255}, Row{'C', "C", 255}, Row{'F', "F", 255}}) {
    anna.told.clear();
    desk.exchange->report(2, row.letter);
    const auto told = anna.told_of(SrvLineStatus);
    REQUIRE(told.size() == 1);
    CHECK(told[0].LineNo == 2);
    CHECK(told[0].Buffer == row.told);
    CHECK(told[0].AltInfo == row.number);
    CHECK(told[0].Console == row.number);
  }
}

TEST_CASE("a call is the same one, another or none, by its letter and the kind of equipment") {
  struct Row {
    int kind;
    const char* letters;
    std::size_t ended;
    std::size_t standing;
  };
  for (const Row& row : {
           Row{1, "RPSNHF", 1, 0},
           // Another caller.
           Row{1, "RHR", 1, 1},
           Row{3, "RNR", 1, 1},
           Row{4, "RSR", 1, 1},
           // One who comes back.
           Row{2, "RHRNRF", 1, 0},
           Row{1, "RB", 1, 0},
           Row{2, "RB", 1, 0},
           Row{1, "RE", 1, 0},
           Row{3, "RE", 1, 0},
           Row{1, "E", 0, 0},
           // Other equipment has him.
           Row{2, "RE", 0, 1},
           Row{2, "REPNF", 1, 0},
           Row{2, "EF", 0, 0},
           Row{2, "EN", 0, 1},
           Row{1, "NF", 1, 0},
       }) {
    CAPTURE(row.kind);
    CAPTURE(row.letters);
    GroupOptions options;
    options.kind = row.kind;
    GroupDesk desk(options);
    for (const char letter : std::string(row.letters)) {
      desk.exchange->report(7, letter);
      CHECK(desk.group.lines().has_call(7) == (desk.calls.standing() == 1));
    }
    CHECK(desk.calls.standing() == row.standing);
    CHECK(desk.ended_calls().size() == row.ended);
  }
}

TEST_CASE("letters that the exchange has already are calls that began when nobody saw") {
  GroupDesk on_first({}, nullptr, "RF");
  CHECK(on_first.calls.standing() == 1);
  CHECK(on_first.group.lines().has_call(0));
  CHECK_FALSE(on_first.group.lines().has_call(1));
  CHECK_FALSE(on_first.group.lines().has_call(-1));
  CHECK_FALSE(on_first.group.lines().has_call(10));
  GroupDesk desk({}, nullptr, "FRNBE");
  CHECK(desk.calls.standing() == 2);
  CHECK(desk.group.lines().status_text() == "F00R01N02B03E04F05F06F07F08F09");
}

TEST_CASE("a line that is left out ends its call, and one that comes back has its caller") {
  GroupDesk desk;
  NotingSeat anna(1, "anna");
  desk.group.join(anna);
  desk.group.lines().tell_status(anna);
  desk.exchange->report(3, 'R');
  anna.told.clear();
  GroupOptions without = desk.group.options();
  without.missing_lines = {4};
  desk.group.change(without);
  CHECK(anna.told_of(SrvLineStatus).at(0).Buffer == "F");
  CHECK(desk.ended_calls().size() == 1);
  desk.exchange->report(3, 'H');
  anna.told.clear();
  without.missing_lines = {};
  desk.group.change(without);
  CHECK(anna.told_of(SrvLineStatus).at(0).Buffer == "H");
  CHECK(desk.calls.standing() == 1);
}

TEST_CASE("what was told of a free line goes with the line when it is left out") {
  GroupDesk desk;
  NotingSeat anna(1, "anna");
  desk.group.join(anna);
  desk.group.caller_data().take(anna, 3, "anna\2Jo\2");
  desk.wait(10s);
  desk.group.choose_next(anna, 3);
  CHECK(desk.group.next_call().line() == 3);
  anna.told.clear();
  GroupOptions without = desk.group.options();
  without.missing_lines = {4};
  desk.group.change(without);
  REQUIRE(anna.told_of(SrvCallerData).size() == 1);
  CHECK(anna.told_of(SrvCallerData).at(0).Buffer.empty());
  CHECK(desk.group.next_call().line() == -1);
}

}  // namespace
}  // namespace lineweir::server
