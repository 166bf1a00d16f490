#include "callerdata/left_call.h"

#include "base/time_text.h"

namespace lineweir {
namespace {

// A clock tells the time of day alone, and one that is a little ahead would have run for a day.
constexpr int longest_call = seconds_per_day / 2;
// Clocks of two machines are compared in whole seconds.
constexpr int rounding = 1;

}  // namespace

bool is_same_call(const LastSeen& seen, const PresentCall& call, const platform::DateTime& now) {
  const auto base = time_of_day(call.began);
  const long long absence = seconds_between(seen.at, now);
  if (!base || absence < 0) return false;
  const int age = (seconds_of_day(now) - *base + seconds_per_day) % seconds_per_day;
  return age <= longest_call && age + rounding >= absence &&
         age > seconds_between(call.noticed, now) + rounding;
}

}  // namespace lineweir
