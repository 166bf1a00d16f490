#pragma once

#include <string>

namespace lineweir {

// Lamp cadence bytes of the switch console.

// The byte of a letter alone.
char cadence_byte(char letter);

// The two lamps of one line where each line has a pair of its own. With equipment of kind 3 and
// handset position 1 the conference hybrid is the screener's handset, so that C shows no air lamp.
std::string cadence_pair(char letter, int phone_flag, bool handset_1);

}  // namespace lineweir
