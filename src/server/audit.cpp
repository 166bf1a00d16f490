#include "server/audit.h"

namespace lineweir::server {
namespace {

std::string name_of_run(const platform::WallClock& clock, platform::RandomNumbers& random) {
  constexpr double names = 1'000'000'000;
  return std::to_string(clock.now().count()) + '-' +
         std::to_string(static_cast<std::int64_t>(random.next() * names)) + '-';
}

}  // namespace

Audit::Audit(const platform::WallClock& clock, platform::RandomNumbers& random, StoreOutbox& outbox)
    : clock_(clock), outbox_(outbox), run_(name_of_run(clock, random)) {}

void Audit::note(const std::string& user, const std::string& action, const std::string& detail) {
  outbox_.put(
      platform::AuditEvent{run_ + std::to_string(++noted_), clock_.now(), user, action, detail});
}

}  // namespace lineweir::server
