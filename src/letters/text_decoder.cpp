#include "letters/text_decoder.h"

#include <algorithm>
#include <optional>

#include "letters/utf8.h"

namespace lineweir {
namespace {

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";
constexpr std::string_view little_endian_mark = "\xFF\xFE";
constexpr std::string_view big_endian_mark = "\xFE\xFF";
constexpr char32_t byte_order_mark = 0xFEFF;
constexpr char32_t replacement = 0xFFFD;
constexpr std::size_t longest_utf8_character = 4;

bool is_high_surrogate(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool is_low_surrogate(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

// Whether bytes that end here may be the beginning of a character.
bool may_go_on(std::string_view bytes) {
  if (bytes.size() >= longest_utf8_character) return false;
  const auto lead = static_cast<unsigned char>(bytes.front());
  const std::size_t wanted = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
  return bytes.size() < wanted && std::ranges::all_of(bytes.substr(1), [](char c) {
           return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
         });
}

}  // namespace

TextEncoding encoding_of(std::string_view beginning) {
  if (beginning.starts_with(little_endian_mark)) return TextEncoding::Utf16LittleEndian;
  if (beginning.starts_with(big_endian_mark)) return TextEncoding::Utf16BigEndian;
  std::ptrdiff_t zeros_at_even = 0;
  std::ptrdiff_t zeros_at_odd = 0;
  for (std::size_t i = 0; i < beginning.size(); ++i) {
    if (beginning[i] == '\0') ++(i % 2 == 0 ? zeros_at_even : zeros_at_odd);
  }
  // A few zeros are rubbish in a text; every second byte is one in a text of two-byte characters.
  const auto many = static_cast<std::ptrdiff_t>(beginning.size() / 4);
  if (zeros_at_odd > many) return TextEncoding::Utf16LittleEndian;
  if (zeros_at_even > many) return TextEncoding::Utf16BigEndian;
  return TextEncoding::Utf8;
}

bool TextDecoder::decode(std::string_view piece, std::string& utf8) {
  begun_ += piece;
  if (at_beginning_ && encoding_ == TextEncoding::Utf8) {
    // The mark may come in pieces.
    if (begun_.size() < utf8_mark.size() && utf8_mark.starts_with(begun_)) return true;
    if (begun_.starts_with(utf8_mark)) begun_.erase(0, utf8_mark.size());
    at_beginning_ = false;
  }
  switch (encoding_) {
    case TextEncoding::Utf8:
      return decode_utf8(utf8);
    case TextEncoding::OneByte:
      utf8 += letters_.to_utf8(begun_);
      begun_.clear();
      return true;
    default:
      decode_utf16(utf8);
      return true;
  }
}

bool TextDecoder::decode_utf8(std::string& utf8) {
  std::string_view rest = begun_;
  while (!rest.empty()) {
    const auto next = leading_point(rest);
    if (!next) break;
    rest.remove_prefix(next->size);
  }
  if (!rest.empty() && !may_go_on(rest)) return false;
  utf8.append(begun_, 0, begun_.size() - rest.size());
  begun_.erase(0, begun_.size() - rest.size());
  return true;
}

void TextDecoder::decode_utf16(std::string& utf8) {
  const std::size_t low = encoding_ == TextEncoding::Utf16LittleEndian ? 0 : 1;
  const auto unit_at = [&](std::size_t i) {
    return static_cast<char32_t>(static_cast<unsigned char>(begun_[i + low]) |
                                 static_cast<unsigned char>(begun_[i + 1 - low]) << 8);
  };
  std::size_t at = 0;
  for (; at + 1 < begun_.size(); at += 2) {
    char32_t point = unit_at(at);
    if (is_high_surrogate(point)) {
      if (at + 3 >= begun_.size()) break;
      const char32_t second = unit_at(at + 2);
      if (is_low_surrogate(second)) {
        point = 0x10000 + ((point - 0xD800) << 10) + (second - 0xDC00);
        at += 2;
      } else {
        point = replacement;
      }
    } else if (is_low_surrogate(point)) {
      point = replacement;
    }
    const bool is_mark = at_beginning_ && point == byte_order_mark;
    at_beginning_ = false;
    if (!is_mark) append_point(utf8, point);
  }
  begun_.erase(0, at);
}

}  // namespace lineweir
