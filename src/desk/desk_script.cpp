#include "desk/desk_script.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace lineweir::desk {
namespace {

constexpr std::string_view blanks = " \t\r";

// The text with one blank between its words and none around.
std::string tidy(std::string_view text) {
  std::string result;
  for (std::size_t end = 0;;) {
    const std::size_t begin = text.find_first_not_of(blanks, end);
    if (begin == std::string_view::npos) return result;
    end = std::min(text.find_first_of(blanks, begin), text.size());
    if (!result.empty()) result += ' ';
    result += text.substr(begin, end - begin);
  }
}

std::optional<TimedAction> parse_timed(const std::string& line, Layout layout, std::string& error) {
  const std::size_t blank = std::min(line.find(' '), line.size());
  const auto at = studio::parse_seconds(line.substr(0, blank));
  if (!at) {
    error = '"' + line.substr(0, blank) + "\" is not a time in seconds";
    return std::nullopt;
  }
  const auto action = parse_action(line.substr(blank), layout, error);
  if (!action) return std::nullopt;
  return TimedAction{*at, *action};
}

}  // namespace

std::optional<DeskAction> parse_action(std::string_view text, Layout layout, std::string& error) {
  const std::string words = tidy(text);
  if (words == "show") return DeskAction{DeskAction::Kind::Show, {}};
  if (words == "quit") return DeskAction{DeskAction::Kind::Quit, {}};
  if (key_code(layout, words)) return DeskAction{DeskAction::Kind::Press, words};
  error = "there is no key \"" + words + '"';
  return std::nullopt;
}

std::optional<std::vector<TimedAction>> parse_desk_script(std::string_view text,
                                                          std::string_view name, Layout layout,
                                                          std::string& error) {
  std::vector<TimedAction> actions;
  for (int number = 1; !text.empty(); ++number) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string line = tidy(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.empty() || line.front() == '#') continue;
    const auto action = parse_timed(line, layout, error);
    if (!action) {
      error = std::string(name) + ':' + std::to_string(number) + ": " + error;
      return std::nullopt;
    }
    actions.push_back(*action);
  }
  std::stable_sort(actions.begin(), actions.end(),
                   [](const TimedAction& a, const TimedAction& b) { return a.at < b.at; });
  return actions;
}

std::optional<std::vector<TimedAction>> read_desk_script(const std::string& path, Layout layout,
                                                         std::string& error) {
  std::ifstream file(path, std::ios::binary);
  if (!file || std::filesystem::is_directory(path)) {
    error = path + ": can't be read";
    return std::nullopt;
  }
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  return parse_desk_script(text, path, layout, error);
}

}  // namespace lineweir::desk
