#include "letters/code_page_letters.h"

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

const CodePageLetters western;

std::string there_and_back(std::string_view code_page, std::string_view utf8) {
  const CodePageLetters letters(*find_code_page(code_page));
  return letters.to_utf8(letters.from_utf8(utf8));
}

// Puts what it is asked for in brackets.
class Bracketing final : public Transliterator {
 public:
  std::string composed(std::string_view text) const override {
    return text == "o\u0301" ? "\u00F3" : std::string(text);
  }
  std::string plain_latin(std::string_view text) const override {
    return "[" + std::string(text == "\u0418\u0432" ? "Iv" : text) + "]";
  }
};

TEST_SUITE("letters/code page letters: Windows-1252") {
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
      CHECK(western.to_utf8(byte) == expected);
      CHECK(western.from_utf8(expected) == byte);
    }
  }

  TEST_CASE("any bytes come back from UTF-8 as they went") {
    check_property([](const std::string& bytes) {
      RC_ASSERT(western.from_utf8(western.to_utf8(bytes)) == bytes);
    });
  }

  TEST_CASE("a code point outside the set becomes one question mark") {
    CHECK(western.from_utf8("a\xCE\xB1z") == "a?z");        // Greek alpha
    CHECK(western.from_utf8("\xE4\xB8\xAD") == "?");        // a Chinese character
    CHECK(western.from_utf8("\xF0\x9F\x98\x80!") == "?!");  // an emoji
    CHECK(western.from_utf8("\xC2\x80") == "?");            // the control whose byte is the Euro's
    CHECK(western.from_utf8("\xF4\x8F\xBF\xBF") == "?");    // the last code point
  }

  TEST_CASE("bytes that are no UTF-8 become question marks, and the text goes on behind them") {
    CHECK(western.from_utf8("a\xE4z") == "a?z");
    CHECK(western.from_utf8("\x80\xBF") == "??");
    CHECK(western.from_utf8("\xE2\x82") == "??");
    CHECK(western.from_utf8("\xC3") == "?");
    CHECK(western.from_utf8("\xC3(") == "?(");
    CHECK(western.from_utf8("\xFE\xFF") == "??");
  }

  TEST_CASE("a code point has one spelling") {
    CHECK(western.from_utf8("\xC0\xAF") == "??");
    CHECK(western.from_utf8("\xC1\xBF") == "??");
    CHECK(western.from_utf8("\xE0\x80\xAF") == "???");
    CHECK(western.from_utf8("\xE0\x9F\xBF") == "???");
    CHECK(western.from_utf8("\xF0\x80\x80\x80") == "????");
    CHECK(western.from_utf8("\xED\xA0\x80") == "???");
    CHECK(western.from_utf8("\xF4\x90\x80\x80") == "????");
    CHECK(western.from_utf8("\xF5\x80\x80\x80") == "????");
  }

  TEST_CASE("any garbage gives at most one character a byte, and ASCII goes through it") {
    check_property([](const std::string& garbage) {
      const std::string bytes = western.from_utf8(garbage);
      RC_ASSERT(bytes.size() <= garbage.size());
      const auto ascii = [](const std::string& text) {
        std::string kept;
        for (const char c : text) {
          if (static_cast<unsigned char>(c) < 128 && c != '?') kept += c;
        }
        return kept;
      };
      RC_ASSERT(ascii(bytes) == ascii(garbage));
    });
  }
}

TEST_SUITE("letters/code page letters") {
  TEST_CASE("each byte of each set has a code point of its own, there and back") {
    for (const CodePage& page : code_pages) {
      CAPTURE(page.name);
      const CodePageLetters letters(page);
      for (int code = 0; code < 256; ++code) {
        CAPTURE(code);
        const std::string byte(1, static_cast<char>(code));
        CHECK(letters.from_utf8(letters.to_utf8(byte)) == byte);
      }
      check_property([&](const std::string& bytes) {
        RC_ASSERT(letters.from_utf8(letters.to_utf8(bytes)) == bytes);
      });
    }
  }

  TEST_CASE("a language's names are held by its set, a byte a character") {
    CHECK(CodePageLetters(*find_code_page("1250")).from_utf8("Łódź") ==
          "\xA3\xF3"
          "d\x9F");
    CHECK(CodePageLetters(*find_code_page("1251")).from_utf8("Иван") == "\xC8\xE2\xE0\xED");
    CHECK(CodePageLetters(*find_code_page("1253")).from_utf8("Αθήνα") == "\xC1\xE8\xDE\xED\xE1");
    CHECK(there_and_back("1250", "Zażółć gęślą jaźń, Dvořák, Győr") ==
          "Zażółć gęślą jaźń, Dvořák, Győr");
    CHECK(there_and_back("1251", "Ёлка, Ђорђе, Їжак") == "Ёлка, Ђорђе, Їжак");
    CHECK(there_and_back("1254", "İğdır, Şişli") == "İğdır, Şişli");
    CHECK(there_and_back("1255", "שלום") == "שלום");
    CHECK(there_and_back("1256", "سلام") == "سلام");
    CHECK(there_and_back("1257", "Rīga, Šiauliai, Võru") == "Rīga, Šiauliai, Võru");
  }

  TEST_CASE("Romanian letters with a comma are written with a cedilla") {
    CHECK(there_and_back("1250", "Ștefan Țepeș, ț") == "Ştefan Ţepeş, ţ");
    CHECK(there_and_back("1254", "Ștefan Țepeș") == "Ştefan ?epeş");
  }

  TEST_CASE("Vietnamese letters are written with their marks behind them") {
    const CodePageLetters letters(*find_code_page("windows-1258"));
    CHECK(letters.from_utf8("Nguyễn") == "Nguy\xEA\xDEn");
    CHECK(there_and_back("1258", "Nguyễn Thị Ngọc Ánh, Đặng Hữu Phước") ==
          "Nguyễn Thị Ngọc Ánh, Đặng Hữu Phước");
    // Both spellings of one letter stay apart.
    CHECK(letters.to_utf8("A\xCC") == "A\u0300");
    CHECK(letters.from_utf8("Ả") == "A\xD2");
  }

  TEST_CASE("what the set doesn't hold is transliterated together") {
    const Bracketing rules;
    const CodePageLetters letters(default_code_page(), &rules);
    CHECK(letters.from_utf8("a \u0418\u0432 b") == "a [Iv] b");
    CHECK(letters.from_utf8("\u0418\u0432") == "[Iv]");
    CHECK(letters.from_utf8("\u0418\xFF") == "[?]?");
    CHECK(letters.from_utf8("\u0418") == "[?]");
    CHECK(letters.from_utf8("J\u00F6rg") == "J\xF6rg");
  }

  TEST_CASE("a letter and its accent are one character") {
    const Bracketing rules;
    CHECK(CodePageLetters(default_code_page(), &rules).from_utf8("o\u0301") == "\xF3");
  }

  TEST_CASE("what shows nothing is left out") {
    CHECK(western.from_utf8("\u2764\uFE0F!\u200B") == "?!");
    CHECK(there_and_back("1256", "\u200D") == "\u200D");
  }
}

}  // namespace
}  // namespace lineweir::test
