#include "driver/words.h"

#include "driver/refusal.h"

namespace lineweir::driver {
namespace {

bool is_blank(char c) { return c == ' ' || c == '\t'; }

std::size_t word_end(std::string_view line, std::size_t begin) {
  std::size_t end = begin;
  while (end < line.size() && !is_blank(line[end])) ++end;
  return end;
}

// Brackets are only counted here; whether they match is the parser's to say.
std::size_t value_end(std::string_view line, std::size_t begin) {
  bool in_text = false;
  int depth = 0;
  for (std::size_t i = begin; i < line.size(); ++i) {
    const char c = line[i];
    if (in_text) {
      if (c == '\\') {
        ++i;
      } else if (c == '"') {
        in_text = false;
      }
    } else if (c == '"') {
      in_text = true;
    } else if (c == '[' || c == '{') {
      ++depth;
    } else if (c == ']' || c == '}') {
      --depth;
    }
    if (!in_text && depth <= 0) return word_end(line, i);
  }
  throw NotUnderstood("a value without an end: " + on_one_line(line.substr(begin)));
}

template <class End>
std::vector<std::string> split(std::string_view line, const End& end_of) {
  std::vector<std::string> words;
  std::size_t begin = 0;
  while (true) {
    while (begin < line.size() && is_blank(line[begin])) ++begin;
    if (begin == line.size()) return words;
    const std::size_t end = end_of(line, begin);
    words.emplace_back(line.substr(begin, end - begin));
    begin = end;
  }
}

}  // namespace

std::vector<std::string> split_words(std::string_view line) {
  return split(line, [](std::string_view all, std::size_t begin) {
    const char first = all[begin];
    const bool is_value = first == '"' || first == '[' || first == '{';
    return is_value ? value_end(all, begin) : word_end(all, begin);
  });
}

std::vector<std::string> split_words_plainly(std::string_view line) {
  return split(line, word_end);
}

std::string Arguments::text_or_word(std::size_t i) const {
  return words_.at(i).starts_with('"') ? text(i) : words_.at(i);
}

}  // namespace lineweir::driver
