#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/store.h"
#include "platform/wall_clock.h"
#include "server/audit.h"
#include "server/store_outbox.h"

namespace lineweir::server {

// What a caller's number may take, in whatever way it is written.
inline constexpr std::size_t longest_caller_number = 100;

// What the station remembers of callers, by the telephone_key of their numbers: what is noted of
// some, all held here; and of all what their calls come to, asked of the store.
class CallerMemory {
 public:
  using Flagged = std::map<std::string, platform::FlaggedCaller, std::less<>>;

  CallerMemory(platform::Store& store, const platform::WallClock& clock, StoreOutbox& outbox,
               Audit& audit)
      : store_(store), clock_(clock), outbox_(outbox), audit_(audit) {}

  void take_over(const std::vector<platform::FlaggedCaller>& callers);
  // As another server has noted it.
  void take(const platform::FlaggedCaller& caller);

  // Null where nothing is noted, also where its last day has passed.
  const platform::FlaggedCaller* find(std::string_view key) const;
  // Also those whose last day has passed.
  const Flagged& all() const { return flagged_; }

  // Notes it and tells everybody. A caller with the flag None is as others again.
  void note(platform::FlaggedCaller caller);
  // Takes back what is noted of callers until a day that has passed; told how many.
  std::size_t forget_passed();

  // What is noted of the caller has changed; set by the server.
  std::function<void(const std::string& key)> on_change;

  // Nothing is told where the store can't be read.
  void ask(const std::string& key,
           std::function<void(std::optional<platform::CallerHistory> history)> done) {
    store_.caller_history(key, std::move(done));
  }

 private:
  bool has_passed(const platform::FlaggedCaller& caller) const;
  void change(const platform::FlaggedCaller& caller);

  platform::Store& store_;
  const platform::WallClock& clock_;
  StoreOutbox& outbox_;
  Audit& audit_;
  Flagged flagged_;
};

}  // namespace lineweir::server
