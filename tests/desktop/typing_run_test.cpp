#include "desktop/typing_run.h"

#include <doctest/doctest.h>

namespace lineweir {
namespace {

constexpr std::int64_t pause = TypingRun::pause_milliseconds;
const int search = 1;
const int rows = 2;

TEST_SUITE("a run of typing") {
  TEST_CASE("belongs to the place in which it began until it pauses") {
    TypingRun run;
    CHECK(run.belongs_to(&rows, 0));
    run.take(&search, 1000);
    CHECK(run.belongs_to(&search, 1001));
    CHECK_FALSE(run.belongs_to(&rows, 1000 + pause - 1));
    CHECK(run.belongs_to(&rows, 1000 + pause));
  }

  TEST_CASE("goes on with each character that arrives elsewhere") {
    TypingRun run;
    run.take(&search, 1000);
    std::int64_t now = 1000;
    for (int character = 0; character < 20; ++character) {
      now += pause / 2;
      CHECK_FALSE(run.belongs_to(&rows, now));
      run.go_on(now);
    }
    CHECK(run.belongs_to(&rows, now + pause));
  }

  TEST_CASE("goes over to a field that takes what arrives") {
    TypingRun run;
    run.take(&search, 1000);
    run.take(&rows, 1100);
    CHECK(run.belongs_to(&rows, 1200));
    CHECK_FALSE(run.belongs_to(&search, 1200));
  }

  TEST_CASE("a choice holds what follows for longer, until something is typed") {
    TypingRun run;
    run.choose(&search, 1000);
    CHECK(run.is_choice());
    CHECK(run.belongs_to(&search, 1001));
    CHECK_FALSE(run.belongs_to(&rows, 1000 + TypingRun::choice_milliseconds - 1));
    CHECK(run.belongs_to(&rows, 1000 + TypingRun::choice_milliseconds));
    run.go_on(1900);
    CHECK_FALSE(run.is_choice());
    CHECK_FALSE(run.belongs_to(&rows, 1900 + pause - 1));
    CHECK(run.belongs_to(&rows, 1900 + pause));
  }

  TEST_CASE("ends where the user's own hand leads on") {
    TypingRun run;
    run.take(&search, 1000);
    run.end();
    CHECK(run.belongs_to(&rows, 1001));
  }
}

}  // namespace
}  // namespace lineweir
