#include "elements/menu_item.h"

#include "elements/form.h"

namespace lineweir {

MenuItem::MenuItem(Form& form, std::string_view name, int index)
    : Element(form, ElementKind::MenuItem, name, index) {}

MenuItem::MenuItem(Form& form, MenuItem& parent, std::string_view name, std::string_view text,
                   int index)
    : MenuItem(form, name, index) {
  caption = text;
  set_parent(parent);
}

MenuItem::~MenuItem() {
  for (MenuItem* child : children_) child->parent_ = nullptr;
  if (parent_ != nullptr) std::erase(parent_->children_, this);
}

void MenuItem::set_parent(MenuItem& parent) {
  if (parent_ == &parent) return;
  if (parent_ != nullptr) std::erase(parent_->children_, this);
  parent_ = &parent;
  parent.children_.push_back(this);
  form().tell_menu_changed(parent);
}

bool MenuItem::shown() const {
  for (const MenuItem* item = this; item != nullptr; item = item->parent_) {
    if (!item->visible) return false;
  }
  return true;
}

bool MenuItem::reachable() const {
  for (const MenuItem* item = this; item != nullptr; item = item->parent_) {
    if (!item->enabled) return false;
  }
  return shown();
}

}  // namespace lineweir
