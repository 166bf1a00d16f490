#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace lineweir::simulation {

// A number among a program's words; nothing for a word that is none.
inline std::optional<std::uint64_t> seed_argument(std::string_view word) {
  std::uint64_t value = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  if (error != std::errc() || end != word.data() + word.size()) return std::nullopt;
  return value;
}

}  // namespace lineweir::simulation
