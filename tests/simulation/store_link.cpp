#include "simulation/store_link.h"

#include <utility>

namespace lineweir::simulation {

StoreLink::StoreLink(platform::ScriptedStore& store, const platform::LeaseOffice& office,
                     platform::EventLoop& loop, const Cable& cable, platform::Epoch epoch)
    : store_(store), office_(office), loop_(loop), cable_(cable), epoch_(epoch) {}

// The answer is told once: what has come, or nothing when that takes too long.
template <class Answer>
void StoreLink::ask(std::function<void(std::function<void(Answer)>)> question,
                    std::function<void(Answer)> done) {
  ++waiting_;
  const auto once = std::make_shared<std::function<void(Answer)>>(std::move(done));
  const auto tell = [this, once, alive = std::weak_ptr(alive_)](Answer answer) {
    if (alive.expired() || !*once) return;
    --waiting_;
    const auto call = std::exchange(*once, nullptr);
    call(std::move(answer));
  };
  loop_.schedule(answered_within, [this, tell, once, alive = std::weak_ptr(alive_)] {
    if (alive.expired() || !*once) return;
    ++*session_;
    tell({});
  });
  if (!cable_.there) return;
  platform::EventLoop& world = office_.loop();
  world.schedule(cable_.way, [this, &world, tell, question = std::move(question),
                              alive = std::weak_ptr(alive_)] {
    if (alive.expired()) return;
    question([this, &world, tell, alive](Answer answer) {
      if (alive.expired() || !cable_.back) return;
      world.schedule(cable_.way, [this, tell, alive, answer = std::move(answer)] {
        if (alive.expired()) return;
        loop_.schedule(Milliseconds{0}, [tell, answer] { tell(answer); });
      });
    });
  });
}

void StoreLink::load(std::function<void(std::optional<platform::StoredState> state)> done) {
  ask<std::optional<platform::StoredState>>([this](auto told) { store_.load(std::move(told)); },
                                            std::move(done));
}

void StoreLink::write(std::vector<platform::StoreChange> changes,
                      std::function<void(bool written)> done) {
  const auto may = [this, alive = std::weak_ptr(alive_), session = session_, began_in = *session_] {
    return !alive.expired() && *session == began_in && office_.epoch() == epoch_;
  };
  ask<bool>([this, may, changes = std::move(changes)](
                auto told) { store_.write_if(may, changes, std::move(told)); },
            std::move(done));
}

void StoreLink::calls(const platform::CallFilter& filter,
                      std::function<void(std::optional<std::vector<platform::CallRecord>>)> done) {
  ask<std::optional<std::vector<platform::CallRecord>>>(
      [this, filter](auto told) { store_.calls(filter, std::move(told)); }, std::move(done));
}

void StoreLink::audit(const platform::AuditFilter& filter,
                      std::function<void(std::optional<std::vector<platform::AuditEntry>>)> done) {
  ask<std::optional<std::vector<platform::AuditEntry>>>(
      [this, filter](auto told) { store_.audit(filter, std::move(told)); }, std::move(done));
}

void StoreLink::caller_history(const std::string& key,
                               std::function<void(std::optional<platform::CallerHistory>)> done) {
  ask<std::optional<platform::CallerHistory>>(
      [this, key](auto told) { store_.caller_history(key, std::move(told)); }, std::move(done));
}

void StoreLink::forget(platform::Moment before, Forgetting what, std::size_t limit,
                       std::function<void(std::optional<std::size_t>)> done) {
  ask<std::optional<std::size_t>>(
      [=, this](auto told) { store_.forget(before, what, limit, std::move(told)); },
      std::move(done));
}

void StoreLink::verify_audit(std::function<void(std::optional<platform::AuditVerdict>)> done) {
  ask<std::optional<platform::AuditVerdict>>(
      [this](auto told) { store_.verify_audit(std::move(told)); }, std::move(done));
}

void StoreLink::backup(const std::string& file, std::function<void(std::string failure)> done) {
  store_.backup(file, std::move(done));
}

void StoreLink::restore(const std::string& file, std::function<void(std::string failure)> done) {
  store_.restore(file, std::move(done));
}

}  // namespace lineweir::simulation
