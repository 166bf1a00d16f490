#include "screen/button_press.h"

#include <functional>

#include "screen/button_faces.h"
#include "screen/row_display.h"
#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {
namespace {

// The part on the button behaves as if the button itself had been hit. The button is looked up at
// each event, since a part of a row may be loaded before its button.
void forward(Control& part, const std::function<Picture&()>& button) {
  part.on_mouse_down = [button](int mouse_button, int shift) {
    if (button().on_mouse_down) button().on_mouse_down(mouse_button, shift);
  };
  part.on_mouse_up = [button](int mouse_button, int shift) {
    if (button().on_mouse_up) button().on_mouse_up(mouse_button, shift);
  };
  part.on_click = [button] {
    if (button().enabled && button().on_click) button().on_click();
  };
}

}  // namespace

ButtonPress::ButtonPress(ConsoleState& state, RowDisplay& rows) : state_(state), rows_(rows) {
  for (const PanelButton& laid : state.Lineweir.panel_buttons()) {
    wire_panel_button(laid.button, laid.image, laid.label);
  }
  wire_row_buttons();
}

bool ButtonPress::press(Picture& button) {
  const ButtonFaces* faces = faces_holding(button.picture.get());
  if (!button.enabled || faces == nullptr || button.picture != faces->up) return false;
  button.picture = faces->down;
  pressed_ = &button;
  return true;
}

bool ButtonPress::release(Picture& button) {
  if (pressed_ != &button) return false;
  pressed_ = nullptr;
  const ButtonFaces* faces = faces_holding(button.picture.get());
  if (!button.enabled || faces == nullptr || button.picture != faces->down) return false;
  button.picture = faces->up;
  return true;
}

void ButtonPress::wire_panel_button(Picture& button, Control& image, Control& label) {
  button.on_mouse_down = [this, &button](int mouse_button, int) {
    guard(state_.trace, "Lineweir_" + button.name() + "_MouseDown", [&] {
      if (mouse_button == left_button) press(button);
    });
  };
  button.on_mouse_up = [this, &button](int mouse_button, int) {
    guard(state_.trace, "Lineweir_" + button.name() + "_MouseUp", [&] {
      if (mouse_button == left_button) release(button);
    });
  };
  forward(image, [&button]() -> Picture& { return button; });
  forward(label, [&button]() -> Picture& { return button; });
}

void ButtonPress::wire_row_buttons() {
  MainForm& form = state_.Lineweir;
  const auto wire = [this](ControlArray<Picture>& buttons, ControlArray<Picture>& icons,
                           void (RowDisplay::*place_icon)(int)) {
    buttons.wire([this, place_icon](Picture& button) {
      button.on_mouse_down = [this, &button, place_icon](int mouse_button, int) {
        guard(state_.trace, "Lineweir_" + button.name() + "_MouseDown", [&] {
          if (mouse_button != left_button || !press(button)) return;
          (rows_.*place_icon)(button.index());
        });
      };
      button.on_mouse_up = [this, &button, place_icon](int mouse_button, int) {
        guard(state_.trace, "Lineweir_" + button.name() + "_MouseUp", [&] {
          if (mouse_button != left_button || !release(button)) return;
          (rows_.*place_icon)(button.index());
        });
      };
    });
    icons.wire([&buttons](Picture& icon) {
      forward(icon, [&buttons, line = icon.index()]() -> Picture& { return buttons(line); });
    });
  };
  wire(form.OnHybrid1, form.CIcon1, &RowDisplay::SetCiconPosition1);
  wire(form.OnHybrid2, form.CIcon2, &RowDisplay::SetCiconPosition2);
}

}  // namespace lineweir
