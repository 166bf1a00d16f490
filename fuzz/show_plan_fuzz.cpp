// The show's plan from any file: it is read, shown at any moment of the day, corrected and written,
// and what was written is read back the same.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/time_text.h"
#include "clocks/show_data_rows.h"
#include "clocks/show_plan.h"
#include "clocks/show_timing.h"

namespace {

using namespace lineweir;

void require(bool holds) {
  if (!holds) std::abort();
}

void check_codec(std::string_view file) {
  const std::string written = encode_show_plan(decode_show_plan(file));
  require(written.size() == show_file_size);
  require(encode_show_plan(decode_show_plan(written)) == written);
  require(show_entries_held(file) <= show_entry_count);
}

// Storing back comes to rest: a second pass at the same moment finds nothing more to store.
void check_timing(ShowPlan plan, int time, int offset) {
  const ShownEvent before = {"00:00:10", "As it was"};
  const ShowTiming timing = local_show_timing(plan, time, offset, before);
  require(timing.event_length >= INT16_MIN && timing.event_length <= INT16_MAX);
  require(timing.this_event == 0 ||
          (timing.this_event >= first_event_entry && timing.this_event <= show_entry_count));
  require((timing.tick == TickGoesOn::Fails) == (timing.failure != 0));

  const std::string countdown = timing.shown.countdown;
  const std::string status(timing.shown.status);
  store_back(timing, plan);
  const ShowPlan stored = plan;
  const ShowTiming again = local_show_timing(plan, time, offset, before);
  require(again.shown.countdown == countdown && again.shown.status == status);
  require(again.event_length == timing.event_length && again.tick == timing.tick);
  store_back(again, plan);
  require(plan == stored);
}

void check_rows(const ShowPlan& plan) {
  PlanRows rows;
  int entry = first_event_entry;
  for (PlanRowTimes& row : rows) row.end = plan.ShowTimes(entry++).trimmed();
  rows.front().start = plan.ShowTimes(show_start_entry).trimmed();
  const std::string_view show_end = plan.ShowTimes(show_end_entry).trimmed();
  const PlanRowCheck check = check_plan_rows(rows, show_end);
  require(check_plan_rows(check.rows, show_end).fault == check.fault);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t moment_size = 4;
  if (size < moment_size) return 0;
  const int time = (data[0] | data[1] << 8 | data[2] << 16) % seconds_per_day;
  const int offset = data[3] % 60;
  const std::string_view file(reinterpret_cast<const char*>(data) + moment_size,
                              size - moment_size);
  check_codec(file);
  const ShowPlan plan = decode_show_plan(file);
  check_timing(plan, time, offset);
  check_rows(plan);
  return 0;
}
