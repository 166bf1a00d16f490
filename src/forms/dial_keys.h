#pragma once

#include <array>

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

}  // namespace lineweir
