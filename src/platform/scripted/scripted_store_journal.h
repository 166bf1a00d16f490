#pragma once

#include "platform/store_journal.h"

namespace lineweir::platform {

// A journal in memory. It outlives its server, as a file does.
class ScriptedStoreJournal final : public StoreJournal {
 public:
  Left left() override { return left_; }
  void append(Epoch epoch, std::vector<StoreChange> changes) override {
    if (left_.changes.empty()) left_.epoch = epoch;
    for (StoreChange& change : changes) left_.changes.push_back(std::move(change));
  }
  void clear() override { left_ = {}; }

  // What a test finds in it, and may put there.
  Left& content() { return left_; }

 private:
  Left left_;
};

}  // namespace lineweir::platform
