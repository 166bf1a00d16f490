#include "server/call_book.h"

#include <doctest/doctest.h>

#include <limits>
#include <set>

#include "server/group_desk.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using platform::CallRecord;
using Actions = std::vector<std::string>;

Actions actions(const CallRecord& call) {
  Actions found;
  for (const platform::CallStep& step : call.steps) found.push_back(step.user + ":" + step.action);
  return found;
}

TEST_CASE("a call is written down from its ring to its end") {
  PartsDesk desk;
  const auto began = desk.clock.now();
  desk.calls.begin(1, 3, "555 0100");
  desk.calls.step(1, 3, 'R', {});
  desk.loop.advance(5s);
  desk.calls.step(1, 3, 'P', "anna");
  desk.loop.advance(10s);
  CallBook::Fields fields;
  fields[0] = "Bob";
  desk.calls.tell_data(1, 3, "Anna", fields, "anna");
  desk.calls.step(1, 3, 'N', "host");
  desk.loop.advance(1s);
  desk.calls.step(1, 3, 'H', "host");
  desk.calls.step(1, 3, 'C', "host");
  desk.loop.advance(1s);
  CHECK(desk.calls.standing() == 1);
  // It stands in the store while it goes on.
  CHECK(desk.store.content().state().open_calls.size() == 1);
  desk.calls.end(1, 3, "host");
  CHECK(desk.calls.standing() == 0);
  const auto calls = desk.ended_calls();
  REQUIRE(calls.size() == 1);
  const CallRecord& call = calls[0];
  CHECK(call.group == 1);
  CHECK(call.line == 3);
  CHECK(call.number == "555 0100");
  CHECK(call.began == began);
  CHECK(call.answered == began + 5s);
  CHECK(call.aired == began + 15s);
  CHECK(call.ended == began + 17s);
  CHECK(call.told_by == "Anna");
  CHECK(call.told[0] == "Bob");
  CHECK(actions(call) == Actions{":ring", "anna:answer", "anna:data", "host:air", "host:hold",
                                 "host:conference", "host:drop"});
}

TEST_CASE("each letter has a name for what was done") {
  struct Row {
    char letter;
    const char* name;
  };
  for (const Row& row :
       {Row{'R', "ring"}, Row{'P', "answer"}, Row{'O', "answer"}, Row{'S', "ready"},
        Row{'H', "hold"}, Row{'N', "air"}, Row{'C', "conference"}, Row{'L', "lock"},
        Row{'K', "lock"}, Row{'Y', "lock"}, Row{'\x80', "answer"}, Row{'\xFF', "answer"},
        Row{'E', "other"}}) {
    PartsDesk desk;
    desk.calls.begin(1, 0, {});
    desk.calls.step(1, 0, row.letter, {});
    CHECK(desk.calls.find(1, 0)->steps.back().action == row.name);
    const bool is_ring = row.letter == 'R';
    CHECK((desk.calls.find(1, 0)->answered.count() == 0) == is_ring);
  }
}

TEST_CASE("nothing is written down of a line without a call") {
  PartsDesk desk;
  desk.calls.step(1, 3, 'N', "host");
  desk.calls.tell_data(1, 3, "Anna", {}, "anna");
  desk.calls.end(1, 3, "host");
  desk.loop.advance(1s);
  CHECK(desk.store.content().calls.empty());
  CHECK(desk.calls.find(1, 3) == nullptr);
}

TEST_CASE("a new call on a line ends the one that stands there") {
  PartsDesk desk;
  desk.calls.begin(1, 3, "1");
  desk.calls.begin(2, 3, "2");
  desk.calls.begin(1, 3, "3");
  CHECK(desk.calls.standing() == 2);
  const auto ended = desk.ended_calls();
  REQUIRE(ended.size() == 1);
  CHECK(ended[0].number == "1");
  CHECK(actions(ended[0]) == Actions{":hang up"});
}

TEST_CASE("numbers of calls grow, also within a millisecond and when the clock is set back") {
  PartsDesk desk;
  std::int64_t last = 0;
  const auto next = [&] {
    desk.calls.begin(1, 3, {});
    const std::int64_t id = desk.calls.find(1, 3)->id;
    CHECK(id > last);
    last = id;
  };
  for (int i = 0; i < 2000; ++i) next();
  desk.clock.move(-1h);
  for (int i = 0; i < 3; ++i) next();
  // And behind a restart.
  CallRecord open;
  open.id = last + 1'000'000'000;
  open.group = 2;
  CallBook later(desk.clock, desk.outbox);
  later.remember({open});
  later.begin(1, 3, {});
  CHECK(later.find(1, 3)->id > open.id);
}

TEST_CASE("a number that no clock has made is not counted on from") {
  PartsDesk desk;
  CallRecord odd;
  odd.id = std::numeric_limits<std::int64_t>::max();
  odd.group = 1;
  desk.calls.remember({odd});
  desk.calls.begin(1, 1, "555");
  const std::int64_t made = desk.calls.find(1, 1)->id;
  CHECK(made / 1000 == desk.clock.now().count());
}

