#include "admin/when.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <ctime>

namespace lineweir::admin {
namespace {

using std::chrono::seconds;

struct Unit {
  char letter;
  seconds length;
};
constexpr std::array units = {Unit{'s', seconds(1)}, Unit{'m', std::chrono::minutes(1)},
                              Unit{'h', std::chrono::hours(1)}, Unit{'d', std::chrono::days(1)},
                              Unit{'w', std::chrono::weeks(1)}};

// Takes a number of exactly so many digits from the beginning of the text.
std::optional<int> take_digits(std::string_view& text, std::size_t count) {
  int number = 0;
  if (text.size() < count) return std::nullopt;
  const auto* end = text.data() + count;
  const auto result = std::from_chars(text.data(), end, number);
  if (result.ec != std::errc() || result.ptr != end || text.front() == '-') return std::nullopt;
  text.remove_prefix(count);
  return number;
}

bool take(std::string_view& text, char character) {
  if (text.empty() || text.front() != character) return false;
  text.remove_prefix(1);
  return true;
}

std::optional<Moment> time_ago(std::string_view text, Moment now) {
  std::int64_t number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  constexpr std::int64_t most = 100'000'000;
  const auto rest = text.substr(static_cast<std::size_t>(result.ptr - text.data()));
  if (result.ec != std::errc() || number < 0 || number > most || rest.size() != 1) {
    return std::nullopt;
  }
  for (const Unit& unit : units) {
    if (unit.letter == rest.front()) return std::max(now - unit.length * number, Moment{0});
  }
  return std::nullopt;
}

std::optional<std::tm> take_date(std::string_view& text) {
  const auto year = take_digits(text, 4);
  if (!year || !take(text, '-')) return std::nullopt;
  const auto month = take_digits(text, 2);
  if (!month || !take(text, '-')) return std::nullopt;
  const auto day = take_digits(text, 2);
  if (!day) return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year(*year),
                                         std::chrono::month(static_cast<unsigned>(*month)),
                                         std::chrono::day(static_cast<unsigned>(*day))};
  if (!date.ok()) return std::nullopt;
  std::tm parts{};
  parts.tm_year = *year - 1900;
  parts.tm_mon = *month - 1;
  parts.tm_mday = *day;
  parts.tm_isdst = -1;
  return parts;
}

bool take_time(std::string_view& text, std::tm& parts) {
  const auto hour = take_digits(text, 2);
  if (!hour || !take(text, ':')) return false;
  const auto minute = take_digits(text, 2);
  if (!minute) return false;
  const auto second = take(text, ':') ? take_digits(text, 2) : 0;
  if (!second || *hour > 23 || *minute > 59 || *second > 59) return false;
  parts.tm_hour = *hour;
  parts.tm_min = *minute;
  parts.tm_sec = *second;
  return true;
}

std::string written(const char* format, const std::tm& parts) {
  std::array<char, 64> text{};
  return {text.data(), std::strftime(text.data(), text.size(), format, &parts)};
}

std::time_t seconds_of(Moment moment) {
  return static_cast<std::time_t>(std::chrono::floor<seconds>(moment).count());
}

}  // namespace

std::optional<Moment> parse_when(std::string_view text, Moment now) {
  if (const auto ago = time_ago(text, now)) return ago;
  auto parts = take_date(text);
  if (!parts) return std::nullopt;
  bool by_utc = false;
  if (!text.empty()) {
    if (!take(text, ' ') && !take(text, 'T')) return std::nullopt;
    if (!take_time(text, *parts)) return std::nullopt;
    by_utc = take(text, 'Z');
  }
  if (!text.empty()) return std::nullopt;
  const std::time_t time = by_utc ? ::timegm(&*parts) : std::mktime(&*parts);
  return std::max<Moment>(seconds(time), Moment{0});
}

std::string local_time(Moment moment) {
  if (moment == Moment{0}) return {};
  const std::time_t time = seconds_of(moment);
  std::tm parts{};
  ::localtime_r(&time, &parts);
  return written("%Y-%m-%d %H:%M:%S", parts);
}

std::string utc_time(Moment moment) {
  const std::time_t time = seconds_of(moment);
  std::tm parts{};
  ::gmtime_r(&time, &parts);
  const auto rest = moment - std::chrono::floor<seconds>(moment);
  std::array<char, 8> thousandths{};
  std::snprintf(thousandths.data(), thousandths.size(), ".%03d", static_cast<int>(rest.count()));
  return written("%Y-%m-%dT%H:%M:%S", parts) + thousandths.data() + "Z";
}

}  // namespace lineweir::admin
