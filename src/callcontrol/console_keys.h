#pragma once

#include <array>
#include <optional>

namespace lineweir {

enum class ConsoleAction {
  Nothing,
  MainButtonOfRow,
  ConferenceButtonOfRow,
  Drop1,
  Hold1,
  Drop2,
  Hold2,
  Next,
  DialKey,
};

// What a key of the switch console presses; `target` is the line or the dial pad's key.
struct ConsoleKey {
  ConsoleAction action = ConsoleAction::Nothing;
  int target = 0;

  friend bool operator==(const ConsoleKey&, const ConsoleKey&) = default;
};

// The keys of these codes, in either layout. The target is that of the first code and grows with
// the code.
struct ConsoleKeyRow {
  int first;
  int last;
  ConsoleKey ten_lines;
  ConsoleKey twenty_lines;
};

// With twenty lines the row keys begin with line 1; line 0 and line 10 have keys of their own.
inline constexpr std::array console_keys = {
    ConsoleKeyRow{1, 10, {ConsoleAction::MainButtonOfRow, 0}, {ConsoleAction::MainButtonOfRow, 1}},
    ConsoleKeyRow{
        31, 40, {ConsoleAction::ConferenceButtonOfRow, 0}, {ConsoleAction::MainButtonOfRow, 11}},
    ConsoleKeyRow{61, 69, {ConsoleAction::DialKey, 1}, {ConsoleAction::DialKey, 1}},
    ConsoleKeyRow{70, 70, {ConsoleAction::DialKey, 0}, {ConsoleAction::DialKey, 0}},
    ConsoleKeyRow{71, 72, {ConsoleAction::DialKey, 10}, {ConsoleAction::DialKey, 10}},
    ConsoleKeyRow{81, 81, {ConsoleAction::Drop1}, {ConsoleAction::Drop1}},
    ConsoleKeyRow{82, 82, {ConsoleAction::Hold1}, {ConsoleAction::MainButtonOfRow, 0}},
    ConsoleKeyRow{84, 84, {ConsoleAction::Drop2}, {ConsoleAction::Hold1}},
    ConsoleKeyRow{85, 85, {ConsoleAction::Hold2}, {ConsoleAction::MainButtonOfRow, 10}},
    ConsoleKeyRow{88, 88, {ConsoleAction::Next}, {ConsoleAction::Next}},
};

// The key of a code; one outside the table is Nothing.
constexpr ConsoleKey console_key(int code, bool twenty_lines) {
  for (const ConsoleKeyRow& row : console_keys) {
    if (code < row.first || code > row.last) continue;
    ConsoleKey key = twenty_lines ? row.twenty_lines : row.ten_lines;
    key.target += code - row.first;
    return key;
  }
  return {};
}

}  // namespace lineweir
