#pragma once

#include <string>

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

// A letter and a line, as the equipment reads them: "F05", "F12".
inline std::string line_word(char letter, int line) { return letter + zero_filled(line, 2); }

}  // namespace lineweir
