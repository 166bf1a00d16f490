#pragma once

#include <bitset>
#include <string>
#include <string_view>

#include "clocks/show_plan.h"

namespace lineweir {

// Where the show stands: what the event clock shows at one moment. Nothing here allocates memory
// while countdowns are times.
//
// All times are whole seconds. The offset is added to the time of day (in an hourly show to its
// minutes and seconds) and the sum isn't wrapped: in the last seconds of the day, or of the hour,
// the show clock runs on beyond it.

// The texts on the event clock. The views hold as long as what they were taken from: the plan, the
// server's texts, the elements.
struct ShownEvent {
  std::string countdown;
  std::string_view status;

  friend bool operator==(const ShownEvent&, const ShownEvent&) = default;
};

// How the rest of the tick goes on.
enum class TickGoesOn {
  // Everything follows.
  Whole,
  // The event hand is passed over.
  WithoutHand,
  // The event hand is laid on twelve, and not otherwise moved.
  HandAtTwelve,
  // Nothing more happens in this tick.
  Ends,
  // The tick has failed, with the number in `failure`.
  Fails,
};

struct ShowTiming {
  // What is to be shown; what was shown before, where nothing else is told.
  ShownEvent shown;
  // Seconds of the event now running, 0 while none is. Negative where its end lies before its
  // beginning, which turns the hand the other way.
  int event_length = 0;
  // The entry to whose time the clock counts down, 0 for none.
  int this_event = 0;
  TickGoesOn tick = TickGoesOn::Whole;
  int failure = 0;

  // Numbers of the entries whose trimmed text is stored back, and what Show End is set to where it
  // was blank.
  std::bitset<show_entry_count + 1> trimmed_times;
  std::bitset<show_entry_count + 1> trimmed_texts;
  std::string_view show_end;
};

enum class ShowMode { None, Timed, Hourly };

// What Show Start makes of a plan.
ShowMode show_mode(const ShowPlan& plan);

// The timing by the plan. `time_of_day` and `offset` are seconds.
ShowTiming local_show_timing(const ShowPlan& plan, int time_of_day, int offset,
                             const ShownEvent& before);

struct ServerEvent {
  std::string_view last_time;
  std::string_view time;
  std::string_view text;
};

// The timing by what the server tells. It never fails: with times that can't be read the tick goes
// on without the hand.
ShowTiming server_show_timing(const ServerEvent& event, int time_of_day, int offset,
                              const ShownEvent& before);

// The failure of a timing that has failed.
Failure timing_failure(const ShowTiming& timing);

// Brings the plan to what the timing stores back. Views into the texts concerned end here.
void store_back(const ShowTiming& timing, ShowPlan& plan);

}  // namespace lineweir
