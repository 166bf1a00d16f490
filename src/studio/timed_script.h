#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/moment.h"
#include "studio/exchange_names.h"

namespace lineweir::studio {

// The words of a line, parted by blanks.
inline std::vector<std::string_view> words_of_line(std::string_view line) {
  constexpr std::string_view blanks = " \t\r";
  std::vector<std::string_view> words;
  for (std::size_t end = 0;;) {
    const std::size_t begin = line.find_first_not_of(blanks, end);
    if (begin == std::string_view::npos) return words;
    end = std::min(line.find_first_of(blanks, begin), line.size());
    words.push_back(line.substr(begin, end - begin));
  }
}

// A script tells what happens and when: one thing a line, with its time in seconds in front. Empty
// lines and lines that begin with # are skipped.
//
// `Timed` has a member `at`; `parse` makes one of a moment and the words behind it, or nothing with
// the reason in `error`. Returns all in the order of their times; nothing on the first line that is
// not understood, with "NAME:LINE: why" in `error`.
template <class Timed, class Parse>
std::optional<std::vector<Timed>> parse_timed_script(std::string_view text, std::string_view name,
                                                     Parse&& parse, std::string& error) {
  std::vector<Timed> script;
  for (int number = 1; !text.empty(); ++number) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    auto words = words_of_line(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (words.empty() || words[0].front() == '#') continue;
    const auto at = parse_seconds(words[0]);
    if (!at) error = '"' + std::string(words[0]) + "\" is not a time in seconds";
    words.erase(words.begin());
    std::optional<Timed> timed;
    if (at) timed = parse(*at, words, error);
    if (!timed) {
      error = std::string(name) + ':' + std::to_string(number) + ": " + error;
      return std::nullopt;
    }
    script.push_back(std::move(*timed));
  }
  std::stable_sort(script.begin(), script.end(),
                   [](const Timed& a, const Timed& b) { return a.at < b.at; });
  return script;
}

// The text of a script's file; nothing where it can't be read, with the reason in `error`.
inline std::optional<std::string> script_text(const std::string& path, std::string& error) {
  std::ifstream file(path, std::ios::binary);
  if (!file || std::filesystem::is_directory(path)) {
    error = path + ": can't be read";
    return std::nullopt;
  }
  return std::string{std::istreambuf_iterator<char>(file), {}};
}

}  // namespace lineweir::studio
