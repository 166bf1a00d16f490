#include "platform/scripted/scripted_system_clock.h"

#include <chrono>
#include <utility>

#include "base/failure.h"

namespace lineweir::platform {
namespace {

constexpr DateTime first_moment{2026, 1, 5, 10, 0, 0};
constexpr int earliest_year = 100;
constexpr int latest_year = 9999;

bool in_calendar(const DateTime& moment) {
  const std::chrono::year_month_day date(std::chrono::year(moment.year),
                                         std::chrono::month(static_cast<unsigned>(moment.month)),
                                         std::chrono::day(static_cast<unsigned>(moment.day)));
  return moment.year >= earliest_year && moment.year <= latest_year && date.ok() &&
         moment.hour >= 0 && moment.hour < 24 && moment.minute >= 0 && moment.minute < 60 &&
         moment.second >= 0 && moment.second < 60;
}

std::int64_t seconds_from_1970(const DateTime& moment) {
  const std::chrono::sys_days date = std::chrono::year(moment.year) /
                                     std::chrono::month(static_cast<unsigned>(moment.month)) /
                                     std::chrono::day(static_cast<unsigned>(moment.day));
  return std::chrono::seconds(date.time_since_epoch()).count() + moment.hour * 3600L +
         moment.minute * 60L + moment.second;
}

}  // namespace

ScriptedSystemClock::ScriptedSystemClock(const EventLoop& loop) : loop_(loop) { put(first_moment); }

DateTime ScriptedSystemClock::now() const {
  const auto passed = std::chrono::floor<std::chrono::seconds>(loop_.now() - base_time_);
  const std::chrono::sys_seconds moment(std::chrono::seconds(base_seconds_) + passed);
  const auto day = std::chrono::floor<std::chrono::days>(moment);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss time(moment - day);
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          static_cast<int>(time.hours().count()),
          static_cast<int>(time.minutes().count()),
          static_cast<int>(time.seconds().count())};
}

void ScriptedSystemClock::set(const DateTime& moment) {
  put(moment);
  settings_.push_back(moment);
}

void ScriptedSystemClock::put(const DateTime& moment) {
  if (!in_calendar(moment)) {
    throw Failure(failure_number::invalid_argument, "The calendar doesn't have this moment");
  }
  base_seconds_ = seconds_from_1970(moment);
  base_time_ = loop_.now();
}

std::vector<DateTime> ScriptedSystemClock::take_settings() { return std::exchange(settings_, {}); }

}  // namespace lineweir::platform
