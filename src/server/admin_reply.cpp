#include "server/admin_reply.h"

#include <utility>

namespace lineweir::server {
namespace {

constexpr platform::Milliseconds kept_within{5000};

}  // namespace

void when_kept(const AdminServices& services, const TellReply& tell, std::function<void()> next) {
  // Whichever comes first.
  const auto waits = std::make_shared<bool>(true);
  services.context.outbox.when_written([waits, next = std::move(next)] {
    if (std::exchange(*waits, false)) next();
  });
  services.context.loop.schedule(kept_within, [waits, tell] {
    if (!std::exchange(*waits, false)) return;
    tell(refused(
        "The store can't be written now: what was changed holds, and is kept once it can be."));
  });
}

void tell_done(const AdminServices& services, const TellReply& tell) {
  when_kept(services, tell, [tell] { tell({}); });
}

}  // namespace lineweir::server
