#include "callerdata/left_call.h"

#include "base/time_text.h"

namespace lineweir {
namespace {

// A clock tells the time of day alone.
constexpr int longest_absence = seconds_per_day / 2;

}  // namespace

bool is_same_call(const LastSeen& seen, std::string_view began, const platform::DateTime& now) {
  const auto base = time_of_day(began);
  const long long absence = seconds_between(seen.at, now);
  if (!base || absence < 0 || absence > longest_absence) return false;
  const int age = (seconds_of_day(now) - *base + seconds_per_day) % seconds_per_day;
  return age > absence;
}

}  // namespace lineweir
