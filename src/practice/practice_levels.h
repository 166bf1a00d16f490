#pragma once

#include <array>
#include <string_view>

#include "exchange/moment.h"

namespace lineweir::practice {

using exchange::Moment;

// How the people who call behave.
enum class Nature {
  Patient,      // waits long, says his piece and goodbye
  Hasty,        // hangs up while he waits
  Talker,       // doesn't come to an end by himself
  Returner,     // hangs up soon and calls again, and so when he was let go unheard
  WrongNumber,  // notices it as soon as somebody talks with him
};
inline constexpr int nature_count = 5;

// A time is drawn between these two.
struct Between {
  Moment least;
  Moment most;
};

constexpr Between between(int least, int most) {
  return {std::chrono::seconds(least), std::chrono::seconds(most)};
}

struct NatureRule {
  Nature nature;
  // How long he lets it ring, waits each time that nobody talks with him, and talks on air.
  Between rings;
  Between waits;
  Between talks;
  // How long he stays at a handset; nothing for one who stays as long as he is asked to.
  Between stays_at_handset;
  // Before he calls again: when every line was taken, or, if he `returns`, when he wasn't heard.
  Between pause;
  int more_calls;
  bool returns;
};

inline constexpr std::array<NatureRule, nature_count> nature_rules = {{
    {Nature::Patient, between(45, 90), between(120, 300), between(25, 50), between(0, 0),
     between(15, 30), 1, false},
    {Nature::Hasty, between(12, 25), between(25, 50), between(20, 40), between(0, 0),
     between(15, 30), 0, false},
    {Nature::Talker, between(30, 60), between(90, 180), between(150, 240), between(0, 0),
     between(15, 30), 1, false},
    {Nature::Returner, between(12, 20), between(40, 80), between(25, 45), between(0, 0),
     between(8, 20), 3, true},
    {Nature::WrongNumber, between(20, 40), between(5, 12), between(3, 6), between(5, 9),
     between(10, 20), 0, false},
}};

constexpr const NatureRule& rule_of(Nature nature) {
  return nature_rules[static_cast<std::size_t>(nature)];
}

struct ShowPart {
  std::string_view name;
  int seconds;
  bool is_break;
};
inline constexpr int part_count = 5;

struct LevelRule {
  std::string_view name;
  // Shown at the choice; the "&" is in front of its key.
  std::string_view caption;
  // The mean time between two new callers.
  Moment call_every;
  // How many of a hundred callers are of each nature.
  std::array<int, nature_count> of_hundred;
  std::array<ShowPart, part_count> parts;
};

constexpr std::array<ShowPart, part_count> parts_of(int first, int second, int third, int break_) {
  return {{{"Segment 1", first, false},
           {"Break 1", break_, true},
           {"Segment 2", second, false},
           {"Break 2", break_, true},
           {"Segment 3", third, false}}};
}

inline constexpr int level_count = 3;
inline constexpr std::array<LevelRule, level_count> levels = {{
    {"Easy",
     "&Easy: 5 minutes, callers with time",
     std::chrono::seconds(25),
     {55, 15, 10, 10, 10},
     parts_of(90, 90, 80, 20)},
    {"Normal",
     "&Normal: 8 minutes, all sorts of callers",
     std::chrono::seconds(18),
     {40, 22, 14, 12, 12},
     parts_of(150, 140, 150, 20)},
    {"Hard",
     "&Hard: 10 minutes, a rush of callers with little patience",
     std::chrono::seconds(11),
     {22, 32, 18, 14, 14},
     parts_of(180, 180, 180, 30)},
}};

constexpr int show_seconds(const LevelRule& level) {
  int seconds = 0;
  for (const ShowPart& part : level.parts) seconds += part.seconds;
  return seconds;
}

constexpr bool levels_are_whole() {
  for (const LevelRule& level : levels) {
    int sum = 0;
    for (const int share : level.of_hundred) sum += share;
    if (sum != 100) return false;
  }
  for (int i = 0; i < nature_count; ++i) {
    if (nature_rules[static_cast<std::size_t>(i)].nature != Nature{i}) return false;
  }
  return show_seconds(levels[0]) == 300 && show_seconds(levels[1]) == 480 &&
         show_seconds(levels[2]) == 600;
}
static_assert(levels_are_whole());

}  // namespace lineweir::practice
