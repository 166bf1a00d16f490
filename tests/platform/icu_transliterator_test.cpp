#include "platform/icu/icu_transliterator.h"

#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include <doctest/doctest.h>

#include "letters/code_page_letters.h"

namespace lineweir::platform {
namespace {

std::string as_held(std::string_view set, std::string_view utf8) {
  static const IcuTransliterator rules;
  const CodePageLetters letters(*find_code_page(set), &rules);
  return letters.to_utf8(letters.from_utf8(utf8));
}

TEST_SUITE("platform/icu transliterator") {
  TEST_CASE("names are written in plain letters where the set has none of theirs") {
    CHECK(as_held("windows-1252", "Łódź") == "Lódz");
    CHECK(as_held("windows-1252", "Ștefan Țepeș") == "Stefan Tepes");
    CHECK(as_held("windows-1252", "Иван Петров") == "Ivan Petrov");
    CHECK(as_held("windows-1252", "Αθήνα") == "Athena");
    CHECK(as_held("windows-1251", "José Łukasz") == "Jose Lukasz");
    CHECK(as_held("windows-1250", "Ștefan Țepeș, Иван") == "Ştefan Ţepeş, Ivan");
    CHECK(as_held("windows-1253", "Grażyna") == "Grazyna");
    CHECK(as_held("windows-1252", "Nguyễn Thị") == "Nguyen Thi");
  }

  TEST_CASE("what can't be written in letters is a question mark") {
    CHECK(as_held("windows-1252", "Ann \U0001F600!") == "Ann ?!");
    CHECK(as_held("windows-1252", "\u2764\uFE0F") == "?");
  }

  TEST_CASE("a letter and an accent behind it are the accented letter") {
    CHECK(as_held("windows-1250", "Ło\u0301dz\u0301") == "Łódź");
    CHECK(as_held("windows-1258", "Nguye\u0302\u0303n") == "Nguyễn");
  }

  TEST_CASE("what the set holds stays as it is beside the others") {
    CHECK(as_held("windows-1252", "Müller – Иван €5") == "Müller – Ivan €5");
  }

  TEST_CASE("broken bytes are question marks") {
    CHECK(as_held("windows-1252", "Иван\xFF \xD0") == "Ivan? ?");
  }
}

}  // namespace
}  // namespace lineweir::platform
