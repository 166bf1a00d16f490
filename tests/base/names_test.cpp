#include "base/names.h"

#include <doctest/doctest.h>

namespace lineweir::test {
namespace {

TEST_SUITE("base/names") {
  TEST_CASE("names are equal whatever the case of the letters A to Z") {
    CHECK(same_name("StatusLetter", "STATUSletter"));
    CHECK(same_name("", ""));
    CHECK_FALSE(same_name("Com1", "Com2"));
    CHECK_FALSE(same_name("Com1", "Com"));
    CHECK_FALSE(same_name("@", "`"));
    CHECK_FALSE(same_name("[", "{"));
    CHECK_FALSE(same_name("\xC4", "\xE4"));
  }

  TEST_CASE("a folded name is the same for all its spellings") {
    CHECK(folded_name("LineTable_9") == "linetable_9");
    CHECK(folded_name("\xC4Z") == "\xC4z");
  }
}

}  // namespace
}  // namespace lineweir::test
