#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/lease.h"
#include "platform/store_records.h"

namespace lineweir::platform {

// What a store that is away has not taken yet, kept on this machine so that it outlives the process
// and a loss of power.
class StoreJournal {
 public:
  struct Left {
    // Of the server that has appended it.
    Epoch epoch = 0;
    std::vector<StoreChange> changes;
  };

  virtual ~StoreJournal() = default;

  // What lies in it, in order. Waits for the disk, so it is asked before anybody is served.
  virtual Left left() = 0;

  // Neither waits. What can't be kept is told as trouble, and the store still gets it.
  virtual void append(Epoch epoch, std::vector<StoreChange> changes) = 0;
  // All that was appended is in the store.
  virtual void clear() = 0;
  // Whether everything that was appended would be found again if this process ended now.
  virtual bool has_kept_all() = 0;

  // A sentence; set by the owner, told from the loop.
  std::function<void(const std::string& trouble)> on_trouble;
};

}  // namespace lineweir::platform
