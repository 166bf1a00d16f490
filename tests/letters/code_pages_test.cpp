#include "letters/code_pages.h"

#include <doctest/doctest.h>

namespace lineweir::test {
namespace {

std::string_view of(std::string_view locale) { return code_page_of_locale(locale).name; }

TEST_SUITE("letters/code pages") {
  TEST_CASE("a set is found by its name and its number") {
    for (const char* name : {"windows-1250", "WINDOWS-1250", "Windows1250", "cp1250", "1250"}) {
      CAPTURE(name);
      REQUIRE(find_code_page(name) != nullptr);
      CHECK(find_code_page(name)->name == "windows-1250");
    }
    for (const char* name : {"", "windows-1259", "windows-", "utf-8", "125", "12500", "-1250"}) {
      CAPTURE(name);
      CHECK(find_code_page(name) == nullptr);
    }
    CHECK(default_code_page().name == "windows-1252");
  }

  TEST_CASE("a locale's language decides") {
    CHECK(of("pl_PL.UTF-8") == "windows-1250");
    CHECK(of("ro_RO") == "windows-1250");
    CHECK(of("cs") == "windows-1250");
    CHECK(of("ru_RU.UTF-8") == "windows-1251");
    CHECK(of("uk_UA.KOI8-U") == "windows-1251");
    CHECK(of("de_AT.UTF-8@euro") == "windows-1252");
    CHECK(of("en_US.UTF-8") == "windows-1252");
    CHECK(of("el_GR.UTF-8") == "windows-1253");
    CHECK(of("tr_TR.UTF-8") == "windows-1254");
    CHECK(of("he_IL.UTF-8") == "windows-1255");
    CHECK(of("ar_EG.UTF-8") == "windows-1256");
    CHECK(of("lv_LV.UTF-8") == "windows-1257");
    CHECK(of("vi_VN.UTF-8") == "windows-1258");
  }

  TEST_CASE("a language of two scripts goes by script or country") {
    CHECK(of("sr_RS.UTF-8") == "windows-1251");
    CHECK(of("sr_RS.UTF-8@latin") == "windows-1250");
    CHECK(of("sr_Latn_RS") == "windows-1250");
    CHECK(of("sr-Cyrl-RS") == "windows-1251");
    CHECK(of("bs_BA.UTF-8") == "windows-1250");
    CHECK(of("uz_UZ.UTF-8") == "windows-1254");
    CHECK(of("uz_UZ.UTF-8@cyrillic") == "windows-1251");
    CHECK(of("az_IR") == "windows-1256");
    CHECK(of("az_AZ") == "windows-1254");
  }

  TEST_CASE("no language is that of the default set") {
    for (const char* locale : {"", "C", "C.UTF-8", "POSIX", "xx_XX", "_", "@", "."}) {
      CAPTURE(locale);
      CHECK(of(locale) == "windows-1252");
    }
  }
}

}  // namespace
}  // namespace lineweir::test
