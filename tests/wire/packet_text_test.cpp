#include "wire/packet_text.h"

#include <doctest/doctest.h>

#include "base/failure.h"
#include "base/text.h"
#include "support/bytes.h"
#include "support/failure_number.h"
#include "support/property_check.h"

namespace lineweir::test {
namespace {

TEST_SUITE("wire/packet_text") {
  TEST_CASE("zeros are filled in up to the width") {
    CHECK(TextWrit_ZeroFill("7", 2) == "07");
    CHECK(TextWrit_ZeroFill("", 4) == "0000");
    CHECK(TextWrit_ZeroFill("12C", 4) == "012C");
  }

  TEST_CASE("a text as long as the width or longer comes back unchanged") {
    CHECK(TextWrit_ZeroFill("1234", 4) == "1234");
    CHECK(TextWrit_ZeroFill("12345", 4) == "12345");
    CHECK(TextWrit_ZeroFill("x", 0) == "x");
    CHECK(TextWrit_ZeroFill("x", -3) == "x");
    CHECK(TextWrit_ZeroFill("", -3).empty());
  }

  TEST_CASE("a length has its high byte first") {
    CHECK(TextWrit_SizeEncode(0) == bytes({0, 0}));
    CHECK(TextWrit_SizeEncode(1) == bytes({0, 1}));
    CHECK(TextWrit_SizeEncode(255) == bytes({0, 255}));
    CHECK(TextWrit_SizeEncode(256) == bytes({1, 0}));
    CHECK(TextWrit_SizeEncode(300) == bytes({0x01, 0x2C}));
    CHECK(TextWrit_SizeEncode(32767) == bytes({0x7F, 0xFF}));
  }

  TEST_CASE("a length below 0 has the bytes of its 16 bits") {
    CHECK(TextWrit_SizeEncode(-1) == bytes({0xFF, 0xFF}));
    CHECK(TextWrit_SizeEncode(-32768) == bytes({0x80, 0x00}));
  }

  TEST_CASE("a length beyond 16 signed bits is an overflow") {
    CHECK(failure_number_of([] { TextWrit_SizeEncode(32768); }) == failure_number::overflow);
    CHECK(failure_number_of([] { TextWrit_SizeEncode(-32769); }) == failure_number::overflow);
  }

  TEST_CASE("each length can be read back from its bytes") {
    for (int length = 0; length <= 32767; ++length) {
      const std::string size = TextWrit_SizeEncode(length);
      REQUIRE(size.size() == 2);
      REQUIRE(code_of(size[0]) * 256 + code_of(size[1]) == length);
    }
  }

  TEST_CASE("characters of code 0 go from both ends and stay inside") {
    CHECK(TextWrit_NullRemove(bytes({0, 0, 'a', 0, 'b', 0})) == bytes({'a', 0, 'b'}));
    CHECK(TextWrit_NullRemove("ab") == "ab");
    CHECK(TextWrit_NullRemove(" a ") == " a ");
  }

  TEST_CASE("where nothing but code 0 stands, nothing remains") {
    CHECK(TextWrit_NullRemove("").empty());
    CHECK(TextWrit_NullRemove(bytes({0})).empty());
    CHECK(TextWrit_NullRemove(bytes({0, 0, 0})).empty());
  }

  TEST_CASE("what is removed is exactly the zeros around") {
    check_property([](const std::string& text, std::uint8_t before, std::uint8_t behind) {
      const auto inner = TextWrit_NullRemove(text);
      const std::string around = std::string(before, '\0') + text + std::string(behind, '\0');
      RC_ASSERT(TextWrit_NullRemove(around) == inner);
      RC_ASSERT(!inner.starts_with('\0'));
      RC_ASSERT(!inner.ends_with('\0'));
    });
  }
}

}  // namespace
}  // namespace lineweir::test
