#include "wire/packet_text.h"

#include "base/integer16.h"

namespace lineweir {

std::string TextWrit_ZeroFill(std::string_view text, int width) {
  const auto wanted = static_cast<std::size_t>(width < 0 ? 0 : width);
  const std::size_t missing = wanted > text.size() ? wanted - text.size() : 0;
  return std::string(missing, '0').append(text);
}

std::string TextWrit_SizeEncode(int value) {
  const auto bits = static_cast<std::uint16_t>(integer16(value));
  return {static_cast<char>(bits >> 8), static_cast<char>(bits & 0xFF)};
}

std::string_view TextWrit_NullRemove(std::string_view text) {
  constexpr std::string_view null("\0", 1);
  const auto first = text.find_first_not_of(null);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(null) - first + 1);
}

}  // namespace lineweir
