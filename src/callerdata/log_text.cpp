#include "callerdata/log_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include "callerdata/call_log_columns.h"
#include "core/text.h"
#include "core/time_text.h"

namespace lineweir {
namespace {

// The letters U+00C0 to U+00DF without their accents, and U+00E0 to U+00FF after them; a zero
// stands for one that is no accented letter.
constexpr std::string_view latin_letters("aaaaaa\0ceeeeiiii\0nooooo\0ouuuuy\0\0", 32);
static_assert(latin_letters.size() == 32);

constexpr char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

struct FoldedLetter {
  unsigned char second;
  std::string_view letter;
};

// What lies behind the byte C5 in the characters that the console's texts can hold.
constexpr std::array letters_behind_c5 = {
    FoldedLetter{0x92, "\xC5\x93"}, FoldedLetter{0xA0, "s"}, FoldedLetter{0xA1, "s"},
    FoldedLetter{0xB8, "y"},        FoldedLetter{0xBD, "z"}, FoldedLetter{0xBE, "z"},
};

void append_letter_behind_c3(std::string& folded, unsigned char second) {
  constexpr unsigned char y_diaeresis = 0xBF;
  constexpr unsigned char sharp_s = 0x9F;
  constexpr unsigned char multiplication = 0x97;
  const char plain = latin_letters[second & 0x1F];
  if (second == y_diaeresis) {
    folded += 'y';
  } else if (plain != '\0') {
    folded += plain;
  } else {
    const bool capital = second < 0xA0 && second != sharp_s && second != multiplication;
    folded += '\xC3';
    folded += static_cast<char>(capital ? second + 0x20 : second);
  }
}

void append_letter_behind_c5(std::string& folded, unsigned char second) {
  const auto found = std::ranges::find(letters_behind_c5, second, &FoldedLetter::second);
  if (found != letters_behind_c5.end()) {
    folded += found->letter;
  } else {
    folded += '\xC5';
    folded += static_cast<char>(second);
  }
}

constexpr bool continues_character(unsigned char byte) { return (byte & 0xC0) == 0x80; }

// "20260105" of "1/5/2026".
std::optional<std::string> date_key(std::string_view text) {
  std::array<int, 3> parts{};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), parts[i]);
    if (error != std::errc{} || parts[i] < 0 || parts[i] > 9999) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    const bool last = i + 1 == parts.size();
    if (last != text.empty() || (!last && text.front() != '/')) return std::nullopt;
    if (!last) text.remove_prefix(1);
  }
  return zero_filled(parts[2], 4) + zero_filled(parts[0], 4) + zero_filled(parts[1], 4);
}

std::optional<std::string> time_key(std::string_view text) {
  const auto time = time_of_day(text);
  if (!time) return std::nullopt;
  return zero_filled(*time, 5);
}

}  // namespace

void append_folded(std::string& folded, std::string_view utf8) {
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    const auto second = i + 1 < utf8.size() ? static_cast<unsigned char>(utf8[i + 1])
                                            : static_cast<unsigned char>(0);
    if (byte == 0xC3 && continues_character(second)) {
      append_letter_behind_c3(folded, second);
      ++i;
    } else if (byte == 0xC5 && continues_character(second)) {
      append_letter_behind_c5(folded, second);
      ++i;
    } else {
      folded += lower(utf8[i]);
    }
  }
}

std::string folded_text(std::string_view utf8) {
  std::string folded;
  append_folded(folded, utf8);
  return folded;
}

LogSearch::LogSearch(std::string_view utf8) {
  const std::string folded = folded_text(utf8);
  std::string_view rest = folded;
  while (!(rest = trimmed_left(rest)).empty()) {
    const auto end = std::min(rest.find(' '), rest.size());
    words_.emplace_back(rest.substr(0, end));
    rest.remove_prefix(end);
  }
}

bool LogSearch::finds(std::string_view texts) const {
  return std::ranges::all_of(
      words_, [&](const std::string& word) { return texts.find(word) != std::string_view::npos; });
}

SortKind sort_kind_of(int column) {
  constexpr std::string_view date = "Date";
  constexpr std::string_view times = "Time_";
  if (column < 0 || static_cast<std::size_t>(column) >= call_log_columns.size()) {
    return SortKind::Text;
  }
  const std::string_view name = call_log_columns[static_cast<std::size_t>(column)].name;
  if (name == date) return SortKind::Date;
  return name.starts_with(times) ? SortKind::Time : SortKind::Text;
}

void append_sort_key(std::string& key, SortKind kind, std::string_view utf8) {
  const std::string_view text = trimmed(utf8);
  if (text.empty()) return;
  if (kind == SortKind::Text) return append_folded(key, text);
  const auto known = kind == SortKind::Date ? date_key(text) : time_key(text);
  if (known) {
    key += *known;
  } else {
    // Behind all digits.
    key += '~';
    append_folded(key, text);
  }
}

std::string grouped_number(std::int64_t number) {
  std::string text = std::to_string(number);
  for (auto end = static_cast<std::ptrdiff_t>(text.size()) - 3; end > (number < 0 ? 1 : 0);
       end -= 3) {
    text.insert(static_cast<std::size_t>(end), 1, ',');
  }
  return text;
}

std::string calls_text(std::int64_t calls) {
  return grouped_number(calls) + (calls == 1 ? " call" : " calls");
}

}  // namespace lineweir
