#pragma once

#include "base/event.h"
#include "elements/control.h"

namespace lineweir {

// A list of texts of which at most one is chosen; list_index is -1 while none is.
class ListControl : public Control {
 public:
  Property<std::vector<std::string>> list{*this, PropertyId::List};
  Property<int> list_index{*this, PropertyId::ListIndex, -1};

  int list_count() const { return static_cast<int>(list.get().size()); }
  void add_item(std::string_view text);
  void remove_item(int index);
  void set_item(int index, std::string_view text);
  void clear();

  // A choice by the user's hand: sets list_index and runs the click.
  void select(int index);

 protected:
  using Control::Control;
};

class ListBox : public ListControl {
 public:
  ListBox(Form& form, std::string_view name, int index = no_index)
      : ListControl(form, ElementKind::ListBox, name, index) {}

  // The user drags an entry: the entry that was under the button when it went down, and the entry
  // now under the pointer.
  Event<void(int from, int to)> on_drag;
};

// A list with a box that shows the chosen text or one that the user types.
class ComboBox : public ListControl {
 public:
  ComboBox(Form& form, std::string_view name, int index = no_index)
      : ListControl(form, ElementKind::ComboBox, name, index) {}

  Property<std::string> text{*this, PropertyId::Text};

 protected:
  PropertyId change_property() const override { return PropertyId::Text; }
  void property_changed(PropertyId id) override;
};

}  // namespace lineweir
