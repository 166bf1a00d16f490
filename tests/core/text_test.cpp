#include "core/text.h"

#include <doctest/doctest.h>

#include <array>

#include "support/property_check.h"

namespace lineweir::test {
namespace {

// The bytes 128 to 159 of the set in UTF-8; five of them are open and keep their code point.
constexpr std::array<std::string_view, 32> high_half = {
    "\xE2\x82\xAC", "\xC2\x81",     "\xE2\x80\x9A", "\xC6\x92",     "\xE2\x80\x9E", "\xE2\x80\xA6",
    "\xE2\x80\xA0", "\xE2\x80\xA1", "\xCB\x86",     "\xE2\x80\xB0", "\xC5\xA0",     "\xE2\x80\xB9",
    "\xC5\x92",     "\xC2\x8D",     "\xC5\xBD",     "\xC2\x8F",     "\xC2\x90",     "\xE2\x80\x98",
    "\xE2\x80\x99", "\xE2\x80\x9C", "\xE2\x80\x9D", "\xE2\x80\xA2", "\xE2\x80\x93", "\xE2\x80\x94",
    "\xCB\x9C",     "\xE2\x84\xA2", "\xC5\xA1",     "\xE2\x80\xBA", "\xC5\x93",     "\xC2\x9D",
    "\xC5\xBE",     "\xC5\xB8"};

TEST_SUITE("core/text") {
  TEST_CASE("trimming takes blanks off and nothing else") {
    CHECK(trimmed("  a b  ") == "a b");
    CHECK(trimmed_left("  a ") == "a ");
    CHECK(trimmed_right(" a  ") == " a");
    CHECK(trimmed("   ") == "");
    CHECK(trimmed("") == "");
    CHECK(trimmed(" \ta\r\n ") == "\ta\r\n");
    CHECK(trimmed(std::string_view("\0 ", 2)) == std::string_view("\0", 1));
  }

  TEST_CASE("a part is cut at the text's end") {
    CHECK(left_part("abc", 2) == "ab");
    CHECK(left_part("abc", 3) == "abc");
    CHECK(left_part("abc", 9) == "abc");
    CHECK(left_part("", 1) == "");
    CHECK(right_part("abc", 2) == "bc");
    CHECK(right_part("abc", 9) == "abc");
    CHECK(right_part("abc", 0) == "");
  }

  TEST_CASE("a character's code is 0 to 255") {
    CHECK(code_of('A') == 65);
    CHECK(code_of('\xFF') == 255);
    CHECK(code_of('\0') == 0);
  }

  TEST_CASE("zeros fill up to the width, and a longer number stays whole") {
    CHECK(zero_filled(5, 2) == "05");
    CHECK(zero_filled(0, 3) == "000");
    CHECK(zero_filled(123, 2) == "123");
  }

  TEST_CASE("the leading number is read as far as it goes") {
    CHECK(leading_number("12x") == 12);
    CHECK(leading_number("  7 8") == 7);
    CHECK(leading_number("-3") == -3);
    CHECK(leading_number("+4") == 4);
    CHECK(leading_number("007") == 7);
    for (const auto* none : {"", "x", "x1", "-", "+", "+-5", "-+5", "--5", "\t5"}) {
      CAPTURE(none);
      CHECK(leading_number(none) == 0);
    }
  }
}

TEST_SUITE("core/text: Windows-1252 and UTF-8") {
  TEST_CASE("each byte has its code point, there and back") {
    for (int code = 0; code < 256; ++code) {
      const std::string byte(1, static_cast<char>(code));
      std::string expected;
      if (code < 128) {
        expected = byte;
      } else if (code < 160) {
        expected = high_half[static_cast<std::size_t>(code - 128)];
      } else {
        expected = {code < 0xC0 ? '\xC2' : '\xC3', static_cast<char>(0x80 | (code & 0x3F))};
      }
      CAPTURE(code);
      CHECK(to_utf8(byte) == expected);
      CHECK(from_utf8(expected) == byte);
    }
  }

  TEST_CASE("any bytes come back from UTF-8 as they went") {
    check_property([](const std::string& bytes) { RC_ASSERT(from_utf8(to_utf8(bytes)) == bytes); });
  }

  TEST_CASE("a code point outside the set becomes one question mark") {
    CHECK(from_utf8("a\xCE\xB1z") == "a?z");        // Greek alpha
    CHECK(from_utf8("\xE4\xB8\xAD") == "?");        // a Chinese character
    CHECK(from_utf8("\xF0\x9F\x98\x80!") == "?!");  // an emoji
    CHECK(from_utf8("\xC2\x80") == "?");            // the control whose byte is the Euro's
    CHECK(from_utf8("\xF4\x8F\xBF\xBF") == "?");    // the last code point
  }

  TEST_CASE("bytes that are no UTF-8 become question marks, and the text goes on behind them") {
    CHECK(from_utf8("a\xE4z") == "a?z");
    CHECK(from_utf8("\x80\xBF") == "??");
    CHECK(from_utf8("\xE2\x82") == "??");
    CHECK(from_utf8("\xC3") == "?");
    CHECK(from_utf8("\xC3(") == "?(");
    CHECK(from_utf8("\xFE\xFF") == "??");
  }

  TEST_CASE("a code point has one spelling") {
    CHECK(from_utf8("\xC0\xAF") == "??");
    CHECK(from_utf8("\xC1\xBF") == "??");
    CHECK(from_utf8("\xE0\x80\xAF") == "???");
    CHECK(from_utf8("\xE0\x9F\xBF") == "???");
    CHECK(from_utf8("\xF0\x80\x80\x80") == "????");
    CHECK(from_utf8("\xED\xA0\x80") == "???");
    CHECK(from_utf8("\xF4\x90\x80\x80") == "????");
    CHECK(from_utf8("\xF5\x80\x80\x80") == "????");
  }

  TEST_CASE("any garbage gives at most one character a byte, and ASCII goes through it") {
    check_property([](const std::string& garbage) {
      const std::string bytes = from_utf8(garbage);
      RC_ASSERT(bytes.size() <= garbage.size());
      const auto ascii = [](const std::string& text) {
        std::string kept;
        for (const char c : text) {
          if (code_of(c) < 128 && c != '?') kept += c;
        }
        return kept;
      };
      RC_ASSERT(ascii(bytes) == ascii(garbage));
    });
  }
}

}  // namespace
}  // namespace lineweir::test
