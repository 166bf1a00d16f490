#include "letters/text_decoder.h"

#include <doctest/doctest.h>

#include "letters/code_page_letters.h"

namespace lineweir::test {
namespace {

using namespace std::string_literals;

const CodePageLetters western_letters;

// The text of a file that comes in pieces of that size; "?" where it isn't of its encoding.
std::string decoded(std::string_view bytes, TextEncoding encoding, std::size_t piece) {
  TextDecoder decoder(encoding, western_letters);
  std::string utf8;
  for (std::size_t i = 0; i < bytes.size(); i += piece) {
    if (!decoder.decode(bytes.substr(i, piece), utf8)) return "?";
  }
  return decoder.end() ? utf8 : "?";
}

const std::string little =
    "\xFF\xFE"
    "J\0\xE9\0\x41\x01=\xD8\0\xDE"s;
const std::string big =
    "\xFE\xFF"
    "\0J\0\xE9\x01\x41\xD8=\xDE\0"s;

TEST_SUITE("letters/text decoder") {
  TEST_CASE("a mark tells the encoding, and so do zeros") {
    CHECK(encoding_of(little) == TextEncoding::Utf16LittleEndian);
    CHECK(encoding_of(big) == TextEncoding::Utf16BigEndian);
    CHECK(encoding_of("N\0a\0m\0e\0"s) == TextEncoding::Utf16LittleEndian);
    CHECK(encoding_of("\0N\0a\0m\0e"s) == TextEncoding::Utf16BigEndian);
    CHECK(encoding_of("Name,City\0"s) == TextEncoding::Utf8);
    CHECK(encoding_of("\xEF\xBB\xBFName") == TextEncoding::Utf8);
    CHECK(encoding_of("") == TextEncoding::Utf8);
  }

  TEST_CASE("any pieces give the same text, without the mark") {
    for (std::size_t piece = 1; piece <= 12; ++piece) {
      CAPTURE(piece);
      CHECK(decoded("\xEF\xBB\xBFJé\u0141\U0001F600", TextEncoding::Utf8, piece) ==
            "Jé\u0141\U0001F600");
      CHECK(decoded(little, TextEncoding::Utf16LittleEndian, piece) == "Jé\u0141\U0001F600");
      CHECK(decoded(big, TextEncoding::Utf16BigEndian, piece) == "Jé\u0141\U0001F600");
      CHECK(decoded("Jos\xE9 \x80", TextEncoding::OneByte, piece) == "José €");
    }
  }

  TEST_CASE("what is no UTF-8 is found, also a character that isn't whole at the end") {
    for (std::size_t piece = 1; piece <= 6; ++piece) {
      CAPTURE(piece);
      CHECK(decoded("Jos\xE9, Ann", TextEncoding::Utf8, piece) == "?");
      CHECK(decoded("cut \xC3", TextEncoding::Utf8, piece) == "?");
      CHECK(decoded("\xED\xA0\x80", TextEncoding::Utf8, piece) == "?");
    }
  }

  TEST_CASE("halves of characters in UTF-16 are replaced") {
    CHECK(decoded("\0\xDE"
                  "a\0"s,
                  TextEncoding::Utf16LittleEndian, 4) == "\uFFFDa");
    CHECK(decoded("=\xD8"
                  "a\0"s,
                  TextEncoding::Utf16LittleEndian, 1) == "\uFFFDa");
  }
}

}  // namespace
}  // namespace lineweir::test
