#pragma once

#include <filesystem>

#include "platform/database.h"
#include "platform/sqlite/connection.h"
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

// An SQLite file that is open. Its recordsets must not outlive it.
class SqliteDatabase final : public Database {
 public:
  // A file that has just been made goes again unless a table is made in it.
  SqliteDatabase(const std::filesystem::path& file, bool just_made);

  void create_table(const std::string& name, const std::vector<DatabaseColumn>& columns) override;
  std::vector<DatabaseColumn> table_columns(const std::string& table) override;
  void rename_column(const std::string& table, int position, const std::string& name) override;
  void index_numbers(const std::string& table, int position) override;
  std::unique_ptr<Recordset> open_recordset(const std::string& table) override;
  std::int64_t change_stamp() override;
  void in_transaction(const std::function<void()>& body) override;

 private:
  void require_writable();

  NewFile new_file_;
  bool writable_ = false;
  Connection connection_;
  RowVisits visits_;
};

}  // namespace lineweir::platform
