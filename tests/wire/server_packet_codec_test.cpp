#include "wire/server_packet_codec.h"

#include <doctest/doctest.h>

#include "base/failure.h"
#include "support/bytes.h"
#include "support/failure_number.h"
#include "support/packet_gen.h"
#include "support/property_check.h"
#include "support/server_packet.h"
#include "wire/password_scramble.h"

namespace lineweir::test {
namespace {

TEST_SUITE("wire/server_packet_codec") {
  TEST_CASE("the fields stand in their order, one byte each, and Size in two") {
    const ServerPacket packet{1, 2, 3, 4, 5, 6, {7, 8}, "ab"};
    CHECK(body_of(packet) == bytes({1, 2, 3, 4, 5, 6, 7, 8, 'a', 'b'}));
    CHECK(packet_of(bytes({1, 2, 3, 4, 5, 6, 7, 8, 'a', 'b'})) == packet);
  }

  TEST_CASE("a field that nobody sets is byte 0") {
    CHECK(body_of(ServerPacket{}) == bytes({0, 0, 0, 0, 0, 0, 0, 0}));
  }

  TEST_CASE("a body of eight bytes has an empty buffer") {
    CHECK(packet_of(bytes({142, 255, 1, 255, 0, 0, 0, 0})).Buffer.empty());
  }

  TEST_CASE("a body of seven bytes lacks the low byte of Size and has an empty buffer") {
    const ServerPacket packet = packet_of(bytes({134, 3, 1, 2, 0, 6, 9}));
    CHECK(packet == ServerPacket{134, 3, 1, 2, 0, 6, {9, 0}, ""});
  }

  TEST_CASE("one letter goes out as the letter and 255 and comes in as the letter") {
    ServerPacket packet;
    packet.set_buffer("N");
    CHECK(frame_of(packet) == bytes({4, 4, 0, 0, 0, 0, 0, 0, 0, 1, 'N', 255, 5, 5}));
    CHECK(packet_of(bytes({0, 0, 0, 0, 0, 0, 0, 1, 'N', 255})).Buffer == "N");
  }

  TEST_CASE("Size counts the buffer without the pad") {
    ServerPacket packet;
    packet.set_buffer(std::string(300, 'x'));
    CHECK(packet.Size == std::array<std::uint8_t, 2>{0x01, 0x2C});
    packet.set_buffer(std::string(301, 'x'));
    CHECK(packet.Size == std::array<std::uint8_t, 2>{0x01, 0x2D});
    CHECK(frame_of(packet).size() == 2 + 8 + 302 + 2);
  }

  TEST_CASE("property of the format: a last 255 of the buffer is taken for the pad") {
    ServerPacket packet;
    packet.set_buffer(bytes({'a', 255}));
    CHECK(packet_of(body_of(packet)).Buffer == "a");
    packet.set_buffer(bytes({255, 255}));
    CHECK(packet_of(body_of(packet)).Buffer == bytes({255}));
  }

  TEST_CASE("Size isn't read") {
    CHECK(packet_of(bytes({140, 0, 0, 0, 0, 0, 99, 99, 'a', 'b'})).Buffer == "ab");
  }

  TEST_CASE("a buffer of more than 32767 bytes is an overflow and changes nothing") {
    ServerPacket packet;
    packet.set_buffer(std::string(32767, 'x'));
    CHECK(packet.Size == std::array<std::uint8_t, 2>{0x7F, 0xFF});
    const ServerPacket before = packet;
    for (const std::size_t length : {32768U, 65536U, 65537U}) {
      CHECK(failure_number_of([&] { packet.set_buffer(std::string(length, 'y')); }) ==
            failure_number::overflow);
      CHECK(packet == before);
    }
  }

  TEST_CASE("a number outside a byte fits no field") {
    CHECK(field_byte(0) == 0);
    CHECK(field_byte(255) == 255);
    for (const int number : {-1, 256, 1000}) {
      CHECK(failure_number_of([&] { field_byte(number); }) == failure_number::invalid_argument);
    }
  }

  TEST_CASE("a sound packet is the same behind the wire") {
    check_property([] {
      const auto packet = *sound_packet();
      const std::string frame = frame_of(packet);
      RC_ASSERT(frame.size() % 2 == 0U);
      RC_ASSERT(packet_of(frame.substr(2, frame.size() - 4)) == packet);
    });
  }

  TEST_CASE("any body is a packet, and that packet's body is what was read of it") {
    check_property([](const std::string& body) {
      const ServerPacket packet = packet_of(body);
      RC_ASSERT(packet_of(body_of(packet)).CMD == packet.CMD);
      RC_ASSERT(packet.Buffer.size() <= body.size());
    });
  }
}

TEST_SUITE("wire/caller_data") {
  const std::string captured =
      "Anna\2"
      "Bob Hill\2"
      "12 Elm\2"
      "Troy\2"
      "NY\2"
      "12180\2"
      "555 0100\2"
      "WXYZ\2"
      "M\2"
      "likes jazz\2"
      "vip\2";

  CallerDetails captured_details() {
    return {"Anna",
            {"Bob Hill", "12 Elm", "Troy", "NY", "12180", "555 0100", "WXYZ", "M", "likes jazz",
             "vip"}};
  }

  TEST_CASE("the sender's name and ten fields, each ended by char 2") {
    CHECK(encode_caller_data(captured_details()) == captured);
    CHECK(decode_caller_data(captured) == captured_details());
  }

  TEST_CASE("the fields are the record's first ten, in their order and trimmed") {
    CallerRecord record;
    const CallerDetails expected = captured_details();
    for (std::size_t i = 0; i < expected.fields.size(); ++i) {
      record.set(caller_fields[i].field, " " + expected.fields[i] + "  ");
    }
    record.set(CallerField::CallDate, "1/5/2026");
    CHECK(caller_data_of(" Anna ", record) == expected);
  }

  TEST_CASE("fixed fields are cut to 10, 6 and 100 characters") {
    CallerRecord record;
    record.set(CallerField::Station, "123456789012");
    record.set(CallerField::Gender, "unknown");
    record.set(CallerField::UserField, std::string(120, 'u'));
    const CallerDetails details = caller_data_of("", record);
    CHECK(details.fields[6] == "1234567890");
    CHECK(details.fields[7] == "unknow");
    CHECK(details.fields[9] == std::string(100, 'u'));
  }

  TEST_CASE("fewer than eleven ended texts are no caller data") {
    CHECK_FALSE(decode_caller_data(""));
    CHECK_FALSE(decode_caller_data("Anna"));
    CHECK_FALSE(decode_caller_data(captured.substr(0, captured.size() - 1)));
  }

  TEST_CASE("what follows the eleventh text is passed over") {
    CHECK(decode_caller_data(captured + "more\2") == captured_details());
  }

  TEST_CASE("caller data are the same behind the wire") {
    check_property([] {
      CallerDetails details;
      details.sender = *field_text();
      for (std::string& field : details.fields) field = *field_text();
      RC_ASSERT(decode_caller_data(encode_caller_data(details)) == details);
    });
  }
}

TEST_SUITE("wire/text_message") {
  TEST_CASE("two colours in decimal and the text, parted by char 2") {
    const TextMessage message{255, 16777215, "Break in 2"};
    CHECK(encode_text_message(message) == "255\00216777215\2Break in 2");
    CHECK(decode_text_message("255\00216777215\2Break in 2") == message);
  }

  TEST_CASE("the text may be empty and may hold any character") {
    CHECK(decode_text_message("0\0020\2") == TextMessage{0, 0, ""});
    CHECK(decode_text_message("0\0020\2a\2b\3c") == TextMessage{0, 0, "a\2b\3c"});
  }

  TEST_CASE("colours may have blanks around and be below 0") {
    CHECK(decode_text_message(" 255 \2-2147483643\2x") == TextMessage{255, -2147483643, "x"});
  }

  TEST_CASE("a colour that is missing or no number makes it no message") {
    for (const char* buffer : {"", "255", "255\002", "255\002255", "red\002255\2x", "255\2red\2x",
                               "\2\2x", "12x\0020\2x", "99999999999\0020\2x"}) {
      CAPTURE(buffer);
      CHECK_FALSE(decode_text_message(buffer));
    }
  }

  TEST_CASE("a message is the same behind the wire") {
    check_property([](int back_color, int fore_color, const std::string& text) {
      const TextMessage message{back_color, fore_color, text};
      RC_ASSERT(decode_text_message(encode_text_message(message)) == message);
    });
  }
}

TEST_SUITE("wire/login_buffer") {
  TEST_CASE("a scrambled name, char 3, a scrambled password") {
    // The keys of the seconds 0 and 1: 60 and 61.
    CHECK(login_buffer(*pass_encode("amy", 0), *pass_encode("pw", 1)) ==
          bytes({60, 'a' + 60, 'm' + 60, 'y' + 60, 3, 61, 'p' + 61, 'w' + 61}));
    CHECK(decode_login(bytes({60, 'a' + 60, 'm' + 60, 'y' + 60, 3, 61, 'p' + 61, 'w' + 61})) ==
          Login{"amy", "pw"});
  }

  TEST_CASE("an empty name and password are their keys alone") {
    CHECK(login_buffer(*pass_encode("", 59), *pass_encode("", 0)) == bytes({119, 3, 60}));
    CHECK(decode_login(bytes({119, 3, 60})) == Login{"", ""});
  }

  TEST_CASE("without a char 3, or with a character below the key, it is no login") {
    CHECK_FALSE(decode_login(""));
    CHECK_FALSE(decode_login(bytes({60, 'a'})));
    CHECK_FALSE(decode_login(bytes({60, 59, 3, 60})));
    CHECK_FALSE(decode_login(bytes({60, 3, 60, 10})));
  }

  TEST_CASE("any name and password that can be scrambled are the same behind the wire") {
    check_property([] {
      const auto clear = rc::gen::container<std::string>(
          rc::gen::map(rc::gen::inRange(0, 137), [](int code) { return static_cast<char>(code); }));
      const Login login{*clear, *clear};
      const auto user = pass_encode(login.user, *rc::gen::inRange(0, 60));
      const auto password = pass_encode(login.password, *rc::gen::inRange(0, 60));
      RC_ASSERT(user && password);
      RC_ASSERT(decode_login(login_buffer(*user, *password)) == login);
    });
  }
}

TEST_SUITE("wire/list") {
  TEST_CASE("each item is ended by char 3") {
    CHECK(decode_list("News\3Sport\3") == std::vector<std::string>{"News", "Sport"});
    CHECK(decode_list("\3\3") == std::vector<std::string>{"", ""});
  }

  TEST_CASE("what follows the last char 3 is no item") {
    CHECK(decode_list("News\3Spo") == std::vector<std::string>{"News"});
    CHECK(decode_list("News").empty());
    CHECK(decode_list("").empty());
  }
}

}  // namespace
}  // namespace lineweir::test
