#include "server/line_clock.h"

#include <doctest/doctest.h>

#include <string>

#include "boxlink/line_rules.h"

namespace lineweir::server {
namespace {

// What the rules of a console that has counted since the line's ring do to the base of its clock.
ClockChange console_change(char letter, char old_letter, int kind) {
  const LineRule* const found = line_rule(server_rules, letter, kind);
  const LineRule& rule = found == nullptr ? other_letter_rule : *found;
  auto change = ClockChange::Runs;
  for (const RuleStep& step : rule.steps) {
    if (!applies(step.when, {old_letter, false, true})) continue;
    if (step.step == LineStep::BaseNow) change = ClockChange::Begins;
    if (step.step == LineStep::ForgetBase) change = ClockChange::Ends;
  }
  return change;
}

TEST_CASE("a line's clock begins, runs on and ends as the consoles' own") {
  const std::string letters = "FRSHPOENCLKYB\x80\x81\xFF?";
  for (const int kind : {1, 2, 3, 4}) {
    for (const char old_letter : letters) {
      for (const char letter : letters) {
        if (letter == old_letter) continue;
        CAPTURE(kind);
        CAPTURE(old_letter);
        CAPTURE(letter);
        CHECK(clock_change(letter, old_letter, kind) == console_change(letter, old_letter, kind));
      }
    }
  }
}

}  // namespace
}  // namespace lineweir::server
