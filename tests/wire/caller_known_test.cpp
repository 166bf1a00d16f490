#include "wire/caller_known.h"

#include "base/iso_date.h"
#include "support/packet_gen.h"
#include "support/property_check.h"
#include "wire/sent_frame.h"

namespace lineweir::test {
namespace {

const CallerKnown anna{CallerFlag::Barred, "555 0100", 7,      3,
                       "2026-11-12 20:15", "Anna",     "Troy", "shouts",
                       "2026-12-31",       "bob"};

constexpr auto anna_fields =
    "555 0100\0037\0033\0032026-11-12 20:15\3Anna\3Troy\3shouts\0032026-12-31\3bob";

CallerKnown with_number(const char* number) {
  CallerKnown known;
  known.number = number;
  return known;
}

std::optional<CallerKnown> decoded(const std::string& buffer) {
  return decode_caller_known(3, buffer);
}

// A text as it comes back: without blanks at its ends.
rc::Gen<std::string> plain_text() {
  return rc::gen::map(field_text(), [](std::string text) {
    while (text.ends_with(' ')) text.pop_back();
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
  });
}

rc::Gen<std::string> date_or_nothing() {
  return rc::gen::apply(
      [](bool none, int year, int month, int day) {
        return none ? std::string() : iso_date_text({year, month, day});
      },
      rc::gen::arbitrary<bool>(), rc::gen::inRange(1900, 9999), rc::gen::inRange(1, 13),
      rc::gen::inRange(1, 29));
}

rc::Gen<CallerKnown> any_known() {
  return rc::gen::build<CallerKnown>(
      rc::gen::set(&CallerKnown::flag, rc::gen::element(CallerFlag::None, CallerFlag::Regular,
                                                        CallerFlag::Careful, CallerFlag::Barred)),
      rc::gen::set(&CallerKnown::number, plain_text()),
      rc::gen::set(&CallerKnown::calls, rc::gen::positive<int>()),
      rc::gen::set(&CallerKnown::on_air, rc::gen::inRange(0, 1000)),
      rc::gen::set(
          &CallerKnown::last_on_air,
          rc::gen::map(date_or_nothing(),
                       [](std::string day) { return day.empty() ? day : day + " 08:09"; })),
      rc::gen::set(&CallerKnown::name, plain_text()),
      rc::gen::set(&CallerKnown::city, plain_text()),
      rc::gen::set(&CallerKnown::reason, plain_text()),
      rc::gen::set(&CallerKnown::until, date_or_nothing()),
      rc::gen::set(&CallerKnown::flagged_by, plain_text()));
}

TEST_SUITE("wire/caller_known") {
  TEST_CASE("what is known of a caller is nine fields, parted by char 3, and a flag beside them") {
    CHECK(encode_caller_known(anna) == anna_fields);
    CHECK(decode_caller_known(3, anna_fields) == anna);
    CHECK(encode_caller_known(with_number("5550100")) == "5550100\0030\0030\3\3\3\3\3\3");
    CHECK(decode_caller_known(0, "5550100\0030\0030\3\3\3\3\3\3") == with_number("5550100"));
  }

  TEST_CASE("a flag goes with its number, its reason and its last day") {
    const CallerFlagging flagging{CallerFlag::Careful, "555 0100", "shouts", "2026-12-31"};
    CHECK(encode_caller_flagging(flagging) == "555 0100\3shouts\0032026-12-31");
    CHECK(decode_caller_flagging(2, "555 0100\3shouts\0032026-12-31") == flagging);
    CHECK(decode_caller_flagging(0, "555 0100\3\3") ==
          CallerFlagging{CallerFlag::None, "555 0100", "", ""});
  }

  TEST_CASE("a reason is cut to what a server takes") {
    const CallerFlagging flagging{CallerFlag::Careful, "1", std::string(120, 'x'), ""};
    CHECK(encode_caller_flagging(flagging) == "1\3" + std::string(100, 'x') + "\3");
    CHECK(decode_caller_flagging(2, "1\3" + std::string(100, 'x') + "\3"));
    CHECK_FALSE(decode_caller_flagging(2, "1\3" + std::string(101, 'x') + "\3"));
  }

  TEST_CASE("what is malformed tells nothing") {
    CHECK_FALSE(decoded(""));
    CHECK_FALSE(decoded("5550100"));
    CHECK_FALSE(decoded("1\0031\0031\3\3\3\3\3"));
    for (const char* count : {"", "x", "-1", "1x", "99999999999", "1.5"}) {
      CAPTURE(count);
      CHECK_FALSE(decoded(std::string("1\3") + count + "\0031\3\3\3\3\3\3"));
      CHECK_FALSE(decoded(std::string("1\0031\3") + count + "\3\3\3\3\3\3"));
    }
    for (const char* moment : {"2026-12-31", "2026-12-31 24:00", "2026-12-31 10:60", "x"}) {
      CAPTURE(moment);
      CHECK_FALSE(decoded(std::string("1\0031\0031\3") + moment + "\3\3\3\3\3"));
    }
    for (const char* day : {"2026-02-29", "2026-13-01", "12/31/2026", "2026-12-31 10:00"}) {
      CAPTURE(day);
      CHECK_FALSE(decoded(std::string("1\0031\0031\3\3\3\3\3") + day + "\3"));
      CHECK_FALSE(decode_caller_flagging(1, std::string("1\3\3") + day));
    }
    CHECK_FALSE(decode_caller_known(4, anna_fields));
    CHECK_FALSE(decode_caller_known(255, anna_fields));
    CHECK_FALSE(decode_caller_flagging(4, "1\3\3"));
    CHECK_FALSE(decode_caller_flagging(1, ""));
    CHECK_FALSE(decode_caller_flagging(1, "\3why\3"));
    CHECK_FALSE(decode_caller_flagging(1, "1\3why"));
  }

  TEST_CASE("what a later server may tell behind the ninth field is passed over") {
    CHECK(decode_caller_known(3, std::string(anna_fields) + "\3more\3") == anna);
  }

  TEST_CASE("control characters in a text are blanks on the wire") {
    CallerKnown known = with_number("1");
    known.name = "A\3B\5\5";
    known.city = "x\r\ny";
    CHECK(encode_caller_known(known) == "1\0030\0030\3\3A B\3x  y\3\3\3");
  }

  TEST_CASE("what was encoded comes back through a frame") {
    check_property([] {
      const CallerKnown known = *any_known();
      const auto alt_info = static_cast<std::uint8_t>(known.flag);
      RC_ASSERT(decode_caller_known(alt_info, encode_caller_known(known)) == known);
      const std::string carried = carried_buffer(encode_caller_known(known));
      RC_ASSERT(decode_caller_known(alt_info, carried) == known);
    });
  }

  TEST_CASE("any bytes are decoded to what can be encoded again, or to nothing") {
    check_property([] {
      const auto part = rc::gen::weightedOneOf<std::string>(
          {{6, rc::gen::just(std::string("\3"))},
           {3, rc::gen::element<std::string>("1", "2026-12-31", "2026-12-31 10:00", "Anna")},
           {2, frame_garbage()}});
      std::string buffer;
      for (const auto& text : *rc::gen::container<std::vector<std::string>>(part)) buffer += text;
      const auto alt_info = *rc::gen::arbitrary<std::uint8_t>();
      if (const auto known = decode_caller_known(alt_info, buffer)) {
        const auto again = decode_caller_known(alt_info, encode_caller_known(*known));
        RC_ASSERT(again.has_value());
        RC_ASSERT(again->calls == known->calls);
      }
      if (const auto flagging = decode_caller_flagging(alt_info, buffer)) {
        RC_ASSERT(flagging->reason.size() <= flag_reason_length);
      }
    });
  }
}

}  // namespace
}  // namespace lineweir::test
