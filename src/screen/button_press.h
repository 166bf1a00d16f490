#pragma once

#include "elements/picture.h"

namespace lineweir {

class RowDisplay;
struct ConsoleState;

// What a press of the left mouse button does to the picture buttons of the main form: the face goes
// down and comes up again. The image, the label and the icon that lie on a button forward the mouse
// to it. A disabled button doesn't react, whatever picture it shows; neither does one that doesn't
// show the face that the press would change.
class ButtonPress {
 public:
  ButtonPress(ConsoleState& state, RowDisplay& rows);

 private:
  // Whether the button's face has changed.
  bool press(Picture& button);
  void release(Picture& button);

  void wire_panel_button(Picture& button, Control& image, Control& label);
  void wire_row_buttons();

  ConsoleState& state_;
  RowDisplay& rows_;
  // The button that a press has put down. The setup button shows its down face while the menus are
  // shown as well, and a release must not take that away. Compared only.
  const Picture* pressed_ = nullptr;
};

}  // namespace lineweir
