#pragma once

#include <string>

#include "lines/status_letters.h"

namespace lineweir::test {

// Every letter that a line can have: those of the set, and two that stand for all outside it.
inline std::string all_letters() {
  std::string letters;
  for (const StatusLetter& row : status_letters) letters += row.look.letter;
  return letters + "Z\x83";
}

inline std::string letters_without(char left_out) {
  std::string letters = all_letters();
  std::erase(letters, left_out);
  return letters;
}

// F is told and never stored; the blank is stored and never told.
inline std::string stored_letters() { return letters_without('F'); }
inline std::string reported_letters() { return letters_without(idle_letter); }

}  // namespace lineweir::test
