#include "server/store_outbox.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <type_traits>
#include <utility>

namespace lineweir::server {
namespace {

using platform::StoreChange;

const std::string whole_account = "account ";

// What a change replaces: two with the same name are about the same thing. Events replace nothing.
// What is changed of an account begins with the account's own name, and a line's end.
std::string name_of_thing(const StoreChange& change) {
  return std::visit(
      [](const auto& thing) -> std::string {
        using Thing = std::decay_t<decltype(thing)>;
        if constexpr (std::is_same_v<Thing, platform::Account> ||
                      std::is_same_v<Thing, platform::AccountRemoval>) {
          return whole_account + thing.name;
        } else if constexpr (std::is_same_v<Thing, platform::CallRecord>) {
          return "call " + std::to_string(thing.id);
        } else if constexpr (std::is_same_v<Thing, platform::GroupMemory>) {
          return "group " + std::to_string(thing.group);
        } else if constexpr (std::is_same_v<Thing, platform::AccountPassword>) {
          return whole_account + thing.name + "\npassword";
        } else if constexpr (std::is_same_v<Thing, platform::AccountLock>) {
          return whole_account + thing.name + "\nlock";
        } else if constexpr (std::is_same_v<Thing, platform::AccountRights>) {
          return whole_account + thing.name + "\nrights " + std::to_string(thing.group);
        } else if constexpr (std::is_same_v<Thing, platform::AccountSeen>) {
          return whole_account + thing.name + "\nseen";
        } else if constexpr (std::is_same_v<Thing, platform::AccountProfile>) {
          return whole_account + thing.name + "\nprofile";
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
  const std::string name = name_of_thing(change);
  if (std::holds_alternative<platform::Account>(change) ||
      std::holds_alternative<platform::AccountRemoval>(change)) {
    forget_changes_of(name);
  }
  const auto known = places_.find(name);
  if (known != places_.end()) {
    known->second->change = std::move(change);
    return;
  }
  waiting_.push_back({++put_, std::move(change)});
  if (!name.empty()) places_[name] = std::prev(waiting_.end());
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
  awaited_.push_back({put_, std::move(done)});
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
  while (!waiting_.empty() && writing_.size() < batch) writing_.push_back(take(waiting_.begin()));
  in_flight_ = writing_.size();
  hand_to_store();
}

void StoreOutbox::hand_to_store() {
  journal_due_ = loop_.schedule(journalled_after, [this] { begin_to_journal(); });
  store_.write(writing_, [this, alive = std::weak_ptr(alive_)](bool done) {
    if (alive.lock()) written(done);
  });
}

// They would be done to the account that is there from now on.
void StoreOutbox::forget_changes_of(const std::string& account) {
  const std::string beginning = account + '\n';
  auto change = places_.lower_bound(beginning);
  while (change != places_.end() && change->first.starts_with(beginning)) {
    waiting_.erase(change->second);
    change = places_.erase(change);
  }
}

bool StoreOutbox::has_kept_all() const {
  return waiting() == 0 || (journals_ && journal_.journal->has_kept_all());
}

void StoreOutbox::begin_to_journal() {
  if (journal_.journal == nullptr || std::exchange(journals_, true)) return;
  std::vector<StoreChange> all = writing_;
  for (const Waiting& waiting : waiting_) all.push_back(waiting.change);
  journal_.journal->append(journal_.epoch, std::move(all));
}

void StoreOutbox::end_to_journal() {
  if (journal_.holds_former) return;
  if (std::exchange(journals_, false)) journal_.journal->clear();
}

void StoreOutbox::former_is_kept() {
  journal_.holds_former = false;
  if (std::exchange(journals_, false) && waiting() != 0) begin_to_journal();
}

StoreChange StoreOutbox::take(Place place) {
  places_.erase(name_of_thing(place->change));
  StoreChange taken = std::move(place->change);
  waiting_.erase(place);
  return taken;
}

void StoreOutbox::lose_oldest() {
  if (lost_++ == 0) log_(LogLevel::Error, "the store has been away for too long: records are lost");
  const auto oldest = std::ranges::find_if(
      waiting_, [](const Waiting& waiting) { return may_be_lost(waiting.change); });
  take(oldest == waiting_.end() ? waiting_.begin() : oldest);
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
  const std::uint64_t first = waiting_.empty() ? put_ + 1 : waiting_.front().number;
  while (!awaited_.empty() && awaited_.front().number < first) {
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
