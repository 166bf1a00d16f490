#include "callcontrol/switch_console_lamps.h"

namespace lineweir {
namespace {

constexpr int first_address = 192;
constexpr int first_position = 1;
constexpr int lines_between_partners = 10;
// The lamps of lines 0 and 10.
constexpr int address_of_last_pair = 254;

int address_of(int line, bool twenty_lines) {
  if (!twenty_lines) return first_address + line;
  const int position = line % lines_between_partners;
  return position == 0 ? address_of_last_pair : first_address + position - first_position;
}

}  // namespace

std::optional<std::string> lamp_message(int line, bool twenty_lines, bool row_is_visible,
                                        std::string_view cadence) {
  if (twenty_lines && !row_is_visible) return std::nullopt;
  std::string message = row_is_visible ? std::string(cadence) : std::string(2, '\0');
  message += static_cast<char>(address_of(line, twenty_lines));
  return message;
}

}  // namespace lineweir
