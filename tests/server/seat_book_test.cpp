#include "server/seat_book.h"

#include <doctest/doctest.h>

#include "server/group_desk.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using Words = std::vector<std::string>;

struct BookDesk : PartsDesk {
  explicit BookDesk(const std::vector<int>& numbers = {1, 2}) {
    for (const int number : numbers) {
      GroupOptions options;
      options.number = number;
      options.name = "Studio " + std::to_string(number);
      auto made = std::make_unique<ManualExchange>(options.lines);
      exchanges[number] = made.get();
      groups[number] = std::make_unique<Group>(context, options, std::move(made), nullptr);
    }
  }

  // The seat's caller is at its handset.
  void answer(Seat& seat, int line) {
    groups.at(seat.group)
        ->lines()
        .obey(seat, {LineOrder::Kind::Word, "P0" + std::to_string(line), line});
    exchanges.at(seat.group)->report(line, 'P');
    exchanges.at(seat.group)->words.clear();
  }

  void wait(platform::Milliseconds span) {
    for (; span > 0s; span -= 1s) {
      loop.advance(1s);
      book.look_after_vanished();
    }
  }

  std::map<int, ManualExchange*> exchanges;
  Groups groups;
  SeatBook book{context, groups};
};

TEST_CASE("the names of groups stand at the places of their numbers") {
  BookDesk desk({2, 5});
  CHECK(names_of_groups(desk.groups, {}, desk.letters) ==
        Words{"-", "Studio 2", "-", "-", "Studio 5"});
  CHECK(names_of_groups({}, {}, desk.letters).empty());
}

TEST_CASE("a group's name is one that a list and a frame can hold") {
  BookDesk desk({1});
  GroupOptions options = desk.groups.at(1)->options();
  options.name = "Caf\xC3\xA9\3\5\5" + std::string(100, 'x');
  desk.groups.at(1)->change(options);
  const std::string name = names_of_groups(desk.groups, {}, desk.letters).at(0);
  CHECK(name.starts_with("Caf\xE9   xx"));
  CHECK(name.size() == 60);
}

TEST_CASE("numbers of seats are never used again") {
  BookDesk desk;
  CHECK(desk.book.new_number() == 1);
  CHECK(desk.book.new_number() == 2);
}

TEST_CASE("a seat is in one group at a time") {
  BookDesk desk;
  NotingSeat anna(1, "anna");
  desk.book.add(anna);
  desk.book.join(anna, *desk.groups.at(1));
  desk.book.join(anna, *desk.groups.at(2));
  CHECK(anna.group == 2);
  CHECK(desk.groups.at(1)->seats().seats().empty());
  CHECK(desk.groups.at(2)->seats().seats().size() == 1);
  desk.book.join(anna, *desk.groups.at(2));
  CHECK(desk.groups.at(2)->seats().seats().size() == 1);
  desk.book.leave_group(anna);
  CHECK(anna.group == 0);
  CHECK(desk.groups.at(2)->seats().seats().empty());
  CHECK(desk.book.all().size() == 1);
  desk.book.remove(anna, SeatBook::Leaving::Goodbye);
  CHECK(desk.book.all().empty());
}

TEST_CASE("the caller of a seat that has vanished waits for it, and goes on hold then") {
  BookDesk desk;
  NotingSeat anna(1, "anna");
  desk.book.join(anna, *desk.groups.at(1));
  desk.answer(anna, 4);
  desk.book.remove(anna, SeatBook::Leaving::Vanished);
  desk.wait(34s);
  CHECK(desk.exchanges.at(1)->words.empty());
  desk.wait(1s);
  CHECK(desk.exchanges.at(1)->words == Words{"H04"});
}

TEST_CASE("the caller of a seat that was silent for too long goes on hold at once") {
  BookDesk desk;
  NotingSeat anna(1, "anna");
  desk.book.join(anna, *desk.groups.at(1));
  desk.answer(anna, 4);
  desk.book.remove(anna, SeatBook::Leaving::Silent);
  CHECK(desk.exchanges.at(1)->words == Words{"H04"});
}

TEST_CASE("who comes back to the same place has his caller again, and nobody else has") {
  struct Row {
    const char* user;
    int group;
    int console;
    bool is_same;
  };
  for (const Row& row : {Row{"anna", 1, 3, true}, Row{"bert", 1, 3, false},
                         Row{"anna", 2, 3, false}, Row{"anna", 1, 4, false}}) {
    CAPTURE(row.user);
    CAPTURE(row.group);
    CAPTURE(row.console);
    BookDesk desk;
    NotingSeat anna(1, "anna");
    anna.console = 3;
    desk.book.join(anna, *desk.groups.at(1));
    desk.answer(anna, 4);
    desk.book.remove(anna, SeatBook::Leaving::Vanished);
    desk.wait(10s);
    NotingSeat again(2, row.user);
    again.console = row.console;
    desk.book.join(again, *desk.groups.at(row.group));
    desk.wait(40s);
    CHECK(desk.exchanges.at(1)->words.empty() == row.is_same);
    desk.exchanges.at(1)->words.clear();
    desk.groups.at(1)->lines().hold_handset(2);
    CHECK(desk.exchanges.at(1)->words.empty() != row.is_same);
  }
}

