#include "desk/desk_layout.h"

#include <array>

#include "desk/lamp_reader.h"

namespace lineweir::desk {
namespace {

// The keys of a name that are numbered from first_number on; a name without a number has 0.
struct KeyRow {
  std::string_view name;
  int first_number;
  int last_number;
  int first_code;
};

constexpr std::array ten_line_keys = {
    KeyRow{"main", 1, 10, 1},  KeyRow{"conf", 1, 10, 31}, KeyRow{"drop1", 0, 0, 81},
    KeyRow{"hold1", 0, 0, 82}, KeyRow{"drop2", 0, 0, 84}, KeyRow{"hold2", 0, 0, 85},
};

constexpr std::array twenty_line_keys = {
    KeyRow{"line", 1, 1, 82},   KeyRow{"line", 2, 10, 1},  KeyRow{"line", 11, 11, 85},
    KeyRow{"line", 12, 20, 31}, KeyRow{"drop1", 0, 0, 81}, KeyRow{"hold1", 0, 0, 84},
};

constexpr int next_code = 88;
constexpr std::string_view dial_characters = "1234567890*#";
constexpr int first_dial_code = 61;
constexpr int highest_code = 255;

std::optional<int> number_of(std::string_view text) {
  if (text.empty() || text.size() > 3) return std::nullopt;
  int number = 0;
  for (const char digit : text) {
    if (digit < '0' || digit > '9') return std::nullopt;
    number = number * 10 + (digit - '0');
  }
  return number;
}

template <class Rows>
std::optional<int> code_in(const Rows& rows, std::string_view word, std::optional<int> number) {
  for (const KeyRow& row : rows) {
    const int wanted = number.value_or(0);
    const bool numbered = row.first_number > 0;
    if (row.name != word || numbered != number.has_value()) continue;
    if (wanted < row.first_number || wanted > row.last_number) continue;
    return row.first_code + wanted - row.first_number;
  }
  return std::nullopt;
}

std::optional<int> dial_code(std::string_view character) {
  if (character.size() != 1) return std::nullopt;
  const auto place = dial_characters.find(character);
  if (place == std::string_view::npos) return std::nullopt;
  return first_dial_code + static_cast<int>(place);
}

constexpr int address_of_first_pair = 254;

}  // namespace

std::optional<int> key_code(Layout layout, std::string_view name) {
  const auto blank = name.find(' ');
  const std::string_view word = name.substr(0, blank);
  const bool alone = blank == std::string_view::npos;
  const std::string_view rest = alone ? std::string_view() : name.substr(blank + 1);
  if (word == "next") return alone ? std::optional(next_code) : std::nullopt;
  if (word == "dial") return dial_code(rest);
  const auto number = number_of(rest);
  if (!alone && !number) return std::nullopt;
  if (word == "code")
    return number.value_or(highest_code + 1) <= highest_code ? number : std::nullopt;
  return layout == Layout::TenLines ? code_in(ten_line_keys, word, number)
                                    : code_in(twenty_line_keys, word, number);
}

std::optional<int> column_of(Layout layout, int address) {
  if (layout == Layout::TwentyLines && address == address_of_first_pair) return 0;
  const int column = address - first_address + (layout == Layout::TwentyLines ? 1 : 0);
  if (column < 0 || address < first_address || column >= lamp_columns) return std::nullopt;
  return column;
}

std::string lamp_name(Layout layout, LampPlace place) {
  const bool twenty = layout == Layout::TwentyLines;
  const std::string row = twenty ? "line" : place.row == 0 ? "main" : "conf";
  const int line = place.column + 1 + (twenty ? place.row * lamp_columns : 0);
  return row + ' ' + std::to_string(line);
}

}  // namespace lineweir::desk
