#pragma once

#include <string>

#include "exchange/moment.h"

namespace lineweir::exchange {

// Something that happens in the studio without the console: told by a script, by the callers or by
// the studio's own people.
struct StudioEvent {
  enum class Kind {
    Call,    // a call comes in on the line
    HangUp,  // the caller on the line goes
    Busy,    // the line is taken out of service
    Idle,    // and put back
    Set,     // the line is forced to the letter
    Word,    // somebody at another seat sends the command word
    Quit,    // the studio closes
  };

  Kind kind;
  int line = 0;
  char letter = ' ';
  std::string word = {};

  bool operator==(const StudioEvent&) const = default;
};

struct TimedEvent {
  Moment at;
  StudioEvent event;

  bool operator==(const TimedEvent&) const = default;
};

}  // namespace lineweir::exchange
