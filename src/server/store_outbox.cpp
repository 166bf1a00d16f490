#include "server/store_outbox.h"

#include <algorithm>
#include <string>
#include <type_traits>
#include <utility>

namespace lineweir::server {
namespace {

using platform::StoreChange;

// What a change replaces: two with the same name are about the same thing. Events replace nothing.
std::string name_of_thing(const StoreChange& change) {
  return std::visit(
      [](const auto& thing) -> std::string {
        using Thing = std::decay_t<decltype(thing)>;
        if constexpr (std::is_same_v<Thing, platform::Account> ||
                      std::is_same_v<Thing, platform::AccountRemoval>) {
          return "account " + thing.name;
        } else if constexpr (std::is_same_v<Thing, platform::CallRecord>) {
          return "call " + std::to_string(thing.id);
        } else if constexpr (std::is_same_v<Thing, platform::GroupMemory>) {
          return "group " + std::to_string(thing.group);
        } else if constexpr (std::is_same_v<Thing, platform::AccountPassword>) {
          return "password " + thing.name;
        } else if constexpr (std::is_same_v<Thing, platform::AccountLock>) {
          return "lock " + thing.name;
        } else if constexpr (std::is_same_v<Thing, platform::AccountRights>) {
          return "rights " + std::to_string(thing.group) + " " + thing.name;
        } else if constexpr (std::is_same_v<Thing, platform::AccountSeen>) {
          return "seen " + thing.name;
        } else if constexpr (std::is_same_v<Thing, platform::AccountProfile>) {
          return "profile " + thing.name;
        } else if constexpr (std::is_same_v<Thing, platform::FlaggedCaller>) {
          return "caller " + thing.key;
        } else if constexpr (std::is_same_v<Thing, platform::StudioPlace>) {
          return "place " + std::to_string(thing.group);
        } else {
          return {};
        }
      },
      change);
}

bool may_be_lost(const StoreChange& change) {
  const auto* const call = std::get_if<platform::CallRecord>(&change);
  if (call != nullptr) return call->ended != platform::Moment{0};
  return std::holds_alternative<platform::AuditEvent>(change);
}

}  // namespace

StoreOutbox::StoreOutbox(platform::EventLoop& loop, platform::Store& store, const ServerLog& log,
                         OutboxJournal journal)
    : loop_(loop), store_(store), log_(log), journal_(journal) {}

StoreOutbox::~StoreOutbox() {
  loop_.cancel(next_write_);
  loop_.cancel(journal_due_);
}

void StoreOutbox::put(StoreChange change) {
  if (journals_) journal_.journal->append(journal_.epoch, {change});
  const auto known = places_.find(name_of_thing(change));
  if (known != places_.end()) {
    waiting_[known->second - taken_] = std::move(change);
    return;
  }
  append(std::move(change));
  if (waiting_.size() > most_waiting) lose_oldest();
  if (next_write_ == 0 && in_flight_ == 0) schedule(gathered_for);
}

bool StoreOutbox::holds(const StoreChange& about) const {
  const std::string thing = name_of_thing(about);
  return places_.contains(thing) || std::ranges::any_of(writing_, [&](const StoreChange& change) {
           return name_of_thing(change) == thing;
         });
}

void StoreOutbox::when_empty(std::function<void()> done) {
  when_empty_ = std::move(done);
  tell_empty();
}

void StoreOutbox::when_written(std::function<void()> done) {
  awaited_.push_back({taken_ + waiting_.size(), std::move(done)});
  if (waiting() != 0) return;
  loop_.schedule(platform::Milliseconds{0}, [this, alive = std::weak_ptr(alive_)] {
    if (alive.lock()) tell_written();
  });
}

void StoreOutbox::schedule(platform::Milliseconds delay) {
  next_write_ = loop_.schedule(delay, [this] {
    next_write_ = 0;
    write();
  });
}

void StoreOutbox::write() {
  while (!waiting_.empty() && writing_.size() < batch) writing_.push_back(take_front());
  in_flight_ = writing_.size();
  hand_to_store();
}

void StoreOutbox::hand_to_store() {
  journal_due_ = loop_.schedule(journalled_after, [this] { begin_to_journal(); });
  store_.write(writing_, [this, alive = std::weak_ptr(alive_)](bool done) {
    if (alive.lock()) written(done);
  });
}

void StoreOutbox::append(StoreChange change) {
  const std::string name = name_of_thing(change);
  if (!name.empty()) places_[name] = taken_ + waiting_.size();
  waiting_.push_back(std::move(change));
}

void StoreOutbox::begin_to_journal() {
  if (journal_.journal == nullptr || std::exchange(journals_, true)) return;
  std::vector<StoreChange> all = writing_;
  all.insert(all.end(), waiting_.begin(), waiting_.end());
  journal_.journal->append(journal_.epoch, std::move(all));
}

void StoreOutbox::end_to_journal() {
  if (std::exchange(journals_, false)) journal_.journal->clear();
}

StoreChange StoreOutbox::take_front() {
  places_.erase(name_of_thing(waiting_.front()));
  StoreChange first = std::move(waiting_.front());
  waiting_.pop_front();
  ++taken_;
  return first;
}

void StoreOutbox::lose_oldest() {
  if (lost_++ == 0) log_(LogLevel::Error, "the store has been away for too long: records are lost");
  for (std::size_t looked_at = 0; looked_at < waiting_.size(); ++looked_at) {
    StoreChange oldest = take_front();
    if (may_be_lost(oldest)) return;
    append(std::move(oldest));
  }
  take_front();
}

void StoreOutbox::written(bool done) {
  loop_.cancel(journal_due_);
  if (done != !away_) {
    away_ = !done;
    log_(away_ ? LogLevel::Error : LogLevel::Notice,
         away_ ? "the store can't be written; what must be kept waits"
               : "the store can be written again");
  }
  in_flight_ = 0;
  if (!done) {
    begin_to_journal();
    // The same batch again, so that its order stays.
    in_flight_ = writing_.size();
    next_write_ = loop_.schedule(retried_after, [this] {
      next_write_ = 0;
      hand_to_store();
    });
    return;
  }
  writing_.clear();
  if (waiting_.empty()) end_to_journal();
  if (!waiting_.empty()) schedule(platform::Milliseconds{0});
  tell_written();
  tell_empty();
}

void StoreOutbox::tell_written() {
  if (in_flight_ != 0) return;
  while (!awaited_.empty() && awaited_.front().taken <= taken_) {
    const auto done = std::move(awaited_.front().done);
    awaited_.pop_front();
    done();
  }
}

void StoreOutbox::tell_empty() {
  if (!when_empty_ || waiting() != 0) return;
  // It may end this.
  const auto done = std::exchange(when_empty_, nullptr);
  done();
}

}  // namespace lineweir::server
