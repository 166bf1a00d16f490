#include "practice/practice_callers.h"

#include <doctest/doctest.h>
#include <rapidcheck.h>

#include <set>

#include "practice/practice_box.h"
#include "support/property_check.h"

namespace lineweir::practice {
namespace {

using exchange::StudioEvent;
using std::chrono::minutes;
using std::chrono::seconds;

// Callers on lines that obey at once.
struct Studio {
  explicit Studio(std::uint64_t seed, int level = 1, int count = 10)
      : lines(count), callers(levels[static_cast<std::size_t>(level)], count, seed) {}

  // The next thing that the callers do; nothing where every line was taken.
  std::optional<StudioEvent> step() {
    now = callers.next_due();
    const auto event = callers.step(lines);
    if (!event) return event;
    if (event->kind == StudioEvent::Kind::Call) {
      who.push_back(*callers.on_line(event->line));
      tell(lines.ring(event->line));
    } else {
      tell(lines.hang_up(event->line));
    }
    return event;
  }

  void set(int line, char letter) { tell(lines.set_letter(line, letter)); }

  // The first caller of that nature, who rings.
  int await(Nature nature) {
    for (;;) {
      const auto event = step();
      if (event && event->kind == StudioEvent::Kind::Call &&
          callers.on_line(event->line)->nature == nature) {
        return event->line;
      }
    }
  }

  // How long the caller on the line stays; nothing where he is still there after an hour.
  std::optional<Moment> stay(int line) {
    const Moment from = now;
    while (callers.next_due() < from + minutes(60)) {
      step();
      if (callers.on_line(line) == nullptr) return now - from;
    }
    return std::nullopt;
  }

  void tell(const exchange::LineChanges& changes) {
    for (const auto& change : changes) callers.line_changed(change.line, change.letter, now);
  }

  exchange::Switchboard lines;
  Callers callers;
  Moment now{0};
  std::vector<Caller> who;
};

bool within(std::optional<Moment> time, const Between& range) {
  return time && *time >= range.least && *time <= range.most;
}

TEST_SUITE("practice/callers") {
  TEST_CASE("each nature rings, waits and talks as long as its row says") {
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
      for (const NatureRule& rule : nature_rules) {
        CAPTURE(seed);
        CAPTURE(static_cast<int>(rule.nature));
        Studio ringing(seed);
        CHECK(within(ringing.stay(ringing.await(rule.nature)), rule.rings));
        for (const char letter : {'H', 'S'}) {
          Studio waiting(seed);
          const int line = waiting.await(rule.nature);
          waiting.set(line, letter);
          CHECK(within(waiting.stay(line), rule.waits));
        }
        for (const char letter : {'N', 'C', 'L', 'K'}) {
          Studio on_air(seed);
          const int line = on_air.await(rule.nature);
          on_air.set(line, letter);
          CHECK(within(on_air.stay(line), rule.talks));
        }
      }
    }
  }

  TEST_CASE("at a handset everybody stays but a wrong number") {
    for (const NatureRule& rule : nature_rules) {
      Studio studio(3);
      const int line = studio.await(rule.nature);
      studio.set(line, 'P');
      const auto stays = studio.stay(line);
      CHECK(stays.has_value() == (rule.nature == Nature::WrongNumber));
      if (stays) CHECK(within(stays, rule.stays_at_handset));
    }
  }

  TEST_CASE("a talk that is held goes on where it was") {
    Studio studio(5);
    const int line = studio.await(Nature::Patient);
    const Caller who = *studio.callers.on_line(line);
    studio.set(line, 'N');
    studio.now += seconds(10);
    studio.set(line, 'H');
    studio.now += seconds(5);
    studio.set(line, 'N');
    CHECK(studio.stay(line) == who.talks - seconds(10));
  }

  TEST_CASE("who calls again does so when he gave up or was let go unheard, and a few times") {
    Studio studio(4);
    const int line = studio.await(Nature::Returner);
    const Caller who = *studio.callers.on_line(line);
    CHECK(who.more_calls == 3);
    studio.set(line, 'F');
    int calls = 1;
    while (studio.now < minutes(5)) {
      const auto event = studio.step();
      if (event && event->kind == StudioEvent::Kind::Call && studio.who.back().words == who.words)
        ++calls;
    }
    CHECK(calls == 4);

    Studio heard(4);
    const int same = heard.await(Nature::Returner);
    heard.set(same, 'N');
    heard.now += seconds(6);
    heard.set(same, 'F');
    const std::size_t before = heard.who.size();
    while (heard.now < minutes(4)) heard.step();
    for (std::size_t i = before; i < heard.who.size(); ++i) CHECK(heard.who[i].words != who.words);
  }

