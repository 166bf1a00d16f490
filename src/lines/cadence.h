#pragma once

#include <string>

namespace lineweir {

// Lamp cadence bytes of the switch console.

// The byte of a letter alone.
char cadence_byte(char letter);

// The two lamps of one line where each line has a pair of its own. Where the conference hybrid is
// the screener's handset C shows no air lamp.
std::string cadence_pair(char letter, bool handset_on_conference);

}  // namespace lineweir
