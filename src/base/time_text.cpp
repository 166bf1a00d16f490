#include "base/time_text.h"

#include <array>
#include <chrono>
#include <cstdlib>

#include "base/failure.h"
#include "base/text.h"

namespace lineweir {
namespace {

// Takes a number off the front. Nothing where none stands there or it is above every clock value.
std::optional<int> take_number(std::string_view& text) {
  if (text.empty() || !is_digit(text.front())) return std::nullopt;
  int value = 0;
  while (!text.empty() && is_digit(text.front())) {
    value = value * 10 + (text.front() - '0');
    if (value > 9999) return std::nullopt;
    text.remove_prefix(1);
  }
  return value;
}

// Takes "m/d/yyyy " off the front where it stands there.
void take_date(std::string_view& text) {
  std::string_view rest = text;
  for (const char separator : {'/', '/', ' '}) {
    if (!take_number(rest) || rest.empty() || rest.front() != separator) return;
    rest.remove_prefix(1);
  }
  text = trimmed_left(rest);
}

// A year of two digits is one of the years 1930 to 2029.
int full_year(int year) {
  if (year > 99) return year;
  return year + (year < 30 ? 2000 : 1900);
}

std::chrono::year_month_day calendar_day(const platform::DateTime& date) {
  return {std::chrono::year(date.year), std::chrono::month(static_cast<unsigned>(date.month)),
          std::chrono::day(static_cast<unsigned>(date.day))};
}

enum class HalfDay { None, Am, Pm };

std::optional<HalfDay> half_day_of(std::string_view text) {
  if (text.empty()) return HalfDay::None;
  if (text == "AM" || text == "am") return HalfDay::Am;
  if (text == "PM" || text == "pm") return HalfDay::Pm;
  return std::nullopt;
}

std::string two_digits(int value) { return zero_filled(value, 2); }

std::string minutes_and_seconds(int seconds) {
  return ":" + two_digits(seconds / 60 % 60) + ":" + two_digits(seconds % 60);
}

int wrapped(int seconds) { return std::abs(seconds) % seconds_per_day; }

int twelve_hour(int hour) { return hour % 12 == 0 ? 12 : hour % 12; }

std::string_view half_day_text(int hour) { return hour < 12 ? " AM" : " PM"; }

}  // namespace

int seconds_of_day(const platform::DateTime& moment) {
  return (moment.hour * 60 + moment.minute) * 60 + moment.second;
}

std::optional<int> time_of_day(std::string_view text) {
  text = trimmed(text);
  take_date(text);

  std::array<int, 3> parts{};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) {
      if (text.empty() || text.front() != ':') return std::nullopt;
      text.remove_prefix(1);
    }
    const auto number = take_number(text);
    if (!number) return std::nullopt;
    parts[i] = *number;
  }
  auto [hour, minute, second] = parts;

  const auto half_day = half_day_of(trimmed(text));
  if (!half_day || minute > 59 || second > 59) return std::nullopt;
  if (*half_day == HalfDay::None) {
    if (hour > 23) return std::nullopt;
  } else {
    if (hour > 12) return std::nullopt;
    hour = hour % 12 + (*half_day == HalfDay::Pm ? 12 : 0);
  }
  return (hour * 60 + minute) * 60 + second;
}

std::optional<platform::DateTime> date_of(std::string_view text) {
  std::array<int, 3> parts{};
  text = trimmed(text);
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const auto number = take_number(text);
    if (!number) return std::nullopt;
    parts[i] = *number;
    if (i == parts.size() - 1) break;
    if (text.empty() || text.front() != '/') return std::nullopt;
    text.remove_prefix(1);
  }
  if (!text.empty() && text.front() != ' ') return std::nullopt;
  const auto [month, day, year] = parts;
  const platform::DateTime date{full_year(year), month, day};
  return calendar_day(date).ok() ? std::optional(date) : std::nullopt;
}

platform::DateTime at_time_of_day(platform::DateTime date, int seconds) {
  date.hour = seconds / 3600;
  date.minute = seconds / 60 % 60;
  date.second = seconds % 60;
  return date;
}

long long seconds_between(const platform::DateTime& from, const platform::DateTime& to) {
  const auto days =
      std::chrono::sys_days(calendar_day(to)) - std::chrono::sys_days(calendar_day(from));
  return static_cast<long long>(days.count()) * seconds_per_day + seconds_of_day(to) -
         seconds_of_day(from);
}

std::string hms_text(int seconds) {
  const int shown = wrapped(seconds);
  return two_digits(shown / 3600) + minutes_and_seconds(shown);
}

std::string short_hms_text(int seconds) {
  const int shown = wrapped(seconds);
  return std::to_string(shown / 3600) + minutes_and_seconds(shown);
}

std::string clock_text(int seconds) {
  const int shown = wrapped(seconds);
  const int hour = shown / 3600;
  return two_digits(twelve_hour(hour)) + minutes_and_seconds(shown).append(half_day_text(hour));
}

std::string date_text(const platform::DateTime& moment) {
  return std::to_string(moment.month) + "/" + std::to_string(moment.day) + "/" +
         std::to_string(moment.year);
}

std::string minute_text(const platform::DateTime& moment) {
  return date_text(moment) + " " + std::to_string(twelve_hour(moment.hour)) + ":" +
         two_digits(moment.minute).append(half_day_text(moment.hour));
}

std::string date_time_text(const platform::DateTime& moment) {
  return date_text(moment) + " " + std::to_string(twelve_hour(moment.hour)) +
         minutes_and_seconds(seconds_of_day(moment)).append(half_day_text(moment.hour));
}

std::string time_since(std::string_view since, const platform::DateTime& now) {
  return hms_text(seconds_of_day(now) - required_time_of_day(since));
}

int required_time_of_day(std::string_view text) {
  const auto time = time_of_day(text);
  if (!time) throw Failure(failure_number::type_mismatch, "Type mismatch");
  return *time;
}

}  // namespace lineweir
