#include "core/timer_runner.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "elements/label.h"
#include "platform/scripted/virtual_event_loop.h"
#include "support/listen.h"
#include "support/property_check.h"

namespace lineweir::test {
namespace {

using platform::Milliseconds;

// A form with one timer, and the times at which it has ticked.
struct TickingForm {
  explicit TickingForm(bool enabled = true, int interval = 100)
      : timer(form, "Timer1", enabled, interval) {
    listen(timer.on_timer, [this] { ticks.push_back(static_cast<int>(loop.now().count())); });
  }

  void pass(int milliseconds) { loop.advance(Milliseconds(milliseconds)); }

  platform::VirtualEventLoop loop;
  Form form{"Form"};
  Timer timer;
  std::vector<int> ticks;
  std::optional<TimerRunner> runner{std::in_place, form, loop};
};

using Ticks = std::vector<int>;

TEST_SUITE("core/timer runner") {
  TEST_CASE("an enabled timer ticks each interval") {
    TickingForm form;
    form.pass(99);
    CHECK(form.ticks.empty());
    form.pass(251);
    CHECK(form.ticks == Ticks{100, 200, 300});
  }

  TEST_CASE("a disabled timer, and one without an interval, don't tick") {
    TickingForm disabled(false);
    TickingForm without(true, 0);
    disabled.pass(1000);
    without.pass(1000);
    CHECK(disabled.ticks.empty());
    CHECK(without.ticks.empty());
    CHECK(disabled.loop.scheduled() == 0);
  }

  TEST_CASE("enabling begins a period, disabling ends it at once") {
    TickingForm form(false);
    form.pass(50);
    form.timer.enabled = true;
    form.pass(120);
    form.timer.enabled = false;
    form.pass(500);
    CHECK(form.ticks == Ticks{150});
    CHECK(form.loop.scheduled() == 0);
  }

  TEST_CASE("another interval begins a period anew, the same one doesn't") {
    TickingForm form;
    form.pass(60);
    form.timer.interval = 100;
    form.timer.enabled = true;
    form.pass(40);
    CHECK(form.ticks == Ticks{100});
    form.pass(60);
    form.timer.interval = 50;
    form.pass(60);
    CHECK(form.ticks == Ticks{100, 210});
  }

  TEST_CASE("a handler may switch its own timer off, or give it another interval") {
    TickingForm once;
    listen(once.timer.on_timer, [&] {
      once.ticks.push_back(static_cast<int>(once.loop.now().count()));
      once.timer.enabled = false;
    });
    once.pass(1000);
    CHECK(once.ticks == Ticks{100});

    TickingForm blink(true, 400);
    listen(blink.timer.on_timer, [&] {
      blink.ticks.push_back(static_cast<int>(blink.loop.now().count()));
      blink.timer.enabled = false;
      blink.timer.interval = blink.timer.interval == 400 ? 100 : 400;
      blink.timer.enabled = true;
    });
    blink.pass(1100);
    CHECK(blink.ticks == Ticks{400, 500, 900, 1000});
  }

  TEST_CASE("a handler that waits misses the ticks due meanwhile, and keeps its beat") {
    TickingForm form;
    listen(form.timer.on_timer, [&] {
      form.ticks.push_back(static_cast<int>(form.loop.now().count()));
      if (form.ticks.size() > 1) return;
      while (form.loop.now() < Milliseconds(350)) form.loop.yield();
    });
    form.pass(620);
    REQUIRE(form.ticks.size() >= 2);
    CHECK(form.ticks[0] == 100);
    CHECK(form.ticks[1] == 500);
    CHECK(form.ticks.back() == 600);
  }

  TEST_CASE("timers of one form don't disturb one another") {
    TickingForm form;
    Timer other(form.form, "Timer2", true, 70);
    int ticks_of_other = 0;
    listen(other.on_timer, [&] { ++ticks_of_other; });
    Label label(form.form, "Label");
    label.caption = "no timer";
    form.pass(210);
    CHECK(form.ticks == Ticks{100, 200});
    CHECK(ticks_of_other == 3);
  }

  TEST_CASE("a timer made later ticks, and one that goes leaves nothing behind") {
    TickingForm form(false);
    {
      Timer later(form.form, "Timer2", true, 30);
      int ticks = 0;
      listen(later.on_timer, [&] { ++ticks; });
      form.pass(100);
      CHECK(ticks == 3);
    }
    CHECK(form.loop.scheduled() == 0);
    form.pass(100);
  }

  TEST_CASE("a runner that goes stops its timers") {
    TickingForm form;
    form.runner.reset();
    CHECK(form.loop.scheduled() == 0);
    form.timer.interval = 50;
    form.pass(500);
    CHECK(form.ticks.empty());
  }

  TEST_CASE("no switching on and off makes a timer tick twice in an interval") {
    check_property([](const std::vector<std::uint8_t>& steps) {
      TickingForm form;
      for (const std::uint8_t step : steps) {
        if (step % 4 == 0) form.timer.enabled = !form.timer.enabled;
        form.pass(step % 64);
      }
      for (std::size_t i = 1; i < form.ticks.size(); ++i) {
        RC_ASSERT(form.ticks[i] - form.ticks[i - 1] >= 100);
      }
      RC_ASSERT(form.loop.scheduled() == (form.timer.enabled ? 1U : 0U));
    });
  }
}

}  // namespace
}  // namespace lineweir::test
