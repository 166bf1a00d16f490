#include "desk/desk_script.h"

#include "studio/timed_script.h"

namespace lineweir::desk {
namespace {

// The words with one blank between them.
std::string joined(const std::vector<std::string_view>& words) {
  std::string result;
  for (const std::string_view word : words) {
    if (!result.empty()) result += ' ';
    result += word;
  }
  return result;
}

}  // namespace

std::optional<DeskAction> parse_action(std::string_view text, Layout layout, std::string& error) {
  const std::string words = joined(studio::words_of_line(text));
  if (words == "show") return DeskAction{DeskAction::Kind::Show, {}};
  if (words == "quit") return DeskAction{DeskAction::Kind::Quit, {}};
  if (key_code(layout, words)) return DeskAction{DeskAction::Kind::Press, words};
  error = "there is no key \"" + words + '"';
  return std::nullopt;
}

std::optional<std::vector<TimedAction>> parse_desk_script(std::string_view text,
                                                          std::string_view name, Layout layout,
                                                          std::string& error) {
  const auto parse = [layout](exchange::Moment at, const auto& words,
                              std::string& reason) -> std::optional<TimedAction> {
    const auto action = parse_action(joined(words), layout, reason);
    if (!action) return std::nullopt;
    return TimedAction{at, *action};
  };
  return studio::parse_timed_script<TimedAction>(text, name, parse, error);
}

std::optional<std::vector<TimedAction>> read_desk_script(const std::string& path, Layout layout,
                                                         std::string& error) {
  const auto text = studio::script_text(path, error);
  if (!text) return std::nullopt;
  return parse_desk_script(*text, path, layout, error);
}

}  // namespace lineweir::desk
