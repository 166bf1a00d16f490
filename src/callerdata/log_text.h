#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "elements/data_grid.h"
#include "lines/caller_fields.h"

namespace lineweir {

// How the texts of a call log are compared: UTF-8 as it stands in the file, in which neither case
// nor accents are told apart.

// What is looked for: each of the words, parted by blanks, anywhere in any of a call's texts.
class LogSearch {
 public:
  LogSearch() = default;
  explicit LogSearch(std::string_view utf8);

  bool empty() const { return words_.empty(); }

  // `texts` are those of one call, each folded and with a line feed behind it.
  bool finds(std::string_view texts) const;

  // Where the words stand in a text that isn't folded, from the first to the last; words that
  // overlap or touch are one piece.
  std::vector<TextPiece> places_in(std::string_view utf8) const;

 private:
  std::vector<std::string> words_;
};

// Adds a text whose order as bytes is that of the values. An empty value comes first, one that is
// no date or time last.
void append_sort_key(std::string& key, SortKind kind, std::string_view utf8);

// A whole number with a comma in front of each three digits.
std::string grouped_number(std::int64_t number);

// "1 call", "2,500 calls".
std::string calls_text(std::int64_t calls);

}  // namespace lineweir
