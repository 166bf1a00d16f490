#include "callerdata/log_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include "base/text.h"
#include "base/time_text.h"
#include "letters/folding.h"

namespace lineweir {
namespace {

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

std::vector<TextPiece> LogSearch::places_in(std::string_view utf8) const {
  if (empty()) return {};
  const FoldedOrigins text = folded_with_origins(utf8);
  std::vector<bool> found(text.folded.size());
  for (const std::string& word : words_) {
    for (auto at = text.folded.find(word); at != std::string::npos;
         at = text.folded.find(word, at + 1)) {
      std::fill_n(found.begin() + static_cast<std::ptrdiff_t>(at), word.size(), true);
    }
  }
  std::vector<TextPiece> pieces;
  for (std::size_t i = 0; i < found.size(); ++i) {
    if (!found[i]) continue;
    const std::size_t begin = text.origins[i];
    while (i < found.size() && found[i]) ++i;
    pieces.push_back({begin, text.origins[i] - begin});
  }
  return pieces;
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
