#include "callerdata/log_text.h"

#include <doctest/doctest.h>

#include "letters/folding.h"

namespace lineweir::test {
namespace {

bool finds(const char* search, const char* texts) {
  return LogSearch(search).finds(folded_text(texts) + "\n");
}

std::string key(SortKind kind, const char* text) {
  std::string key;
  append_sort_key(key, kind, text);
  return key;
}

TEST_SUITE("callerdata/log text") {
  TEST_CASE("each word is looked for anywhere in the call's texts") {
    CHECK(finds("smith", "Ann Smith"));
    CHECK(finds("SMI ann", "Ann Smith"));
    CHECK(finds("  jose ", "Jos\xC3\xA9"));
    CHECK(finds("jos\xC3\xA9", "JOSE"));
    CHECK(finds("lodz", "Łódź"));
    CHECK(finds("ŁÓDŹ", "Lodz"));
    CHECK(finds("иван", "ИВАН Петров"));
    CHECK(finds("αθηνα", "Αθήνα"));
    CHECK_FALSE(finds("smith bob", "Ann Smith"));
    CHECK_FALSE(finds("annsmith", "Ann\nSmith"));
    CHECK(LogSearch("   ").empty());
    CHECK(finds("", "anything"));
  }

  TEST_CASE("the words are found where they stand, whatever their letters' case and accents") {
    using Pieces = std::vector<TextPiece>;
    const auto places = [](const char* search, const char* text) {
      return LogSearch(search).places_in(text);
    };
    CHECK(places("", "anything").empty());
    CHECK(places("smith", "Ann Smith, smithy") == Pieces{{4, 5}, {11, 5}});
    CHECK(places("lodz", "w Łódź") == Pieces{{2, 7}});
    CHECK(places("jose e", "Jose\u0301e") == Pieces{{0, 7}});
    CHECK(places("ann nn", "Ann") == Pieces{{0, 3}});
    CHECK(places("an na", "Anna Bo") == Pieces{{0, 4}});
    CHECK(places("aa", "aaa") == Pieces{{0, 3}});
    CHECK(places("a",
                 "x\xC3"
                 "a\xE1") == Pieces{{2, 1}});
  }

  TEST_CASE("dates are in the order of time, and what is none comes last") {
    const auto date = SortKind::Date;
    CHECK(key(date, "9/30/2025") < key(date, "10/1/2025"));
    CHECK(key(date, "12/31/2025") < key(date, "1/1/2026"));
    CHECK(key(date, "") < key(date, "1/1/1900"));
    CHECK(key(date, "12/31/9999") < key(date, "soon"));
    for (const char* none : {"1/2", "1/2/3/4", "1//2026", "a/1/2026", "1/1/2026x", "99999/1/1"}) {
      CAPTURE(none);
      CHECK(key(date, none).starts_with("~"));
    }
  }

  TEST_CASE("times are in the order of the day, and what is none comes last") {
    const auto time = SortKind::Time;
    CHECK(key(time, "11:59:59 AM") < key(time, "12:00:00 PM"));
    CHECK(key(time, "12:00:00 AM") < key(time, "01:00:00 AM"));
    CHECK(key(time, "00:09:59") < key(time, "00:10:00"));
    CHECK(key(time, "") < key(time, "00:00:00"));
    CHECK(key(time, "23:59:59") < key(time, "never"));
  }

  TEST_CASE("numbers have their digits in groups") {
    CHECK(grouped_number(0) == "0");
    CHECK(grouped_number(999) == "999");
    CHECK(grouped_number(1000) == "1,000");
    CHECK(grouped_number(1234567) == "1,234,567");
    CHECK(grouped_number(-1000) == "-1,000");
    CHECK(grouped_number(-100) == "-100");
    CHECK(calls_text(1) == "1 call");
    CHECK(calls_text(2500) == "2,500 calls");
  }

  TEST_CASE("the parts of a date may be as small and as large as four digits are") {
    const auto date = SortKind::Date;
    CHECK(key(date, "0/0/0") < key(date, "0/1/0"));
    CHECK(key(date, "0/0/0") < key(date, "1/1/1"));
    CHECK(key(date, "1/1/999") < key(date, "1/1/1000"));
    CHECK(key(date, "1/999/1") < key(date, "1/1000/1"));
    CHECK(key(date, "999/1/1") < key(date, "1000/1/1"));
    CHECK(key(date, "later") < key(date, "soon"));
    CHECK(key(date, "1/1/0") < key(date, "1/1/1"));
    CHECK(key(date, "0/1/0") < key(date, "1/0/0"));
    CHECK(key(date, "1/1/9998") < key(date, "1/1/9999"));
    CHECK(key(date, "1/1/9999") < key(date, "9999/9999/9999"));
    CHECK(key(date, "9999/9999/9999") < key(date, "10000/1/1"));
    CHECK(key(date, "-1/1/2026").starts_with("~"));
    CHECK(key(date, "1/2/2026") < key(date, "1/10/2026"));
    CHECK(key(SortKind::Time, "02:46:39") < key(SortKind::Time, "02:46:40"));
  }

  TEST_CASE("a word at the end of a text, and a text that is one word, are found as they stand") {
    using Pieces = std::vector<TextPiece>;
    CHECK(LogSearch("bo").places_in("Anna Bo") == Pieces{{5, 2}});
    CHECK(LogSearch("bo").places_in("Bo") == Pieces{{0, 2}});
    CHECK(LogSearch("a b").places_in("ab a") == Pieces{{0, 2}, {3, 1}});
    CHECK(LogSearch("x").places_in("Bo").empty());
    CHECK(LogSearch("x").places_in("").empty());
  }
}

}  // namespace
}  // namespace lineweir::test
