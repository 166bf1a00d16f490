#pragma once

#include "base/event.h"
#include "elements/control.h"

namespace lineweir {

// A box in which the user types. The caret stands before character sel_start.
class TextBox : public Control {
 public:
  TextBox(Form& form, std::string_view name, int index = no_index)
      : Control(form, ElementKind::TextBox, name, index) {}

  Property<std::string> text{*this, PropertyId::Text};
  Property<int> sel_start{*this, PropertyId::SelStart, 0};
  Property<int> fore_color{*this, PropertyId::ForeColor, color_black};
  Property<int> back_color{*this, PropertyId::BackColor, color_white};
  Property<int> alignment{*this, PropertyId::Alignment, 0};
  FontProperties font{*this};
  // What stands there while the box is empty, and what is told of its text where the pointer rests
  // on it.
  Property<std::string> hint{*this, PropertyId::Hint};
  Property<std::string> tool_tip{*this, PropertyId::ToolTip};

  // Shown as dots, as a password is.
  bool hides_text = false;
  bool multi_line = false;

  // Asked what becomes of the text that the user's hand has made of the box's, by a key, a paste or
  // another text in its place, before the box takes it. It may change the text and the caret.
  Event<void(std::string& text, int& caret)> on_edit;

  // Enters a character at the caret as the user's key does, when no handler has swallowed it:
  // Backspace takes one off, a carriage return is entered only in a box of several lines, other
  // control characters are passed over.
  void enter(int key);

  // The user's hand makes this the text, with the caret there.
  void edit(std::string changed, int caret);

  void caret_to_end() { sel_start = static_cast<int>(text.get().size()); }

 protected:
  PropertyId change_property() const override { return PropertyId::Text; }
};

}  // namespace lineweir
