#include "server/journal_replay.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "server/still_true.h"

namespace lineweir::server {

void JournalReplay::run(std::function<void()> done) {
  if (has_led_alone(journal_.left(), epoch_)) return write({}, std::move(done));
  read_known_calls([this, done = std::move(done)](const Known& known) { write(known, done); });
}

void JournalReplay::write(const Known& known_calls, std::function<void()> done) {
  auto left = still_true(journal_.left(), epoch_, known_calls);
  if (left.empty()) {
    journal_.clear();
    return done();
  }
  log_(LogLevel::Notice, "the journal holds " + std::to_string(left.size()) +
                             " records that the store has not taken yet");
  store_.write(std::move(left),
               [this, alive = std::weak_ptr(alive_), done = std::move(done)](bool written) {
                 if (!alive.lock()) return;
                 if (!written) return again([this, done] { run(done); });
                 journal_.clear();
                 done();
               });
}

// Of the calls in the journal those that the store has already.
void JournalReplay::read_known_calls(const std::function<void(const Known& known)>& done) {
  platform::Moment since = platform::Moment::max();
  std::map<std::int64_t, platform::CallRecord> ours;
  for (const platform::StoreChange& change : journal_.left().changes) {
    const auto* const call = std::get_if<platform::CallRecord>(&change);
    if (call == nullptr) continue;
    since = std::min(since, call->began);
    ours[call->id] = *call;
  }
  if (since == platform::Moment::max()) return done({});
  const auto read_again = [this, done] { again([this, done] { read_known_calls(done); }); };
  store_.load([this, alive = std::weak_ptr(alive_), since, ours, done,
               read_again](const std::optional<platform::StoredState>& state) {
    if (!alive.lock()) return;
    if (!state) return read_again();
    Known known;
    for (const platform::CallRecord& call : state->open_calls) known.insert(call.id);
    store_.calls({.since = since},
                 [alive, known, ours, done, read_again](const auto& calls) mutable {
                   if (!alive.lock()) return;
                   if (!calls) return read_again();
                   for (const platform::CallRecord& call : *calls) {
                     const auto left = ours.find(call.id);
                     if (left == ours.end() || !was_only_closed(call, left->second))
                       known.insert(call.id);
                   }
                   done(known);
                 });
  });
}

void JournalReplay::again(std::function<void()> call) {
  loop_.schedule(tried_again_after, [alive = std::weak_ptr(alive_), call = std::move(call)] {
    if (alive.lock()) call();
  });
}

}  // namespace lineweir::server
