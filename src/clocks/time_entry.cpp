#include "clocks/time_entry.h"

namespace lineweir {
namespace {

bool holds(std::string_view characters, char c) {
  return characters.find(c) != std::string_view::npos;
}

std::size_t taken_off(std::size_t length) { return length == 3 || length == 6 ? 2 : 1; }

}  // namespace

std::optional<std::string> typed_time(std::span<const TimeEntryRule> rules, std::string_view text,
                                      int key) {
  if (key == backspace_key) {
    if (text.empty()) return std::nullopt;
    return std::string(text.substr(0, text.size() - taken_off(text.size())));
  }
  if (key < 0 || key > 255) return std::nullopt;
  const char c = static_cast<char>(key);
  for (const TimeEntryRule& rule : rules) {
    if (rule.length != text.size() || !holds(rule.keys, c)) continue;
    if (!rule.first_characters.empty() && !holds(rule.first_characters, text.front())) continue;
    if (!rule.whole.empty()) return std::string(rule.whole);
    return std::string(text) + c + std::string(rule.behind);
  }
  return std::nullopt;
}

}  // namespace lineweir
