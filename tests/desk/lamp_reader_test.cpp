#include "desk/lamp_reader.h"

#include <doctest/doctest.h>
#include <rapidcheck.h>

#include <string>

#include "support/property_check.h"

namespace lineweir::desk {
namespace {

using Messages = std::vector<LampMessage>;

// Bytes of all kinds, with addresses as often as cadence bytes need them.
rc::Gen<std::string> streams() {
  return rc::gen::container<std::string>(rc::gen::oneOf(
      rc::gen::arbitrary<char>(), rc::gen::elementOf(std::string("\x08\x0C\x10\x18X", 5)),
      rc::gen::elementOf(std::string("\xC0\xC1\xC9\xFE", 4))));
}

TEST_SUITE("desk/lamp_reader") {
  TEST_CASE("two cadence bytes and an address are a message") {
    LampReader reader;
    CHECK(reader.receive("\x0C\x08\xC0XX\xC9") == Messages{{192, 12, 8}, {201, 88, 88}});
    CHECK(reader.noise() == 0);
  }

  TEST_CASE("a message may come in pieces") {
    LampReader reader;
    CHECK(reader.receive("\x0C").empty());
    CHECK(reader.receive("\x08").empty());
    CHECK(reader.receive("\xC0") == Messages{{192, 12, 8}});
  }

  TEST_CASE("it finds its place again behind what is lost or too much") {
    LampReader reader;
    CHECK(reader.receive("\xC5").empty());
    CHECK(reader.noise() == 1);
    CHECK(reader.receive("\x01\xC5").empty());
    CHECK(reader.noise() == 3);
    CHECK(reader.receive("abc\x0C\x08\xC0") == Messages{{192, 12, 8}});
    CHECK(reader.noise() == 6);
  }

  TEST_CASE("random bytes give the same messages however they are cut, and every byte counts") {
    test::check_property([] {
      const std::string stream = *streams();
      LampReader whole;
      LampReader pieces;
      const Messages expected = whole.receive(stream);
      Messages got;
      for (std::size_t begin = 0; begin < stream.size();) {
        const auto length = static_cast<std::size_t>(*rc::gen::inRange(1, 5));
        for (const LampMessage& message : pieces.receive(stream.substr(begin, length))) {
          got.push_back(message);
        }
        begin += length;
      }
      RC_ASSERT(got == expected);
      RC_ASSERT(pieces.noise() == whole.noise());
      const std::size_t counted = 3 * expected.size() + whole.noise();
      RC_ASSERT(counted <= stream.size());
      RC_ASSERT(stream.size() - counted <= 2U);
      for (const LampMessage& message : expected) {
        RC_ASSERT(message.address >= 192);
        RC_ASSERT(message.first < 192);
        RC_ASSERT(message.second < 192);
      }
    });
  }
}

}  // namespace
}  // namespace lineweir::desk
