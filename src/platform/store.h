#pragma once

#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "platform/store_records.h"

namespace lineweir::platform {

inline constexpr std::size_t no_limit = std::numeric_limits<std::size_t>::max();

// A call among those that have ended, in the order of their ends.
struct CallPlace {
  Moment ended{0};
  std::int64_t id = 0;

  friend auto operator<=>(const CallPlace&, const CallPlace&) = default;
};

struct CallFilter {
  // 0 for every group.
  int group = 0;
  // Calls that ended at this moment or later.
  Moment since{0};
  // Calls behind this one.
  CallPlace after = {};
  // The first ones of all these.
  std::size_t limit = no_limit;
};

struct AuditFilter {
  // Entries behind the one of this number.
  std::int64_t after = 0;
  // The first ones of all these.
  std::size_t limit = no_limit;
};

struct AuditVerdict {
  std::int64_t entries = 0;
  // The number of the first entry that is missing or changed; 0 where all is right.
  std::int64_t first_wrong = 0;
  // Of the last entry; empty where there is none.
  std::string last_hash = {};

  friend bool operator==(const AuditVerdict&, const AuditVerdict&) = default;
};

// Where a server keeps what must outlive it. No call waits: the work is done away from the loop and
// what came of it is told from the loop, in the order of the calls. `nothing` is told where the
// store can't be reached or read.
class Store {
 public:
  virtual ~Store() = default;

  virtual void load(std::function<void(std::optional<StoredState> state)> done) = 0;

  // Writes all, in order, or nothing. A write of which false was told may be repeated.
  virtual void write(std::vector<StoreChange> changes, std::function<void(bool written)> done) = 0;

  // Calls that have ended, in the order of their ends.
  virtual void calls(const CallFilter& filter,
                     std::function<void(std::optional<std::vector<CallRecord>> calls)> done) = 0;

  // In the order of their numbers.
  virtual void audit(const AuditFilter& filter,
                     std::function<void(std::optional<std::vector<AuditEntry>> entries)> done) = 0;
  // Of the calls that have ended, by the telephone_key of the caller's number.
  virtual void caller_history(const std::string& key,
                              std::function<void(std::optional<CallerHistory> history)> done) = 0;

  // Forgets who called in the calls that ended before the moment and aren't forgotten yet: the
  // calls themselves, or all that was told of the callers. At most so many at once; told how many.
  enum class Forgetting { Calls, Callers };
  virtual void forget(Moment before, Forgetting what, std::size_t limit,
                      std::function<void(std::optional<std::size_t> forgotten)> done) = 0;

  virtual void verify_audit(std::function<void(std::optional<AuditVerdict> verdict)> done) = 0;

  // A file that holds all that the store holds now, also while it is written to. A file that is
  // there already is not touched. The failure is a sentence, empty where it was done.
  virtual void backup(const std::string& file, std::function<void(std::string failure)> done) = 0;
  // Takes over what a backup holds, and nothing of what the store held. Only into a store that
  // holds no call, no flagged caller and at most one account, which never logged in and has no
  // profile: that is what a server's first start leaves.
  virtual void restore(const std::string& file, std::function<void(std::string failure)> done) = 0;

  // What others that share the store have written, and this one as well; told from the loop soon
  // after it was written. Set by the owner. A store that isn't shared tells nothing.
  std::function<void(const StoreNews& news)> on_news;

  // Calls of the above that wait or are being worked on.
  virtual std::size_t waiting() const = 0;

  // Why the store can't be read or written now, as a sentence; empty once it can again. Set by the
  // owner; told from the loop when it changes.
  std::function<void(const std::string& trouble)> on_trouble;
};

}  // namespace lineweir::platform
