#pragma once

#include "platform/store_journal.h"

namespace lineweir::platform {

// A journal in memory. It outlives its server, as a file does.
class ScriptedStoreJournal final : public StoreJournal {
 public:
  Left left() override { return left_; }
  void append(Epoch epoch, std::vector<StoreChange> changes) override {
    if (full_) return;
    if (left_.changes.empty()) left_.epoch = epoch;
    for (StoreChange& change : changes) left_.changes.push_back(std::move(change));
  }
  void clear() override { left_ = {}; }
  bool has_kept_all() override { return !full_; }

  // There is no room for what is appended from now on.
  void fill() { full_ = true; }

  // What a test finds in it, and may put there.
  Left& content() { return left_; }

 private:
  Left left_;
  bool full_ = false;
};

}  // namespace lineweir::platform
