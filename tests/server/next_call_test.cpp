#include "server/next_call.h"

#include <doctest/doctest.h>

#include "server/group_desk.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ServerCommand;
using Words = std::vector<std::string>;

GroupOptions of_kind(int kind) {
  GroupOptions options;
  options.kind = kind;
  return options;
}

int told_next(NotingSeat& seat) {
  const auto told = seat.told_of(SrvNextCall);
  seat.told.clear();
  REQUIRE(told.size() == 1);
  return told[0].LineNo;
}

TEST_CASE("with the kinds 1 to 3 the last word of a seat holds, for all seats") {
  for (const int kind : {1, 2, 3}) {
    GroupDesk desk(of_kind(kind));
    NotingSeat anna(1);
    NotingSeat bert(2);
    for (NotingSeat* seat : {&anna, &bert}) desk.group.join(*seat);
    desk.exchange->report(3, 'S');
    desk.exchange->report(4, 'S');
    for (const auto& [seat, line] : {std::pair{&anna, 3}, {&bert, 4}, {&anna, -1}}) {
      anna.told.clear();
      bert.told.clear();
      desk.group.choose_next(*seat, line);
      CHECK(told_next(anna) == (line < 0 ? 255 : line));
      CHECK(told_next(bert) == (line < 0 ? 255 : line));
      CHECK(desk.group.next_call().line() == line);
    }
  }
}

TEST_CASE(
    "a choice ends, and all are told, when its line gets a letter that ends it at the consoles") {
  for (const int kind : {1, 2, 3}) {
    for (const char letter : std::string("FRSHPOENCLKYB")) {
      if (letter == 'S') continue;
      GroupDesk desk(of_kind(kind));
      NotingSeat anna(1);
      desk.group.join(anna);
      desk.exchange->report(3, 'S');
      desk.group.choose_next(anna, 3);
      anna.told.clear();
      desk.exchange->report(4, letter);
      CHECK(desk.group.next_call().line() == 3);
      desk.exchange->report(3, letter);
      const bool ends = letter == 'E' ? kind != 2 : std::string("FRNCB").find(letter) < 5;
      CAPTURE(kind);
      CAPTURE(letter);
      CHECK(desk.group.next_call().line() == (ends ? -1 : 3));
      CHECK(anna.told_of(SrvNextCall).size() == (ends ? 1 : 0));
    }
  }
}

TEST_CASE("a choice that comes too late is not taken, and who chose it is told what holds") {
  GroupDesk desk;
  NotingSeat anna(1);
  NotingSeat bert(2);
  desk.group.join(anna);
  desk.group.join(bert);
  desk.exchange->report(3, 'S');
  desk.group.choose_next(anna, 3);
  anna.told.clear();
  bert.told.clear();
  const auto is_taken = [&](int line) {
    anna.told.clear();
    bert.told.clear();
    desk.group.choose_next(anna, line);
    const bool taken = desk.group.next_call().line() == line;
    CHECK(told_next(anna) == desk.group.next_call().line());
    CHECK(bert.told.size() == (taken ? 1 : 0));
    if (taken) desk.group.choose_next(anna, 3);
    return taken;
  };
  // The caller has hung up, or been taken to air, while the choice was on its way.
  desk.exchange->report(5, 'S');
  desk.exchange->report(5, 'F');
  CHECK_FALSE(is_taken(5));
  desk.exchange->report(6, 'N');
  CHECK_FALSE(is_taken(6));
  desk.exchange->report(7, 'R');
  CHECK_FALSE(is_taken(7));
  desk.wait(2s);
  CHECK(is_taken(7));
  CHECK_FALSE(is_taken(5));
  desk.wait(8s);
  CHECK(is_taken(5));
  CHECK_FALSE(is_taken(6));
  // Nothing was ever heard of it.
  CHECK(is_taken(9));
}

TEST_CASE(
    "who is on air, on a busy line or with others is never next, however late the choice comes") {
  for (const char letter : {'N', 'C', 'B', 'E'}) {
    GroupDesk desk;
    NotingSeat anna(1);
    desk.group.join(anna);
    desk.exchange->report(5, letter);
    desk.wait(24h);
    desk.group.choose_next(anna, 5);
    CAPTURE(letter);
    CHECK(desk.group.next_call().line() == -1);
  }
}

