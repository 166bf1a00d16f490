#include "clocks/hands.h"

#include <doctest/doctest.h>

#include <cmath>

namespace lineweir::test {
namespace {

constexpr HandPoint center = {848, 1018};

// The rule written out: 3.14 for pi, and the next whole number downward.
HandPoint by_rule(int length, double degrees) {
  const double radians = degrees * 3.14 / 180;
  return {static_cast<int>(std::floor(length * std::cos(radians) + center.x)),
          static_cast<int>(std::floor(length * std::sin(radians) + center.y))};
}

TEST_SUITE("clocks/hands") {
  TEST_CASE("the four quarters carry the small error of 3.14") {
    CHECK(hand_end(560, -90, center) == HandPoint{848, 458});
    CHECK(hand_end(560, 0, center) == HandPoint{1408, 1018});
    CHECK(hand_end(560, 90, center) == HandPoint{848, 1577});
    CHECK(hand_end(560, 180, center) == HandPoint{288, 1018});
    CHECK(hand_end(560, 270, center) == HandPoint{846, 458});
  }

  TEST_CASE("a point between two twips is the one below, also where it is negative") {
    CHECK(hand_end(1, 180, {0, 0}) == HandPoint{-1, 0});
    CHECK(hand_end(10, -135, {0, 0}) == HandPoint{-8, -8});
  }

  TEST_CASE("a far end is where the rule puts it, for every second") {
    for (int second = 0; second < 60; ++second) {
      CAPTURE(second);
      CHECK(hand_end(560, 6 * second - 90, center) == by_rule(560, 6 * second - 90));
    }
  }

  TEST_CASE("minutes carry the seconds, hours the minutes") {
    const TimeAngles angles = time_angles("09:20:30");
    CHECK(angles.second == doctest::Approx(90));
    CHECK(angles.minute == doctest::Approx(6 * 20.5 - 90));
    CHECK(angles.hour == doctest::Approx(30 * (9 + 20.5 / 60) - 90));
  }

  TEST_CASE("twelve o'clock is hour 12, one turn further on than hour 0") {
    CHECK(time_angles("12:00:00").hour == doctest::Approx(270));
  }

  TEST_CASE("a text that is no time has its angles all the same") {
    CHECK(time_angles("").hour == doctest::Approx(-90));
    CHECK(time_angles("1").hour == doctest::Approx(30 * 10 - 90));
    CHECK(time_angles("ab:cd:ef").second == doctest::Approx(-90));
  }

  TEST_CASE("seconds left") {
    CHECK(seconds_left("00:00:59") == 59);
    CHECK(seconds_left("01:02:03") == 3723);
    CHECK(seconds_left("23:59:59") == 86399);
    CHECK(seconds_left("") == 0);
  }

  TEST_CASE("the last minute begins with 60 seconds left") {
    CHECK(in_last_minute(60));
    CHECK(in_last_minute(0));
    CHECK_FALSE(in_last_minute(61));
  }

  TEST_CASE("the event hand turns once from twelve to twelve") {
    CHECK(event_angle(600, 600) == doctest::Approx(-450));
    CHECK(event_angle(600, 450) == doctest::Approx(-360));
    CHECK(event_angle(600, 0) == doctest::Approx(-90));
  }

  TEST_CASE("an event of negative length turns the hand the other way") {
    CHECK(event_angle(-600, 600) == doctest::Approx(270));
    CHECK(event_angle(-600, 450) == doctest::Approx(180));
  }

  TEST_CASE("with 60 seconds left of the last minute the hand is a full turn before twelve") {
    CHECK(event_angle(last_minute, 60) == doctest::Approx(-450));
  }

  TEST_CASE("the resting hand takes its height from another angle than its side") {
    CHECK(resting_hand_end(560, center) == HandPoint{848, 461});
    CHECK(resting_hand_end(560, center).y != hand_end(560, -90, center).y);
  }
}

}  // namespace
}  // namespace lineweir::test
