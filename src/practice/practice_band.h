#pragma once

#include <string>

#include "practice/practice_box.h"

namespace lineweir::practice {

// What the band says of the show: "Segment 1: 1:12 left. 4:32 to the end".
std::string show_text(const LevelRule& level, Moment played);

// What the caller on the line says, in quotes; empty unless he is at the handset.
std::string words_on(const PracticeBox& box, int line);

// What the callers at the handset say: "Line 3 says: ...". Empty where nobody is there.
std::string words_text(const PracticeBox& box);

}  // namespace lineweir::practice
