#pragma once

namespace lineweir {

class CallerDataEntry;
class DisplayOptions;
class Links;
struct ConsoleState;

// How DisplayOptionForm begins and ends: it opens on the present group, and when it is closed its
// choices are applied, and the console goes over to the group that is chosen in
// MessageGroupSelector.
class GroupChoice {
 public:
  GroupChoice(ConsoleState& state, const Links& links, DisplayOptions& display,
              CallerDataEntry& caller_data);

  // Puts the selector on the present group's entry, or on none where it has none.
  void select_present_group();

 private:
  void DisplayDataOptionsMenu_Click();
  void ExitCommand_Click();

  void change_group(int group);
  bool open_to_user(int group) const;

  ConsoleState& state_;
  const Links& links_;
  DisplayOptions& display_;
  CallerDataEntry& caller_data_;
};

}  // namespace lineweir
