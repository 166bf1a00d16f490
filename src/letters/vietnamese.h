#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace lineweir {

// Windows' set of Vietnamese writes most accented letters as a letter and a mark behind it.

struct VietnameseLetter {
  char16_t letter = 0;
  char16_t mark = 0;
};

// The letter and the mark that make up the character; nothing for one that isn't made so.
std::optional<VietnameseLetter> taken_apart(char32_t point);

// The character that a letter and a mark make up; nothing where they make up none.
std::optional<char16_t> put_together(VietnameseLetter parts);

}  // namespace lineweir
