#include "driver/words.h"

#include <doctest/doctest.h>

#include "driver/refusal.h"

namespace lineweir::driver {
namespace {

using Words = std::vector<std::string>;

TEST_CASE("Words are parted by blanks") {
  CHECK(split_words("").empty());
  CHECK(split_words("  \t ").empty());
  CHECK(split_words(" click \t PortOn ") == Words{"click", "PortOn"});
}

TEST_CASE("A value is one word, blanks included") {
  CHECK(split_words("set A.Text \"two words\"") == Words{"set", "A.Text", "\"two words\""});
  CHECK(split_words("x [1, 2] {\"a\": [3, 4]} y") == Words{"x", "[1, 2]", "{\"a\": [3, 4]}", "y"});
}

TEST_CASE("Brackets and quotation marks within a text are part of it") {
  CHECK(split_words(R"(x "a ] \" b" y)") == Words{"x", R"("a ] \" b")", "y"});
  CHECK(split_words(R"(x ["a ] \\", "}"] y)") == Words{"x", R"(["a ] \\", "}"])", "y"});
}

TEST_CASE("A value without an end is not understood") {
  for (const char* line :
       {"x \"abc", "x [1, 2", "x {\"a\": 1", "x \"abc\\\"", "x \"abc\\", "x [\"]"}) {
    CHECK_THROWS_AS(split_words(line), NotUnderstood);
  }
}

TEST_CASE("What sticks to a value belongs to the word") {
  CHECK(split_words("x \"a\"b c") == Words{"x", "\"a\"b", "c"});
}

}  // namespace
}  // namespace lineweir::driver
