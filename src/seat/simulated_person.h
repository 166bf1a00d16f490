#pragma once

#include "exchange/dice.h"
#include "platform/event_loop.h"

namespace lineweir {
struct Console;
}

namespace lineweir::seat {

// Somebody who works at a console that is connected. Looks at it several times a second, and does
// no more than a person's hands can.
class SimulatedPerson {
 public:
  using Milliseconds = platform::Milliseconds;

  virtual ~SimulatedPerson() = default;
  // Once, when the console is connected for the first time.
  virtual void sit_down() = 0;
  virtual void look(Milliseconds now) = 0;
};

}  // namespace lineweir::seat
