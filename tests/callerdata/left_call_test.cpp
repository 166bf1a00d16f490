#include "callerdata/left_call.h"

#include <doctest/doctest.h>

namespace lineweir::test {
namespace {

bool same(const platform::DateTime& seen, std::string_view began, const platform::DateTime& now) {
  return is_same_call(LastSeen{1, seen}, {began, now}, now);
}

TEST_SUITE("callerdata/left call") {
  TEST_CASE("a clock that ran when the call was last seen is that call's") {
    const platform::DateTime seen{2026, 1, 5, 10, 0, 0};
    const platform::DateTime now{2026, 1, 5, 10, 5, 0};
    CHECK(same(seen, "09:59:59", now));
    // In the same second, and a second of another machine's.
    CHECK(same(seen, "10:00:00", now));
    CHECK(same(seen, "10:00:01", now));
    CHECK(same(seen, "23:00:00", now));
    CHECK_FALSE(same(seen, "10:00:02", now));
    CHECK_FALSE(same(seen, "10:04:59", now));
    CHECK_FALSE(same(seen, "10:05:00", now));
  }

  TEST_CASE("a clock that runs only since the call was noticed tells nothing") {
    const platform::DateTime seen{2026, 1, 5, 10, 0, 0};
    const auto same_as_noticed = [&](int second, std::string_view began) {
      return is_same_call(LastSeen{1, seen}, {began, {2026, 1, 5, 10, 0, second}},
                          {2026, 1, 5, 10, 5, 0});
    };
    CHECK_FALSE(same_as_noticed(0, "10:00:00"));
    CHECK_FALSE(same_as_noticed(1, "10:00:01"));
    CHECK_FALSE(same_as_noticed(1, "10:00:00"));
    CHECK(same_as_noticed(2, "10:00:00"));
    CHECK(same_as_noticed(2, "09:00:00"));
  }

  TEST_CASE("a clock that began behind it is another call's, and so is any after half a day") {
    const LastSeen seen{1, {2026, 1, 5, 10, 0, 0}, ""};
    const platform::DateTime now{2026, 1, 5, 10, 5, 0};
    CHECK(is_other_call(seen, {"10:00:02", now}, now));
    CHECK_FALSE(is_other_call(seen, {"10:00:01", now}, now));
    CHECK_FALSE(is_other_call(seen, {"09:00:00", now}, now));
    CHECK_FALSE(is_other_call(seen, {"", now}, now));
    // It runs only since the call was noticed.
    CHECK_FALSE(is_other_call(seen, {"10:04:59", now}, now));
    CHECK(is_other_call(seen, {"10:04:58", now}, now));
    CHECK_FALSE(is_other_call(seen, {"", now}, {2026, 1, 5, 22, 0, 0}));
    CHECK(is_other_call(seen, {"", now}, {2026, 1, 5, 22, 0, 1}));
  }

  TEST_CASE("a clock that begins in a moment hasn't run for a day") {
    const platform::DateTime seen{2026, 1, 5, 10, 0, 0};
    CHECK_FALSE(same(seen, "10:05:01", {2026, 1, 5, 10, 5, 0}));
    CHECK_FALSE(same(seen, "10:06:00", {2026, 1, 5, 10, 5, 0}));
  }

  TEST_CASE("midnight may lie between") {
    const platform::DateTime seen{2026, 1, 5, 23, 59, 0};
    const platform::DateTime now{2026, 1, 6, 0, 1, 0};
    CHECK(same(seen, "23:58:00", now));
    CHECK_FALSE(same(seen, "23:59:30", now));
    CHECK_FALSE(same(seen, "00:00:30", now));
  }

  TEST_CASE("nothing can be said without a clock, after half a day, or before it was seen") {
    const platform::DateTime seen{2026, 1, 5, 10, 0, 0};
    CHECK_FALSE(same(seen, "", {2026, 1, 5, 10, 5, 0}));
    CHECK_FALSE(same(seen, "soon", {2026, 1, 5, 10, 5, 0}));
    CHECK(same(seen, "10:00:00", {2026, 1, 5, 22, 0, 0}));
    CHECK_FALSE(same(seen, "09:59:59", {2026, 1, 5, 22, 0, 0}));
    CHECK_FALSE(same(seen, "09:00:00", {2026, 1, 6, 10, 5, 0}));
    CHECK_FALSE(same(seen, "09:00:00", {2026, 1, 5, 9, 59, 59}));
  }
}

}  // namespace
}  // namespace lineweir::test
