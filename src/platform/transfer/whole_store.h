#pragma once

#include <cstdint>
#include <vector>

#include "platform/audit/audit_check.h"
#include "platform/store_records.h"

// Stores as they are copied from one kind to another: all of them, as they are at one moment, and
// without the loop. Everything here throws a Failure.
namespace lineweir::platform {

// Some of what a store holds. Entries of the audit stand as they are, also where somebody has
// changed them.
struct StorePortion {
  std::vector<Account> accounts = {};
  std::vector<GroupMemory> groups = {};
  std::vector<FlaggedCaller> flagged_callers = {};
  std::vector<CallRecord> calls = {};
  std::vector<AuditEntry> entries = {};

  friend bool operator==(const StorePortion&, const StorePortion&) = default;
};

// What a store holds, which doesn't change while this is there.
class WholeStore {
 public:
  virtual ~WholeStore() = default;

  virtual std::vector<Account> accounts() = 0;
  virtual std::vector<GroupMemory> groups() = 0;
  // In the order of their keys.
  virtual std::vector<FlaggedCaller> flagged_callers() = 0;
  // The first ones, at most so many, behind the one of this number; by their numbers.
  virtual std::vector<CallRecord> calls_behind(std::int64_t id, std::size_t limit) = 0;
  virtual std::vector<AuditEntry> entries_behind(std::int64_t number, std::size_t limit) = 0;
  virtual AuditEnd audit_end() = 0;
};

// A store that is being filled. It shows what it holds so far; others see nothing of it before
// the end, and unless the end comes it holds what it held before.
class StoreInTheMaking : public WholeStore {
 public:
  virtual void add(const StorePortion& portion) = 0;
  virtual void end_audit(const AuditEnd& end) = 0;
  virtual void commit() = 0;
};

}  // namespace lineweir::platform
