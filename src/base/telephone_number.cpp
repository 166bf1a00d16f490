#include "base/telephone_number.h"

#include <iterator>

#include "base/text.h"

namespace lineweir {
namespace {

constexpr std::size_t digits_without_country_code = 10;
// What is dialled in front of a country code.
constexpr std::string_view international_prefix = "00";

// One digit again and again is what is typed where the number isn't known.
bool is_stopgap(std::string_view digits) {
  return digits.find_first_not_of(digits.front()) == std::string_view::npos;
}

}  // namespace

std::string telephone_key(std::string_view number) {
  std::string digits = digits_of(number);
  if (std::ssize(digits) < least_digits_of_number) return {};
  if (digits.starts_with(international_prefix) && digits.size() > digits_without_country_code) {
    digits.erase(0, international_prefix.size());
  }
  if (digits.size() == digits_without_country_code + 1 && digits.front() == '1') digits.erase(0, 1);
  return is_stopgap(digits) ? std::string() : digits;
}

}  // namespace lineweir
