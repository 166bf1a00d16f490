#pragma once

#include "elements/control.h"

namespace lineweir {

// A captioned box around controls that belong together, which stand in it.
class Frame : public Control {
 public:
  Frame(Form& form, std::string_view name, std::string_view text)
      : Control(form, ElementKind::Frame, name, no_index) {
    caption = text;
  }

  Property<std::string> caption{*this, PropertyId::Caption};
};

}  // namespace lineweir
