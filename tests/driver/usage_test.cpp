#include "driver/usage.h"

#include <doctest/doctest.h>

namespace lineweir::driver {
namespace {

using Words = std::vector<std::string>;

TEST_CASE("Words in lower case stand for themselves, others for parameters") {
  const auto match = match_usage("serial P in TEXT", {"serial", "Comm1", "in", "\"M\""});
  CHECK(match.whole);
  CHECK(match.parameters == Words{"Comm1", "\"M\""});
}

TEST_CASE("What is missing or too much doesn't fit") {
  CHECK_FALSE(match_usage("advance MS", {"advance"}).whole);
  CHECK_FALSE(match_usage("advance MS", {"advance", "1", "2"}).whole);
  CHECK_FALSE(match_usage("advance MS", {"Advance", "1"}).whole);
  CHECK(match_usage("quit", {"quit"}).whole);
}

TEST_CASE("Parameters in brackets may be left out") {
  CHECK(match_usage("launch [ARG]", {"launch"}).whole);
  CHECK(match_usage("launch [ARG]", {"launch", "D"}).parameters == Words{"D"});
  CHECK_FALSE(match_usage("launch [ARG]", {"launch", "D", "E"}).whole);
}

TEST_CASE("Dots stand for any number of parameters") {
  CHECK(match_usage("call NAME ...", {"call", "f"}).parameters == Words{"f"});
  CHECK(match_usage("call NAME ...", {"call", "f", "1", "2"}).parameters == Words{"f", "1", "2"});
  CHECK_FALSE(match_usage("call NAME ...", {"call"}).whole);
}

TEST_CASE("The words that fit are counted up to the first that doesn't") {
  CHECK(match_usage("socket in BYTES", {"socket", "out"}).literals == 1);
  CHECK(match_usage("socket in BYTES", {"socket", "in"}).literals == 2);
  CHECK(match_usage("socket in BYTES", {"serial", "in"}).literals == 0);
}

}  // namespace
}  // namespace lineweir::driver
