#include "server/leadership.h"

#include <utility>

namespace lineweir::server {

using platform::Lease;
using platform::Milliseconds;

Leadership::Leadership(platform::EventLoop& loop, Lease& lease) : loop_(loop), lease_(lease) {}

Leadership::~Leadership() = default;

void Leadership::start() { try_for_it(); }

void Leadership::end() {
  turn_ = std::make_shared<bool>(true);
  if (std::exchange(held_, false)) lease_.give_back();
  leading_ = false;
}

bool Leadership::proven() const { return loop_.now() - proven_at_ < platform::proof_holds; }

void Leadership::try_for_it() {
  const Milliseconds asked_at = loop_.now();
  lease_.take([this, turn = std::weak_ptr(turn_), asked_at](std::optional<Lease::Grant> grant) {
    if (turn.expired()) return;
    if (grant) return granted(*grant, asked_at);
    after(tried_every, &Leadership::try_for_it);
  });
}

void Leadership::granted(const Lease::Grant& grant, Milliseconds asked_at) {
  epoch_ = grant.epoch;
  held_ = true;
  proven_at_ = asked_at;
  prove();
  after(grant.serve_after, &Leadership::lead);
  after(platform::proof_holds, &Leadership::look_at_proof);
}

void Leadership::prove() {
  const Milliseconds asked_at = loop_.now();
  lease_.prove([this, turn = std::weak_ptr(turn_), asked_at](bool held) {
    if (turn.expired()) return;
    look_at_proof();
    if (turn.expired()) return;
    if (held) {
      proven_at_ = asked_at;
      after(asked_at + platform::proof_holds - loop_.now(), &Leadership::look_at_proof);
    }
    after(proved_every, &Leadership::prove);
  });
}

void Leadership::lead() {
  look_at_proof();
  if (!held_) return;
  leading_ = true;
  on_lead(epoch_);
}

void Leadership::look_at_proof() {
  if (held_ && !proven()) lose();
}

void Leadership::lose() {
  turn_ = std::make_shared<bool>(true);
  held_ = false;
  const bool led = std::exchange(leading_, false);
  // A session that still holds the lease is of no use any more.
  lease_.give_back();
  after(tried_every, &Leadership::try_for_it);
  if (led) on_lost();
}

void Leadership::after(Milliseconds delay, void (Leadership::*call)()) {
  loop_.schedule(delay, [this, turn = std::weak_ptr(turn_), call] {
    if (!turn.expired()) (this->*call)();
  });
}

}  // namespace lineweir::server
