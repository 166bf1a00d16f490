#pragma once

#include <memory>
#include <unordered_map>

#include "elements/form.h"
#include "elements/timer.h"
#include "platform/event_loop.h"

namespace lineweir {

// Makes the timers of a form tick. Enabling a timer, or giving an enabled one another interval,
// starts its period anew; from then on it ticks each interval. A tick that falls due while the
// timer's own handler is running (because it waits) is passed over.
class TimerRunner : private FormWatch {
 public:
  TimerRunner(Form& form, platform::EventLoop& loop);
  ~TimerRunner() override;

 private:
  struct Arming {
    platform::EventLoop::CallId call = 0;
    bool armed = false;
    bool ticking = false;
  };

  // A timer made later than the runner tells of itself as it sets its properties.
  void changed(Element& element, PropertyId property) override;
  void removed(Element& element) override;
  void restart(Timer& timer);
  void arm(Timer& timer, Arming& arming);
  void disarm(Arming& arming);
  void tick(Timer& timer);

  platform::EventLoop& loop_;
  std::unordered_map<const Element*, Arming> armings_;
};

}  // namespace lineweir
