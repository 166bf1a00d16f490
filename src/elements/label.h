#pragma once

#include "elements/control.h"

namespace lineweir {

enum TextAlignment { align_left = 0, align_right = 1, align_center = 2 };

// A text that the user reads. An "&" in front of a letter makes that letter its access key.
class Label : public Control {
 public:
  Label(Form& form, std::string_view name, int index = no_index)
      : Control(form, ElementKind::Label, name, index) {}

  Property<std::string> caption{*this, PropertyId::Caption};
  Property<int> alignment{*this, PropertyId::Alignment, align_left};
  Property<int> fore_color{*this, PropertyId::ForeColor, color_black};
  Property<int> back_color{*this, PropertyId::BackColor, color_white};
  FontProperties font{*this};
};

}  // namespace lineweir
