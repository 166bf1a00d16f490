#include "callerdata/entry_fit.h"

#include <doctest/doctest.h>

#include "base/text.h"
#include "support/property_check.h"

namespace lineweir::test {
namespace {

// What becomes of `put_in` where the caret stands in `before`.
EditedText typed(const std::string& before, std::size_t caret, const std::string& put_in) {
  std::string text = before;
  text.insert(caret, put_in);
  return {text, static_cast<int>(caret + put_in.size())};
}

TEST_SUITE("callerdata/entry fit") {
  TEST_CASE("a text with room is taken as it is") {
    CHECK(fit_text("", {"Ann", 3}, 3) == EditedText{"Ann", 3, false});
    CHECK(fit_text("Ann", {"An", 1}, 3) == EditedText{"An", 1, false});
  }

  TEST_CASE("of what is put in, the end finds no room; what stood there stays") {
    CHECK(fit_text("12345", typed("12345", 5, "6"), 5) == EditedText{"12345", 5, true});
    CHECK(fit_text("12345", typed("12345", 2, "6"), 5) == EditedText{"12345", 2, true});
    CHECK(fit_text("123", typed("123", 1, "abcd"), 5) == EditedText{"1ab23", 3, true});
    CHECK(fit_text("", {"abcdefgh", 8}, 5) == EditedText{"abcde", 5, true});
    // What is put in begins as the rest goes on.
    CHECK(fit_text("aaab", typed("aaab", 3, "baaaa"), 8) == EditedText{"aaabaaab", 7, true});
    // A part of the text is replaced.
    CHECK(fit_text("12345", {"1abcd45", 5}, 5) == EditedText{"1ab45", 3, true});
  }

  TEST_CASE("a text that is too long already can be shortened, and doesn't grow") {
    CHECK(fit_text("1234567", {"123456", 6}, 5) == EditedText{"123456", 6, false});
    CHECK(fit_text("1234567", typed("1234567", 7, "8"), 5) == EditedText{"1234567", 7, true});
    CHECK(fit_text("1234567", {"abcdefg", 7}, 5) == EditedText{"abcde", 5, true});
  }

  TEST_CASE("whatever is put in, the rest stays, and the text is no longer than its room") {
    check_property([](const std::string& before, const std::string& put_in, unsigned place) {
      constexpr std::size_t room = 8;
      const std::string old(left_part(before, room));
      const std::size_t caret = place % (old.size() + 1);
      const EditedText fitted = fit_text(old, typed(old, caret, put_in), room);
      RC_ASSERT(fitted.text.size() == std::min(room, old.size() + put_in.size()));
      RC_ASSERT(fitted.left_out == (old.size() + put_in.size() > room));
      RC_ASSERT(fitted.caret >= 0);
      RC_ASSERT(static_cast<std::size_t>(fitted.caret) <= fitted.text.size());
      const std::size_t kept = fitted.text.size() - old.size();
      RC_ASSERT(fitted.text == old.substr(0, caret) + put_in.substr(0, kept) + old.substr(caret));
    });
  }

  TEST_CASE("a number that doesn't fit is written without separators") {
    CHECK(fit_number("", {"1 (312) 555 0100", 16}, 15) == EditedText{"13125550100", 11, false});
    CHECK(fit_number("", {"+1 (312) 555-0100", 17}, 15) == EditedText{"+13125550100", 12, false});
    CHECK(fit_number("", {"312-555-0100 x12", 16}, 15) == EditedText{"3125550100x12", 13, false});
    CHECK(fit_number("",
                     {"312\xA0"
                      "555\x96"
                      "0100, 12_34",
                      20},
                     15) == EditedText{"31255501001234", 14, false});
    // One that fits keeps them.
    CHECK(fit_number("", {"(312) 555-0100", 14}, 15) == EditedText{"(312) 555-0100", 14, false});
    // The caret stays where it stood between the digits.
    CHECK(fit_number("(312) 555-01000", typed("(312) 555-01000", 9, "9"), 15) ==
          EditedText{"3125559"
                     "01000",
                     7, false});
  }

  TEST_CASE("the country's sign goes before a digit does, and then the number stops") {
    CHECK(fit_number("", {"+123 456 789 012 345", 20}, 15) ==
          EditedText{"123456789012345", 15, false});
    CHECK(fit_number("", {"1234 5678 9012 3456 7", 21}, 15) ==
          EditedText{"123456789012345", 15, true});
    CHECK(fit_number("123456789012345", typed("123456789012345", 15, "6"), 15) ==
          EditedText{"123456789012345", 15, true});
  }

  TEST_CASE("a text that is no number keeps its blanks") {
    CHECK(fit_number("", {"call back after 6 pm", 20}, 15) ==
          EditedText{"call back after", 15, true});
    CHECK(number_within("call back after 6 pm", 15) == "call back after 6 pm");
    CHECK(number_within("312 555 0100", 15) == "312 555 0100");
    CHECK(number_within("+1 (312) 555-0100", 15) == "+13125550100");
  }

  TEST_CASE("a number that fits without its separators keeps the country's sign") {
    CHECK(number_within("+1 312 555 0100 123", 15) == "+13125550100123");
    CHECK(number_within("+1 312 555 0100 1234", 15) ==
          "13125550100"
          "1234");
    CHECK(fit_number("", {"+1 312 555 0100 123", 19}, 15) ==
          EditedText{"+13125550100123", 15, false});
  }

  TEST_CASE("a text that only holds digits, or few of them, is no number") {
    CHECK(number_within("ext 5550100 5550100", 15) == "ext 5550100 5550100");
    CHECK(number_within("1 - 2 - 3 - and so on", 15) == "1 - 2 - 3 - and so on");
    CHECK(number_within("- - - - - - - - - - - ", 15) == "- - - - - - - - - - - ");
    CHECK(number_within("1 - 2 - 3 - 4 and so on", 15) == "1234andsoon");
    CHECK(number_within("+ 1 - 2 - 3 - 4 and so on", 15) == "+1234andsoon");
  }

  TEST_CASE("the caret at the front stays there when the country's sign goes") {
    CHECK(fit_number("", {"+123 456 789 012 345", 0}, 15) ==
          EditedText{"123456789012345", 0, false});
  }
}

}  // namespace
}  // namespace lineweir::test
