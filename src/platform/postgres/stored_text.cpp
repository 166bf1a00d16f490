#include "platform/postgres/stored_text.h"

#include "letters/utf8.h"

namespace lineweir::platform {
namespace {

constexpr char32_t first_of_bytes = 0x10FF00;

void append_byte(std::string& stored, char byte) {
  append_point(stored, first_of_bytes + static_cast<unsigned char>(byte));
}

}  // namespace

std::string to_stored_text(std::string_view text) {
  std::string stored;
  stored.reserve(text.size());
  while (!text.empty()) {
    const auto letter = leading_point(text);
    const bool stands = letter && letter->point != 0 && letter->point < first_of_bytes;
    const std::size_t size = letter ? letter->size : 1;
    if (stands) stored.append(text.substr(0, size));
    for (std::size_t i = 0; !stands && i < size; ++i) append_byte(stored, text[i]);
    text.remove_prefix(size);
  }
  return stored;
}

std::string from_stored_text(std::string_view stored) {
  std::string text;
  text.reserve(stored.size());
  while (!stored.empty()) {
    const auto letter = leading_point(stored);
    const std::size_t size = letter ? letter->size : 1;
    if (letter && letter->point >= first_of_bytes) {
      text += static_cast<char>(letter->point - first_of_bytes);
    } else {
      text.append(stored.substr(0, size));
    }
    stored.remove_prefix(size);
  }
  return text;
}

}  // namespace lineweir::platform
