#include "platform/scripted/scripted_wall_clock.h"

namespace lineweir::platform {

DateTime ScriptedWallClock::local(Moment moment) const {
  using namespace std::chrono;
  const sys_time<milliseconds> time(moment);
  const auto day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss of_day(floor<seconds>(time - day));
  return {int{date.year()},
          static_cast<int>(unsigned{date.month()}),
          static_cast<int>(unsigned{date.day()}),
          static_cast<int>(of_day.hours().count()),
          static_cast<int>(of_day.minutes().count()),
          static_cast<int>(of_day.seconds().count())};
}

}  // namespace lineweir::platform
