#pragma once

#include "platform/postgres_store/blocking_session.h"
#include "platform/transfer/whole_store.h"

namespace lineweir::platform {

// The store of a database as it is at one moment.
class WholeDatabase final : public WholeStore {
 public:
  WholeDatabase(const PostgresAddress& address, const std::atomic<bool>& given_up);

  std::vector<Account> accounts() override;
  std::vector<GroupMemory> groups() override;
  std::vector<FlaggedCaller> flagged_callers() override;
  std::vector<CallRecord> calls_behind(std::int64_t id, std::size_t limit) override;
  std::vector<AuditEntry> entries_behind(std::int64_t number, std::size_t limit) override;
  AuditEnd audit_end() override;

 private:
  BlockingSession session_;
};

// A database that takes over what another store held, in one transaction, while nobody else writes
// into it.
class FilledDatabase final : public StoreInTheMaking {
 public:
  enum class Before {
    // No record at all.
    Empty,
    // What a server's first start leaves, see Store::restore. That goes.
    Fresh,
  };

  // A Failure where the database holds more than it may.
  FilledDatabase(const PostgresAddress& address, Before before, const std::atomic<bool>& given_up);

  std::vector<Account> accounts() override;
  std::vector<GroupMemory> groups() override;
  std::vector<FlaggedCaller> flagged_callers() override;
  std::vector<CallRecord> calls_behind(std::int64_t id, std::size_t limit) override;
  std::vector<AuditEntry> entries_behind(std::int64_t number, std::size_t limit) override;
  AuditEnd audit_end() override;
  void add(const StorePortion& portion) override;
  void end_audit(const AuditEnd& end) override;
  void commit() override;

 private:
  BlockingSession session_;
};

}  // namespace lineweir::platform
