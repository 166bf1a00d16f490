#include "letters/utf8.h"

#include <algorithm>
#include <array>

namespace lineweir {

std::optional<Utf8Point> leading_point(std::string_view utf8) {
  struct Form {
    unsigned first;
    unsigned mask;
    char32_t lowest;
  };
  constexpr std::array<Form, 4> forms = {
      {{0x00, 0x80, 0}, {0xC0, 0xE0, 0x80}, {0xE0, 0xF0, 0x800}, {0xF0, 0xF8, 0x10000}}};

  const unsigned first = static_cast<unsigned char>(utf8.front());
  const auto form =
      std::ranges::find_if(forms, [&](const Form& f) { return (first & f.mask) == f.first; });
  if (form == forms.end()) return std::nullopt;
  const auto size = static_cast<std::size_t>(form - forms.begin()) + 1;
  if (size > utf8.size()) return std::nullopt;

  auto point = static_cast<char32_t>(first & ~form->mask);
  for (const char following : utf8.substr(1, size - 1)) {
    const unsigned byte = static_cast<unsigned char>(following);
    if ((byte & 0xC0) != 0x80) return std::nullopt;
    point = (point << 6) | (byte & 0x3F);
  }
  const bool surrogate = point >= 0xD800 && point < 0xE000;
  if (point < form->lowest || point > 0x10FFFF || surrogate) return std::nullopt;
  return Utf8Point{point, size};
}

void append_point(std::string& utf8, char32_t point) {
  const auto append_rest = [&](int bits) {
    for (int shift = bits - 6; shift >= 0; shift -= 6) {
      utf8 += static_cast<char>(0x80 | ((point >> shift) & 0x3F));
    }
  };
  if (point < 0x80) {
    utf8 += static_cast<char>(point);
  } else if (point < 0x800) {
    utf8 += static_cast<char>(0xC0 | (point >> 6));
    append_rest(6);
  } else if (point < 0x10000) {
    utf8 += static_cast<char>(0xE0 | (point >> 12));
    append_rest(12);
  } else {
    utf8 += static_cast<char>(0xF0 | (point >> 18));
    append_rest(18);
  }
}

bool is_ascii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool is_utf8(std::string_view text) {
  while (!text.empty()) {
    const auto point = leading_point(text);
    if (!point) return false;
    text.remove_prefix(point->size);
  }
  return true;
}

std::string_view cut_to_size(std::string_view utf8, int size) {
  if (size == 0) return utf8;
  int characters = 0;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const bool begins_character = (static_cast<unsigned char>(utf8[i]) & 0xC0) != 0x80;
    if (begins_character && characters++ == size) return utf8.substr(0, i);
  }
  return utf8;
}

}  // namespace lineweir
