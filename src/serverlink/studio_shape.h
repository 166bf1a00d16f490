#pragma once

#include <string_view>

namespace lineweir {

class DisplayOptions;
class Links;
class Modes;
class ScreenLayout;
class ServerLink;
class VisibleRows;
struct ConsoleState;

// What the studio group is like: which lines, hybrids and handsets it has, since when its callers
// wait or talk, and how its lines are named.
class StudioShape {
 public:
  StudioShape(ConsoleState& state, ServerLink& server, const Links& links,
              VisibleRows& visible_rows, DisplayOptions& display, ScreenLayout& layout,
              Modes& modes);

  // With the text of a server, whichever way it came.
  void GetStudioStat(std::string_view text);
  void GetTheTimes(std::string_view text);

  // The names of the lines, ten characters each, or their numbers while names aren't wanted.
  void name_lines(std::string_view names);

 private:
  void DimLineNumMenu_Click();
  void StudioLineNumMenu_Click();

  void take_handset(int number, bool exists);
  void take_line(int line, bool exists);

  ConsoleState& state_;
  const Links& links_;
  VisibleRows& visible_rows_;
  DisplayOptions& display_;
  ScreenLayout& layout_;
  Modes& modes_;
};

}  // namespace lineweir
