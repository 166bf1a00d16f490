#include "letters/path_text.h"

#include <doctest/doctest.h>

#include "letters/code_page_letters.h"

namespace lineweir::test {
namespace {

TEST_SUITE("letters/path text") {
  TEST_CASE("a name is a text of the console's letters") {
    const CodePageLetters polish(*find_code_page("1250"));
    CHECK(path_text(polish, "/log/Łódź.lwl") ==
          "/log/\xA3\xF3"
          "d\x9F.lwl");
    CHECK(file_name(polish,
                    "/log/\xA3\xF3"
                    "d\x9F.lwl") == "/log/Łódź.lwl");
    CHECK(path_text(polish, "calls.lwl") == "calls.lwl");
  }

  TEST_CASE("a name that the letters don't hold comes back as it was") {
    const CodePageLetters western;
    for (const char* name : {"Łódź.lwl", "é and Иван", "Ã©", "C3 \u00C3\u00A9", "日本"}) {
      CAPTURE(name);
      CHECK(file_name(western, path_text(western, name)) == name);
    }
    CHECK(shown_path(western, path_text(western, "Łódź.lwl")) ==
          "?\xF3"
          "d?.lwl");
    CHECK(shown_path(western, path_text(western, "José")) == "Jos\xE9");
  }
}

}  // namespace
}  // namespace lineweir::test
