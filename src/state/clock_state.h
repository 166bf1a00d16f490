#pragma once

#include <string>

namespace lineweir {

// What the clocks keep between ticks.
struct ClockState {
  // Seconds added to the time of day for the time shown and for every show clock.
  int DelayOffset = 0;
  // Seconds left at which the event clock turns red, and at which it blinks.
  int Warning1 = 30;
  int Warning2 = 10;

  // The events as the server tells them: when the present one ends, what comes then, and when the
  // present one began.
  std::string ServerEventTime;
  std::string ServerEventText;
  std::string ServerLastEventTime;

  // Lengths of the hands in twips, taken from the hands as they are designed.
  int SecondRadius = 0;
  int MinuteRadius = 0;
  int HourRadius = 0;
};

}  // namespace lineweir
