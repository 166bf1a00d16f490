#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desk/desk_layout.h"
#include "exchange/moment.h"

namespace lineweir::desk {

// What the user of the desk does.
struct DeskAction {
  enum class Kind { Press, Show, Quit };
  Kind kind;
  // The key pressed, as desk_layout names it.
  std::string key;

  friend bool operator==(const DeskAction&, const DeskAction&) = default;
};

struct TimedAction {
  exchange::Moment at;
  DeskAction action;
};

// "show", "quit" or a key of the layout, with any blanks around and between its words. Nothing for
// any other text, with the reason in `error`.
std::optional<DeskAction> parse_action(std::string_view text, Layout layout, std::string& error);

// A script has one action a line, with its time in seconds in front; empty lines and lines that
// begin with # are skipped. In the order of the times. Nothing on the first line that is not
// understood, with "NAME:LINE: why" in `error`.
std::optional<std::vector<TimedAction>> parse_desk_script(std::string_view text,
                                                          std::string_view name, Layout layout,
                                                          std::string& error);

// The same from a file; `error` also tells of one that can't be read.
std::optional<std::vector<TimedAction>> read_desk_script(const std::string& path, Layout layout,
                                                         std::string& error);

}  // namespace lineweir::desk
