#include "messages/quick_line.h"

#include "core/console.h"
#include "core/guard.h"
#include "elements/control.h"

namespace lineweir {
namespace {

constexpr int enter_key = 13;
constexpr int escape_key = 27;

}  // namespace

QuickLine::QuickLine(Console& console) : console_(console) {
  MainForm& form = console.Lineweir;
  form.Text2.on_key_press = [this](int& key) { Text2_KeyPress(key); };
  form.Text2.on_lost_focus = [this] { Text2_LostFocus(); };
  form.Text1.on_key_press = [this](int& key) { Text1_KeyPress(key); };
  form.Text1.on_dbl_click = [this] { Text1_DblClick(); };
}

void QuickLine::open() {
  MainForm& form = console_.Lineweir;
  if (form.focused() != &form.Text2) former_ = form.focused();
  form.Text2.move(form.Text1.left, form.Text1.top, form.Text1.width, form.Text1.height);
  form.Text2.visible = true;
  form.Text2.enabled = true;
  form.Text2.bring_to_front();
  form.Text2.set_focus();
}

void QuickLine::Text2_KeyPress(int& key) {
  guard(console_, "Lineweir_Text2_KeyPress", [&] {
    if (key == escape_key) {
      key = 0;
      close();
    } else if (key == enter_key) {
      key = 0;
      console_.Lineweir.Text2.text = "";
    }
  });
}

void QuickLine::Text2_LostFocus() {
  guard(console_, "Lineweir_Text2_LostFocus", [&] { close(); });
}

void QuickLine::close() {
  MainForm& form = console_.Lineweir;
  form.Text2.enabled = false;
  form.Text2.visible = false;
  if (form.focused() == &form.Text2) give_focus_back();
}

void QuickLine::give_focus_back() {
  MainForm& form = console_.Lineweir;
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
  guard(console_, "Lineweir_Text1_DblClick", [&] {
    if (console_.program.MessagesAllowed) console_.FlashMessA.show();
  });
}

}  // namespace lineweir
