#include "clocks/warning_threshold.h"

#include "base/text.h"

namespace lineweir {
namespace {

constexpr int last_warning_in_seconds = 58;

}  // namespace

std::string warning_threshold(int warning) {
  const int seconds = warning + 1;
  if (warning <= last_warning_in_seconds) return "00:00:" + std::to_string(seconds);
  return "00:" + zero_filled(seconds / 60, 2) + ":" + zero_filled(seconds % 60, 2);
}

}  // namespace lineweir
