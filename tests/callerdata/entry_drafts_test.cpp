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

  TEST_CASE(
      "of the calls that were left on a line those come, latest first, that wait to be saved") {
    EntryDrafts drafts;
    for (CallNumber call = 1; call <= 4; ++call) {
      EntryDraft left = draft(call, call == 4 ? 4 : 3, call == 2 ? "" : "Ann", true);
      left.ended->last_seen = LastSeen{1, {}};
      drafts.keep(left);
    }
    drafts.keep(draft(5, 3, "Bob", true));
    const auto left = drafts.left_on(3);
    REQUIRE(left.size() == 2);
    CHECK(left[0].call == 3);
    CHECK(left[1].call == 1);
  }
}

}  // namespace
}  // namespace lineweir::test