TEST_CASE("no two groups, and no two leads behind one another, make one number") {
  PartsDesk desk;
  for (platform::Epoch epoch = 0; epoch < 9; ++epoch) {
    std::set<std::int64_t> numbers;
    // At the same moment, as by machines whose clocks differ.
    for (platform::Epoch of = epoch; of < epoch + 4; ++of) {
      for (int group = 1; group <= 250; ++group) {
        CallBook book(desk.clock, desk.outbox, of);
        book.begin(group, 0, {});
        CHECK(numbers.insert(book.find(group, 0)->id).second);
      }
    }
  }
}

TEST_CASE("numbers of calls go with the clock, in every group") {
  PartsDesk desk;
  for (int group = 1; group <= 250; group += 83) {
    for (const platform::Epoch epoch : {0, 1, 7}) {
      CallBook book(desk.clock, desk.outbox, epoch);
      std::int64_t last = 0;
      for (int i = 0; i < 5; ++i) {
        book.begin(group, 0, {});
        const std::int64_t id = book.find(group, 0)->id;
        CHECK(id > last);
        CHECK(id / 1000 <= desk.clock.now().count() + i);
        CHECK(id / 1000 >= desk.clock.now().count());
        last = id;
      }
    }
  }
}

TEST_CASE("a call that stood goes on, another one is closed, and so is what wasn't found again") {
  PartsDesk desk;
  std::vector<CallRecord> open(4);
  for (std::size_t i = 0; i < open.size(); ++i) {
    open[i].id = static_cast<std::int64_t>(i) + 1;
    open[i].group = i < 3 ? 1 : 2;
    open[i].line = static_cast<int>(i);
    open[i].answered = 5ms;
  }
  desk.calls.remember(open);
  CHECK(desk.calls.remembers(1, 0));
  CHECK_FALSE(desk.calls.remembers(2, 0));
  CHECK(desk.calls.resume(1, 9, 'H') == nullptr);
  REQUIRE(desk.calls.resume(1, 0, 'H') != nullptr);
  CHECK(desk.calls.find(1, 0)->id == 1);
  CHECK(desk.calls.resume(1, 0, 'H') == nullptr);
  // A line that rings whose caller had been answered has another one.
  CHECK(desk.calls.resume(1, 1, 'R') == nullptr);
  desk.calls.close_forgotten(1);
  CHECK(desk.ended_calls().size() == 2);
  CHECK(desk.calls.remembers(2, 3));
  desk.calls.close_forgotten(2);
  const auto ended = desk.ended_calls();
  REQUIRE(ended.size() == 3);
  for (const CallRecord& call : ended) {
    CHECK(actions(call) == Actions{":ended while the server was away"});
  }
}

TEST_CASE("of two calls that stood on one line the older one is over") {
  for (const bool older_first : {true, false}) {
    PartsDesk desk;
    CallRecord older;
    older.id = 1;
    older.group = 1;
    older.line = 3;
    older.began = 5ms;
    older.steps = {{5ms, "", "ring"}, {7ms, "anna", "hold"}};
    CallRecord newer = older;
    newer.id = 2;
    if (older_first) {
      desk.calls.remember({older, newer});
    } else {
      desk.calls.remember({newer, older});
    }
    REQUIRE(desk.calls.remembered(1, 3) != nullptr);
    CHECK(desk.calls.remembered(1, 3)->id == 2);
    const auto ended = desk.ended_calls();
    REQUIRE(ended.size() == 1);
    CHECK(ended[0].id == 1);
    CHECK(ended[0].ended == 7ms);
    CHECK(actions(ended[0]) == Actions{":ring", "anna:hold", ":ended while the server was away"});
  }
}

TEST_CASE("a backup's calls are over at their last steps, but for one that stands") {
  PartsDesk desk;
  desk.calls.begin(1, 3, "5550100");
  CallRecord restored = *desk.calls.find(1, 3);
  restored.id = 1;
  restored.began = 5ms;
  restored.steps = {};
  desk.calls.close_restored({restored, *desk.calls.find(1, 3)});
  const auto ended = desk.ended_calls();
  REQUIRE(ended.size() == 1);
  CHECK(ended[0].id == 1);
  CHECK(ended[0].ended == 5ms);
  CHECK(desk.calls.find(1, 3) != nullptr);
}

TEST_CASE("a call that is passed to and fro keeps a thousand steps, and its end") {
  PartsDesk desk;
  desk.calls.begin(1, 3, {});
  for (int i = 0; i < 1500; ++i) desk.calls.step(1, 3, i % 2 == 0 ? 'H' : 'P', "anna");
  CHECK(desk.calls.find(1, 3)->steps.size() == 1000);
  desk.calls.end(1, 3, "anna");
  const auto ended = desk.ended_calls();
  CHECK(ended.at(0).steps.size() == 1001);
  CHECK(ended[0].steps.back().action == "drop");
}

}  // namespace
}  // namespace lineweir::server
