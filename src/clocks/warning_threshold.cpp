#include "clocks/warning_threshold.h"

#include "base/text.h"

namespace lineweir {
namespace {

constexpr int first_warning = -1;
constexpr int last_warning_in_seconds = 58;
constexpr int last_warning = 3598;

}  // namespace

std::string warning_threshold(int warning) {
  const int seconds = warning + 1;
  if (warning <= last_warning_in_seconds) return "00:00:" + std::to_string(seconds);
  return "00:" + zero_filled(seconds / 60, 2) + ":" + zero_filled(seconds % 60, 2);
}

bool is_warning_time(int warning) { return warning >= first_warning && warning <= last_warning; }

}  // namespace lineweir
