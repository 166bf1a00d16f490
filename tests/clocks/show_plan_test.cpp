#include "clocks/show_plan.h"

#include <doctest/doctest.h>
#include <rapidcheck.h>

#include <string>

#include "clocks/plan_builder.h"
#include "support/failure_number.h"
#include "support/property_check.h"

namespace lineweir::test {
namespace {

ShowPlan random_plan() {
  ShowPlan plan;
  for (int entry = 1; entry <= show_entry_count; ++entry) {
    plan.ShowTimes(entry) = *rc::gen::arbitrary<std::string>();
    if (entry >= first_event_entry) plan.ShowTexts(entry) = *rc::gen::arbitrary<std::string>();
  }
  return plan;
}

TEST_SUITE("clocks/show plan") {
  TEST_CASE("an empty plan is 1302 bytes of blanks") {
    CHECK(encode_show_plan({}) == std::string(1302, ' '));
  }

  TEST_CASE("a record is the time in 11 bytes and the text in 20") {
    const std::string bytes =
        encode_show_plan(plan_of("10:00:00", "xx:59:59", {{"10:15:00", "Opening"}}));
    CHECK(bytes.substr(0, 31) == "10:00:00                       ");
    CHECK(bytes.substr(31, 31) == "xx:59:59                       ");
    CHECK(bytes.substr(62, 31) == "10:15:00   Opening             ");
    CHECK(bytes.substr(93) == std::string(1302 - 93, ' '));
  }

  TEST_CASE("the texts of Show Start and Show End are written blank") {
    ShowPlan plan;
    plan.ShowTexts(1) = "start";
    plan.ShowTexts(2) = "end";
    CHECK(encode_show_plan(plan) == std::string(1302, ' '));
  }

  TEST_CASE("a text of 25 characters is stored as its first 20, a time as its first 11") {
    ShowPlan plan;
    plan.ShowTexts(42) = "1234567890123456789012345";
    plan.ShowTimes(42) = "10:00:00 AM and more";
    const std::string bytes = encode_show_plan(plan);
    CHECK(bytes.substr(41 * 31) == "10:00:00 AM12345678901234567890");
  }

  TEST_CASE("what was written is read back") {
    check_property([] {
      const ShowPlan plan = random_plan();
      const std::string bytes = encode_show_plan(plan);
      RC_ASSERT(bytes.size() == show_file_size);
      RC_ASSERT(decode_show_plan(bytes) == plan);
    });
  }

  TEST_CASE("any bytes make a plan that is written as it was read") {
    check_property([](const std::string& bytes) {
      const ShowPlan plan = decode_show_plan(bytes);
      const std::string written = encode_show_plan(plan);
      RC_ASSERT(encode_show_plan(decode_show_plan(written)) == written);
    });
  }

  TEST_CASE("a short file is read as far as it goes") {
    check_property([] {
      const ShowPlan plan = random_plan();
      const std::string bytes = encode_show_plan(plan);
      const auto length = *rc::gen::inRange<std::size_t>(0, show_file_size);
      std::string padded = bytes.substr(0, length);
      const ShowPlan read = decode_show_plan(padded);
      padded.resize(show_file_size, ' ');
      RC_ASSERT(read == decode_show_plan(padded));
    });
  }

  TEST_CASE("a record cut in its middle keeps what it has") {
    const ShowPlan read = decode_show_plan(std::string(62, ' ') + "10:15:00   Open");
    CHECK(read.ShowTimes(3).trimmed() == "10:15:00");
    CHECK(read.ShowTexts(3).trimmed() == "Open");
    CHECK(decode_show_plan("10:0").ShowTimes(1).trimmed() == "10:0");
  }

  TEST_CASE("what stands behind the 42 records is passed over") {
    const ShowPlan plan = plan_of("10:00:00", "11:00:00", {{"10:15:00", "Opening"}});
    CHECK(decode_show_plan(encode_show_plan(plan) + "more and more") == plan);
  }

  TEST_CASE("entries held") {
    CHECK(show_entries_held("") == 0);
    CHECK(show_entries_held("1") == 1);
    CHECK(show_entries_held(std::string(31, ' ')) == 1);
    CHECK(show_entries_held(std::string(32, ' ')) == 2);
    CHECK(show_entries_held(std::string(1302, ' ')) == 42);
    CHECK(show_entries_held(std::string(5000, ' ')) == 42);
  }

  TEST_CASE("entries are numbered from 1 to 42") {
    ShowPlan plan;
    CHECK(failure_number_of([&] { plan.ShowTimes(0); }) == failure_number::out_of_range);
    CHECK(failure_number_of([&] { plan.ShowTimes(43); }) == failure_number::out_of_range);
    CHECK(failure_number_of([&] { plan.ShowTexts(42) = "last"; }) == no_failure);
  }

  TEST_CASE("an entry put in moves the rest on, and the last is lost") {
    ShowPlan plan = plan_of("10:00:00", "11:00:00", {{"10:15:00", "A"}, {"10:30:00", "B"}});
    plan.ShowTimes(41) = "10:58:00";
    plan.ShowTimes(42) = "10:59:00";
    plan.ShowTexts(42) = "Lost";
    insert_show_entry(plan, 4);
    CHECK(plan.ShowTimes(3).trimmed() == "10:15:00");
    CHECK(plan.ShowTimes(4).trimmed().empty());
    CHECK(plan.ShowTexts(4).trimmed().empty());
    CHECK(plan.ShowTimes(5).trimmed() == "10:30:00");
    CHECK(plan.ShowTexts(5).trimmed() == "B");
    CHECK(plan.ShowTimes(42).trimmed() == "10:58:00");
    CHECK(plan.ShowTexts(42).trimmed().empty());
  }

  TEST_CASE("an entry taken out moves the rest up") {
    ShowPlan plan = plan_of("10:00:00", "11:00:00", {{"10:15:00", "A"}, {"10:30:00", "B"}});
    plan.ShowTimes(42) = "10:59:00";
    plan.ShowTexts(42) = "Last";
    delete_show_entry(plan, 3);
    CHECK(plan.ShowTimes(3).trimmed() == "10:30:00");
    CHECK(plan.ShowTexts(3).trimmed() == "B");
    CHECK(plan.ShowTimes(41).trimmed() == "10:59:00");
    CHECK(plan.ShowTexts(41).trimmed() == "Last");
    CHECK(plan.ShowTimes(42).trimmed().empty());
    CHECK(plan.ShowTexts(42).trimmed().empty());
  }

  TEST_CASE("the last entry put in or taken out is blank") {
    ShowPlan plan;
    plan.ShowTimes(42) = "10:59:00";
    ShowPlan other = plan;
    insert_show_entry(plan, 42);
    delete_show_entry(other, 42);
    CHECK(plan == ShowPlan{});
    CHECK(other == ShowPlan{});
  }
}

}  // namespace
}  // namespace lineweir::test
