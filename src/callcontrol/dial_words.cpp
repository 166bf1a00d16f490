#include "callcontrol/dial_words.h"

#include "base/failure.h"
#include "base/text.h"
#include "forms/picture_names.h"

namespace lineweir {
namespace {

constexpr int first_reserved_letter = 128;
constexpr int late_zero = 10;

}  // namespace

CommandWord dial_word(int key, const DialSeat& seat) {
  if (key < 0 || key >= dial_key_count) {
    throw Failure(failure_number::out_of_range, "Subscript out of range");
  }
  const DialKey& row = dial_keys[static_cast<std::size_t>(key)];
  const int kind = seat.seat.equipment_kind;
  if (seat.screener && server_decides(kind)) {
    return {numbered_word('Z', row.server_digit), bank_none};
  }
  if (!seat.seat.talent) {
    return {numbered_word(seat.seat.handset_1 ? 'P' : 'O', row.handset_tone), bank_none};
  }
  const bool late = key == 0 && tone_of_zero_is_last(kind);
  return {numbered_word('T', late ? late_zero : row.hybrid_tone), seat.hybrid};
}

int dial_key_of(int character) {
  for (int key = 0; key < dial_key_count; ++key) {
    if (dial_keys[static_cast<std::size_t>(key)].character == character) return key;
  }
  return -1;
}

std::string_view dial_lamp(char line_letter, bool talent, int equipment_kind, int console_number) {
  if (talks_on(line_letter, talent)) return talent ? pictures::RedPic : pictures::GreenPic;
  const int reserved_to = code_of(line_letter) - first_reserved_letter;
  const bool reserved_here =
      reserved_to >= 0 && reserved_to == console_number && server_decides(equipment_kind);
  return reserved_here ? pictures::GreenPic : pictures::GreyPic;
}

}  // namespace lineweir
