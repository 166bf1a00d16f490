#pragma once

#include <functional>

namespace lineweir {

class ButtonPanel;
class ClockMenu;
class DisplayOptions;
class RowDisplay;
class ScreenFaces;
class VisibleRows;
class WindowSize;
struct ConsoleState;

// Puts every element of the main form in its place for the rows shown and the form's size.
class ScreenLayout {
 public:
  ScreenLayout(ConsoleState& state, ClockMenu& clock_menu, VisibleRows& visible_rows,
               RowDisplay& rows, DisplayOptions& display, ButtonPanel& panel, ScreenFaces& faces,
               WindowSize& window);

  // Told in the middle of each rebuild, when the buttons stand in their places with the faces of
  // their size: the mode decides which are enabled.
  std::function<void()> on_buttons_placed;

  // Brings the arrays, the rows and the number of visible rows in line with LineCount and the line
  // boxes, then places everything. Where the number of visible rows has changed the form is put at
  // its design size first.
  void RedefineScreen();

  // Load20: makes the rows' elements up to LineCount, and unmakes those above.
  void load_rows();

  // Changes the number of lines, with the table's arrays and the rows' elements. The screen follows
  // at the next RedefineScreen.
  void set_line_count(int line_count);

  // Places the drop and hold buttons, whose size is another in each mode.
  void lay_out_drop_buttons();

  // Lays what lies on the panel's buttons over them.
  void SetLabels();

 private:
  void redefine();
  // Whether the number of visible rows has changed.
  bool count_rows();
  void put_at_design_size();

  ConsoleState& state_;
  ClockMenu& clock_menu_;
  VisibleRows& visible_rows_;
  RowDisplay& rows_;
  DisplayOptions& display_;
  ButtonPanel& panel_;
  ScreenFaces& faces_;
  WindowSize& window_;
};

}  // namespace lineweir
