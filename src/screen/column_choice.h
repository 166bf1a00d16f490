#pragma once

#include <string>

namespace lineweir {

struct Console;

// What the user does on DisplayOptionForm about the columns: which are shown, how wide, in which
// order, and what the last one is called.
class ColumnChoice {
 public:
  explicit ColumnChoice(Console& console);

  void DisplayDataOptionsMenu_Click();
  void CheckItem_Click(int Index);
  void WidthText_LostFocus(int Index);

  // The entry of List1 at `from` is dragged to `to`, one place at a time: at each step it changes
  // places with the one under the pointer. The rows follow when the form is closed.
  void List1_Drag(int from, int to);

  void UserRename_Click();

 private:
  void take_width(int column);
  // False, with a message, where the log's column can't be renamed.
  bool rename_in_log(const std::string& title);
  bool database_open() const;

  Console& console_;
};

}  // namespace lineweir
