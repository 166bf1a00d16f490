#pragma once

#include <array>
#include <string_view>

namespace lineweir {

enum class RowColor { White, Green, Red };

// What a row shows in a state, as the status decoders show it. The icons are the pair for
// HybridPictureSet. A row that `may_be_next` is green while its line is the next call.
struct LetterLook {
  char letter;
  std::string_view status_text;
  RowColor row;
  bool may_be_next;
  int icon1;
  int icon2;
};

// Who talks with the caller.
enum class Talker { Nobody, Host, Screener };

// The lamps of a line on the switch console: the byte where two lines share a position, and the
// pair where the line has both lamps to itself.
struct LampCadence {
  int shared;
  int main_lamp;
  int conference_lamp;
};

// All that a letter means.
struct StatusLetter {
  LetterLook look;
  Talker talker;
  // The caller is kept on air and isn't let go by the host's keys.
  bool locked;
  LampCadence cadence;
  // The state in words, for screen readers.
  std::string_view spoken;
};

inline constexpr char ringing_letter = 'R';
inline constexpr char ready_letter = 'S';
inline constexpr char held_letter = 'H';
inline constexpr char idle_letter = ' ';
inline constexpr char busy_letter = 'B';
// As it is reported; a line that is free shows the blank.
inline constexpr char free_letter = 'F';
inline constexpr char other_equipment_letter = 'E';

inline constexpr std::string_view on_air_text = "On Air";
inline constexpr std::string_view locked_text = "Locked";

// The status letters; the set is closed. F is a report only and never stored: a freed line's
// letter becomes the blank.
inline constexpr auto status_letters = [] {
  using enum RowColor;
  using enum Talker;
  return std::to_array<StatusLetter>({
      {{' ', "", White, false, 0, 0}, Nobody, false, {0, 0, 0}, "idle"},
      {{'F', "", White, false, 0, 0}, Nobody, false, {0, 0, 0}, "idle"},
      {{'R', "", White, false, 3, 3}, Nobody, false, {16, 16, 16}, "ringing"},
      {{'S', "Ready", White, true, 3, 3}, Nobody, false, {88, 88, 88}, "ready"},
      {{'H', "Held", White, true, 2, 2}, Nobody, false, {24, 24, 24}, "held"},
      {{'P', "", White, true, 2, 2}, Screener, false, {8, 8, 8}, "at phone 1"},
      {{'O', "", White, true, 2, 2}, Screener, false, {8, 8, 8}, "at phone 2"},
      {{'E', "", White, true, 2, 2}, Nobody, false, {8, 8, 8}, "taken by other equipment"},
      {{'N', on_air_text, Red, false, 1, 0}, Host, false, {12, 12, 8}, "on air, main hybrid"},
      {{'C', on_air_text, Red, false, 0, 1}, Host, false, {8, 8, 12}, "on air, conference hybrid"},
      {{'L', locked_text, Red, false, 1, 0}, Host, true, {0, 0, 0}, "locked on air, main hybrid"},
      {{'K', locked_text, Red, false, 0, 1},
       Host,
       true,
       {0, 0, 0},
       "locked on air, conference hybrid"},
      {{'Y', locked_text, White, true, 2, 2}, Nobody, true, {0, 0, 0}, "locked"},
      {{'B', "Set Busy", White, false, 4, 4}, Nobody, false, {0, 0, 0}, "set busy"},
  });
}();

// All that a letter means; null for one outside the set.
constexpr const StatusLetter* status_letter(char letter) {
  for (const StatusLetter& row : status_letters) {
    if (row.look.letter == letter) return &row;
  }
  return nullptr;
}

constexpr const LetterLook* look_of(char letter) {
  const StatusLetter* row = status_letter(letter);
  return row == nullptr ? nullptr : &row->look;
}

// Nobody is on the line: it is free, or taken out of service.
constexpr bool is_empty(char letter) { return letter == idle_letter || letter == busy_letter; }

// On air and not locked.
constexpr bool is_on_air(char letter) {
  const StatusLetter* row = status_letter(letter);
  return row != nullptr && row->talker == Talker::Host && !row->locked;
}

// On air, locked or not.
constexpr bool is_on_air_or_locked(char letter) {
  const StatusLetter* row = status_letter(letter);
  return row != nullptr && row->talker == Talker::Host;
}

constexpr bool is_locked_on_air(char letter) {
  return is_on_air_or_locked(letter) && !is_on_air(letter);
}

// Whether a line with this letter is one that the seat talks on.
constexpr bool talks_on(char letter, bool talent) {
  const StatusLetter* row = status_letter(letter);
  if (row == nullptr || row->locked) return false;
  return row->talker == (talent ? Talker::Host : Talker::Screener);
}

// The look of a letter that a server reports. A letter outside the set stands for a line that is
// taken. With equipment of kind 3 a console at handset position 1 has its handset on the conference
// hybrid, so that C isn't on air there.
constexpr LetterLook reported_look(char letter, bool handset_on_conference) {
  if (letter == 'C' && handset_on_conference) return {letter, "", RowColor::White, false, 2, 2};
  const LetterLook* look = look_of(letter);
  return look != nullptr ? *look : LetterLook{letter, "", RowColor::White, true, 2, 2};
}

// The text that a letter gives by itself when a display is rebuilt from the table: Y gives the
// empty text here and "Locked" only through the decoders.
constexpr std::string_view status_text_of(char letter) {
  const LetterLook* look = look_of(letter);
  return look == nullptr || letter == 'Y' ? std::string_view{} : look->status_text;
}

}  // namespace lineweir