  TEST_CASE("with every line taken nobody new comes, and some try again later") {
    Studio studio(6, 2, 1);
    const int line = studio.await(Nature::Patient);
    studio.set(line, 'P');
    int unable = 0;
    while (studio.now < minutes(3)) unable += studio.step() ? 0 : 1;
    CHECK(unable > 5);
    CHECK(studio.who.back().words == studio.callers.on_line(line)->words);
  }

  TEST_CASE("the same seed gives the same people, whatever the console does") {
    test::check_property([] {
      const auto seed = *rc::gen::arbitrary<std::uint64_t>();
      const int level = *rc::gen::inRange(0, level_count);
      // None of them comes back, so that all who call are new.
      const auto people = [&](bool answered) {
        Studio studio(seed, level, 200);
        while (studio.callers.next_due() < minutes(4)) {
          const auto event = studio.step();
          if (answered && event && event->kind == StudioEvent::Kind::Call) {
            studio.set(event->line, 'P');
          }
        }
        std::vector<Caller> first_calls;
        for (const Caller& who : studio.who) {
          if (who.nature != Nature::Returner) first_calls.push_back(who);
        }
        return first_calls;
      };
      RC_ASSERT(people(true) == people(false));
    });
  }

  TEST_CASE("callers come about as often as the level says, of all natures") {
    for (int level = 0; level < level_count; ++level) {
      int calls = 0;
      std::set<Nature> natures;
      for (std::uint64_t seed = 1; seed <= 50; ++seed) {
        Studio studio(seed, level, 200);
        while (studio.now < minutes(10)) studio.step();
        for (const Caller& who : studio.who) natures.insert(who.nature);
        calls += static_cast<int>(studio.who.size());
      }
      const double expected =
          50.0 * 600'000 /
          static_cast<double>(levels[static_cast<std::size_t>(level)].call_every.count());
      CHECK(calls > expected);
      CHECK(calls < expected * 2);
      CHECK(natures.size() == nature_count);
    }
  }
}

TEST_SUITE("practice/box") {
  TEST_CASE("the box tells every change at the pace of its line, and history knows who did it") {
    PracticeBox box;
    box.begin(levels[0], 7, seconds(10));
    box.advance(seconds(12));
    CHECK(box.take_output() == "");
    box.advance(seconds(14));
    REQUIRE(box.history().size() == 1);
    CHECK(box.history()[0].at == seconds(3));
    CHECK(box.history()[0].letter == 'R');
    CHECK(box.take_output() == "R00");
    REQUIRE(box.caller_on(0) != nullptr);
    box.receive("P00", seconds(14));
    CHECK(box.history().back() == LetterChange{seconds(4), 0, 'P', Mover::Console});
    box.receive("Q00", seconds(15));
    CHECK(box.history().size() == 2);
    box.receive("F00", seconds(15));
    CHECK(box.history().back() == LetterChange{seconds(5), 0, 'F', Mover::Console});
    CHECK(box.caller_on(0) == nullptr);
  }

  TEST_CASE("at the end all hang up, and nobody calls until the next show") {
    PracticeBox box;
    box.begin(levels[2], 1, seconds(0));
    box.advance(seconds(40));
    const auto history = box.history();
    CHECK(history.size() > 1);
    box.end(seconds(40));
    CHECK(box.history() == history);
    for (int line = 0; line < PracticeBox::line_count; ++line) {
      CHECK(box.lines().letter(line) == 'F');
    }
    box.advance(minutes(10));
    CHECK(box.next_due() == exchange::never);
    box.begin(levels[2], 1, minutes(10));
    CHECK(box.history().empty());
    box.advance(minutes(10) + seconds(40));
    CHECK(box.history() == history);
  }

  TEST_CASE("how often the box is asked changes nothing") {
    test::check_property([] {
      const auto seed = *rc::gen::arbitrary<std::uint64_t>();
      const auto played = [&](const std::vector<int>& steps) {
        PracticeBox box;
        box.begin(levels[2], seed, Moment{0});
        Moment now{0};
        for (const int step : steps) {
          now += Moment(step);
          box.advance(now);
        }
        box.advance(minutes(5));
        return std::pair(box.history(), box.take_output());
      };
      const auto steps = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 20000));
      std::vector<int> short_of_end;
      int sum = 0;
      for (const int step : steps) {
        if ((sum += step) < 300000) short_of_end.push_back(step);
      }
      RC_ASSERT(played(short_of_end) == played({}));
    });
  }
}

}  // namespace
}  // namespace lineweir::practice
