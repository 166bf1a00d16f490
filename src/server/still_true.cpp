#include "server/still_true.h"

#include <algorithm>
#include <utility>

#include "server/call_history.h"

namespace lineweir::server {
namespace {

bool is_over(const platform::StoreChange& change, const std::set<std::int64_t>& known_calls) {
  const auto* const call = std::get_if<platform::CallRecord>(&change);
  if (call != nullptr) return call->ended != platform::Moment{0} && !known_calls.contains(call->id);
  return std::holds_alternative<platform::AuditEvent>(change);
}

}  // namespace

bool has_led_alone(const platform::StoreJournal::Left& left, platform::Epoch epoch) {
  return left.epoch == epoch || left.epoch + 1 == epoch;
}

bool was_only_closed(const platform::CallRecord& stored, const platform::CallRecord& left) {
  if (stored.steps.empty() || stored.steps.back().action != ended_unheard) return false;
  const auto before = std::prev(stored.steps.end());
  return std::ranges::mismatch(stored.steps.begin(), before, left.steps.begin(), left.steps.end())
             .in1 == before;
}

std::vector<platform::StoreChange> still_true(platform::StoreJournal::Left left,
                                              platform::Epoch epoch,
                                              const std::set<std::int64_t>& known_calls) {
  if (!has_led_alone(left, epoch)) {
    std::erase_if(left.changes, [&](const auto& change) { return !is_over(change, known_calls); });
  }
  return std::move(left.changes);
}

}  // namespace lineweir::server
