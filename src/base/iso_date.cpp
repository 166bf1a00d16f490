#include "base/iso_date.h"

#include <chrono>

#include "base/text.h"

namespace lineweir {
namespace {

constexpr std::string_view date_shape = "0000-00-00";
constexpr std::string_view minute_shape = "0000-00-00 00:00";

// Whether the text has a digit where the shape has one, and the shape's characters elsewhere.
bool has_shape(std::string_view text, std::string_view shape) {
  if (text.size() != shape.size()) return false;
  for (std::size_t i = 0; i < shape.size(); ++i) {
    if (is_digit(shape[i]) ? !is_digit(text[i]) : text[i] != shape[i]) return false;
  }
  return true;
}

int number_at(std::string_view text, std::size_t place, std::size_t length) {
  return leading_number(text.substr(place, length));
}

}  // namespace

std::optional<platform::DateTime> iso_date_of(std::string_view text) {
  if (!has_shape(text, date_shape)) return std::nullopt;
  const platform::DateTime date{number_at(text, 0, 4), number_at(text, 5, 2),
                                number_at(text, 8, 2)};
  const std::chrono::year_month_day day(std::chrono::year(date.year),
                                        std::chrono::month(static_cast<unsigned>(date.month)),
                                        std::chrono::day(static_cast<unsigned>(date.day)));
  return day.ok() ? std::optional(date) : std::nullopt;
}

std::optional<platform::DateTime> iso_minute_of(std::string_view text) {
  if (!has_shape(text, minute_shape)) return std::nullopt;
  auto moment = iso_date_of(text.substr(0, date_shape.size()));
  if (!moment) return std::nullopt;
  moment->hour = number_at(text, 11, 2);
  moment->minute = number_at(text, 14, 2);
  return moment->hour < 24 && moment->minute < 60 ? moment : std::nullopt;
}

std::string iso_date_text(const platform::DateTime& moment) {
  return zero_filled(moment.year, 4) + "-" + zero_filled(moment.month, 2) + "-" +
         zero_filled(moment.day, 2);
}

std::string iso_minute_text(const platform::DateTime& moment) {
  return iso_date_text(moment) + " " + zero_filled(moment.hour, 2) + ":" +
         zero_filled(moment.minute, 2);
}

}  // namespace lineweir
