#include "base/fixed_text.h"

#include <doctest/doctest.h>

#include "support/property_check.h"

namespace lineweir::test {
namespace {

TEST_SUITE("base/fixed text") {
  TEST_CASE("it holds blanks at first") {
    const FixedText<4> text;
    CHECK(text.text() == "    ");
    CHECK(text.trimmed() == "");
  }

  TEST_CASE("an assignment cuts and pads") {
    FixedText<4> text("abcdef");
    CHECK(text.text() == "abcd");
    text = "x";
    CHECK(text.text() == "x   ");
    CHECK(text.trimmed() == "x");
    text = "";
    CHECK(text.text() == "    ");
  }

  TEST_CASE("a part of its own text may be assigned") {
    FixedText<4> text("abcd");
    text = std::string_view(text.text()).substr(2);
    CHECK(text.text() == "cd  ");
  }

  TEST_CASE("any text leaves its beginning and exactly the width") {
    check_property([](const std::string& any) {
      const FixedText<11> text(any);
      RC_ASSERT(text.text().size() == 11U);
      const auto kept = left_part(any, 11);
      RC_ASSERT(text.text().substr(0, kept.size()) == std::string(kept));
      RC_ASSERT(text.text().substr(kept.size()) == std::string(11 - kept.size(), ' '));
      RC_ASSERT(FixedText<11>(text.text()) == text);
    });
  }
}

}  // namespace
}  // namespace lineweir::test
