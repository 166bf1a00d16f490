#include "clocks/clock_engine.h"

#include "base/integer16.h"
#include "base/text.h"
#include "base/time_text.h"
#include "clocks/show_plan_store.h"
#include "clocks/warning_threshold.h"
#include "link/link_watch.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr auto timer1_handler = "Lineweir_Timer1_Timer";

constexpr int event_hand_width = 2;
constexpr int last_minute_hand_width = 1;

HandPoint near_end(const Line& hand) { return {hand.x1, hand.y1}; }

void set_far_end(Line& hand, HandPoint point) {
  hand.x2 = point.x;
  hand.y2 = point.y;
}

// The seconds that a number of them stands for as a text of time: only 0 to 59 make one.
int offset_seconds(int delay_offset) {
  const char* const before = delay_offset < 10 ? "00:00:0" : "00:00:00";
  return required_time_of_day(before + std::to_string(delay_offset));
}

int length_of(const Line& hand) { return hand.y2 - hand.y1; }

}  // namespace

ClockEngine::ClockEngine(ConsoleState& state, ShowPlanStore& show_plan, LinkWatch& link)
    : state_(state), show_plan_(show_plan), link_(link) {
  MainForm& form = state.Lineweir;
  state.clock_state.SecondRadius = length_of(form.SecondHand);
  state.clock_state.MinuteRadius = length_of(form.MinuteHand);
  state.clock_state.HourRadius = length_of(form.HourHand);
  wire(form.Timer1.on_timer, state_.trace, timer1_handler, [this] { Timer1_Timer(); });
  wire(form.Timer2.on_timer, state_.trace, "Lineweir_Timer2_Timer", [this] { Timer2_Timer(); });
  wire(form.CountDownTime.on_change, state_.trace, "Lineweir_CountDownTime_Change",
       [this] { CountDownTime_Change(); });
}

void ClockEngine::Timer1_Timer() {
  guard(state_.trace, timer1_handler, [&] { tick(); });
  // Not all that ends a link comes with an event.
  link_.review();
}

void ClockEngine::tick() {
  const int offset = offset_seconds(state_.clock_state.DelayOffset);
  const int time_of_day = seconds_of_day(state_.services.clock.now());
  show_time_of_day(time_of_day + offset);
  turn_time_hands();

  int event_length = 0;
  switch (show_timing(time_of_day, offset, event_length)) {
    case TickGoesOn::Ends:
      return;
    case TickGoesOn::HandAtTwelve:
      rest_event_hand();
      break;
    default:
      if (event_length != 0) turn_event_hand(event_length);
  }
  show_row_clocks(time_of_day);
  if (after_tick) after_tick();
}

void ClockEngine::show_time_of_day(int time_with_offset) {
  const std::string now = clock_text(time_with_offset);
  const std::string_view without_half_day = trimmed(left_part(now, now.size() - 2));
  state_.Lineweir.RealTime.caption = without_half_day;
  state_.Lineweir.RealTime2.text = without_half_day;
}

void ClockEngine::turn_time_hands() {
  MainForm& form = state_.Lineweir;
  const ClockState& state = state_.clock_state;
  const TimeAngles angles = time_angles(form.RealTime.caption);
  const auto turn = [](Line& hand, int radius, double angle) {
    set_far_end(hand, hand_end(radius, angle, near_end(hand)));
  };
  turn(form.SecondHand, state.SecondRadius, angles.second);
  turn(form.MinuteHand, state.MinuteRadius, angles.minute);
  turn(form.HourHand, state.HourRadius, angles.hour);
}

TickGoesOn ClockEngine::show_timing(int time_of_day, int offset, int& event_length) {
  const MainForm& form = state_.Lineweir;
  const ClockState& state = state_.clock_state;
  const ShownEvent before = {form.CountDownTime.caption, form.StatusText.caption};
  const ShowTiming timing = form.ServerShowData.checked
                                ? server_show_timing({state.ServerLastEventTime,
                                                      state.ServerEventTime, state.ServerEventText},
                                                     time_of_day, offset, before)
                                : local_show_timing(show_plan_.plan, time_of_day, offset, before);
  show_event(timing.shown);
  store_back(timing, show_plan_.plan);
  if (timing.tick == TickGoesOn::Fails) throw timing_failure(timing);
  event_length = timing.event_length;
  return timing.tick;
}

