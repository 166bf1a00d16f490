#include "base/bits.h"

#include <doctest/doctest.h>

#include "base/text.h"
#include "support/property_check.h"

namespace lineweir::test {
namespace {

TEST_SUITE("base/bits") {
  TEST_CASE("bit 1 is the least significant and bit 8 the most") {
    for (int bit = 1; bit <= 8; ++bit) {
      CHECK(get_bit('\x80', bit) == (bit == 8));
      CHECK(get_bit('\x01', bit) == (bit == 1));
    }
  }

  TEST_CASE("there are no bits but 1 to 8") {
    for (const int bit : {-1, 0, 9, 32, 64, 1000}) CHECK(get_bit('\xFF', bit) == std::nullopt);
  }

  TEST_CASE("a byte is written as eight characters, the most significant first") {
    CHECK(byte_to_bits('\x05') == "00000101");
    CHECK(byte_to_bits('\x80') == "10000000");
    CHECK(byte_to_bits('\0') == "00000000");
    CHECK(byte_to_bits('\xFF') == "11111111");
  }

  TEST_CASE("each byte comes back from its bits, and agrees with them one by one") {
    for (int code = 0; code < 256; ++code) {
      const char byte = static_cast<char>(code);
      const std::string bits = byte_to_bits(byte);
      CHECK(bits.size() == 8);
      CHECK(bits_to_byte(bits) == byte);
      for (int bit = 1; bit <= 8; ++bit) {
        CHECK(get_bit(byte, bit) == (bits[static_cast<std::size_t>(8 - bit)] == '1'));
      }
    }
  }

  TEST_CASE("a character that is no digit counts 0, and a digit its value") {
    CHECK(bits_to_byte("0000000x") == '\0');
    CHECK(bits_to_byte("x0000001") == '\x01');
    CHECK(bits_to_byte("00000003") == '\x03');
    CHECK(bits_to_byte("00000090") == '\x12');
    CHECK(bits_to_byte("") == '\0');
    CHECK(bits_to_byte("1") == '\x80');
    CHECK(bits_to_byte("0000000011") == '\0');
  }

  TEST_CASE("a sum that is no byte is nothing") {
    CHECK(bits_to_byte("20000000") == std::nullopt);
    CHECK(bits_to_byte("11111112") == std::nullopt);
    CHECK(bits_to_byte("99999999") == std::nullopt);
  }

  TEST_CASE("any text gives a byte or nothing") {
    check_property([](const std::string& text) {
      const auto byte = bits_to_byte(text);
      if (byte) RC_ASSERT(bits_to_byte(byte_to_bits(*byte)) == byte);
    });
  }

  TEST_CASE("flags are the texts 1 and 0, and only 1 is true") {
    CHECK(return_byte(true) == "1");
    CHECK(return_byte(false) == "0");
    CHECK(num_to_bool("1"));
    for (const auto* text : {"0", "2", "", "-1", "11", " 1", "x"}) CHECK_FALSE(num_to_bool(text));
  }
}

}  // namespace
}  // namespace lineweir::test
