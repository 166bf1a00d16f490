#include "callcontrol/switch_console_keys.h"

#include <doctest/doctest.h>

namespace lineweir::test {
namespace {

SwitchConsoleKey expected_of_ten_lines(int code) {
  if (code >= 1 && code <= 10) return {SwitchConsoleAction::MainButtonOfRow, code - 1};
  if (code >= 31 && code <= 40) return {SwitchConsoleAction::ConferenceButtonOfRow, code - 31};
  if (code >= 61 && code <= 69) return {SwitchConsoleAction::DialKey, code - 60};
  switch (code) {
    case 70:
      return {SwitchConsoleAction::DialKey, 0};
    case 71:
      return {SwitchConsoleAction::DialKey, 10};
    case 72:
      return {SwitchConsoleAction::DialKey, 11};
    case 81:
      return {SwitchConsoleAction::Drop1};
    case 82:
      return {SwitchConsoleAction::Hold1};
    case 84:
      return {SwitchConsoleAction::Drop2};
    case 85:
      return {SwitchConsoleAction::Hold2};
    case 88:
      return {SwitchConsoleAction::Next};
    default:
      return {};
  }
}

SwitchConsoleKey expected_of_twenty_lines(int code) {
  if (code >= 1 && code <= 10) return {SwitchConsoleAction::MainButtonOfRow, code};
  if (code >= 31 && code <= 40) return {SwitchConsoleAction::MainButtonOfRow, code - 20};
  switch (code) {
    case 82:
      return {SwitchConsoleAction::MainButtonOfRow, 0};
    case 84:
      return {SwitchConsoleAction::Hold1};
    case 85:
      return {SwitchConsoleAction::MainButtonOfRow, 10};
    default:
      return expected_of_ten_lines(code);
  }
}

TEST_SUITE("callcontrol/switch_console_keys") {
  TEST_CASE("every code presses its key, and those outside the table none, in both layouts") {
    for (int code = 0; code < 256; ++code) {
      CAPTURE(code);
      CHECK(switch_console_key(code, false) == expected_of_ten_lines(code));
      CHECK(switch_console_key(code, true) == expected_of_twenty_lines(code));
    }
  }
}

}  // namespace
}  // namespace lineweir::test
