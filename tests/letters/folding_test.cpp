#include "letters/folding.h"

#include <doctest/doctest.h>

#include "letters/utf8.h"
#include "support/property_check.h"

namespace lineweir::test {
namespace {

TEST_SUITE("letters/folding") {
  TEST_CASE("neither case nor accents are told apart") {
    CHECK(folded_text("José ÉMILE Ñ") == "jose emile n");
    CHECK(folded_text("Šš Ž Ÿ ÿ") == "ss z y y");
    CHECK(folded_text("Łódź Zażółć GĘŚLĄ") == "lodz zazolc gesla");
    CHECK(folded_text("Dvořák Győr Đorđe İı Ștefan") == "dvorak gyor dorde ii stefan");
    CHECK(folded_text("Nguyễn Thị") == "nguyen thi");
    CHECK(folded_text("Æ æ Œ œ") == "æ æ œ œ");
  }

  TEST_CASE("Greek has no accents, no breathings and one small sigma") {
    CHECK(folded_text("Αθήνα ΆΈΉΊΌΎΏ ϊΰ") == "αθηνα αεηιουω ιυ");
    CHECK(folded_text("Οδυσσεύς") == "οδυσσευσ");
    CHECK(folded_text("ἀρχὴ ᾧ") == "αρχη ω");
  }

  TEST_CASE("Cyrillic has small letters, and its letters stay apart") {
    CHECK(folded_text("ИВАН Йод Ёлка Їжак Ђорђе Ѓ") == "иван йод елка їжак ђорђе ѓ");
  }

  TEST_CASE("each byte of a folded text knows the letter that it comes from") {
    const FoldedOrigins text = folded_with_origins("Łó.");
    CHECK(text.folded == "lo.");
    CHECK(text.origins == std::vector<std::size_t>{0, 2, 4, 5});
  }

  TEST_CASE("an accent that stands by itself is none") {
    CHECK(folded_text("o\u0301") == "o");
    CHECK(folded_text("\u0301") == "");
  }

  TEST_CASE("what is no letter stays, and so do signs and broken characters") {
    CHECK(folded_text("5 × 2 ÷ ß") == "5 × 2 ÷ ß");
    CHECK(folded_text("a\xC3") == "a\xC3");
    CHECK(folded_text("\xC3x") == "\xC3x");
    CHECK(folded_text("\xE1\xBA") == "\xE1\xBA");
    CHECK(folded_text("\xE1\xBAx") == "\xE1\xBAx");
    CHECK(folded_text("€ 中文 שלום 😀") == "€ 中文 שלום 😀");
  }

  TEST_CASE("what is folded stays as it is, no longer than it was, and UTF-8") {
    check_property([] {
      std::string text;
      for (const int point : *rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 0x3000))) {
        append_point(text, static_cast<char32_t>(point));
      }
      const std::string folded = folded_text(text);
      RC_ASSERT(folded.size() <= text.size());
      RC_ASSERT(is_utf8(folded));
      RC_ASSERT(folded_text(folded) == folded);
    });
    std::string all;
    for (char32_t point = 0x80; point < 0x3000; ++point) append_point(all, point);
    CHECK(is_utf8(folded_text(all)));
    CHECK(folded_text(folded_text(all)) == folded_text(all));
  }

  TEST_CASE("bytes that are no text become no longer, and an accent between them is none") {
    check_property(
        [](const std::string& bytes) { RC_ASSERT(folded_text(bytes).size() <= bytes.size()); });
    CHECK(folded_text("\xC8\u0319\x9E") == "\xC8\x9E");
  }

  TEST_CASE("a text is added to what is there") {
    std::string folded = "Ann ";
    append_folded(folded, "ŁÓ");
    CHECK(folded == "Ann lo");
  }
}

}  // namespace
}  // namespace lineweir::test
