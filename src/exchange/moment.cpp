#include "exchange/moment.h"

#include <algorithm>

namespace lineweir::exchange {
namespace {

constexpr std::size_t longest_whole = 9;
constexpr std::size_t longest_fraction = 3;

bool is_digits(std::string_view text, std::size_t longest) {
  return !text.empty() && text.size() <= longest &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::optional<Moment> parse_seconds(std::string_view text) {
  const std::size_t point = text.find('.');
  const std::string_view whole = text.substr(0, point);
  if (!is_digits(whole, longest_whole)) return std::nullopt;

  std::string digits(whole);
  std::string_view fraction;
  if (point != std::string_view::npos) {
    fraction = text.substr(point + 1);
    if (!is_digits(fraction, longest_fraction)) return std::nullopt;
  }
  digits.append(fraction).append(longest_fraction - fraction.size(), '0');
  return Moment(std::stoll(digits));
}

std::string format_seconds(Moment moment) {
  std::string fraction = std::to_string(moment.count() % 1000);
  fraction.insert(0, longest_fraction - std::min(longest_fraction, fraction.size()), '0');
  return std::to_string(moment.count() / 1000) + '.' + fraction;
}

}  // namespace lineweir::exchange
