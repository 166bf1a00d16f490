#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/store_records.h"

namespace lineweir::platform {

struct CallFilter {
  // 0 for every group.
  int group = 0;
  // Calls that ended at this moment or later.
  Moment since{0};
};

struct AuditVerdict {
  std::int64_t entries = 0;
  // The number of the first entry that is missing or changed; 0 where all is right.
  std::int64_t first_wrong = 0;
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

  virtual void audit(std::function<void(std::optional<std::vector<AuditEntry>> entries)> done) = 0;
  virtual void verify_audit(std::function<void(std::optional<AuditVerdict> verdict)> done) = 0;

  // A file that holds all that the store holds now, also while it is written to. A file that is
  // there already is not touched. The failure is a sentence, empty where it was done.
  virtual void backup(const std::string& file, std::function<void(std::string failure)> done) = 0;
  // Takes over what a backup holds. Only into a store without accounts, calls and audit.
  virtual void restore(const std::string& file, std::function<void(std::string failure)> done) = 0;
};

}  // namespace lineweir::platform
