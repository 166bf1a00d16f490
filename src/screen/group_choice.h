#pragma once

namespace lineweir {

struct Console;

// How DisplayOptionForm ends: its choices are applied, and the console goes over to the studio
// group that is chosen in MessageGroupSelector.
class GroupChoice {
 public:
  explicit GroupChoice(Console& console);

  void ExitCommand_Click();

  // Puts the selector on the present group's entry, or on none where it has none.
  void select_present_group();

 private:
  void change_group(int group);
  bool open_to_user(int group) const;
  // Whether the server was told, where there is one.
  bool leave_group();

  Console& console_;
};

}  // namespace lineweir
