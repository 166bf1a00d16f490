#include "callerdata/entry_notice.h"

#include <doctest/doctest.h>

namespace lineweir::test {
namespace {

std::string heading(int entry) { return "Field " + std::to_string(entry); }

TEST_SUITE("callerdata/entry notice") {
  TEST_CASE("there is nothing to tell of fields that go along") {
    CHECK(notice_text({}, {{"a"}, {"b"}}, heading) == "");
    // Of one mind again.
    CHECK(notice_text({{1}, 0}, {{"a"}, {"a"}}, heading) == "");
  }

  TEST_CASE("fields that another console has changed are told with its text") {
    const EntryWork work{{"Ann", "", std::string(31, 'x')}, {"Bob", "Main St", "Bath"}};
    CHECK(notice_text({{1, 2, 3}, 0}, work, heading) ==
          "Changed elsewhere: Field 1 \"Ann\", Field 2 emptied, Field 3 \"" + std::string(30, 'x') +
              "...\"");
  }

  TEST_CASE("a field that is full says how much it takes") {
    CHECK(notice_text({{}, 6}, {}, heading) == "Field 6 takes no more than 15 characters");
    CHECK(notice_text({{1}, 6}, {{"a"}, {"b"}}, heading) ==
          "Changed elsewhere: Field 1 \"a\"\r\nField 6 takes no more than 15 characters");
  }
}

}  // namespace
}  // namespace lineweir::test
