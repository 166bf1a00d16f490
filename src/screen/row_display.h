#pragma once

#include <string>
#include <string_view>

#include "lines/status_letters.h"

namespace lineweir {

struct ConsoleState;

// What a row's status says while its caller is the next one.
inline constexpr std::string_view next_caller_status = "Next";

// How a row shows the state of its line: strip, marks and icons.
class RowDisplay {
 public:
  explicit RowDisplay(ConsoleState& state);

  // The icons on the row's two buttons: 0 hides, 1 red, 2 green, 3 yellow, 4 blue; any other
  // value leaves the icon alone.
  void HybridPictureSet(int line, int color1, int color2);

  // The icons that belong to the line's present letter.
  void show_icons(int line);

  // Writes the status text from the line's letter alone, as a display is rebuilt from the table.
  void SetStatusText(int line);

  void set_row_color(int line, RowColor color);

  // Marks the row as that of the next call; with NextBarDisable by its text alone.
  void show_next(int line);

  // Places the row's marks at the edges of its columns, in the strip's colour.
  void DrawMark(int line);
  void DrawMark();

  // The marks of a line that has gone stay loaded.
  void hide_marks(int line);

  // Places an icon on its button, moved by a step while the button is down.
  void SetCiconPosition1(int line);
  void SetCiconPosition2(int line);

  // The lamp cadence bytes of a line for the switch console.
  std::string GetCadence(int line) const;

 private:
  // Fits the width of the first row's marks to a form of another size.
  void MarkerPointTimer_Timer();

  ConsoleState& state_;
  // The size of the form at the last tick of MarkerPointTimer.
  int marked_width_ = 0;
  int marked_height_ = 0;
};

// A mark is thinner on a strip that has hardly any room.
int mark_width_on(int strip_width);

struct IconOffset {
  int left;
  int top;
};
// From the left and top of a row button of that height, pressed or not, to its icon.
IconOffset icon_offset(int button_height, bool pressed);

}  // namespace lineweir
