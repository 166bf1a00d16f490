#pragma once

#include <array>
#include <string_view>

#include "callcontrol/line_commands.h"
#include "screen/pictures.h"

namespace lineweir {

inline constexpr int dial_key_count = 12;

// A key of the dial pad and the number that it has in each family of words.
struct DialKey {
  char character;
  // T words: a tone on a hybrid.
  int hybrid_tone;
  // P and O words: a tone on a handset.
  int handset_tone;
  // Z words: a digit for the server to dial.
  int server_digit;
};

// By the key's index: the digits, the star and the hash.
inline constexpr std::array<DialKey, dial_key_count> dial_keys = {{
    {'0', 0, 20, 0},
    {'1', 1, 21, 1},
    {'2', 2, 22, 2},
    {'3', 3, 23, 3},
    {'4', 4, 24, 4},
    {'5', 5, 25, 5},
    {'6', 6, 26, 6},
    {'7', 7, 27, 7},
    {'8', 8, 28, 8},
    {'9', 9, 29, 9},
    {'*', 11, 31, 10},
    {'#', 12, 32, 11},
}};

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

// Whether a line with this letter is one that the seat talks on.
constexpr bool talks_on(char line_letter, bool talent) {
  return talent ? line_letter == 'N' || line_letter == 'C'
                : line_letter == 'P' || line_letter == 'O';
}

// The lamp of a line that isn't dialled on yet. A letter of 128 and above is a line that equipment
// of kind 4 has reserved to the console of the number above 128.
std::string_view dial_lamp(char line_letter, bool talent, int equipment_kind, int console_number);

}  // namespace lineweir
