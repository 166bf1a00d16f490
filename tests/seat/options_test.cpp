#include "seat/options.h"

#include <doctest/doctest.h>

#include <sstream>
#include <vector>

using namespace lineweir::seat;

namespace {

struct Parsed {
  explicit Parsed(std::vector<const char*> words) {
    words.insert(words.begin(), "lineweir-seat");
    options =
        parse_options(static_cast<int>(words.size()), words.data(), input, output, errors, status);
  }

  std::istringstream input{"on air\nrest"};
  std::ostringstream output;
  std::ostringstream errors;
  int status = 0;
  std::optional<Options> options;
};

}  // namespace

TEST_CASE("a seat is told where it connects, as whom and to do what") {
  const Parsed parsed(
      {"--host", "studio", "--port", "2001", "--user", "amy", "--as", "host", "--seed", "7"});
  REQUIRE(parsed.options);
  CHECK(parsed.options->login.host == "studio");
  CHECK(parsed.options->login.port == 2001);
  CHECK(parsed.options->login.user == "amy");
  CHECK(parsed.options->login.password == "on air");
  CHECK(parsed.options->work == Work::Host);
  CHECK(parsed.options->seed == 7);
}

TEST_CASE("a seat takes several servers") {
  const Parsed parsed({"--host", "one, tls:two:2002", "--port", "2001", "--user", "amy"});
  REQUIRE(parsed.options);
  CHECK(parsed.options->login.host == "one, tls:two:2002");
}

TEST_CASE("servers that can't be are refused by a sentence") {
  const Parsed parsed({"--host", "one, two:x", "--port", "2001", "--user", "amy"});
  CHECK_FALSE(parsed.options);
  CHECK(parsed.errors.str().find("The port in the address \"two:x\" isn't a number") !=
        std::string::npos);
}

TEST_CASE("a seat screens where nothing else is told") {
  const Parsed parsed({"--host", "studio", "--port", "2001", "--user", "amy"});
  REQUIRE(parsed.options);
  CHECK(parsed.options->work == Work::Screener);
}

TEST_CASE("what a seat can't do is refused") {
  using Words = std::vector<const char*>;
  for (const Words& words :
       {Words{}, Words{"--host", "studio", "--port", "0", "--user", "amy"},
        Words{"--host", "studio", "--port", "2001", "--user", "amy", "--as", "guest"}}) {
    const Parsed parsed(words);
    CHECK_FALSE(parsed.options);
    CHECK(parsed.status == 2);
    CHECK_FALSE(parsed.errors.str().empty());
  }
}
