#pragma once

#include "lines/status_letters.h"

namespace lineweir {

// How the icons of a row draw the eye to a caller who waits.
enum class Blinking { No, Ringing, Waiting };

constexpr Blinking blinking_of(char letter) {
  switch (letter) {
    case ringing_letter:
      return Blinking::Ringing;
    case ready_letter:
    case held_letter:
      return Blinking::Waiting;
    default:
      return Blinking::No;
  }
}

}  // namespace lineweir
