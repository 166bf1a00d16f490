#pragma once

#include <string_view>

#include "callcontrol/line_commands.h"
#include "forms/dial_keys.h"
#include "lines/status_letters.h"

namespace lineweir {

// Where the tones of a seat go.
struct DialSeat {
  Seat seat;
  // The screener's mode is chosen; with equipment of kind 4 the server dials for it.
  bool screener;
  // bank_main or bank_conference: the hybrid chosen.
  int hybrid;
};

// The word of a key by its index; one outside dial_keys is a Failure of number 9.
CommandWord dial_word(int key, const DialSeat& seat);

// The index of the key with this character; -1 if there is none.
int dial_key_of(int character);

// The lamp of a line that isn't dialled on yet. A letter of 128 and above is a line that equipment
// of kind 4 has reserved to the console of the number above 128.
std::string_view dial_lamp(char line_letter, bool talent, int equipment_kind, int console_number);

}  // namespace lineweir
