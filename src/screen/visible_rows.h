#pragma once

#include <vector>

namespace lineweir {

struct ConsoleState;

// Which lines have a row on the screen: those whose box on DisplayOptionForm is checked.
class VisibleRows {
 public:
  explicit VisibleRows(ConsoleState& state);

  // How many lines are checked.
  int count() const;

  // By line, the row in which it stands, from 0; no_row for a line that isn't shown.
  std::vector<int> rows() const;

  // The first line that is shown, or no_line.
  int first_line() const;

  // Makes the boxes of the lines that have come, checked, and unmakes those of lines that have
  // gone.
  void load_line_boxes();

  // Lays out the boxes of the lines that exist; a line that doesn't has a disabled box, and that is
  // hidden.
  void RedefineDisplaySreen();

 private:
  ConsoleState& state_;
};

inline constexpr int no_row = -1;

}  // namespace lineweir
