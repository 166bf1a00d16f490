#include "state/socket_trap.h"

#include <optional>

#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {
namespace {

constexpr int most_retries = 20;
constexpr int most_passes = 1000;

void wait_for_next_try(ConsoleState& state, std::string_view handler) {
  const auto entry = state.retrying.insert(std::string(handler)).first;
  const int passes = static_cast<int>(state.services.random.next() * most_passes + 1);
  for (int pass = 0; pass < passes; ++pass) state.services.loop.run_pending();
  state.retrying.erase(entry);
}

}  // namespace

bool socket_trap(ConsoleState& state, std::string_view handler, const std::function<void()>& body) {
  if (state.retrying.contains(handler)) return false;
  for (int retries = 0;; ++retries) {
    std::optional<Failure> trapped;
    attempt(body, [&](const Failure& failure) { trapped = failure; });
    if (!trapped) return true;
    if (trapped->number() == failure_number::socket_wrong_state) {
      state.messages.ShowMessage("Lineweir is not currently connected to a server.");
      return false;
    }
    // What may have been done already isn't done twice.
    const bool may_be_done = trapped->number() == failure_number::no_answer;
    if (retries == most_retries || may_be_done) {
      report_failure(state.trace, handler, *trapped);
      return false;
    }
    wait_for_next_try(state, handler);
  }
}

}  // namespace lineweir
