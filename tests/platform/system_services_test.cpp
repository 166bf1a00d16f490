#include <doctest/doctest.h>

#include <cerrno>
#include <cmath>
#include <vector>

#include "base/failure.h"
#include "platform/qt/qt_random_numbers.h"
#include "platform/qt/qt_system_clock.h"

using namespace lineweir;
using namespace lineweir::platform;

namespace {

// The moment of the local calendar, by the C library's reckoning.
DateTime local_time(std::time_t moment) {
  std::tm parts{};
  ::localtime_r(&moment, &parts);
  return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
          parts.tm_hour,        parts.tm_min,     parts.tm_sec};
}

}  // namespace

TEST_CASE("The clock tells the local time") {
  const QtSystemClock clock;
  const DateTime before = local_time(std::time(nullptr));
  const DateTime now = clock.now();
  const DateTime after = local_time(std::time(nullptr));
  // The C library's time() may lag by one step of the system's clock.
  CHECK(before <= now);
  CHECK((now <= after || now <= local_time(std::time(nullptr) + 1)));
}

TEST_CASE("Setting the clock sets the moment that local time means") {
  std::vector<std::time_t> set;
  QtSystemClock clock([&](const timespec& time) {
    set.push_back(time.tv_sec);
    return 0;
  });
  const DateTime winter{2024, 2, 29, 23, 59, 58};
  const DateTime summer{2023, 7, 1, 12, 0, 0};
  clock.set(winter);
  clock.set(summer);
  REQUIRE(set.size() == 2);
  CHECK(local_time(set[0]) == winter);
  CHECK(local_time(set[1]) == summer);
}

TEST_CASE("A clock that may not be set says in one sentence what to do") {
  QtSystemClock clock([](const timespec&) { return EPERM; });
  try {
    clock.set({2024, 2, 29, 12, 0, 0});
    FAIL("the clock was set");
  } catch (const Failure& failure) {
    CHECK(failure.number() == 70);
    CHECK(std::string(failure.what()) ==
          "The computer's clock can't be set: ask the administrator to let this program set it "
          "(capability CAP_SYS_TIME).");
  }
}

TEST_CASE("A moment that the calendar doesn't have is not set") {
  int calls = 0;
  QtSystemClock clock([&](const timespec&) {
    ++calls;
    return 0;
  });
  for (const DateTime& moment : {DateTime{2023, 2, 29, 0, 0, 0}, DateTime{2023, 13, 1, 0, 0, 0},
                                 DateTime{2023, 1, 0, 0, 0, 0}, DateTime{2023, 1, 1, 24, 0, 0},
                                 DateTime{2023, 1, 1, 0, -1, 0}, DateTime{2023, 1, 1, 0, 0, 60}}) {
    CHECK_THROWS_AS(clock.set(moment), Failure);
  }
  CHECK(calls == 0);
}

TEST_CASE("Random numbers lie from 0 up to 1 and differ from one source to the next") {
  QtRandomNumbers random;
  QtRandomNumbers other;
  double sum = 0;
  bool all_alike = true;
  for (int i = 0; i < 10000; ++i) {
    const double number = random.next();
    REQUIRE(number >= 0);
    REQUIRE(number < 1);
    sum += number;
    all_alike = all_alike && number == other.next();
  }
  CHECK(std::abs(sum / 10000 - 0.5) < 0.05);
  CHECK_FALSE(all_alike);
}
