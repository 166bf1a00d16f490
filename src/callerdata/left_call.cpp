#include "callerdata/left_call.h"

#include "base/time_text.h"

namespace lineweir {
namespace {

// A clock tells the time of day alone.
constexpr int longest_absence = seconds_per_day / 2;
// Clocks of two machines are compared in whole seconds.
constexpr int rounding = 1;

}  // namespace

bool is_same_call(const LastSeen& seen, const PresentCall& call, const platform::DateTime& now) {
  const auto base = time_of_day(call.began);
  const long long absence = seconds_between(seen.at, now);
  if (!base || absence < 0 || absence > longest_absence) return false;
  const int age = (seconds_of_day(now) - *base + seconds_per_day) % seconds_per_day;
  return age + rounding >= absence && age > seconds_between(call.noticed, now) + rounding;
}

}  // namespace lineweir
