#include "practice/practice_results.h"

#include <doctest/doctest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <array>

#include "support/property_check.h"

namespace lineweir::practice {
namespace {

Result any_result(std::string level, int answered = 3) {
  return {.level = std::move(level),
          .date = "1/5/2026 10:05:00 AM",
          .played = 300,
          .calls = 12,
          .answered = answered,
          .on_air = 2,
          .longest_wait = 95,
          .dead_air = 61,
          .dropped = 1,
          .gave_up = 4};
}

TEST_SUITE("practice/results") {
  TEST_CASE("the last show of each level is found again") {
    std::string text = with_result("", any_result("Easy", 1));
    text = with_result(text, any_result("Hard", 2));
    text = with_result(text, any_result("Easy", 3));
    text = with_result(text, any_result("Hard", 4));
    CHECK(last_result(text, "Easy") == any_result("Easy", 3));
    CHECK(last_result(text, "Hard") == any_result("Hard", 4));
    CHECK_FALSE(last_result(text, "Normal").has_value());
    CHECK_FALSE(last_result("", "Easy").has_value());
  }

  TEST_CASE("lines that aren't understood are passed over, and go with the next show") {
    const std::string text =
        "rubbish\nEasy,yesterday,1,2\nEasy,,1,2,3,4,5,6,7,x\nEasy,,1,2,3,4,5,6,7,-8\n" +
        with_result("", any_result("Easy"));
    CHECK(last_result(text, "Easy") == any_result("Easy"));
    CHECK(with_result(text, any_result("Hard")) ==
          with_result(with_result("", any_result("Easy")), any_result("Hard")));
  }

  TEST_CASE("a hundred shows are kept") {
    std::string text;
    for (int show = 0; show < 250; ++show) text = with_result(text, any_result("Easy", show));
    CHECK(std::ranges::count(text, '\n') == 101);
    CHECK(last_result(text, "Easy") == any_result("Easy", 249));
    CHECK(text.size() < longest_results / 4);
  }

  TEST_CASE("any bytes are survived") {
    test::check_property([] {
      const auto text = *rc::gen::arbitrary<std::string>();
      RC_ASSERT(last_result(with_result(text, any_result("Easy")), "Easy") == any_result("Easy"));
    });
  }

  TEST_CASE("the page has a line for each figure, and says what has become better") {
    const Result now = any_result("Easy", 9);
    Result before = any_result("Easy", 4);
    before.dead_air = 10;
    const auto alone = page_rows(now, std::nullopt);
    CHECK(alone[1] == PageRow{"Callers answered", "9 of 12", "", ""});
    CHECK(alone[3] == PageRow{"Longest wait", "1:35", "", ""});
    const auto rows = page_rows(now, before);
    CHECK(rows[0] == PageRow{"Length of the show", "5:00", "5:00", ""});
    CHECK(rows[1] == PageRow{"Callers answered", "9 of 12", "4 of 12", "better"});
    CHECK(rows[4] == PageRow{"Dead air between callers", "1:01", "0:10", "worse"});
    CHECK(rows[5] == PageRow{"Callers dropped", "1", "1", "the same"});
    const Result less = {.level = "Easy",
                         .date = now.date,
                         .played = 200,
                         .calls = 12,
                         .answered = 8,
                         .on_air = 1,
                         .longest_wait = 60,
                         .dead_air = 30,
                         .dropped = 0,
                         .gave_up = 2};
    CHECK(page_rows(less, now) == std::array<PageRow, page_row_count>{
                                      {{"Length of the show", "3:20", "5:00", ""},
                                       {"Callers answered", "8 of 12", "9 of 12", "worse"},
                                       {"Callers on air", "1", "2", "worse"},
                                       {"Longest wait", "1:00", "1:35", "better"},
                                       {"Dead air between callers", "0:30", "1:01", "better"},
                                       {"Callers dropped", "0", "1", "better"},
                                       {"Callers who gave up", "2", "4", "better"}}});
  }

  TEST_CASE("a show is a line of the file as its first line names the figures") {
    CHECK(with_result("", any_result("Easy")) ==
          "Level,Date,Played,Calls,Answered,OnAir,LongestWait,DeadAir,Dropped,GaveUp\n"
          "Easy,1/5/2026 10:05:00 AM,300,12,3,2,95,61,1,4\n");
  }
}

}  // namespace
}  // namespace lineweir::practice
