#include "server/caller_text.h"

#include <doctest/doctest.h>

#include "platform/connection.h"
#include "support/packet_gen.h"
#include "support/property_check.h"
#include "wire/sent_frame.h"

namespace lineweir::server {
namespace {

CallerDetails all_fields(const std::string& text) {
  CallerDetails data;
  data.sender = text;
  data.fields.fill(text);
  return data;
}

TEST_CASE("caller data are passed on as they came") {
  const std::string buffer =
      "Anna\2Bob Hill\00212 Elm\2Troy\2NY\00212180\002555 0100\2WXYZ\2M\2jazz\2vip\2";
  CHECK(encode_caller_data(clean_caller_data(buffer)) == buffer);
  // What follows the eleventh text is passed over.
  CHECK(encode_caller_data(clean_caller_data(buffer + "more\2")) == buffer);
}

TEST_CASE("what is missing at the end of caller data is empty") {
  CHECK(encode_caller_data(clean_caller_data("Anna\2Bob")) == "Anna\2Bob" + std::string(10, '\2'));
  CHECK(encode_caller_data(clean_caller_data("x")) == "x" + std::string(11, '\2'));
}

TEST_CASE("no text of caller data is longer than its field") {
  const CallerDetails cut =
      clean_caller_data(encode_caller_data(all_fields(std::string(3000, 'x'))));
  CHECK(cut.sender.size() == 50);
  const std::size_t longest[] = {100, 100, 100, 100, 100, 100, 10, 6, 500, 100};
  for (std::size_t i = 0; i < cut.fields.size(); ++i) CHECK(cut.fields[i].size() == longest[i]);
}

TEST_CASE("control characters of caller data are blanks, and letters of all languages stay") {
  for (int code = 0; code < 256; ++code) {
    if (code == 2) continue;
    CAPTURE(code);
    const std::string text{'a', static_cast<char>(code), 'b'};
    const bool is_control = code < 32 || code == 127;
    CHECK(clean_caller_data(encode_caller_data(all_fields(text))) ==
          all_fields(is_control ? "a b" : text));
  }
}

TEST_CASE("a message is passed on with its colours, its sender and its lines") {
  for (const char* buffer :
       {"255\00216777215\2Anna\3Anna> Break", "0\0020\2", "-1\0022147483647\2Anna\3Hi\r\nAnna> Yo",
        "1\0022\2no sender", "1\0022\2\3\3\3"}) {
    CHECK(clean_message(buffer) == buffer);
  }
  CHECK(clean_message(" 7 \0028\2x") == "7\0028\2x");
}

TEST_CASE("what holds no message is none") {
  for (const char* buffer : {"", "x", "1\2", "1\0022", "red\0022\2x", "1\2blue\2x", "\2\2x",
                             "2147483648\0021\2x", "1.5\0022\2x"}) {
    CHECK_FALSE(clean_message(buffer));
  }
}

TEST_CASE("of the control characters of a message those stay that mean something") {
  for (int code = 0; code < 256; ++code) {
    CAPTURE(code);
    const std::string text{'a', static_cast<char>(code), 'b'};
    const bool stays = (code >= 32 && code != 127) || code == 3 || code == 13 || code == 10;
    CHECK(clean_message("1\0022\2" + text) == "1\0022\2" + (stays ? text : "a b"));
  }
}

TEST_CASE("a message is at most as long as the longest that a console sends") {
  const std::string longest(30'200, 'x');
  CHECK(clean_message("1\0022\2" + longest));
  CHECK_FALSE(clean_message("1\0022\2" + longest + "x"));
}

TEST_CASE("any buffer becomes one that a frame carries as it stands") {
  test::check_property([] {
    const std::string buffer = *test::frame_garbage();
    const std::string encoded = encode_caller_data(clean_caller_data(buffer));
    RC_ASSERT(carried_buffer(encoded) == encoded);
    RC_ASSERT(encode_caller_data(clean_caller_data(encoded)) == encoded);
    const auto message = clean_message(*rc::gen::element<std::string>("", "1\0022\2") + buffer);
    if (message) RC_ASSERT(clean_message(*message) == message);
    const std::string name = clean_name(buffer, 5);
    RC_ASSERT(name.size() == std::min<std::size_t>(buffer.size(), 5));
    RC_ASSERT(clean_name(name, 5) == name);
  });
}

TEST_CASE(
    "the data of twenty lines and the longest message wait for a seat without its being slow") {
  const auto data = clean_caller_data(encode_caller_data(all_fields(std::string(3000, 'x'))));
  const std::string line =
      sent_frame(server_packet(ServerCommand::SrvCallerData, 1, encode_caller_data(data)));
  const std::string message = sent_frame(server_packet(
      ServerCommand::SrvFlashMessage, 1, "-2147483648\2-2147483648\2" + std::string(30'200, 'x')));
  // What else a seat is told at once: names, status, times.
  constexpr std::size_t rest = 4096;
  CHECK(20 * line.size() + message.size() + rest < platform::Connection::queue_bound);
}

}  // namespace
}  // namespace lineweir::server
