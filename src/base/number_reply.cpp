#include "base/number_reply.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <utility>

#include "base/integer16.h"
#include "base/text.h"

namespace lineweir {
namespace {

constexpr double beyond_16_bits = INT16_MAX + 1.0;

// The number in front and the characters that it has; none where there is no number.
std::pair<double, std::size_t> number_in_front(std::string_view text) {
  const bool plus = text.starts_with('+') && !text.starts_with("+-");
  const std::string_view digits = text.substr(plus ? 1 : 0);
  const std::string_view unsigned_digits = digits.substr(digits.starts_with('-') ? 1 : 0);
  // Words for what is no finite number are none.
  if (unsigned_digits.empty() ||
      std::string_view("0123456789.").find(unsigned_digits.front()) == std::string_view::npos) {
    return {0, 0};
  }
  double number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error == std::errc::invalid_argument) return {0, 0};
  // A number beyond all bounds stands for one that fits nowhere.
  if (error == std::errc::result_out_of_range) number = digits.front() == '-' ? -1e300 : 1e300;
  return {number, static_cast<std::size_t>(end - text.data())};
}

}  // namespace

std::optional<double> number_reply(const std::optional<std::string>& reply) {
  if (!reply) return std::nullopt;
  const std::string_view text = trimmed(*reply);
  const auto [number, length] = number_in_front(text);
  if (length == 0 || length != text.size()) return std::nullopt;
  return number;
}

double whole_number_in(std::string_view text) {
  return std::trunc(number_in_front(trimmed_left(text)).first);
}

int whole_16_bits(double number) {
  return integer16(std::llrint(std::clamp(number, -beyond_16_bits - 1, beyond_16_bits)));
}

}  // namespace lineweir
