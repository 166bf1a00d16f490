#include "boxlink/rule_steps.h"

#include <doctest/doctest.h>

#include <string>

#include "boxlink/line_rules.h"

namespace lineweir::test {
namespace {

// The letters with which a step is done, in a pass that isn't fresh.
std::string letters_of(When when, bool clock_has_base = false) {
  std::string letters;
  for (const StatusLetter& row : status_letters) {
    const char letter = row.look.letter;
    if (applies(when, {letter, false, clock_has_base})) letters += letter;
  }
  return letters;
}

TEST_SUITE("boxlink/rule steps") {
  TEST_CASE("a step without a condition is always done") {
    CHECK(letters_of(When::Always) == " FRSHPOENCLKYB");
    CHECK(applies(When::Always, {'S', true, true}));
  }

  TEST_CASE("a condition looks at the letter that the line had") {
    CHECK(letters_of(When::WasEmpty) == " B");
    CHECK(letters_of(When::WasReady) == "S");
    CHECK(letters_of(When::WasOnAir) == "NC");
    CHECK(letters_of(When::WasOnAirOrLocked) == "NCLK");
    CHECK(letters_of(When::NotBackFromLock) == " FRSHPOENCYB");
  }

  TEST_CASE("a clock that counts since the ring goes on, and a ring without one begins it") {
    CHECK(letters_of(When::NotCountingSinceRing, true) == " FSHPOENCLKYB");
    CHECK(letters_of(When::NotCountingSinceRing, false) == " FRSHPOENCLKYB");
  }

  TEST_CASE("of joined conditions all must hold") {
    const When both = When::NotFresh | When::WasReady;
    CHECK(applies(both, {'S', false, false}));
    CHECK_FALSE(applies(both, {'S', true, false}));
    CHECK_FALSE(applies(both, {'H', false, false}));
  }

  TEST_CASE("nothing stands behind the end of a rule's steps") {
    int rules_seen = 0;
    const auto check = [&](const LineRule& rule) {
      ++rules_seen;
      bool ended = false;
      for (const RuleStep& step : rule.steps) {
        CAPTURE(rule.letter);
        CHECK_FALSE((ended && step.step != LineStep::None));
        ended = ended || step.step == LineStep::None;
      }
    };
    for (const LineRule& rule : box_rules) check(rule);
    for (const LineRule& rule : server_rules) check(rule);
    CHECK(rules_seen == 25);
  }
}

}  // namespace
}  // namespace lineweir::test
