#include "clocks/time_entry.h"

#include <doctest/doctest.h>

#include <set>

namespace lineweir::test {
namespace {

using Rules = std::span<const TimeEntryRule>;

std::string accepted_keys(Rules rules, std::string_view text) {
  std::string keys;
  for (int key = 0; key < 256; ++key) {
    if (key != backspace_key && typed_time(rules, text, key)) keys += static_cast<char>(key);
  }
  return keys;
}

std::string typed(Rules rules, std::string_view keys, std::string text = {}) {
  for (const char key : keys) text = typed_time(rules, text, key).value_or(text);
  return text;
}

TEST_SUITE("clocks/time entry") {
  TEST_CASE("keys accepted for a show's time, by length") {
    CHECK(accepted_keys(show_time_entry, "") == "012Xx");
    CHECK(accepted_keys(show_time_entry, "0") == "0123456789");
    CHECK(accepted_keys(show_time_entry, "1") == "0123456789");
    CHECK(accepted_keys(show_time_entry, "2") == "0123");
    CHECK(accepted_keys(show_time_entry, "12:") == "012345");
    CHECK(accepted_keys(show_time_entry, "xx:") == "012345");
    CHECK(accepted_keys(show_time_entry, "12:3") == "0123456789");
    CHECK(accepted_keys(show_time_entry, "12:34:") == "012345");
    CHECK(accepted_keys(show_time_entry, "12:34:5") == "0123456789");
    CHECK(accepted_keys(show_time_entry, "12:34:56").empty());
    CHECK(accepted_keys(show_time_entry, "12:34:56 PM").empty());
    CHECK(accepted_keys(show_time_entry, "x").empty());
  }

  TEST_CASE("keys accepted for the computer's clock, by length") {
    CHECK(accepted_keys(clock_time_entry, "") == "01");
    CHECK(accepted_keys(clock_time_entry, "0") == "0123456789");
    CHECK(accepted_keys(clock_time_entry, "1") == "012");
    CHECK(accepted_keys(clock_time_entry, "09:") == "012345");
    CHECK(accepted_keys(clock_time_entry, "09:2") == "0123456789");
    CHECK(accepted_keys(clock_time_entry, "09:20:") == "012345");
    CHECK(accepted_keys(clock_time_entry, "09:20:0") == "0123456789");
    CHECK(accepted_keys(clock_time_entry, "09:20:08").empty());
  }

  TEST_CASE("colons come by themselves") {
    CHECK(typed(show_time_entry, "13") == "13:");
    CHECK(typed(show_time_entry, "1304") == "13:04:");
    CHECK(typed(show_time_entry, "130405") == "13:04:05");
    CHECK(typed(show_time_entry, "x1530") == "xx:15:30");
    CHECK(typed(clock_time_entry, "092008") == "09:20:08");
  }

  TEST_CASE("a 4 after a 2 is refused: 23 is the highest hour") {
    CHECK(typed(show_time_entry, "24") == "2");
    CHECK(typed(show_time_entry, "23") == "23:");
  }

  TEST_CASE("a minute or second begins at most with 5") {
    CHECK(typed(clock_time_entry, "6", "09:") == "09:");
    CHECK(typed(clock_time_entry, "6", "09:20:") == "09:20:");
    CHECK(typed(show_time_entry, "6", "xx:") == "xx:");
  }

  TEST_CASE("backspace takes a colon off together with the digit before it") {
    CHECK_FALSE(typed_time(show_time_entry, "", backspace_key));
    CHECK(typed_time(show_time_entry, "1", backspace_key) == "");
    CHECK(typed_time(show_time_entry, "12:", backspace_key) == "1");
    CHECK(typed_time(show_time_entry, "xx:", backspace_key) == "x");
    CHECK(typed_time(show_time_entry, "12:3", backspace_key) == "12:");
    CHECK(typed_time(show_time_entry, "12:34:", backspace_key) == "12:3");
    CHECK(typed_time(show_time_entry, "12:34:5", backspace_key) == "12:34:");
    CHECK(typed_time(show_time_entry, "12:34:56", backspace_key) == "12:34:5");
  }

  TEST_CASE("a text that the filter would not have let in can be taken off") {
    CHECK(typed_time(show_time_entry, "12:34:56 PM", backspace_key) == "12:34:56 P");
    CHECK(typed_time(show_time_entry, "12", backspace_key) == "1");
  }

  TEST_CASE("keys outside a character are refused") {
    CHECK_FALSE(typed_time(show_time_entry, "", '0' + 256));
    CHECK_FALSE(typed_time(show_time_entry, "", -1));
  }
}

}  // namespace
}  // namespace lineweir::test
