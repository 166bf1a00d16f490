#include "clocks/show_data_rows.h"

#include <doctest/doctest.h>

#include <initializer_list>

namespace lineweir::test {
namespace {

PlanRows rows_of(std::string_view start, std::initializer_list<std::string_view> ends) {
  PlanRows rows;
  rows[0].start = start;
  std::size_t row = 0;
  for (const std::string_view end : ends) rows[row++].end = end;
  return rows;
}

TEST_SUITE("clocks/show data rows") {
  TEST_CASE("each row's end becomes the start of the next") {
    const PlanRowCheck check =
        check_plan_rows(rows_of("10:00:00", {"10:10:00", "10:20:00"}), "11:00:00");
    CHECK(check.fault == PlanRowFault::None);
    CHECK(check.rows[0].start == "10:00:00");
    CHECK(check.rows[1].start == "10:10:00");
    CHECK(check.rows[2].start == "10:20:00");
    CHECK(check.rows[3].start == "");
    CHECK_FALSE(check.blanks_headers);
  }

  TEST_CASE("a row that ends when it starts passes") {
    CHECK(check_plan_rows(rows_of("10:00:00", {"10:00:00", "10:00:00"}), "").fault ==
          PlanRowFault::None);
  }

  TEST_CASE("a row that ends before it starts ends the walk") {
    const PlanRowCheck check =
        check_plan_rows(rows_of("10:00:00", {"10:10:00", "10:05:00", "10:20:00"}), "11:00:00");
    CHECK(check.fault == PlanRowFault::EndsBeforeItStarts);
    CHECK(check.rows[1].start == "10:10:00");
    CHECK(check.rows[1].end == "10:05:00");
    CHECK(check.rows[2].start == "");
  }

  TEST_CASE("a row may not end later than the show") {
    CHECK(check_plan_rows(rows_of("10:00:00", {"11:00:01"}), "11:00:00").fault ==
          PlanRowFault::EndsAfterTheShow);
    CHECK(check_plan_rows(rows_of("xx:00:00", {"xx:30:00"}), "xx:15:00").fault ==
          PlanRowFault::EndsAfterTheShow);
  }

  TEST_CASE("xx counts as hour 00") {
    CHECK(check_plan_rows(rows_of("xx:10:00", {"xx:05:00"}), "").fault ==
          PlanRowFault::EndsBeforeItStarts);
    CHECK(check_plan_rows(rows_of("xx:10:00", {"xx:15:00"}), "xx:59:59").fault ==
          PlanRowFault::None);
  }

  TEST_CASE("texts of three characters or fewer are compared with nothing") {
    CHECK(check_plan_rows(rows_of("10:", {"10:10:00"}), "").fault == PlanRowFault::None);
    CHECK(check_plan_rows(rows_of("10:00:00", {"10:"}), "").fault == PlanRowFault::None);
    CHECK(check_plan_rows(rows_of("10:00:00", {"12:00:00"}), "11:").fault == PlanRowFault::None);
  }

  TEST_CASE("a begun time fails as no time") {
    CHECK(check_plan_rows(rows_of("10:00:00", {"10:1"}), "").fault == PlanRowFault::NoTime);
    CHECK(check_plan_rows(rows_of("10:1", {"10:10:00"}), "").fault == PlanRowFault::NoTime);
    CHECK(check_plan_rows(rows_of("10:00:00", {"10:10:00"}), "11:0").fault == PlanRowFault::NoTime);
  }

  TEST_CASE("a row that reaches Show End blanks the headers and leaves later rows alone") {
    PlanRows rows = rows_of("10:00:00", {"10:10:00", "11:00:00", "09:00:00"});
    rows[2].start = "stays";
    const PlanRowCheck check = check_plan_rows(rows, "11:00:00");
    CHECK(check.fault == PlanRowFault::None);
    CHECK(check.blanks_headers);
    CHECK(check.rows[2].start == "stays");
    CHECK(check.rows[2].end == "09:00:00");
  }

  TEST_CASE("with a blank Show End no row reaches it") {
    const PlanRowCheck check = check_plan_rows(rows_of("10:00:00", {""}), "");
    CHECK_FALSE(check.blanks_headers);
    CHECK(check.fault == PlanRowFault::None);
  }

  TEST_CASE("row 19 that reaches Show End has no row behind it in the walk") {
    PlanRows rows;
    rows[18].end = "11:00:00";
    CHECK_FALSE(check_plan_rows(rows, "11:00:00").blanks_headers);
    rows[17].end = "11:00:00";
    CHECK(check_plan_rows(rows, "11:00:00").blanks_headers);
  }

  TEST_CASE("row 20 is never checked, but gets its start") {
    PlanRows rows;
    rows[18].end = "10:50:00";
    rows[19].end = "10:00:00";
    const PlanRowCheck check = check_plan_rows(rows, "11:00:00");
    CHECK(check.fault == PlanRowFault::None);
    CHECK(check.rows[19].start == "10:50:00");
  }

  TEST_CASE("texts are compared trimmed") {
    CHECK(check_plan_rows(rows_of("10:00:00", {" 11:00:00 "}), "11:00:00  ").blanks_headers);
    CHECK(check_plan_rows(rows_of("10:00:00", {" 10:10:00 "}), "").rows[1].start == "10:10:00");
  }
}

}  // namespace
}  // namespace lineweir::test
