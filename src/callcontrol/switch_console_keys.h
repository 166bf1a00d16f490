#pragma once

#include <array>
#include <optional>

namespace lineweir {

enum class SwitchConsoleAction {
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
struct SwitchConsoleKey {
  SwitchConsoleAction action = SwitchConsoleAction::Nothing;
  int target = 0;

  friend bool operator==(const SwitchConsoleKey&, const SwitchConsoleKey&) = default;
};

// The keys of these codes, in either layout. The target is that of the first code and grows with
// the code.
struct SwitchConsoleKeyRow {
  int first;
  int last;
  SwitchConsoleKey ten_lines;
  SwitchConsoleKey twenty_lines;
};

// With twenty lines the row keys begin with line 1; line 0 and line 10 have keys of their own.
inline constexpr std::array switch_console_keys = {
    SwitchConsoleKeyRow{1,
                        10,
                        {SwitchConsoleAction::MainButtonOfRow, 0},
                        {SwitchConsoleAction::MainButtonOfRow, 1}},
    SwitchConsoleKeyRow{31,
                        40,
                        {SwitchConsoleAction::ConferenceButtonOfRow, 0},
                        {SwitchConsoleAction::MainButtonOfRow, 11}},
    SwitchConsoleKeyRow{
        61, 69, {SwitchConsoleAction::DialKey, 1}, {SwitchConsoleAction::DialKey, 1}},
    SwitchConsoleKeyRow{
        70, 70, {SwitchConsoleAction::DialKey, 0}, {SwitchConsoleAction::DialKey, 0}},
    SwitchConsoleKeyRow{
        71, 72, {SwitchConsoleAction::DialKey, 10}, {SwitchConsoleAction::DialKey, 10}},
    SwitchConsoleKeyRow{81, 81, {SwitchConsoleAction::Drop1}, {SwitchConsoleAction::Drop1}},
    SwitchConsoleKeyRow{
        82, 82, {SwitchConsoleAction::Hold1}, {SwitchConsoleAction::MainButtonOfRow, 0}},
    SwitchConsoleKeyRow{84, 84, {SwitchConsoleAction::Drop2}, {SwitchConsoleAction::Hold1}},
    SwitchConsoleKeyRow{
        85, 85, {SwitchConsoleAction::Hold2}, {SwitchConsoleAction::MainButtonOfRow, 10}},
    SwitchConsoleKeyRow{88, 88, {SwitchConsoleAction::Next}, {SwitchConsoleAction::Next}},
};

// The key of a code; one outside the table is Nothing.
constexpr SwitchConsoleKey switch_console_key(int code, bool twenty_lines) {
  for (const SwitchConsoleKeyRow& row : switch_console_keys) {
    if (code < row.first || code > row.last) continue;
    SwitchConsoleKey key = twenty_lines ? row.twenty_lines : row.ten_lines;
    key.target += code - row.first;
    return key;
  }
  return {};
}

}  // namespace lineweir
