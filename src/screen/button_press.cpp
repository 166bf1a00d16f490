#include "screen/button_press.h"

#include <functional>
#include <utility>

#include "screen/button_faces.h"
#include "screen/row_display.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

// The part on the button behaves as if the button itself had been hit. The button is looked up at
// each event, since a part of a row may be loaded before its button.
void forward(Trace& trace, Control& part, const std::function<Picture&()>& button) {
  const std::string name = "Lineweir_" + part.name();
  wire(part.on_mouse_down, trace, name + "_MouseDown",
       [button](int mouse_button, int shift) { button().on_mouse_down(mouse_button, shift); });
  wire(part.on_mouse_up, trace, name + "_MouseUp",
       [button](int mouse_button, int shift) { button().on_mouse_up(mouse_button, shift); });
  wire(part.on_click, trace, name + "_Click", [button] {
    if (button().enabled) button().on_click();
  });
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

void ButtonPress::release(Picture& button) {
  const bool is_shown_down = &button == &state_.Lineweir.OptionsButton;
  if (std::exchange(pressed_, nullptr) != &button && is_shown_down) return;
  const ButtonFaces* faces = faces_holding(button.picture.get());
  if (button.enabled && faces != nullptr && button.picture == faces->down) {
    button.picture = faces->up;
  }
}

void ButtonPress::wire_panel_button(Picture& button, Control& image, Control& label) {
  wire(button.on_mouse_down, state_.trace, "Lineweir_" + button.name() + "_MouseDown",
       [this, &button](int mouse_button, int) {
         if (mouse_button == left_button) press(button);
       });
  wire(button.on_mouse_up, state_.trace, "Lineweir_" + button.name() + "_MouseUp",
       [this, &button](int mouse_button, int) {
         if (mouse_button == left_button) release(button);
       });
  forward(state_.trace, image, [&button]() -> Picture& { return button; });
  forward(state_.trace, label, [&button]() -> Picture& { return button; });
}

void ButtonPress::wire_row_buttons() {
  MainForm& form = state_.Lineweir;
  const auto wire_column = [this](ControlArray<Picture>& buttons, ControlArray<Picture>& icons,
                                  void (RowDisplay::*place_icon)(int)) {
    buttons.wire_each([this, place_icon](Picture& button) {
      wire(button.on_mouse_down, state_.trace, "Lineweir_" + button.name() + "_MouseDown",
           [this, &button, place_icon](int mouse_button, int) {
             if (mouse_button != left_button || !press(button)) return;
             (rows_.*place_icon)(button.index());
           });
      wire(button.on_mouse_up, state_.trace, "Lineweir_" + button.name() + "_MouseUp",
           [this, &button, place_icon](int mouse_button, int) {
             if (mouse_button != left_button) return;
             // Its face may have changed under the finger.
             if (button.enabled) release(button);
             (rows_.*place_icon)(button.index());
           });
    });
    icons.wire_each([this, &buttons](Picture& icon) {
      forward(state_.trace, icon,
              [&buttons, line = icon.index()]() -> Picture& { return buttons(line); });
    });
  };
  wire_column(form.OnHybrid1, form.CIcon1, &RowDisplay::SetCiconPosition1);
  wire_column(form.OnHybrid2, form.CIcon2, &RowDisplay::SetCiconPosition2);
}

}  // namespace lineweir
