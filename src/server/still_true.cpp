#include "server/still_true.h"

#include <utility>

namespace lineweir::server {
namespace {

bool is_over(const platform::StoreChange& change) {
  const auto* const call = std::get_if<platform::CallRecord>(&change);
  if (call != nullptr) return call->ended != platform::Moment{0};
  return std::holds_alternative<platform::AuditEvent>(change);
}

}  // namespace

std::vector<platform::StoreChange> still_true(platform::StoreJournal::Left left,
                                              platform::Epoch epoch) {
  const bool led_alone = left.epoch == epoch || left.epoch + 1 == epoch;
  if (!led_alone) std::erase_if(left.changes, [](const auto& change) { return !is_over(change); });
  return std::move(left.changes);
}

}  // namespace lineweir::server