TEST_CASE("one who vanishes twice is waited for from the second time") {
  BookDesk desk;
  NotingSeat first(1, "anna");
  desk.book.join(first, *desk.groups.at(1));
  desk.answer(first, 4);
  desk.book.remove(first, SeatBook::Leaving::Vanished);
  desk.wait(30s);
  NotingSeat second(2, "anna");
  desk.book.join(second, *desk.groups.at(1));
  desk.book.remove(second, SeatBook::Leaving::Vanished);
  desk.wait(34s);
  CHECK(desk.exchanges.at(1)->words.empty());
  desk.wait(1s);
  CHECK(desk.exchanges.at(1)->words == Words{"H04"});
}

TEST_CASE("who is back before the end of his old connection is noticed keeps his caller") {
  for (const auto leaving : {SeatBook::Leaving::Vanished, SeatBook::Leaving::Silent}) {
    BookDesk desk;
    NotingSeat old(1, "anna");
    desk.book.join(old, *desk.groups.at(1));
    desk.answer(old, 4);
    NotingSeat back(2, "anna");
    desk.book.join(back, *desk.groups.at(1));
    desk.wait(10s);
    desk.book.remove(old, leaving);
    desk.wait(40s);
    CHECK(desk.exchanges.at(1)->words.empty());
    desk.book.remove(back, SeatBook::Leaving::Silent);
    CHECK(desk.exchanges.at(1)->words == Words{"H04"});
  }
}

TEST_CASE("who is cut again before the end of his first connection is noticed is waited for") {
  for (const auto leaving : {SeatBook::Leaving::Vanished, SeatBook::Leaving::Silent}) {
    BookDesk desk;
    NotingSeat old(1, "anna");
    desk.book.join(old, *desk.groups.at(1));
    desk.answer(old, 4);
    NotingSeat back(2, "anna");
    desk.book.join(back, *desk.groups.at(1));
    desk.book.remove(back, SeatBook::Leaving::Vanished);
    desk.wait(20s);
    desk.book.remove(old, leaving);
    desk.wait(14s);
    CHECK(desk.exchanges.at(1)->words.empty());
    desk.wait(1s);
    CHECK(desk.exchanges.at(1)->words == Words{"H04"});
  }
}

TEST_CASE("a seat that was there before takes over nobody's caller, nor does one elsewhere") {
  struct Row {
    std::uint64_t number;
    const char* user;
    int group;
    int console;
  };
  for (const Row& row :
       {Row{1, "anna", 1, 0}, Row{3, "bert", 1, 0}, Row{3, "anna", 2, 0}, Row{3, "anna", 1, 1}}) {
    BookDesk desk;
    NotingSeat other(row.number, row.user);
    other.console = row.console;
    desk.book.join(other, *desk.groups.at(row.group));
    NotingSeat anna(2, "anna");
    desk.book.join(anna, *desk.groups.at(1));
    desk.answer(anna, 4);
    desk.book.remove(anna, SeatBook::Leaving::Silent);
    CHECK(desk.exchanges.at(1)->words == Words{"H04"});
  }
}

struct LeftGroup : BookDesk {
  explicit LeftGroup(bool is_elsewhere) {
    book.join(anna, *groups.at(1));
    answer(anna, 4);
    book.leave_group(anna);
    if (is_elsewhere) book.join(anna, *groups.at(2));
    wait(100s);
    CHECK(words().empty());
  }
  const Words& words() const { return exchanges.at(1)->words; }

  NotingSeat anna{1, "anna"};
};

TEST_CASE("the caller of a seat that has left his group goes on hold when the seat is gone") {
  for (const bool is_elsewhere : {false, true}) {
    LeftGroup silent(is_elsewhere);
    silent.book.remove(silent.anna, SeatBook::Leaving::Silent);
    CHECK(silent.words() == Words{"H04"});
    LeftGroup vanished(is_elsewhere);
    vanished.book.remove(vanished.anna, SeatBook::Leaving::Vanished);
    vanished.wait(34s);
    CHECK(vanished.words().empty());
    vanished.wait(1s);
    CHECK(vanished.words() == Words{"H04"});
    LeftGroup back(is_elsewhere);
    back.book.remove(back.anna, SeatBook::Leaving::Vanished);
    NotingSeat again(2, "anna");
    back.book.join(again, *back.groups.at(1));
    back.wait(40s);
    CHECK(back.words().empty());
  }
}

TEST_CASE("a caller who reaches the handset when his seat is back already is its too") {
  BookDesk desk;
  NotingSeat anna(1, "anna");
  desk.book.join(anna, *desk.groups.at(1));
  desk.groups.at(1)->lines().obey(anna, {LineOrder::Kind::Word, "P04", 4});
  desk.book.remove(anna, SeatBook::Leaving::Vanished);
  NotingSeat again(2, "anna");
  desk.book.join(again, *desk.groups.at(1));
  desk.exchanges.at(1)->report(4, 'P');
  desk.exchanges.at(1)->words.clear();
  desk.wait(40s);
  CHECK(desk.exchanges.at(1)->words.empty());
  desk.book.remove(again, SeatBook::Leaving::Silent);
  CHECK(desk.exchanges.at(1)->words == Words{"H04"});
}

TEST_CASE("a group that is gone meanwhile holds nobody") {
  BookDesk desk;
  NotingSeat anna(1, "anna");
  desk.book.join(anna, *desk.groups.at(1));
  desk.answer(anna, 4);
  desk.book.remove(anna, SeatBook::Leaving::Vanished);
  desk.groups.erase(1);
  desk.wait(40s);
  CHECK(desk.book.find_group(1) == nullptr);
}

}  // namespace
}  // namespace lineweir::server
