#include "callcontrol/console_keys.h"

#include <doctest/doctest.h>

namespace lineweir::test {
namespace {

ConsoleKey expected_of_ten_lines(int code) {
  if (code >= 1 && code <= 10) return {ConsoleAction::MainButtonOfRow, code - 1};
  if (code >= 31 && code <= 40) return {ConsoleAction::ConferenceButtonOfRow, code - 31};
  if (code >= 61 && code <= 69) return {ConsoleAction::DialKey, code - 60};
  switch (code) {
    case 70:
      return {ConsoleAction::DialKey, 0};
    case 71:
      return {ConsoleAction::DialKey, 10};
    case 72:
      return {ConsoleAction::DialKey, 11};
    case 81:
      return {ConsoleAction::Drop1};
    case 82:
      return {ConsoleAction::Hold1};
    case 84:
      return {ConsoleAction::Drop2};
    case 85:
      return {ConsoleAction::Hold2};
    case 88:
      return {ConsoleAction::Next};
    default:
      return {};
  }
}

ConsoleKey expected_of_twenty_lines(int code) {
  if (code >= 1 && code <= 10) return {ConsoleAction::MainButtonOfRow, code};
  if (code >= 31 && code <= 40) return {ConsoleAction::MainButtonOfRow, code - 20};
  switch (code) {
    case 82:
      return {ConsoleAction::MainButtonOfRow, 0};
    case 84:
      return {ConsoleAction::Hold1};
    case 85:
      return {ConsoleAction::MainButtonOfRow, 10};
    default:
      return expected_of_ten_lines(code);
  }
}

TEST_SUITE("callcontrol/console_keys") {
  TEST_CASE("every code presses its key, and those outside the table none, in both layouts") {
    for (int code = 0; code < 256; ++code) {
      CAPTURE(code);
      CHECK(console_key(code, false) == expected_of_ten_lines(code));
      CHECK(console_key(code, true) == expected_of_twenty_lines(code));
    }
  }
}

}  // namespace
}  // namespace lineweir::test
