#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lineweir {

struct Utf8Point {
  char32_t point = 0;
  // How many bytes it takes.
  std::size_t size = 0;
};

// The code point that the text begins with; nothing where it begins with no whole sequence or with
// one that isn't the shortest of its point. The text isn't empty.
std::optional<Utf8Point> leading_point(std::string_view utf8);

void append_point(std::string& utf8, char32_t point);

// The beginning of a text, at most so many points; all of it for the size 0, as a column of any
// length has.
std::string_view cut_to_size(std::string_view utf8, int size);

bool is_ascii(std::string_view text);
bool is_utf8(std::string_view text);

}  // namespace lineweir
