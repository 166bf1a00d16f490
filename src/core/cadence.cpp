#include "core/cadence.h"

#include <array>

namespace lineweir {
namespace {

struct CadenceRow {
  char letter;
  int byte;
  // The pair of a line that has both lamps to itself.
  int main_lamp;
  int conference_lamp;
};

constexpr std::array cadence_table = {
    CadenceRow{'P', 0x08, 8, 8},   CadenceRow{'O', 0x08, 8, 8},   CadenceRow{'E', 0x08, 8, 8},
    CadenceRow{'N', 0x0C, 12, 8},  CadenceRow{'C', 0x08, 8, 12},  CadenceRow{'H', 0x18, 24, 24},
    CadenceRow{'S', 0x58, 88, 88}, CadenceRow{'R', 0x10, 16, 16},
};

constexpr CadenceRow dark{' ', 0, 0, 0};

constexpr const CadenceRow& row_of(char letter) {
  for (const auto& row : cadence_table) {
    if (row.letter == letter) return row;
  }
  return dark;
}

}  // namespace

char cadence_byte(char letter) { return static_cast<char>(row_of(letter).byte); }

std::string cadence_pair(char letter, int phone_flag, bool handset_1) {
  const CadenceRow& row = row_of(letter);
  const bool conference_is_handset = letter == 'C' && phone_flag == 3 && handset_1;
  return {static_cast<char>(row.main_lamp),
          static_cast<char>(conference_is_handset ? row.main_lamp : row.conference_lamp)};
}

}  // namespace lineweir
