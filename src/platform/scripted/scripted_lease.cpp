#include "platform/scripted/scripted_lease.h"

#include <algorithm>
#include <utility>

namespace lineweir::platform {
namespace {

constexpr Milliseconds longest_silence{2000};

}  // namespace

void LeaseOffice::drop_silent_holder() {
  if (holder_ != 0 && loop_.now() - heard_at_ > longest_silence) holder_ = 0;
}

std::optional<Lease::Grant> LeaseOffice::take(Session session) {
  drop_silent_holder();
  if (!runs_ || session < first_open_ || holder_ != 0) return std::nullopt;
  // The clocks of two machines differ a little.
  const Milliseconds relied_on_until = heard_at_ + proof_holds * 102 / 100;
  const Milliseconds wait =
      ever_proven_ ? std::max(relied_on_until - loop_.now(), Milliseconds{0}) : Milliseconds{0};
  holder_ = session;
  heard_at_ = loop_.now();
  ever_proven_ = true;
  return Lease::Grant{++epoch_, wait};
}

bool LeaseOffice::prove(Session session) {
  drop_silent_holder();
  if (!runs_ || holder_ != session) return false;
  heard_at_ = loop_.now();
  return true;
}

void LeaseOffice::close(Session session, bool in_order) {
  if (holder_ != session) return;
  holder_ = 0;
  if (in_order) ever_proven_ = false;
}

void LeaseOffice::stop() {
  runs_ = false;
  holder_ = 0;
  first_open_ = last_session_ + 1;
}

ScriptedLease::~ScriptedLease() { close(false); }

// What comes of a question is told once: its answer, or nothing when none has come in time.
template <class Answer>
void ScriptedLease::ask(std::function<Answer()> question, std::function<void(Answer)> done) {
  const auto once = std::make_shared<std::function<void(Answer)>>(std::move(done));
  const auto tell = [once, alive = std::weak_ptr(alive_)](Answer answer) {
    if (alive.expired()) return;
    if (const auto call = std::exchange(*once, nullptr)) call(std::move(answer));
  };
  loop_.schedule(answered_within, [tell] { tell({}); });
  if (!reaches) return;
  office_.loop().schedule(
      way, [this, alive = std::weak_ptr(alive_), tell, question = std::move(question)] {
        if (alive.expired() || !office_.runs()) return;
        const Answer answer = question();
        if (!hears) return;
        office_.loop().schedule(way, [this, alive, tell, answer] {
          if (!alive.expired()) loop_.schedule(Milliseconds{0}, [tell, answer] { tell(answer); });
        });
      });
}

void ScriptedLease::take(std::function<void(std::optional<Grant> grant)> done) {
  close(false);
  session_ = office_.open();
  ask<std::optional<Grant>>([this, session = session_] { return office_.take(session); },
                            std::move(done));
}

void ScriptedLease::prove(std::function<void(bool held)> done) {
  ask<bool>([this, session = session_] { return office_.prove(session); }, std::move(done));
}

void ScriptedLease::give_back() { close(true); }

void ScriptedLease::close(bool in_order) {
  const LeaseOffice::Session session = std::exchange(session_, 0);
  if (session == 0 || !reaches) return;
  office_.loop().schedule(way, [&office = office_, session, in_order] {
    if (office.runs()) office.close(session, in_order);
  });
}

}  // namespace lineweir::platform
