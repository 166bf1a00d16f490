#pragma once

#include "base/event.h"
#include "elements/element.h"

namespace lineweir {

// Ticks each `interval` milliseconds while it is enabled. It knows no clock: whoever runs the form
// watches its properties and calls tick().
class Timer : public Element {
 public:
  Timer(Form& form, std::string_view name, bool enabled_at_first, int milliseconds,
        int index = no_index)
      : Element(form, ElementKind::Timer, name, index) {
    enabled = enabled_at_first;
    interval = milliseconds;
  }

  Property<bool> enabled{*this, PropertyId::Enabled, false};
  Property<int> interval{*this, PropertyId::Interval, 0};

  Event<void()> on_timer;

  void tick() { on_timer(); }
};

}  // namespace lineweir
