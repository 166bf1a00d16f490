#include "callerdata/entry_work.h"

#include <doctest/doctest.h>

namespace lineweir::test {
namespace {

TEST_SUITE("callerdata/entry work") {
  TEST_CASE("the record goes before the row, trimmed") {
    EntryTexts record;
    EntryTexts row;
    record[0] = " Ann ";
    row[0] = "Bob";
    record[1] = "   ";
    row[1] = " Main St ";
    row[8] = "Bridge";
    EntryTexts expected;
    expected[0] = "Ann";
    expected[1] = "Main St";
    expected[8] = "Bridge";
    CHECK(shown_texts(record, row) == expected);
  }

  TEST_CASE("a number that the field has no room for is shown without separators") {
    EntryTexts row;
    row[5] = "+1 (312) 555-0100";
    CHECK(shown_texts({}, row)[5] == "+13125550100");
  }

  TEST_CASE("what wasn't touched follows, what was stays") {
    EntryWork work{{"Ann", "", "Bath"}, {"Anna", "", "Bath"}};
    CHECK(work.touched(0));
    CHECK_FALSE(work.touched(1));
    const std::set<int> elsewhere = work.follow({"Bob", "Main St", "Salem"});
    CHECK(work.typed == EntryTexts{"Anna", "Main St", "Salem"});
    CHECK(work.had == EntryTexts{"Bob", "Main St", "Salem"});
    CHECK(elsewhere == std::set<int>{1});
  }

  TEST_CASE("a field that was emptied has been touched") {
    EntryWork work{{"Ann"}, {""}};
    CHECK(work.any_touched());
    CHECK(work.follow({"Bob"}) == std::set<int>{1});
    CHECK(work.typed == EntryTexts{});
  }

  TEST_CASE("two who type the same are of one mind") {
    EntryWork work{{""}, {"Ann"}};
    CHECK(work.follow({"Ann"}).empty());
    CHECK_FALSE(work.any_touched());
    CHECK(work.follow({"Anna"}).empty());
    CHECK(work.typed[0] == "Anna");
  }
}

}  // namespace
}  // namespace lineweir::test
