#pragma once

#include <map>
#include <vector>

#include "platform/audit/audit_check.h"
#include "platform/store.h"

namespace lineweir::platform {

// What a store holds, in memory.
struct StoreContent {
  std::map<std::string, Account> accounts = {};
  std::map<std::int64_t, CallRecord> calls = {};
  std::map<int, GroupMemory> groups = {};
  std::map<std::string, FlaggedCaller> flagged_callers = {};
  std::map<int, StudioPlace> studio_places = {};
  std::vector<AuditEntry> audit = {};
  AuditEnd audit_end = {};

  StoredState state() const;
  std::vector<CallRecord> ended_calls(const CallFilter& filter) const;
  std::vector<AuditEntry> entries(const AuditFilter& filter) const;
  CallerHistory caller_history(const std::string& key) const;
  AuditVerdict verdict() const;
  // Whether a backup may take its place.
  bool is_fresh() const;

  void apply(const StoreChange& change);
  // See Store::forget.
  std::size_t forget(Moment before, Store::Forgetting what, std::size_t limit);
};

}  // namespace lineweir::platform
