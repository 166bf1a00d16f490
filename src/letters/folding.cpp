#include "letters/folding.h"

#include <array>

#include "letters/folded_letters.h"

namespace lineweir {
namespace {

// A letter as it is compared, in UTF-8. None for an accent that stands by itself.
struct Folded {
  std::array<char, 3> bytes{};
  unsigned char size = 0;
};

constexpr char16_t accents_begin = 0x0300;
constexpr char16_t accents_end = 0x0370;

constexpr Folded folded_point(char16_t point) {
  const auto following = [point](int shift) {
    return static_cast<char>(0x80 | ((point >> shift) & 0x3F));
  };
  if (point < 0x80) return {{static_cast<char>(point)}, 1};
  if (point < 0x800) return {{static_cast<char>(0xC0 | (point >> 6)), following(0)}, 2};
  return {{static_cast<char>(0xE0 | (point >> 12)), following(6), following(0)}, 3};
}

template <std::size_t size>
constexpr void fold_block(std::array<Folded, size>& table, char16_t table_begin,
                          std::u16string_view block, char16_t block_begin) {
  for (std::size_t i = 0; i < block.size(); ++i) {
    if (block[i] != u'.') table[block_begin - table_begin + i] = folded_point(block[i]);
  }
}

template <std::size_t size>
constexpr std::array<Folded, size> unfolded(char16_t begin) {
  std::array<Folded, size> table{};
  for (std::size_t i = 0; i < size; ++i) table[i] = folded_point(static_cast<char16_t>(begin + i));
  return table;
}

// Of the code points that take two bytes in UTF-8, by the point.
constexpr auto folded_of_two = [] {
  auto table = unfolded<0x800>(0);
  for (char16_t accent = accents_begin; accent < accents_end; ++accent) table[accent] = {};
  fold_block(table, 0, folded_latin, 0x00C0);
  fold_block(table, 0, folded_greek, 0x0370);
  fold_block(table, 0, folded_cyrillic, 0x0400);
  return table;
}();

// Of U+1E00 to U+1FFF.
constexpr auto folded_of_three = [] {
  auto table = unfolded<0x200>(0x1E00);
  fold_block(table, 0x1E00, folded_rarer, 0x1E00);
  return table;
}();

constexpr char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

bool continues_character(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

unsigned low_bits(char c, unsigned mask) { return static_cast<unsigned char>(c) & mask; }

// The letter that the text begins with, and how many bytes it took; null for what has no folded
// form or is no letter at all.
struct Found {
  const Folded* folded = nullptr;
  std::size_t size = 1;
};

Found folded_letter(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  if (lead >= 0xC2 && lead <= 0xDF && text.size() >= 2 && continues_character(text[1])) {
    return {&folded_of_two[low_bits(text[0], 0x1F) << 6 | low_bits(text[1], 0x3F)], 2};
  }
  if (lead == 0xE1 && text.size() >= 3 && continues_character(text[1]) &&
      continues_character(text[2])) {
    const unsigned point = 0x1000 | low_bits(text[1], 0x3F) << 6 | low_bits(text[2], 0x3F);
    if (point >= 0x1E00) return {&folded_of_three[point - 0x1E00], 3};
  }
  return {};
}

}  // namespace

void append_folded(std::string& folded, std::string_view utf8) {
  // No letter becomes longer.
  const std::size_t begin = folded.size();
  folded.resize(begin + utf8.size());
  char* out = folded.data() + begin;
  for (std::size_t i = 0; i < utf8.size();) {
    if (static_cast<unsigned char>(utf8[i]) < 0x80) {
      *out++ = lower(utf8[i++]);
      continue;
    }
    const Found found = folded_letter(utf8.substr(i));
    if (found.folded == nullptr) {
      *out++ = utf8[i++];
      continue;
    }
    for (unsigned char k = 0; k < found.folded->size; ++k) *out++ = found.folded->bytes[k];
    i += found.size;
  }
  folded.resize(static_cast<std::size_t>(out - folded.data()));
}

FoldedOrigins folded_with_origins(std::string_view utf8) {
  FoldedOrigins text;
  for (std::size_t i = 0; i < utf8.size();) {
    const Found found = folded_letter(utf8.substr(i));
    append_folded(text.folded, utf8.substr(i, found.size));
    text.origins.resize(text.folded.size(), i);
    i += found.size;
  }
  text.origins.push_back(utf8.size());
  return text;
}

std::string folded_text(std::string_view utf8) {
  std::string folded;
  append_folded(folded, utf8);
  return folded;
}

}  // namespace lineweir
