#include "server/admin_names.h"

#include <algorithm>

#include "base/text.h"
#include "letters/utf8.h"

namespace lineweir::server {
namespace {

constexpr int longest_quoted = 100;

// A key of up to 119 is added to each byte of a name or a password on its way from a console, and
// the sum must not pass 255.
constexpr int highest_code = 255 - 119;

bool is_control(char32_t point) { return point < 0x20 || (point >= 0x7F && point < 0xA0); }

bool has_control(std::string_view utf8) {
  while (!utf8.empty()) {
    const auto point = leading_point(utf8);
    if (!point || is_control(point->point)) return true;
    utf8.remove_prefix(point->size);
  }
  return false;
}

// The first character that a console couldn't send at every second; empty where there is none.
std::string unsendable_character(std::string_view bytes, const Letters& letters) {
  const auto high =
      std::ranges::find_if(bytes, [](char byte) { return code_of(byte) > highest_code; });
  return high == bytes.end() ? std::string() : letters.to_utf8(std::string(1, *high));
}

std::string why_not_typed(std::string_view text, const std::string& what, std::size_t longest,
                          const Letters& letters) {
  const std::string bytes = letters.from_utf8(text);
  if (text.empty()) return what + " is empty.";
  if (has_control(text)) return what + " holds a control character.";
  if (letters.to_utf8(bytes) != text) {
    return what + " holds a character that the consoles don't have.";
  }
  if (bytes.size() > longest) {
    return what + " is too long: at most " + std::to_string(longest) + " characters.";
  }
  if (trimmed(bytes) != bytes)
    return what + " begins or ends with a blank, which consoles cut off.";
  const std::string unsendable = unsendable_character(bytes, letters);
  if (unsendable.empty()) return {};
  return what + " holds \"" + unsendable +
         "\", which a console can't send: take letters without accents, digits and common signs.";
}

}  // namespace

std::string in_quotes(std::string_view text) {
  const std::string_view shown = cut_to_size(text, longest_quoted);
  return "\"" + std::string(shown) + (shown.size() < text.size() ? "…\"" : "\"");
}

std::string why_no_user_name(std::string_view name, const Letters& letters) {
  return why_not_typed(name, "The name", longest_user_name, letters);
}

std::string why_no_password(std::string_view password, const Letters& letters) {
  return why_not_typed(password, "The password", longest_password, letters);
}

std::string why_not_shown(std::string_view text, const std::string& what, std::size_t longest) {
  if (has_control(text)) return what + " holds a control character.";
  if (cut_to_size(text, static_cast<int>(longest)).size() < text.size()) {
    return what + " is too long: at most " + std::to_string(longest) + " characters.";
  }
  return {};
}

}  // namespace lineweir::server