void ClockEngine::show_event(const ShownEvent& event) {
  MainForm& form = state_.Lineweir;
  form.CountDownTime.caption = event.countdown;
  form.CountDownTime2.text = event.countdown;
  form.StatusText.caption = event.status;
  form.StatusText2.text = event.status;
}

void ClockEngine::turn_event_hand(int event_length) {
  MainForm& form = state_.Lineweir;
  const int countdown = seconds_left(form.CountDownTime.caption);
  const bool thin = in_last_minute(countdown);
  form.CounterHand.border_width = thin ? last_minute_hand_width : event_hand_width;
  const int time_left = integer16(countdown);
  if (thin) form.RedHand.border_width = last_minute_hand_width;

  const double angle = event_angle(thin ? last_minute : event_length, time_left);
  set_far_end(form.CounterHand,
              hand_end(state_.clock_state.SecondRadius, angle, near_end(form.CounterHand)));
  if (!form.RedClock.visible) return;
  form.RedHand.x1 = form.CounterHand.x1 - form.RedClock.left;
  form.RedHand.y1 = form.CounterHand.y1 - form.RedClock.top;
  form.RedHand.x2 = form.CounterHand.x2 - form.RedClock.left;
  form.RedHand.y2 = form.CounterHand.y2 - form.RedClock.top;
}

void ClockEngine::rest_event_hand() {
  Line& hand = state_.Lineweir.CounterHand;
  set_far_end(hand, resting_hand_end(state_.clock_state.SecondRadius, near_end(hand)));
}

void ClockEngine::show_row_clocks(int time_of_day) {
  const LineTable& lines = state_.lines;
  // A running line without a base shows what the line before it showed in this pass.
  std::string shown;
  for (int line = 0; line < lines.LineCount; ++line) {
    if (lines.ClockRunning(line) != 1) continue;
    if (!trimmed(lines.ClockBase(line)).empty()) {
      shown = short_hms_text(time_of_day - required_time_of_day(lines.ClockBase(line)));
    }
    state_.Lineweir.LineTime(line).caption = shown;
  }
}

void ClockEngine::CountDownTime_Change() {
  MainForm& form = state_.Lineweir;
  const ClockState& state = state_.clock_state;
  const std::string_view countdown = trimmed(form.CountDownTime.caption);
  if (countdown.empty()) return end_warning();

  const int left = required_time_of_day(countdown);
  if (left >= required_time_of_day(warning_threshold(state.Warning1))) {
    end_warning();
  } else if (!form.Timer2.enabled) {
    show_warning();
  }
  // The blink may also be set to begin before the clock turns red.
  if (left < required_time_of_day(warning_threshold(state.Warning2))) form.Timer2.enabled = true;
}

void ClockEngine::Timer2_Timer() {
  MainForm& form = state_.Lineweir;
  if (form.RedClock.visible) {
    form.RedClock.visible = false;
    form.CountDownTime2.fore_color = color_black;
    return;
  }
  // The blink takes the place as designed for the present one.
  form.RedHand.x2 = form.CounterHand.x2 - red_clock_left;
  form.RedHand.y2 = form.CounterHand.y2 - red_clock_top;
  show_warning();
}

void ClockEngine::show_warning() {
  state_.Lineweir.RedClock.visible = true;
  state_.Lineweir.CountDownTime2.fore_color = color_red;
}

void ClockEngine::end_warning() {
  state_.Lineweir.RedClock.visible = false;
  state_.Lineweir.CountDownTime2.fore_color = color_black;
  state_.Lineweir.Timer2.enabled = false;
}

}  // namespace lineweir
