#pragma once

#include <filesystem>
#include <optional>

#include "platform/database.h"
#include "platform/disk/guarded_files.h"
#include "platform/sqlite/open_file.h"
#include "platform/sqlite/row_visits.h"

namespace lineweir::platform {

// A file that has just been made: it goes again with what SQLite put beside it, unless it is kept.
class NewFile {
 public:
  explicit NewFile(std::filesystem::path file) : file_(std::move(file)) {}
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  void keep() { file_.clear(); }

 private:
  std::filesystem::path file_;
};

// Whether batches of rows are worked off on threads of their own, or in the calls for them: a
// console whose time is not that of the clock can't wait for a thread.
enum class BatchWork { OnThreads, AtOnce };

// An SQLite file that is open. Its recordsets and batches must not outlive it: the batches rely on
// its guard.
class SqliteDatabase final : public Database {
 public:
  // A file that has just been made goes again unless a table is made in it. The wait and the guard
  // must outlive this object.
  SqliteDatabase(const std::filesystem::path& file, bool just_made, const LockWait& lock_wait,
                 GuardedFiles& guard, BatchWork batch_work);

  void create_table(const std::string& name, const std::vector<DatabaseColumn>& columns) override;
  std::vector<DatabaseColumn> table_columns(const std::string& table) override;
  void rename_column(const std::string& table, int position, const std::string& name) override;
  void index_numbers(const std::string& table, int position) override;
  std::unique_ptr<Recordset> open_recordset(const std::string& table) override;
  std::int64_t change_stamp() override;
  bool follow_file() override;
  void in_transaction(const std::function<void()>& body) override;
  std::unique_ptr<RowBatch> collect_rows(const std::string& table) override;
  bool checkpoint() override;
  FileIdentity identity() const override {
    return {open_.identity().first, open_.identity().second};
  }
  FileStanding standing() override;

  bool has_tables() const;

 private:
  // What the system tells of a file without opening it.
  struct FileLook {
    FileIdentity identity;
    std::int64_t size = 0;
    std::int64_t written_at = 0;

    friend bool operator==(const FileLook&, const FileLook&) = default;
  };

  std::optional<FileLook> look() const;
  void remember_look();
  void require_writable();

  GuardedFiles& guard_;
  std::filesystem::path file_;
  // The file as it was when this connection last had to do with it.
  FileLook known_;
  // The same for when it was last followed.
  FileLook followed_;
  BatchWork batch_work_;
  NewFile new_file_;
  bool writable_ = false;
  OpenFile open_;
  RowVisits visits_;
};

}  // namespace lineweir::platform
