#include "clocks/past_rows.h"

#include <doctest/doctest.h>

#include "base/time_text.h"

namespace lineweir::test {
namespace {

ShowPlan plan(const char* end, const std::vector<std::string>& rows) {
  ShowPlan made;
  made.ShowTimes(show_start_entry) = "09:00:00";
  made.ShowTimes(show_end_entry) = end;
  int entry = show_end_entry;
  for (const std::string& row : rows) made.ShowTimes(++entry) = row;
  return made;
}

const int ten = *time_of_day("10:00:00");

TEST_SUITE("clocks/past rows") {
  TEST_CASE("a new row that has gone by is told, one that comes isn't") {
    const ShowPlan blank;
    CHECK(past_rows(plan("12:00:00", {"10:00:01"}), blank, ten) == std::nullopt);
    CHECK(past_rows(plan("12:00:00", {"10:00:00", "11:00:00"}), blank, ten) ==
          PastRows{3, "10:00:00", 1});
    CHECK(past_rows(plan("12:00:00", {"11:00:00", "09:15:00", "09:30:00"}), blank, ten) ==
          PastRows{4, "09:15:00", 2});
  }

  TEST_CASE("rows of the saved plan have gone by rightly, wherever they stand now") {
    const ShowPlan saved = plan("12:00:00", {"09:15:00", "09:30:00"});
    CHECK(past_rows(saved, saved, ten) == std::nullopt);
    CHECK(past_rows(plan("12:00:00", {"", "09:15:00", "09:20:00", "09:30:00"}), saved, ten) ==
          PastRows{5, "09:20:00", 1});
  }

  TEST_CASE("the last row of the plan counts as the others") {
    ShowPlan last = plan("12:00:00", {});
    last.ShowTimes(show_entry_count) = "09:15:00";
    CHECK(past_rows(last, {}, ten) == PastRows{show_entry_count, "09:15:00", 1});
    CHECK(past_rows(plan("12:00:00", {"09:15:00"}), last, ten) == std::nullopt);
  }

  TEST_CASE("an end of the show that has gone by is told before its rows") {
    const ShowPlan saved = plan("09:30:00", {});
    CHECK(past_rows(plan("09:30:00", {}), saved, ten) == std::nullopt);
    CHECK(past_rows(plan("09:45:00", {"09:15:00"}), saved, ten) == PastRows{2, "09:45:00", 0});
  }

  TEST_CASE("an hourly show, a time in the making and what is no time never go by") {
    CHECK(past_rows(plan("xx:59:00", {"xx:01:00", "09:1", "", "99:99:99", "9"}), {}, ten) ==
          std::nullopt);
  }

  TEST_CASE("the sentence tells the time as the clock does") {
    CHECK(past_rows_text({2, "14:00:00", 0}) == "Show End, 02:00:00 PM, is already past today.");
    CHECK(past_rows_text({3, "09:15:00", 1}) == "The row until 09:15:00 AM is already past today.");
    CHECK(past_rows_text({3, "09:15:00", 4}) ==
          "4 of the rows typed are already past today, the first at 09:15:00 AM.");
  }

  TEST_CASE("times are shown as the clock tells them, and what is none as it is") {
    CHECK(plan_time_as_shown("14:15:00") == "02:15:00 PM");
    CHECK(plan_time_as_shown("00:00:30") == "12:00:30 AM");
    CHECK(plan_time_as_shown("xx:15:00") == "xx:15:00");
    CHECK(plan_time_as_shown("14:1") == "14:1");
    CHECK(plan_time_as_shown("") == "");
  }
}

}  // namespace
}  // namespace lineweir::test
