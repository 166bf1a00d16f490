#include "clocks/show_timing.h"

#include <cstdint>
#include <optional>

#include "base/text.h"
#include "base/time_text.h"

namespace lineweir {
namespace {

constexpr int seconds_per_hour = 60 * 60;
constexpr std::string_view this_hour = "00";
constexpr std::string_view next_hour = "01";
constexpr std::string_view end_of_day = "23:59:59";
constexpr std::string_view end_of_hour = "xx:59:59";
constexpr std::size_t hour_prefix = 3;

// The time of an hourly show's text with these hours in place of its own.
std::optional<int> time_with_hour(std::string_view text, std::string_view hour) {
  std::string changed(text);
  changed.replace(0, hour.size(), hour);
  return time_of_day(changed);
}

// An hourly show's text that has more than its "xx:".
bool has_time(std::string_view text) { return text.size() > hour_prefix; }

// Show End as it is stored back: trimmed, or the fallback where it is blank.
std::string_view take_show_end(const ShowPlan& plan, std::string_view fallback,
                               ShowTiming& timing) {
  timing.trimmed_times.set(show_end_entry);
  const std::string_view end = plan.ShowTimes(show_end_entry).trimmed();
  if (!end.empty()) return end;
  timing.show_end = fallback;
  return fallback;
}

std::string_view take_text(const ShowPlan& plan, int entry, ShowTiming& timing) {
  if (entry > show_entry_count) return {};
  timing.trimmed_texts.set(static_cast<std::size_t>(entry));
  return plan.ShowTexts(entry).trimmed();
}

std::string_view take_time(const ShowPlan& plan, int entry, ShowTiming& timing) {
  timing.trimmed_times.set(static_cast<std::size_t>(entry));
  return plan.ShowTimes(entry).trimmed();
}

void fail(ShowTiming& timing, int number) {
  timing.tick = TickGoesOn::Fails;
  timing.failure = number;
}

void show_time_to_start(ShowTiming& timing, int seconds) {
  timing.shown = {hms_text(seconds), "Show Start"};
}

bool fits_16_bits(int seconds) { return seconds >= INT16_MIN && seconds <= INT16_MAX; }

void set_event_length(ShowTiming& timing, int seconds) {
  if (!fits_16_bits(seconds)) return fail(timing, failure_number::overflow);
  timing.event_length = seconds;
}

void time_timed_show(const ShowPlan& plan, int now, ShowTiming& timing) {
  const auto start = time_of_day(plan.ShowTimes(show_start_entry).text());
  if (!start) return fail(timing, failure_number::type_mismatch);
  if (now < *start) return show_time_to_start(timing, *start - now);

  const auto end = time_of_day(take_show_end(plan, end_of_day, timing));
  if (!end) return fail(timing, failure_number::type_mismatch);
  if (now > *end) {
    timing.shown = {"", "Show Over"};
    return;
  }

  // Show End stands in front of the first event, so that the first event's length is negative.
  int last_boundary = *end;
  for (int entry = first_event_entry; entry <= show_entry_count; ++entry) {
    const auto boundary = time_of_day(take_time(plan, entry, timing));
    if (*end == now) {
      timing.tick = TickGoesOn::Ends;
      return;
    }
    if (!boundary) return fail(timing, failure_number::type_mismatch);
    if (now < *boundary) {
      timing.this_event = entry;
      // The text is that of the row which begins when the countdown ends.
      timing.shown = {hms_text(*boundary - now), take_text(plan, entry + 1, timing)};
      return set_event_length(timing, *boundary - last_boundary);
    }
    last_boundary = *boundary;
  }
  fail(timing, failure_number::out_of_range);
}

// The time from which an hourly show's event counts. The first event counts from Show Start.
std::optional<int> hourly_event_start(const ShowPlan& plan, int entry, std::string_view show_end) {
  const auto text_of = [&](int k) {
    return k == show_end_entry ? show_end : plan.ShowTimes(k).trimmed();
  };
  const int before = text_of(entry - 1) == show_end ? entry - 2 : entry - 1;
  return time_with_hour(text_of(before), this_hour);
}

void time_hourly_show(const ShowPlan& plan, int now, ShowTiming& timing) {
  const auto start = time_with_hour(plan.ShowTimes(show_start_entry).trimmed(), this_hour);
  if (!start) return fail(timing, failure_number::type_mismatch);
  if (now < *start) return show_time_to_start(timing, *start - now);

  const std::string_view show_end = take_show_end(plan, end_of_hour, timing);
  std::optional<int> boundary;
  bool list_has_run_out = false;
  for (int entry = first_event_entry; entry <= show_entry_count && timing.this_event == 0;
       ++entry) {
    const std::string_view time = take_time(plan, entry, timing);
    list_has_run_out = !has_time(time);
    boundary =
        list_has_run_out ? time_with_hour(show_end, next_hour) : time_with_hour(time, this_hour);
    if (!boundary) return fail(timing, failure_number::type_mismatch);
    if (list_has_run_out) timing.shown.status = take_text(plan, first_event_entry, timing);
    if (now < *boundary) timing.this_event = entry;
  }

  timing.shown.countdown = hms_text(*boundary - now);
  if (timing.shown.countdown == "01:00:00") timing.shown.countdown = "00:00:00";
  if (!list_has_run_out) timing.shown.status = take_text(plan, timing.this_event + 1, timing);

  if (timing.this_event == 0) return fail(timing, failure_number::out_of_range);
  const auto from = hourly_event_start(plan, timing.this_event, show_end);
  if (!from) return fail(timing, failure_number::type_mismatch);
  set_event_length(timing, *boundary - *from);
}

}  // namespace

ShowMode show_mode(const ShowPlan& plan) {
  const std::string_view start = trimmed_left(plan.ShowTimes(show_start_entry).text());
  if (start.empty()) return ShowMode::None;
  if (start.front() >= '0' && start.front() <= '2') return ShowMode::Timed;
  return start.front() == 'x' ? ShowMode::Hourly : ShowMode::None;
}

ShowTiming local_show_timing(const ShowPlan& plan, int time_of_day, int offset,
                             const ShownEvent& before) {
  ShowTiming timing;
  timing.shown = before;
  switch (show_mode(plan)) {
    case ShowMode::None:
      break;
    case ShowMode::Timed:
      time_timed_show(plan, time_of_day + offset, timing);
      break;
    case ShowMode::Hourly:
      time_hourly_show(plan, time_of_day % seconds_per_hour + offset, timing);
      break;
  }
  return timing;
}

ShowTiming server_show_timing(const ServerEvent& event, int time_of_day, int offset,
                              const ShownEvent& before) {
  ShowTiming timing;
  timing.shown = before;
  timing.tick = TickGoesOn::WithoutHand;
  const int now = time_of_day + offset;
  const auto next = lineweir::time_of_day(event.time);
  if (!next) return timing;
  if (now >= *next) {
    timing.shown = {};
    timing.tick = TickGoesOn::HandAtTwelve;
    return timing;
  }
  timing.shown = {hms_text(*next - now), event.text};
  const auto last = lineweir::time_of_day(event.last_time);
  if (!last || !fits_16_bits(*next - *last)) return timing;
  timing.event_length = *next - *last;
  timing.tick = TickGoesOn::Whole;
  return timing;
}

Failure timing_failure(const ShowTiming& timing) {
  switch (timing.failure) {
    case failure_number::overflow:
      return Failure(timing.failure, "Overflow");
    case failure_number::out_of_range:
      return Failure(timing.failure, "Subscript out of range");
    default:
      return Failure(timing.failure, "Type mismatch");
  }
}

void store_back(const ShowTiming& timing, ShowPlan& plan) {
  for (int entry = 1; entry <= show_entry_count; ++entry) {
    const auto number = static_cast<std::size_t>(entry);
    if (timing.trimmed_times[number]) plan.ShowTimes(entry) = plan.ShowTimes(entry).trimmed();
    if (timing.trimmed_texts[number]) plan.ShowTexts(entry) = plan.ShowTexts(entry).trimmed();
  }
  if (!timing.show_end.empty()) plan.ShowTimes(show_end_entry) = timing.show_end;
}

}  // namespace lineweir
