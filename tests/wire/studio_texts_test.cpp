#include "wire/studio_texts.h"

#include <doctest/doctest.h>

#include <random>

namespace lineweir {
namespace {

using Flags = std::vector<bool>;
using Texts = std::vector<std::string>;

TEST_CASE("words tell of hybrids and handsets, numbers of lines") {
  const auto studio = decode_studio_parts("True\003False\0031\003True\0030\003False\0037\003");
  REQUIRE(studio);
  CHECK(studio->parts == Flags{true, false, true, false});
  CHECK(studio->lines == Flags{true, false, true});
}

TEST_CASE("a studio's text that is no number is a line that doesn't exist") {
  CHECK(decode_studio_parts("\3") == StudioParts{{}, {false}});
  CHECK(decode_studio_parts("true\003-1\003") == StudioParts{{}, {false, true}});
}

TEST_CASE("what no char 3 ends is no item") {
  CHECK(decode_studio_parts("") == StudioParts{});
  CHECK(decode_studio_parts("True") == StudioParts{});
  CHECK(decode_studio_parts("True\0031") == StudioParts{{true}, {}});
}

TEST_CASE("a server without a status says so") {
  CHECK_FALSE(decode_studio_parts("ERROR"));
  CHECK(decode_studio_parts("ERROR\3") == StudioParts{{}, {false}});
}

TEST_CASE("the last item of the times is the server's own") {
  const auto times = decode_call_times("09:00:00\0030\00310:00:00\3");
  REQUIRE(times);
  CHECK(times->began == Texts{"09:00:00", "0"});
  CHECK(times->server_now == "10:00:00");
  CHECK_FALSE(decode_call_times(""));
  CHECK_FALSE(decode_call_times("10:00:00"));
}

TEST_CASE("one or two characters mean that no clock runs") {
  CHECK_FALSE(clock_runs(""));
  CHECK_FALSE(clock_runs("0"));
  CHECK_FALSE(clock_runs("-1"));
  CHECK(clock_runs("1:2"));
}

TEST_CASE("the time is the last eleven characters of the server's text") {
  const ServerTimeText texts = split_server_time("1/5/2026 9:02:00 AM");
  CHECK(texts.date == "1/5/2026");
  CHECK(texts.time == "9:02:00 AM");
  CHECK(split_server_time("1/5/2026 10:02:00 AM").time == "10:02:00 AM");
  CHECK(split_server_time("").date.empty());
  CHECK(split_server_time("short").time == "short");
}

TEST_CASE("what is told of a studio is read as it was") {
  for (const std::size_t line_count : {0U, 1U, 10U, 20U}) {
    for (unsigned parts = 0; parts < 16; ++parts) {
      StudioParts studio;
      for (unsigned part = 0; part < 4; ++part) studio.parts.push_back((parts >> part & 1U) != 0);
      for (std::size_t line = 0; line < line_count; ++line) {
        studio.lines.push_back((line * 7 + parts) % 3 != 0);
      }
      CHECK(decode_studio_parts(encode_studio_parts(studio)) == studio);
    }
  }
  CHECK(encode_studio_parts({{true, false}, {true, false, true}}) ==
        "True\003False\0031\0030\0033\003");
  CHECK_FALSE(decode_studio_parts(no_studio_status));
}

TEST_CASE("the times of lines are read as they were told, those without a clock as none") {
  const CallTimes times{{"9:02:00 AM", "", "12:00:01 PM", "", ""}, "9:05:00 AM"};
  const std::string text = encode_call_times(times);
  CHECK(text == "9:02:00 AM\0030\00312:00:01 PM\0030\0030\0039:05:00 AM\003");
  const auto read = decode_call_times(text);
  REQUIRE(read);
  CHECK(read->server_now == times.server_now);
  REQUIRE(read->began.size() == times.began.size());
  for (std::size_t line = 0; line < times.began.size(); ++line) {
    CHECK(clock_runs(read->began[line]) == !times.began[line].empty());
    if (clock_runs(read->began[line])) CHECK(read->began[line] == times.began[line]);
  }
  CHECK(decode_call_times(encode_call_times({{}, "10:00:00"}))->server_now == "10:00:00");
}

TEST_CASE("any text is read or refused") {
  std::mt19937 random(20260105);
  const std::string letters = "True\003Fals019:RO\2 ";
  int read = 0;
  for (int i = 0; i < 5000; ++i) {
    std::string text(random() % 40, ' ');
    for (char& letter : text) letter = letters[random() % letters.size()];
    read += decode_studio_parts(text) && decode_call_times(text) ? 1 : 0;
    CHECK(split_server_time(text).time.size() <= 11);
  }
  CHECK(read > 1000);
}

}  // namespace
}  // namespace lineweir