TEST_CASE("a choice is remembered while the line's caller still waits") {
  const platform::GroupMemory memory{1, 2, {}, {}};
  CHECK(GroupDesk({}, &memory, "FFS").group.next_call().line() == 2);
  CHECK(GroupDesk({}, &memory, "FFH").group.next_call().line() == 2);
  // It was chosen when nobody was on it.
  CHECK(GroupDesk({}, &memory, "FFF").group.next_call().line() == 2);
  CHECK(GroupDesk({}, &memory, "FFN").group.next_call().line() == -1);
  const platform::GroupMemory first{1, 0, {}, {}};
  CHECK(GroupDesk({}, &first, "S").group.next_call().line() == 0);
  const platform::GroupMemory last{1, 9, {}, {}};
  CHECK(GroupDesk({}, &last, "FFFFFFFFFS").group.next_call().line() == 9);
  const platform::GroupMemory behind{1, 10, {}, {}};
  CHECK(GroupDesk({}, &behind, "FFS").group.next_call().line() == -1);
  const platform::GroupMemory gone{1, 12, {}, {}};
  CHECK(GroupDesk({}, &gone, "FFS").group.next_call().line() == -1);
}

TEST_CASE("a server that decides takes who has been ready longest, whatever was remembered") {
  const platform::GroupMemory memory{1, 2, {}, {}};
  GroupDesk desk(of_kind(4), &memory, "FFHFS");
  NotingSeat anna(1);
  desk.group.join(anna);
  desk.group.tell_callers(anna);
  CHECK(told_next(anna) == 4);
  desk.wait(1s);
  desk.exchange->report(7, 'S');
  desk.wait(1s);
  desk.exchange->report(1, 'S');
  CHECK(anna.told_of(SrvNextCall).empty());
  anna.told.clear();
  desk.exchange->report(4, 'N');
  CHECK(told_next(anna) == 7);
  desk.exchange->report(7, 'H');
  CHECK(told_next(anna) == 1);
  desk.exchange->report(1, 'F');
  CHECK(told_next(anna) == 255);
}

TEST_CASE("a clock that is set changes neither who has waited longest nor what comes too late") {
  for (const auto span : {platform::Milliseconds(-1h), platform::Milliseconds(1h)}) {
    GroupDesk desk(of_kind(4));
    desk.exchange->report(7, 'S');
    desk.wait(1s);
    desk.clock.move(span);
    desk.exchange->report(3, 'S');
    desk.exchange->report(2, 'R');
    CHECK(desk.group.next_call().line() == 7);
    GroupDesk chosen;
    NotingSeat anna(1);
    chosen.group.join(anna);
    chosen.exchange->report(5, 'S');
    chosen.exchange->report(5, 'F');
    chosen.clock.move(span);
    chosen.wait(9s);
    chosen.group.choose_next(anna, 5);
    CHECK(chosen.group.next_call().line() == -1);
    chosen.wait(2s);
    chosen.group.choose_next(anna, 5);
    CHECK(chosen.group.next_call().line() == 5);
  }
}

TEST_CASE("of two who have waited as long the lower line is next") {
  GroupDesk desk(of_kind(4));
  desk.exchange->report(7, 'S');
  desk.exchange->report(3, 'S');
  CHECK(desk.group.next_call().line() == 3);
}

TEST_CASE("a choice of a seat is refused by a server that decides") {
  GroupDesk desk(of_kind(4));
  NotingSeat anna(1);
  desk.group.join(anna);
  desk.exchange->report(7, 'S');
  desk.exchange->report(8, 'S');
  anna.told.clear();
  desk.group.choose_next(anna, 8);
  CHECK(told_next(anna) == 7);
  CHECK(desk.figures.refusals[static_cast<std::size_t>(Refusal::ServerDecides)] == 1);
}

TEST_CASE("the actions of a server that decides") {
  GroupDesk desk(of_kind(4));
  NotingSeat anna(1);
  anna.console = 2;
  NextCall& next = desk.group.next_call();
  for (const char letter : {'N', 'S', 'A', 'X', '\0'}) CHECK_FALSE(next.act(anna, letter, 0));
  desk.exchange->report(6, 'R');
  desk.wait(1s);
  desk.exchange->report(5, 'R');
  CHECK(next.act(anna, 'A', 255));
  desk.exchange->report(6, '\x82');
  CHECK(next.act(anna, 'S', 0));
  desk.exchange->report(6, 'S');
  CHECK(next.act(anna, 'N', 1));
  desk.exchange->report(6, 'C');
  CHECK_FALSE(next.act(anna, 'N', 0));
  CHECK(desk.exchange->words == Words{"line 6 to 2", "S06", "C06"});
}

TEST_CASE("where the consoles choose there are no actions") {
  for (const int kind : {1, 2, 3}) {
    GroupDesk desk(of_kind(kind));
    NotingSeat anna(1);
    desk.exchange->report(6, 'S');
    desk.group.choose_next(anna, 6);
    for (const char letter : {'N', 'S', 'A'}) {
      CHECK_FALSE(desk.group.next_call().act(anna, letter, 0));
    }
    CHECK(desk.exchange->words.empty());
  }
}

}  // namespace
}  // namespace lineweir::server
