#pragma once

#include "elements/control.h"

namespace lineweir {

// A place for a picture; also a container, a picture button, or a holder that others take their
// picture from. The picture's value is the name of the holder that it came from.
class Picture : public Control {
 public:
  Picture(Form& form, std::string_view name, int index = no_index)
      : Control(form, ElementKind::Picture, name, index) {}

  Property<std::string> picture{*this, PropertyId::Picture};
  Property<int> back_color{*this, PropertyId::BackColor, color_white};
  // The user has no right to it.
  Property<bool> withheld{*this, PropertyId::Withheld, false};

 protected:
  PropertyId change_property() const override { return PropertyId::Picture; }
};

}  // namespace lineweir
