#pragma once

#include "platform/sqlite/connection.h"
#include "platform/sqlite_store/file_in_the_making.h"
#include "platform/transfer/whole_store.h"

namespace lineweir::platform {

// A store's file, or a backup, as it is at one moment; of any version up to the present one. The
// file isn't changed.
class WholeStoreFile final : public WholeStore {
 public:
  explicit WholeStoreFile(const std::filesystem::path& file);

  std::vector<Account> accounts() override;
  std::vector<GroupMemory> groups() override;
  std::vector<FlaggedCaller> flagged_callers() override;
  std::vector<CallRecord> calls_behind(std::int64_t id, std::size_t limit) override;
  std::vector<AuditEntry> entries_behind(std::int64_t number, std::size_t limit) override;
  AuditEnd audit_end() override;

 private:
  Connection connection_;
};

// A new file, which isn't there before its end, nor anything of it. For its owner alone.
class NewStoreFile final : public StoreInTheMaking {
 public:
  explicit NewStoreFile(const std::filesystem::path& file);

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
  FileInTheMaking file_;
  Connection connection_;
};

}  // namespace lineweir::platform
