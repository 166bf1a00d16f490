#include "base/text.h"

#include <algorithm>
#include <charconv>

namespace lineweir {
std::string_view trimmed_left(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return text;
}

std::string_view trimmed_right(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view trimmed(std::string_view text) { return trimmed_left(trimmed_right(text)); }

std::string_view left_part(std::string_view text, std::size_t length) {
  return text.substr(0, length);
}

std::string_view right_part(std::string_view text, std::size_t length) {
  return text.size() <= length ? text : text.substr(text.size() - length);
}

std::string zero_filled(int value, std::size_t width) {
  std::string digits = std::to_string(value);
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  return digits;
}

int leading_number(std::string_view text) {
  text = trimmed_left(text);
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return 0;
  }
  int value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

std::string digits_of(std::string_view text) {
  std::string digits(text);
  std::erase_if(digits, [](char c) { return !is_digit(c); });
  return digits;
}

}  // namespace lineweir
