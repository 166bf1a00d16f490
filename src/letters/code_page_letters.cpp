#include "letters/code_page_letters.h"

#include <algorithm>
#include <array>

#include "letters/utf8.h"
#include "letters/vietnamese.h"

namespace lineweir {
namespace {

constexpr char no_letter = '?';

struct NearLetter {
  char32_t point;
  char16_t near_one;
};

// Romanian letters that the older sets have with a cedilla and not with a comma.
constexpr std::array near_letters = {NearLetter{U'Ș', u'Ş'}, NearLetter{U'ș', u'ş'},
                                     NearLetter{U'Ț', u'Ţ'}, NearLetter{U'ț', u'ţ'}};

bool is_accent(char32_t point) { return point >= 0x300 && point < 0x370; }

// Characters that show nothing and only say how those beside them are drawn.
bool shows_nothing(char32_t point) {
  return (point >= 0x200B && point <= 0x200F) || point == 0x2060 || point == 0xFEFF ||
         (point >= 0xFE00 && point <= 0xFE0F);
}

bool has_accents(std::string_view utf8) {
  // Their two bytes begin with CC or CD.
  return utf8.find_first_of("\xCC\xCD") != std::string_view::npos;
}

}  // namespace

CodePageLetters::CodePageLetters(const CodePage& page, const Transliterator* transliterator)
    : page_(page), transliterator_(transliterator) {
  for (std::size_t i = 0; i < page.upper.size(); ++i) {
    entries_.push_back({page.upper[i], static_cast<char>(0x80 + i)});
  }
  std::ranges::sort(entries_, {}, &Entry::point);
}

char16_t CodePageLetters::point_of(char byte) const {
  const auto code = static_cast<unsigned char>(byte);
  return code < 0x80 ? code : page_.upper[code - 0x80U];
}

std::optional<char> CodePageLetters::byte_of(char32_t point) const {
  if (point < 0x80) return static_cast<char>(point);
  const auto found =
      std::ranges::lower_bound(entries_, point, {}, [](const Entry& entry) { return entry.point; });
  if (found == entries_.end() || found->point != point) return std::nullopt;
  return found->byte;
}

std::string CodePageLetters::to_utf8(std::string_view text) const {
  if (is_ascii(text)) return std::string(text);
  std::string utf8;
  utf8.reserve(text.size() + text.size() / 2);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t point = point_of(text[i]);
    const char16_t next = i + 1 < text.size() ? point_of(text[i + 1]) : u'\0';
    const auto both = is_accent(next) ? put_together({point, next}) : std::nullopt;
    // A character that the set has itself was not meant to come of two.
    if (both && !byte_of(*both)) {
      append_point(utf8, *both);
      ++i;
    } else {
      append_point(utf8, point);
    }
  }
  return utf8;
}

bool CodePageLetters::append_held(std::string& text, char32_t point) const {
  if (const auto byte = byte_of(point)) {
    text += *byte;
    return true;
  }
  if (const auto parts = taken_apart(point)) {
    const auto letter = byte_of(parts->letter);
    const auto mark = byte_of(parts->mark);
    if (letter && mark) {
      text += *letter;
      text += *mark;
      return true;
    }
  }
  const auto row = std::ranges::find(near_letters, point, &NearLetter::point);
  const auto near_one = row == near_letters.end() ? std::nullopt : byte_of(row->near_one);
  if (near_one) text += *near_one;
  return near_one.has_value() || shows_nothing(point);
}

void CodePageLetters::append_foreign(std::string& text, std::string_view utf8) const {
  std::string plain(utf8);
  if (transliterator_ != nullptr) plain = transliterator_->plain_latin(utf8);
  for (std::string_view rest = plain; !rest.empty();) {
    const auto next = leading_point(rest);
    text += next ? byte_of(next->point).value_or(no_letter) : no_letter;
    rest.remove_prefix(next ? next->size : 1);
  }
}

std::string CodePageLetters::from_utf8(std::string_view utf8) const {
  if (is_ascii(utf8)) return std::string(utf8);
  std::string composed;
  if (transliterator_ != nullptr && has_accents(utf8) && is_utf8(utf8)) {
    composed = transliterator_->composed(utf8);
    utf8 = composed;
  }
  std::string text;
  text.reserve(utf8.size());
  // What the set doesn't hold is written together, since letters depend on those beside them.
  std::string_view foreign = utf8.substr(0, 0);
  const auto write_foreign = [&] {
    if (!foreign.empty()) append_foreign(text, foreign);
    foreign = {};
  };
  while (!utf8.empty()) {
    const auto next = leading_point(utf8);
    const std::size_t size = next ? next->size : 1;
    std::string held;
    if (next && !append_held(held, next->point)) {
      foreign = foreign.empty() ? utf8.substr(0, size)
                                : std::string_view(foreign.data(), foreign.size() + size);
    } else {
      write_foreign();
      text += next ? held : std::string(1, no_letter);
    }
    utf8.remove_prefix(size);
  }
  write_foreign();
  return text;
}

}  // namespace lineweir
