#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>

#include "platform/event_loop.h"
#include "platform/store.h"
#include "platform/store_journal.h"
#include "server/server_log.h"

namespace lineweir::server {

// Writes what the last server of this journal couldn't write into the store, as far as it is still
// true, again and again until the store has taken it.
class JournalReplay {
 public:
  static constexpr platform::Milliseconds tried_again_after{2000};

  // All outlive this object; nothing is told behind its end.
  JournalReplay(platform::EventLoop& loop, platform::Store& store, platform::StoreJournal& journal,
                platform::Epoch epoch, const ServerLog& log)
      : loop_(loop), store_(store), journal_(journal), epoch_(epoch), log_(log) {}

  void run(std::function<void()> done);

 private:
  using Known = std::set<std::int64_t>;

  void write(const Known& known_calls, std::function<void()> done);
  void read_known_calls(const std::function<void(const Known& known)>& done);
  void again(std::function<void()> call);

  platform::EventLoop& loop_;
  platform::Store& store_;
  platform::StoreJournal& journal_;
  platform::Epoch epoch_;
  const ServerLog& log_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace lineweir::server
