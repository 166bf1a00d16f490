#pragma once

#include <string>
#include <string_view>

#include "base/text.h"

namespace lineweir {

// TheBank of a command: which hybrid it is for.
inline constexpr int bank_main = 0;
inline constexpr int bank_conference = 1;
inline constexpr int bank_none = 255;

// A command word and the hybrid that it is for.
struct CommandWord {
  std::string word;
  int bank;

  friend bool operator==(const CommandWord&, const CommandWord&) = default;
};

// A letter and the number of a line or a tone, as the equipment reads them: "F05", "F12".
inline std::string numbered_word(char letter, int number) {
  return letter + zero_filled(number, 2);
}

// Says that this console has its next key, and goes out again and again while it has.
inline constexpr std::string_view next_key_word = "X";

}  // namespace lineweir
