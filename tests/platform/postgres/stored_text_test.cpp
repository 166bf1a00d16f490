#include "platform/postgres/stored_text.h"

#include <doctest/doctest.h>

#include <random>

#include "letters/utf8.h"

using namespace lineweir;
using namespace lineweir::platform;

TEST_CASE("Texts stand as they are, and what PostgreSQL can't hold comes back as it was") {
  const std::string usual = "Zoë from Łódź said “日本” \U0001F600\n\t";
  CHECK(to_stored_text(usual) == usual);
  CHECK(to_stored_text("a\xE9z") == "a\U0010FFE9z");
  CHECK(to_stored_text(std::string("\0", 1)) == "\U0010FF00");
  for (const std::string& text :
       {std::string(), usual, std::string("a\0b", 3), std::string("Zo\xEB"), std::string("\xC3"),
        std::string("\xED\xA0\x80"), std::string("\U0010FF41"), std::string("\U0010FFFF\xFF")}) {
    const std::string stored = to_stored_text(text);
    CHECK(is_utf8(stored));
    CHECK(stored.find('\0') == std::string::npos);
    CHECK(from_stored_text(stored) == text);
  }
}

TEST_CASE("No two texts are stored as the same") {
  std::mt19937 engine(1);
  // Bytes of which sequences and the last code points are made.
  constexpr std::string_view bytes("\0a\x7F\x80\x8F\xBC\xBF\xC3\xED\xF0\xF4\xFF", 12);
  for (int i = 0; i < 20'000; ++i) {
    std::string text;
    for (auto left = engine() % 9; left > 0; --left) text += bytes[engine() % bytes.size()];
    const std::string stored = to_stored_text(text);
    REQUIRE(is_utf8(stored));
    REQUIRE(from_stored_text(stored) == text);
  }
}
