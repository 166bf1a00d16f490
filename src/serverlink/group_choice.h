#pragma once

namespace lineweir {

class CallerDataEntry;
class DisplayOptions;
class LineEvents;
class KnownCallers;
class Links;
struct ConsoleState;

// How DisplayOptionForm begins and ends: it opens on the present group, and when it is closed its
// choices are applied, and the console goes over to the group that is chosen in
// MessageGroupSelector, or in the menu. A change that is refused leaves it open.
class GroupChoice {
 public:
  GroupChoice(ConsoleState& state, const Links& links, DisplayOptions& display,
              CallerDataEntry& caller_data, KnownCallers& known_callers, LineEvents& line_events);

  // Puts the selector on the present group's entry, or on none where it has none.
  void select_present_group();

  // The server sends the user to the group of this entry, whatever he is about to type.
  void force(int entry);

 private:
  void DisplayDataOptionsMenu_Click();
  void ExitCommand_Click();

  void StudioGr_Click(int Index);

  // Each returns whether the console may leave its group, and has left it.
  bool may_leave(int group);
  // An interface box has no groups: its lines stay what they are, whatever is chosen.
  bool lines_stay() const;
  bool change_group(int group);
  bool open_to_user(int group) const;

  ConsoleState& state_;
  const Links& links_;
  DisplayOptions& display_;
  CallerDataEntry& caller_data_;
  KnownCallers& known_callers_;
  LineEvents& line_events_;
  bool forced_ = false;
};

}  // namespace lineweir
