#include "driver/values.h"

#include <doctest/doctest.h>

#include <climits>

#include "driver/refusal.h"

namespace lineweir::driver {
namespace {

std::string all_bytes() {
  std::string bytes;
  for (int code = 0; code < 256; ++code) bytes += static_cast<char>(code);
  return bytes;
}

TEST_CASE("A text is a sequence of bytes, each a code point up to U+00FF") {
  CHECK(printed(text_value(std::string("\x04\x04\xE9\x00z", 5))) ==
        R"("\u0004\u0004\u00e9\u0000z")");
  CHECK(text_of(parsed(R"("\u0004\u00e9")")) == "\x04\xE9");
  CHECK(text_of(parsed("\"\xC3\xA9\"")) == "\xE9");
  CHECK(text_of(text_value(all_bytes())) == all_bytes());
  CHECK(text_of(parsed(printed(text_value(all_bytes())))) == all_bytes());
}

TEST_CASE("A text beyond U+00FF is refused") {
  for (const char* text : {R"("\u0100")", R"("\u20ac")", R"("\ud83d\ude00")"}) {
    CHECK_THROWS_AS(text_of(parsed(text)), NotUnderstood);
  }
}

TEST_CASE("Texts of the forms that show the log are UTF-8 and no bytes") {
  CHECK(printed(text_value("\xC5\x81", TextKind::Utf8)) == R"("\u0141")");
  CHECK(text_of(parsed(R"("\u0141\u20ac")"), TextKind::Utf8) == "\xC5\x81\xE2\x82\xAC");
  CHECK(printed(text_value("\xFF", TextKind::Utf8)) == R"("\ufffd")");
}

TEST_CASE("What is no JSON is not understood") {
  for (const char* text :
       {"", "abc", "[1,", "\"a", "{\"a\":}", "01", "\"\xFF\"", "1 2", "tru", "'a'"}) {
    CHECK_THROWS_AS(parsed(text), NotUnderstood);
  }
}

TEST_CASE("A value that is nested without end is not understood") {
  CHECK_THROWS_AS(parsed(std::string(100000, '[')), NotUnderstood);
  CHECK_THROWS_AS(parsed(std::string(100000, '[') + std::string(100000, ']')), NotUnderstood);
  CHECK(parsed("[[[[1]]]]") == Json::array({Json::array({Json::array({Json::array({1})})})}));
}

TEST_CASE("Numbers are whole and in range") {
  CHECK(number_of(parsed("12")) == 12);
  CHECK(number_of(parsed("-12.0")) == -12);
  CHECK(number_of(parsed("2147483647")) == INT_MAX);
  for (const char* text :
       {"1.5", "2147483648", "-2147483649", "1e300", "-1e300", "9223372036854775808",
        "18446744073709551616", "\"1\"", "true", "null", "[1]"}) {
    CHECK_THROWS_AS(number_of(parsed(text)), NotUnderstood);
  }
}

TEST_CASE("Truth values, texts and numbers are told apart") {
  CHECK(truth_of(parsed("true")));
  CHECK_THROWS_AS(truth_of(parsed("1")), NotUnderstood);
  CHECK_THROWS_AS(text_of(parsed("1")), NotUnderstood);
  CHECK_THROWS_AS(texts_of(parsed("[1]")), NotUnderstood);
  CHECK_THROWS_AS(texts_of(parsed("\"a\"")), NotUnderstood);
  CHECK(parsed("1") == parsed("1.0"));
  CHECK(parsed("1") != parsed("true"));
}

TEST_CASE("A moment has one form") {
  CHECK(moment_of(parsed("\"2026-01-05 10:00:00\"")) == platform::DateTime{2026, 1, 5, 10, 0, 0});
  for (const char* text : {"\"\"", "\"2026-1-5 10:00:00\"", "\"2026-01-05\"",
                           "\"2026-01-05 10:00:00 \"", "\" 2026-01-05 10:00:00\"",
                           "\"2026-01-05T10:00:00\"", "12", "\"2026-01-05 10:00:00\\u0000\""}) {
    CHECK_THROWS_AS(moment_of(parsed(text)), NotUnderstood);
  }
}

TEST_CASE("A font has a name, a size and two flags") {
  const auto font = font_of(parsed(R"({"name":"Sans","size":10,"bold":true,"italic":false})"));
  CHECK(font.name == "Sans");
  CHECK(font.size == 10);
  CHECK(font.bold);
  CHECK_FALSE(font.italic);
  for (const char* text : {"{}", "[]", "\"Sans\"", R"({"name":"Sans","size":10,"bold":true})",
                           R"({"name":"Sans","size":0,"bold":true,"italic":false})",
                           R"({"name":1,"size":10,"bold":true,"italic":false})"}) {
    CHECK_THROWS_AS(font_of(parsed(text)), NotUnderstood);
  }
}

TEST_CASE("Whatever is told of a line is one line of printable ASCII") {
  CHECK(on_one_line("a\nb\xE9") == "a\\u000ab\\u00e9");
}

TEST_CASE("Remote values are what a call can carry") {
  CHECK(remote_value_of(parsed("null")) == platform::RemoteValue{});
  CHECK(remote_value_of(parsed("true")) == platform::RemoteValue{true});
  CHECK(remote_value_of(parsed("5")) == platform::RemoteValue{std::int64_t{5}});
  CHECK(remote_value_of(parsed("\"a\"")) == platform::RemoteValue{"a"});
  CHECK_THROWS_AS(remote_value_of(parsed("[]")), NotUnderstood);
}

}  // namespace
}  // namespace lineweir::driver
