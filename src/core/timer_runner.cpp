#include "core/timer_runner.h"

namespace lineweir {

TimerRunner::TimerRunner(Form& form, platform::EventLoop& loop) : FormWatch(form), loop_(loop) {
  for (Element* element : form.elements()) {
    if (element->kind() == ElementKind::Timer) restart(static_cast<Timer&>(*element));
  }
}

TimerRunner::~TimerRunner() {
  for (auto& [element, arming] : armings_) disarm(arming);
}

void TimerRunner::changed(Element& element, PropertyId property) {
  if (element.kind() != ElementKind::Timer) return;
  if (property == PropertyId::Enabled || property == PropertyId::Interval) {
    restart(static_cast<Timer&>(element));
  }
}

void TimerRunner::removed(Element& element) {
  const auto found = armings_.find(&element);
  if (found == armings_.end()) return;
  disarm(found->second);
  armings_.erase(found);
}

void TimerRunner::restart(Timer& timer) {
  Arming& arming = armings_[&timer];
  disarm(arming);
  if (timer.enabled && timer.interval > 0) arm(timer, arming);
}

void TimerRunner::arm(Timer& timer, Arming& arming) {
  arming.call =
      loop_.schedule(platform::Milliseconds(timer.interval), [this, &timer] { tick(timer); });
  arming.armed = true;
}

void TimerRunner::disarm(Arming& arming) {
  if (arming.armed) loop_.cancel(arming.call);
  arming.armed = false;
}

void TimerRunner::tick(Timer& timer) {
  // The next period begins with this tick, not when the handler has ended, so that a long handler
  // doesn't slow the clock down.
  Arming& arming = armings_[&timer];
  arm(timer, arming);
  if (arming.ticking) return;
  arming.ticking = true;
  timer.tick();
  const auto still_there = armings_.find(&timer);
  if (still_there != armings_.end()) still_there->second.ticking = false;
}

}  // namespace lineweir
