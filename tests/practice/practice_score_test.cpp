#include "practice/practice_score.h"

#include <doctest/doctest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <map>

#include "lines/status_letters.h"
#include "support/property_check.h"

namespace lineweir::practice {
namespace {

using std::chrono::seconds;

constexpr auto console = Mover::Console;
constexpr auto caller = Mover::Caller;
constexpr auto wrong = Mover::WrongNumber;

// A show of two segments with a break of 20 seconds between them.
constexpr std::array parts = {ShowPart{"A", 100, false}, ShowPart{"B", 20, true},
                              ShowPart{"C", 80, false}};

LetterChange at(int second, int line, char letter, Mover mover = console) {
  return {seconds(second), line, letter, mover};
}

Score score(const std::vector<LetterChange>& history, int end = 200) {
  return score_of(history, parts, seconds(end));
}

// Dead air, counted second by second.
int silent_seconds(const std::vector<LetterChange>& history, int end) {
  std::map<int, char> letters;
  const auto talks = [&](int second) {
    for (const LetterChange& change : history) {
      if (change.at <= seconds(second)) letters[change.line] = change.letter;
    }
    return std::ranges::any_of(letters,
                               [](const auto& line) { return is_on_air_or_locked(line.second); });
  };
  int silent = 0;
  int run = 0;
  bool began = false;
  for (int second = 0; second <= end; ++second) {
    // A caller may be on air for no time at all.
    const bool aired = std::ranges::any_of(history, [&](const LetterChange& change) {
      return change.at == seconds(second) && is_on_air_or_locked(change.letter);
    });
    if (aired || talks(second)) {
      began = true;
      silent += run;
      run = 0;
    }
    const bool segment = second < 100 || (second >= 120 && second < 200);
    if (began && segment && !talks(second)) ++run;
  }
  return silent;
}

TEST_SUITE("practice/score") {
  TEST_CASE("a show in which nothing happens comes to nothing") { CHECK(score({}) == Score{}); }

  TEST_CASE("calls are answered by any key, and waited for until they are on air") {
    const Score result = score({at(1, 0, 'R', caller), at(3, 1, 'R', caller), at(5, 0, 'P'),
                                at(20, 0, 'S'), at(30, 0, 'N'), at(60, 0, 'F', caller)});
    CHECK(result.calls == 2);
    CHECK(result.answered == 1);
    CHECK(result.on_air == 1);
    // The second caller is never answered and waits to the end.
    CHECK(result.longest_wait == seconds(197));
    CHECK(result.dropped == 0);
    CHECK(result.gave_up == 0);
  }

  TEST_CASE("who was let go before he had 15 seconds on air in all was dropped") {
    for (const int second : {10, 24, 25, 60}) {
      CAPTURE(second);
      const Score result = score({at(1, 0, 'R', caller), at(10, 0, 'N'), at(second, 0, 'F')});
      CHECK(result.dropped == (second < 25 ? 1 : 0));
    }
    // Two stays on air are one, and locked is on air too.
    CHECK(score({at(1, 0, 'R', caller), at(10, 0, 'N'), at(18, 0, 'H'), at(30, 0, 'N'),
                 at(33, 0, 'L'), at(37, 0, 'F')})
              .dropped == 0);
    CHECK(score({at(1, 0, 'R', caller), at(9, 0, 'F')}).dropped == 1);
  }

  TEST_CASE("who hung up unheard gave up, and who had been on air said goodbye") {
    CHECK(score({at(1, 0, 'R', caller), at(9, 0, 'F', caller)}).gave_up == 1);
    CHECK(score({at(1, 0, 'R', caller), at(4, 0, 'H'), at(9, 0, 'F', caller)}).gave_up == 1);
    CHECK(score({at(1, 0, 'R', caller), at(4, 0, 'C'), at(9, 0, 'F', caller)}).gave_up == 0);
  }

  TEST_CASE("a wrong number is a call that is answered, and nothing else") {
    const Score result = score({at(1, 0, 'R', wrong), at(50, 0, 'P'), at(55, 0, 'F', wrong),
                                at(60, 1, 'R', wrong), at(61, 1, 'P'), at(62, 1, 'F')});
    CHECK(result == Score{.calls = 2, .answered = 2});
  }

  TEST_CASE("dead air is between two callers, while a segment runs") {
    const auto silence = [](int from, int to) {
      return score({at(0, 0, 'R', caller), at(0, 1, 'R', caller), at(5, 0, 'N'),
                    at(from, 0, 'F', caller), at(to, 1, 'C')})
          .dead_air;
    };
    CHECK(silence(20, 20) == seconds(0));
    CHECK(silence(20, 33) == seconds(13));
    CHECK(silence(95, 130) == seconds(15));
    CHECK(silence(101, 119) == seconds(0));
    // Nobody follows.
    CHECK(score({at(5, 0, 'N'), at(20, 0, 'F')}).dead_air == seconds(0));
    // Two hybrids are one voice: the first caller goes while the other talks.
    CHECK(score({at(5, 0, 'N'), at(8, 1, 'C'), at(20, 0, 'F'), at(30, 2, 'N'), at(40, 1, 'F')})
              .dead_air == seconds(0));
  }

  TEST_CASE("what comes behind the end doesn't count") {
    CHECK(score({at(1, 0, 'R', caller), at(150, 0, 'N')}, 100).on_air == 0);
    CHECK(score({at(1, 0, 'R', caller), at(150, 0, 'N')}, 100).longest_wait == seconds(99));
  }

  TEST_CASE("whatever the lines do, the score is in itself right") {
    test::check_property([] {
      std::vector<LetterChange> history;
      int second = 0;
      const int count = *rc::gen::inRange(0, 60);
      for (int i = 0; i < count; ++i) {
        second += *rc::gen::inRange(0, 12);
        const char letter = *rc::gen::elementOf(std::string("RRRSHPONCLKF"));
        const Mover mover = *rc::gen::element(console, caller, wrong);
        history.push_back(at(second, *rc::gen::inRange(0, 4), letter, mover));
      }
      const int end = *rc::gen::inRange(1, 260);
      const Score result = score(history, end);
      RC_ASSERT(result.answered <= result.calls);
      RC_ASSERT(result.on_air <= result.answered);
      RC_ASSERT(result.dropped + result.gave_up <= result.calls);
      RC_ASSERT(result.longest_wait >= Moment{0});
      RC_ASSERT(result.longest_wait <= seconds(end));
      std::erase_if(history, [&](const LetterChange& one) { return one.at > seconds(end); });
      RC_ASSERT(result.dead_air == seconds(silent_seconds(history, end)));
    });
  }
}

}  // namespace
}  // namespace lineweir::practice
