#pragma once

#include <optional>
#include <string_view>

namespace lineweir::exchange {

// What the equipment does on a command word.
enum class Action {
  MonitorOn,
  QueryLine,
  DropLine,
  HoldLine,
  ScreenLine,
  AirOnMain,
  AirOnConference,
  ToggleLock,
  ToPosition1,
  ToPosition2,
  ReleasePosition1,
  ReleasePosition2,
  Tone,   // heard by the caller; no line changes
  Noted,  // taken, with nothing to do for it here
};

struct CommandWord {
  Action action;
  int number;  // the digits: a line from 0, a tone; 0 when the word has none

  bool operator==(const CommandWord&) const = default;
};

// "P15" and "O15" release a handset position. Line 15 itself can't be taken to one.
inline constexpr int release_number = 15;

// The meaning of one whole word; nothing for a text that is no word of the equipment. A line that
// this studio doesn't have is still a word.
std::optional<CommandWord> parse_word(std::string_view text);

// Whether `number` is a line.
bool names_line(Action action);

}  // namespace lineweir::exchange
