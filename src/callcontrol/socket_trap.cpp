#include "callcontrol/socket_trap.h"

#include <optional>

#include "core/console.h"
#include "core/guard.h"

namespace lineweir {
namespace {

constexpr int most_retries = 20;
constexpr int most_passes = 1000;

void wait_for_next_try(Console& console, std::string_view handler) {
  const auto entry = console.retrying.insert(std::string(handler)).first;
  const int passes = static_cast<int>(console.services.random.next() * most_passes + 1);
  for (int pass = 0; pass < passes; ++pass) console.services.loop.run_pending();
  console.retrying.erase(entry);
}

}  // namespace

bool socket_trap(Console& console, std::string_view handler, const std::function<void()>& body) {
  if (console.retrying.contains(handler)) return false;
  for (int retries = 0;; ++retries) {
    std::optional<Failure> trapped;
    attempt(body, [&](const Failure& failure) { trapped = failure; });
    if (!trapped) return true;
    if (trapped->number() == failure_number::socket_wrong_state) {
      console.messages.ShowMessage("Lineweir is not currently connected to a server.");
      return false;
    }
    if (retries == most_retries) {
      report_failure(console, handler, *trapped);
      return false;
    }
    wait_for_next_try(console, handler);
  }
}

}  // namespace lineweir
