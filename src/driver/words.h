#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "driver/values.h"

namespace lineweir::driver {

// A command line's words. A word that begins with a quotation mark or a bracket is one JSON value,
// blanks included. A value without an end is NotUnderstood.
std::vector<std::string> split_words(std::string_view line);

// Words parted by blanks and nothing else.
std::vector<std::string> split_words_plainly(std::string_view line);

// The words behind a command's name, which are its parameters.
class Arguments {
 public:
  explicit Arguments(std::vector<std::string> words) : words_(std::move(words)) {}

  std::size_t count() const { return words_.size(); }
  const std::string& word(std::size_t i) const { return words_.at(i); }
  Json value(std::size_t i) const { return parsed(words_.at(i)); }
  std::string text(std::size_t i) const { return text_of(value(i)); }
  // A text, or a word that stands for itself.
  std::string text_or_word(std::size_t i) const;
  int number(std::size_t i, std::int64_t least, std::int64_t most) const {
    return static_cast<int>(number_of(value(i), least, most));
  }

 private:
  std::vector<std::string> words_;
};

}  // namespace lineweir::driver
