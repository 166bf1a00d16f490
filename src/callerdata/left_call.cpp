#include "callerdata/left_call.h"

#include <optional>

#include "base/time_text.h"

namespace lineweir {
namespace {

// A clock tells the time of day alone, and one that is a little ahead would have run for a day.
constexpr int longest_call = seconds_per_day / 2;
// Clocks of two machines are compared in whole seconds.
constexpr int rounding = 1;

// How long the call's clock has run, which ran before the call was noticed here; nothing where that
// isn't known.
std::optional<int> age_of(const PresentCall& call, const platform::DateTime& now) {
  const auto base = time_of_day(call.began);
  if (!base) return std::nullopt;
  const int age = (seconds_of_day(now) - *base + seconds_per_day) % seconds_per_day;
  const bool ran_before = age > seconds_between(call.noticed, now) + rounding;
  if (!ran_before || age > longest_call) return std::nullopt;
  return age;
}

}  // namespace

bool is_same_call(const LastSeen& seen, const PresentCall& call, const platform::DateTime& now) {
  const auto age = age_of(call, now);
  const long long absence = seconds_between(seen.at, now);
  return age && absence >= 0 && *age + rounding >= absence;
}

bool is_other_call(const LastSeen& seen, const PresentCall& call, const platform::DateTime& now) {
  const auto age = age_of(call, now);
  const long long absence = seconds_between(seen.at, now);
  return absence > longest_call || (age && *age + rounding < absence);
}

}  // namespace lineweir
