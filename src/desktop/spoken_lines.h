#pragma once

#include <QString>
#include <vector>

#include "wire/caller_known.h"

namespace lineweir {

struct Console;

// What a line does, in words that need no colours: "ringing", "on air, main hybrid".
QString spoken_state(const Console& console, int line);

// How long the caller has been waiting in all: "Waiting for 4 minutes 12 seconds"; empty for a line
// that nobody waits on.
QString spoken_wait(const Console& console, int line);

// The flag of the caller on a line; none where nobody is on it, whatever a server says.
CallerFlag shown_flag(const Console& console, int line);

// What the studio's server remembers of the caller on a line: what the flag says, how often he was
// on air, name and city, in a line each; empty where that is nothing.
QString spoken_memory(const Console& console, int line);

// What a change of lines sounds like, each as "Line 3, Dev Patel, is ready, next caller". Of many
// at once only the number is told, as nobody would hear the end of it. The lines count from 0.
QString spoken_changes(const Console& console, const std::vector<int>& lines);

// "Line 4 is ringing", "Lines 4, 5 and 12 are ringing"; the lines count from 0.
QString spoken_ringing(const std::vector<int>& lines);

}  // namespace lineweir
