#include "messages/quick_line.h"

#include "elements/control.h"
#include "elements/key_characters.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {

QuickLine::QuickLine(ConsoleState& state) : state_(state) {
  MainForm& form = state.Lineweir;
  wire(form.Text2.on_key_press, state_.trace, "Lineweir_Text2_KeyPress",
       [this](int& key) { Text2_KeyPress(key); });
  wire(form.Text2.on_lost_focus, state_.trace, "Lineweir_Text2_LostFocus",
       [this] { Text2_LostFocus(); });
  wire(form.Text1.on_key_press, state_.trace, "Lineweir_Text1_KeyPress",
       [this](int& key) { Text1_KeyPress(key); });
  wire(state.FlashMessA.FlashMessACancel.on_click, state_.trace,
       "FlashMessA_FlashMessACancel_Click", [this] { state_.FlashMessA.hide(); });
  wire(form.Text1.on_dbl_click, state_.trace, "Lineweir_Text1_DblClick",
       [this] { Text1_DblClick(); });
}

void QuickLine::open() {
  MainForm& form = state_.Lineweir;
  if (form.focused() != &form.Text2) former_ = form.focused();
  form.Text2.move(form.Text1.left, form.Text1.top, form.Text1.width, form.Text1.height);
  form.Text2.visible = true;
  form.Text2.enabled = true;
  form.Text2.bring_to_front();
  form.Text2.set_focus();
}

void QuickLine::Text2_KeyPress(int& key) {
  if (key == escape_key) {
    key = 0;
    close();
  } else if (key == enter_key) {
    key = 0;
    state_.Lineweir.Text2.text = "";
  }
}

void QuickLine::Text2_LostFocus() { close(); }

void QuickLine::close() {
  MainForm& form = state_.Lineweir;
  form.Text2.enabled = false;
  form.Text2.visible = false;
  if (form.focused() == &form.Text2) give_focus_back();
}

void QuickLine::give_focus_back() {
  MainForm& form = state_.Lineweir;
  Control* present = nullptr;
  // The element may have gone with its row.
  for (Element* element : form.elements()) {
    auto* control = dynamic_cast<Control*>(element);
    if (control != nullptr && control == former_) present = control;
  }
  form.focus(present != nullptr && present->shown() && present->enabled ? present : nullptr);
}

void QuickLine::Text1_KeyPress(int& key) { key = 0; }

void QuickLine::Text1_DblClick() {
  if (state_.program.MessagesAllowed) state_.FlashMessA.show();
}

}  // namespace lineweir
