#include "elements/control.h"

#include "elements/form.h"

namespace lineweir {

void Control::set_container(Control* container) {
  if (container_ == container) return;
  container_ = container;
  form().tell_moved_to_container(*this);
}

void Control::move(int new_left, int new_top, int new_width, int new_height) {
  move(new_left, new_top);
  width = new_width;
  height = new_height;
}

void Control::move(int new_left, int new_top) {
  left = new_left;
  top = new_top;
}

bool Control::shown() const {
  for (const Control* control = this; control != nullptr; control = control->container_) {
    if (!control->visible) return false;
  }
  return true;
}

void Control::bring_to_front() { form().raise(*this); }

void Control::set_focus() { form().focus(this); }

}  // namespace lineweir
