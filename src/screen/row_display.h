#pragma once

#include <string>
#include <string_view>

#include "core/status_letters.h"

namespace lineweir {

struct Console;

// How a row shows the state of its line: strip, marks and icons.
class RowDisplay {
 public:
  explicit RowDisplay(Console& console);

  // The icons on the row's two buttons: 0 hides, 1 red, 2 green, 3 yellow, 4 blue; any other
  // value leaves the icon alone.
  void HybridPictureSet(int line, int color1, int color2);

  // Writes the status text from the line's letter alone, as a display is rebuilt from the table.
  void SetStatusText(int line);

  void set_row_color(int line, RowColor color);

  // Places the row's marks at the edges of its columns, in the strip's colour.
  void DrawMark(int line);
  void DrawMark();

  // Places an icon on its button, moved by a step while the button is down.
  void SetCiconPosition1(int line);
  void SetCiconPosition2(int line);

  // The lamp cadence bytes of a line for the switch console.
  std::string GetCadence(int line) const;

 private:
  Console& console_;
};

// The picture holders of a row's strip and of its marks.
std::string_view strip_picture(RowColor color);
std::string_view mark_picture(std::string_view strip);

struct IconOffset {
  int left;
  int top;
};
// From the left and top of a row button of that height, pressed or not, to its icon.
IconOffset icon_offset(int button_height, bool pressed);

}  // namespace lineweir
