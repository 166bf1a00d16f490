#pragma once

#include <vector>

#include "base/event.h"
#include "elements/element.h"

namespace lineweir {

// An entry of a form's menu. Top entries have the form itself as parent; the order of making is the
// order on the screen. The caption "-" is a separator.
class MenuItem : public Element {
 public:
  // A top entry of the form's menu bar, or an entry of an array whose place set_parent tells.
  MenuItem(Form& form, std::string_view name, int index = no_index);
  MenuItem(Form& form, MenuItem& parent, std::string_view name, std::string_view text,
           int index = no_index);
  ~MenuItem() override;

  Property<std::string> caption{*this, PropertyId::Caption};
  Property<bool> checked{*this, PropertyId::Checked, false};
  Property<bool> enabled{*this, PropertyId::Enabled, true};
  Property<bool> visible{*this, PropertyId::Visible, true};
  // The user has no right to it.
  Property<bool> withheld{*this, PropertyId::Withheld, false};

  Event<void()> on_click;

  // The key that chooses the entry wherever the focus is, such as "F5"; shown beside the caption.
  std::string shortcut;

  MenuItem* parent() const { return parent_; }
  const std::vector<MenuItem*>& children() const { return children_; }
  void set_parent(MenuItem& parent);

  // True when the entry and all entries above it are visible, and when they are enabled too.
  bool shown() const;
  bool reachable() const;

 private:
  MenuItem* parent_ = nullptr;
  std::vector<MenuItem*> children_;
};

}  // namespace lineweir
