#include "server/admin_reply.h"

#include <utility>

namespace lineweir::server {
namespace {

constexpr platform::Milliseconds kept_within{5000};

}  // namespace

void when_kept_or_late(const AdminServices& services, std::function<void(bool kept)> next) {
  // Whichever comes first.
  const auto once = std::make_shared<std::function<void(bool)>>(std::move(next));
  const auto run = [once](bool kept) {
    if (const auto call = std::exchange(*once, nullptr)) call(kept);
  };
  services.context.outbox.when_written([run] { run(true); });
  services.context.loop.schedule(kept_within, while_there(services, [run] { run(false); }));
}

void when_kept(const AdminServices& services, const TellReply& tell, std::function<void()> next) {
  when_kept_or_late(services, [tell, next = std::move(next)](bool kept) {
    if (kept) return next();
    tell(refused(
        "The store can't be written now: what was changed holds, and is kept once it can be."));
  });
}

void tell_done(const AdminServices& services, const TellReply& tell) {
  when_kept(services, tell, [tell] { tell({}); });
}

}  // namespace lineweir::server
