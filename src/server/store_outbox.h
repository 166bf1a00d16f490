#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/event_loop.h"
#include "platform/store.h"
#include "platform/store_journal.h"
#include "server/server_log.h"

namespace lineweir::server {

// Where what waits is kept besides, under the epoch of the server; null for nowhere.
struct OutboxJournal {
  platform::StoreJournal* journal = nullptr;
  platform::Epoch epoch = 0;
  // What a former server couldn't write may lie in it still, and isn't cleared from it.
  bool holds_former = false;
};

// What waits to be written to the store. Nobody waits for it: while the store is away or slow it
// grows, and all is written in its order when it can be. What replaces an account, a call or a
// group's memory takes the place of what still waits for the same, and of an account that is added
// or removed nothing waits any more that was changed of it before. Where there is a journal, what
// waits for more than a moment lies in it too, so that it outlives this process.
class StoreOutbox {
 public:
  static constexpr platform::Milliseconds gathered_for{20};
  static constexpr platform::Milliseconds retried_after{1000};
  // A write that takes longer is no longer waited for without the journal.
  static constexpr platform::Milliseconds journalled_after{500};
  // In one write.
  static constexpr std::size_t batch = 500;
  // Beyond so many the oldest audit events and ended calls are lost, which is reported; what
  // replaces something else is not, of which there is a bounded number.
  static constexpr std::size_t most_waiting = 200'000;

  StoreOutbox(platform::EventLoop& loop, platform::Store& store, const ServerLog& log,
              OutboxJournal journal = {});
  ~StoreOutbox();
  StoreOutbox(const StoreOutbox&) = delete;
  StoreOutbox& operator=(const StoreOutbox&) = delete;

  void put(platform::StoreChange change);

  // What a former server has left in the journal is in the store, and gone from the journal with
  // whatever else lay there.
  void former_is_kept();
  bool holds_former() const { return journal_.holds_former; }

  // Told once, as soon as nothing waits.
  void when_empty(std::function<void()> done);

  // Told, from the loop, once all that waits now is written.
  void when_written(std::function<void()> done);

  // Whether a change isn't written yet that is about the same thing as this one.
  bool holds(const platform::StoreChange& about) const;

  std::size_t waiting() const { return waiting_.size() + in_flight_; }
  std::size_t lost() const { return lost_; }
  // Whether nothing is lost if this process ends now.
  bool has_kept_all() const;
  bool store_is_away() const { return away_; }

 private:
  // What waits, with how many had been put when it was.
  struct Waiting {
    std::uint64_t number;
    platform::StoreChange change;
  };
  using Place = std::list<Waiting>::iterator;

  void schedule(platform::Milliseconds delay);
  void write();
  void hand_to_store();
  void written(bool done);
  void forget_changes_of(const std::string& account);
  platform::StoreChange take(Place place);
  void lose_oldest();
  void begin_to_journal();
  void end_to_journal();
  void tell_empty();
  void tell_written();

  platform::EventLoop& loop_;
  platform::Store& store_;
  const ServerLog& log_;
  std::list<Waiting> waiting_;
  std::uint64_t put_ = 0;
  // Of what replaces something.
  std::map<std::string, Place> places_;
  std::vector<platform::StoreChange> writing_;
  std::size_t in_flight_ = 0;
  std::size_t lost_ = 0;
  bool away_ = false;
  OutboxJournal journal_;
  bool journals_ = false;
  platform::EventLoop::CallId next_write_ = 0;
  platform::EventLoop::CallId journal_due_ = 0;
  std::function<void()> when_empty_;
  // Who is told once none waits of as many as had been put.
  struct Awaited {
    std::uint64_t number;
    std::function<void()> done;
  };
  std::deque<Awaited> awaited_;
  // What the store tells behind this one's end is passed over.
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace lineweir::server
