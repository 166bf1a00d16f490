// What one tick of the clocks costs, over a week of ticks with every row's clock running, and
// whether it takes memory once the first day has gone by.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <functional>

#include "allocation_count.h"
#include "base/time_text.h"
#include "clocks/show_plan.h"
#include "core/console.h"
#include "platform/scripted/scripted_platform.h"
#include "platform/services_with.h"

namespace {

using namespace lineweir;

constexpr int ticks_per_second = 10;
constexpr std::int64_t ticks_per_day = 24 * 60 * 60 * ticks_per_second;
constexpr std::int64_t ticks_per_week = 7 * ticks_per_day;

// A clock that goes on by a tenth of a second at each tick.
class TickClock final : public platform::SystemClock {
 public:
  platform::DateTime now() const override {
    const auto second = static_cast<int>(ticks_ / ticks_per_second % (24 * 60 * 60));
    const auto day = static_cast<int>(ticks_ / ticks_per_day % 28);
    return {2026, 2, 1 + day, second / 3600, second / 60 % 60, second % 60};
  }
  void set(const platform::DateTime&) override {}
  void go_on() { ++ticks_; }

 private:
  std::int64_t ticks_ = 0;
};

// A loop that runs nothing: the ticks are given by hand, and what a platform's loop takes to keep
// the blink's timer isn't counted.
class StillLoop final : public platform::EventLoop {
 public:
  platform::Milliseconds now() const override { return {}; }
  CallId schedule(platform::Milliseconds, std::function<void()>) override { return 0; }
  void cancel(CallId) override {}
  void run_pending() override {}
  void yield() override {}
};

// A console with that many rows, all of whose clocks run, on a workstation of its own.
class TickingConsole {
 public:
  TickingConsole(int rows, const ShowPlan& plan) {
    console_.startup.Main("");
    for (int line = console_.lines.LineCount; line < rows; ++line) {
      console_.lines.resize(line + 1);
      console_.Lineweir.load_row(line);
    }
    for (int line = 0; line < rows; ++line) {
      console_.lines.ClockRunning(line) = 1;
      console_.lines.ClockBase(line) = "00:00:00";
    }
    console_.show_plan.plan = plan;
  }

  void tick() {
    clock_.go_on();
    console_.Lineweir.Timer1.on_timer();
  }

 private:
  StillLoop loop_;
  TickClock clock_;
  platform::ScriptedPlatform platform_;
  Console console_{
      platform::services_with(platform_.services(), {.loop = &loop_, .clock = &clock_})};
};

// All forty rows in use: one every one and a half minutes.
ShowPlan hourly_plan() {
  ShowPlan plan;
  plan.ShowTimes(show_start_entry) = "xx:00:00";
  plan.ShowTimes(show_end_entry) = "xx:00:00";
  for (int entry = first_event_entry; entry <= show_entry_count; ++entry) {
    plan.ShowTimes(entry) = hms_text((entry - show_end_entry) * 88).replace(0, 2, "xx");
    plan.ShowTexts(entry) = "Twenty characters it";
  }
  plan.ShowTimes(show_entry_count) = "";
  return plan;
}

// The same for the last eight hours of each day, with a row every twelve minutes.
ShowPlan timed_plan() {
  ShowPlan plan;
  plan.ShowTimes(show_start_entry) = "16:00:00";
  plan.ShowTimes(show_end_entry) = "23:59:59";
  for (int entry = first_event_entry; entry <= show_entry_count; ++entry) {
    plan.ShowTimes(entry) = hms_text(16 * 60 * 60 + (entry - show_end_entry) * 719);
    plan.ShowTexts(entry) = "Twenty characters it";
  }
  plan.ShowTimes(show_entry_count) = "23:59:59";
  return plan;
}

void run_week(benchmark::State& state, const ShowPlan& plan) {
  TickingConsole console(static_cast<int>(state.range(0)), plan);
  for (std::int64_t tick = 0; tick < ticks_per_day; ++tick) console.tick();
  const std::int64_t before = allocation_count();
  for (auto _ : state) console.tick();
  state.counters["allocations"] = static_cast<double>(allocation_count() - before);
}

void week_of_an_hourly_show(benchmark::State& state) { run_week(state, hourly_plan()); }
void week_of_a_timed_show(benchmark::State& state) { run_week(state, timed_plan()); }

BENCHMARK(week_of_an_hourly_show)->Arg(10)->Arg(20)->Iterations(ticks_per_week);
BENCHMARK(week_of_a_timed_show)->Arg(10)->Arg(20)->Iterations(ticks_per_week);

}  // namespace
