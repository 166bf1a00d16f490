#include "lines/cadence.h"

#include "lines/status_letters.h"

namespace lineweir {
namespace {

constexpr LampCadence cadence_of(char letter) {
  const StatusLetter* row = status_letter(letter);
  return row == nullptr ? LampCadence{} : row->cadence;
}

}  // namespace

char cadence_byte(char letter) { return static_cast<char>(cadence_of(letter).shared); }

std::string cadence_pair(char letter, bool handset_on_conference) {
  const LampCadence cadence = cadence_of(letter);
  const bool is_handset = letter == 'C' && handset_on_conference;
  return {static_cast<char>(cadence.main_lamp),
          static_cast<char>(is_handset ? cadence.main_lamp : cadence.conference_lamp)};
}

}  // namespace lineweir
