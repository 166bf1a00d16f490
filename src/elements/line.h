#pragma once

#include "elements/control.h"

namespace lineweir {

// A straight line between two points, in twips of its container.
class Line : public Element {
 public:
  Line(Form& form, std::string_view name, Control* container, int index = no_index)
      : Element(form, ElementKind::Line, name, index), container_(container) {}

  Property<int> x1{*this, PropertyId::X1};
  Property<int> y1{*this, PropertyId::Y1};
  Property<int> x2{*this, PropertyId::X2};
  Property<int> y2{*this, PropertyId::Y2};
  // In pixels at 96 to the inch.
  Property<int> border_width{*this, PropertyId::BorderWidth, 1};
  Property<bool> visible{*this, PropertyId::Visible, true};

  Control* container() const { return container_; }

 private:
  Control* container_;
};

// A filled figure: the lamp of the link.
class Shape : public Control {
 public:
  Shape(Form& form, std::string_view name, int index = no_index)
      : Control(form, ElementKind::Shape, name, index) {}

  Property<int> fill_color{*this, PropertyId::FillColor, color_white};

 protected:
  PropertyId change_property() const override { return PropertyId::FillColor; }
};

}  // namespace lineweir
