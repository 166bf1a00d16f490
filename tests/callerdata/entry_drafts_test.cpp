#include "callerdata/entry_drafts.h"

#include <doctest/doctest.h>

namespace lineweir::test {
namespace {

EntryDraft draft(CallNumber call, int line, const std::string& name, bool ended = false) {
  EntryDraft draft{call, line, {{}, {name}}, std::nullopt};
  if (ended) draft.ended = EndedCall{};
  return draft;
}

TEST_SUITE("callerdata/entry drafts") {
  TEST_CASE("a draft belongs to its call, and the last one counts") {
    EntryDrafts drafts;
    drafts.keep(draft(7, 3, "Ann"));
    drafts.keep(draft(8, 3, "Bob"));
    drafts.keep(draft(7, 3, "Anna"));
    REQUIRE(drafts.find(7) != nullptr);
    CHECK(*drafts.find(7) == draft(7, 3, "Anna"));
    CHECK(*drafts.find(8) == draft(8, 3, "Bob"));
    CHECK(drafts.find(9) == nullptr);
    CHECK(drafts.all().size() == 2);
    drafts.drop(7);
    drafts.drop(9);
    CHECK(drafts.find(7) == nullptr);
    CHECK(drafts.all().size() == 1);
  }

  TEST_CASE("of the calls that have ended on a line the latest is found") {
    EntryDrafts drafts;
    drafts.keep(draft(1, 3, "Ann", true));
    drafts.keep(draft(2, 3, "Bob", true));
    drafts.keep(draft(3, 3, "Carol"));
    drafts.keep(draft(4, 4, "Dan", true));
    REQUIRE(drafts.ended_on(3) != nullptr);
    CHECK(drafts.ended_on(3)->call == 2);
    CHECK(drafts.ended_on(5) == nullptr);
  }
}

}  // namespace
}  // namespace lineweir::test
