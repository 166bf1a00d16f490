#pragma once

#include <string_view>

namespace lineweir {

// Where the clocks' hands point. Points are twips of the clock's picture, angles are degrees with 0
// at three o'clock and -90 at twelve, growing clockwise.

struct HandPoint {
  int x = 0;
  int y = 0;

  friend bool operator==(const HandPoint&, const HandPoint&) = default;
};

// The far end of a hand of that length. A degree is 3.14 / 180 radians, and the point is the next
// whole twip downward: the hands carry both small errors.
HandPoint hand_end(int length, double degrees, HandPoint near_end);

struct TimeAngles {
  double hour = 0;
  double minute = 0;
  double second = 0;
};

// The angles for "hh:mm:ss". They don't jump: minutes carry the seconds, hours the minutes.
TimeAngles time_angles(std::string_view clock_text);

// "hh:mm:ss" in seconds, any number of them; 0 for digits that don't stand there.
int seconds_left(std::string_view countdown);

// In the last minute of an event its hand makes one more turn, as a thinner line.
inline constexpr int last_minute = 60;
constexpr bool in_last_minute(int time_left) { return time_left <= last_minute; }

// The event hand's angle: one turn from twelve to twelve in the event's length, which isn't 0.
double event_angle(int event_length, int time_left);

// The event hand laid on twelve, as it is while the server tells of no event.
HandPoint resting_hand_end(int length, HandPoint near_end);

}  // namespace lineweir
