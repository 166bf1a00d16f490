#pragma once

#include "elements/control.h"

namespace lineweir {

// A push button of a dialog. Beside its caption it may show the picture of a holder.
class Button : public Control {
 public:
  Button(Form& form, std::string_view name, std::string_view text = {}, int index = no_index)
      : Control(form, ElementKind::Button, name, index) {
    caption = text;
  }
  // An element of a control array.
  Button(Form& form, std::string_view name, int index) : Button(form, name, {}, index) {}

  Property<std::string> caption{*this, PropertyId::Caption};
  Property<std::string> picture{*this, PropertyId::Picture};
  // What is told of it where the pointer rests on it, and by screen readers.
  Property<std::string> tool_tip{*this, PropertyId::ToolTip};
};

class CheckBox : public Control {
 public:
  CheckBox(Form& form, std::string_view name, int index = no_index)
      : Control(form, ElementKind::CheckBox, name, index) {}

  Property<std::string> caption{*this, PropertyId::Caption};
  // 0 not checked, 1 checked.
  Property<int> value{*this, PropertyId::Value, 0};
};

// One of a set of buttons of which exactly one is chosen: all option buttons of one container.
class OptionButton : public Control {
 public:
  OptionButton(Form& form, std::string_view name, std::string_view text = {}, int index = no_index)
      : Control(form, ElementKind::OptionButton, name, index) {
    caption = text;
  }

  Property<std::string> caption{*this, PropertyId::Caption};
  Property<bool> value{*this, PropertyId::Value, false};
};

}  // namespace lineweir
