#include "callerdata/entry_drafts.h"

#include <doctest/doctest.h>

namespace lineweir::test {
namespace {

EntryWork work_of(const std::string& name) { return {{}, {name}}; }

TEST_SUITE("callerdata/entry drafts") {
  TEST_CASE("a draft belongs to its line and its call") {
    EntryDrafts drafts;
    const EntryWork ann = work_of("Ann");
    drafts.keep(3, 7, ann);
    CHECK(drafts.find(3, 7, false) == ann);
    CHECK(drafts.find(3, 7, true) == ann);
    CHECK_FALSE(drafts.find(4, 7, false));
    // The call has ended: the line's next caller must not get the text.
    CHECK_FALSE(drafts.find(3, 8, false));
    CHECK(drafts.find(3, 8, true) == ann);
  }

  TEST_CASE("a line has one draft, the last") {
    EntryDrafts drafts;
    drafts.keep(3, 1, work_of("Ann"));
    drafts.keep(3, 2, work_of("Bob"));
    CHECK(drafts.find(3, 2, false) == work_of("Bob"));
    CHECK_FALSE(drafts.find(3, 1, false));
    drafts.drop(3);
    drafts.drop(4);
    CHECK_FALSE(drafts.find(3, 2, true));
  }
}

}  // namespace
}  // namespace lineweir::test
