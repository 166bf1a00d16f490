#include "core/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>

namespace lineweir {
namespace {

// The code points of the bytes 128 to 159; the others are their own.
constexpr std::array<char16_t, 32> high_controls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void append_utf8(std::string& out, char16_t point) {
  if (point < 0x80) {
    out += static_cast<char>(point);
  } else if (point < 0x800) {
    out += static_cast<char>(0xC0 | (point >> 6));
    out += static_cast<char>(0x80 | (point & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (point >> 12));
    out += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (point & 0x3F));
  }
}

char byte_of_point(std::uint32_t point) {
  if (point < 0x80 || (point >= 0xA0 && point < 0x100)) return static_cast<char>(point);
  const auto found = std::ranges::find(high_controls, point);
  if (found == high_controls.end()) return '?';
  return static_cast<char>(0x80 + (found - high_controls.begin()));
}

struct Sequence {
  std::uint32_t point;
  std::size_t length;
};

// The code point that the text begins with; nothing where it begins with no whole sequence or with
// one that isn't the shortest of its point.
std::optional<Sequence> leading_point(std::string_view utf8) {
  struct Form {
    int first;
    int mask;
    std::uint32_t lowest;
  };
  constexpr std::array<Form, 4> forms = {
      {{0x00, 0x80, 0}, {0xC0, 0xE0, 0x80}, {0xE0, 0xF0, 0x800}, {0xF0, 0xF8, 0x10000}}};

  const int first = code_of(utf8.front());
  const auto form =
      std::ranges::find_if(forms, [&](const Form& f) { return (first & f.mask) == f.first; });
  if (form == forms.end()) return std::nullopt;
  const auto length = static_cast<std::size_t>(form - forms.begin()) + 1;
  if (length > utf8.size()) return std::nullopt;

  auto point = static_cast<std::uint32_t>(first & ~form->mask);
  for (const char following : utf8.substr(1, length - 1)) {
    if ((code_of(following) & 0xC0) != 0x80) return std::nullopt;
    point = (point << 6) | static_cast<std::uint32_t>(code_of(following) & 0x3F);
  }
  const bool surrogate = point >= 0xD800 && point < 0xE000;
  if (point < form->lowest || point > 0x10FFFF || surrogate) return std::nullopt;
  return Sequence{point, length};
}

}  // namespace

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

std::string to_utf8(std::string_view windows_1252) {
  std::string out;
  out.reserve(windows_1252.size());
  for (const char c : windows_1252) {
    const int code = code_of(c);
    const bool remapped = code >= 0x80 && code < 0xA0;
    append_utf8(out, remapped ? high_controls[static_cast<std::size_t>(code - 0x80)]
                              : static_cast<char16_t>(code));
  }
  return out;
}

std::string from_utf8(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  while (!utf8.empty()) {
    const auto sequence = leading_point(utf8);
    out += sequence ? byte_of_point(sequence->point) : '?';
    utf8.remove_prefix(sequence ? sequence->length : 1);
  }
  return out;
}

}  // namespace lineweir
