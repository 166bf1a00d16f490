#include "platform/scripted/memory_databases.h"

#include <algorithm>
#include <utility>

#include "base/failure.h"
#include "platform/scripted/memory_recordset.h"

namespace lineweir::platform {
namespace {

void require_new_name(const std::vector<DatabaseColumn>& columns, const std::string& name) {
  const bool taken = std::ranges::any_of(
      columns, [&](const DatabaseColumn& column) { return same_name(column.name, name); });
  if (name.empty() || taken) {
    throw Failure(failure_number::field_name_taken,
                  "The column name \"" + name + "\" can't be used.");
  }
}

class MemoryRowBatch final : public RowBatch {
 public:
  MemoryRowBatch(std::shared_ptr<MemoryDatabases::File> file, std::string table)
      : file_(std::move(file)), table_(std::move(table)) {}

  void add(std::vector<std::string> values, bool apart) override {
    rows_.push_back({std::move(values), apart});
  }
  std::size_t waiting() const override { return 0; }
  void store(bool apart_too) override {
    if (progress_.stage != Stage::Collecting) return;
    MemoryRecordset table(file_, table_);
    for (const auto& [values, apart] : rows_) {
      if (apart && !apart_too) continue;
      table.add_new();
      for (std::size_t i = 0; i < values.size(); ++i) {
        table.set_field(static_cast<int>(i), values[i]);
      }
      table.update();
    }
    progress_.stage = Stage::Stored;
    progress_.done = static_cast<std::int64_t>(rows_.size());
  }
  void cancel() override {
    if (progress_.stage == Stage::Collecting) progress_.stage = Stage::Cancelled;
  }
  Progress progress() const override { return progress_; }

 private:
  std::shared_ptr<MemoryDatabases::File> file_;
  std::string table_;
  std::vector<std::pair<std::vector<std::string>, bool>> rows_;
  Progress progress_;
};

class MemoryDatabase final : public Database {
 public:
  MemoryDatabase(MemoryDatabases& engine, std::string path, bool just_made)
      : engine_(engine), path_(std::move(path)), just_made_(just_made), file_(engine.find(path_)) {}
  ~MemoryDatabase() override {
    if (just_made_ && file_->tables.empty()) engine_.remove(path_);
  }
  MemoryDatabase(const MemoryDatabase&) = delete;
  MemoryDatabase& operator=(const MemoryDatabase&) = delete;

  void create_table(const std::string& name, const std::vector<DatabaseColumn>& columns) override {
    MemoryDatabases::Table table;
    for (const DatabaseColumn& column : columns) {
      require_new_name(table.columns, column.name);
      table.columns.push_back(column);
    }
    file_->tables[name] = std::move(table);
    ++file_->changes;
  }

  std::vector<DatabaseColumn> table_columns(const std::string& table) override {
    return table_of(*file_, table).columns;
  }

  void rename_column(const std::string& table, int position, const std::string& name) override {
    auto& columns = table_of(*file_, table).columns;
    const auto place = static_cast<std::size_t>(position);
    if (position < 0 || place >= columns.size()) {
      throw Failure(failure_number::no_such_field, "The table has no such column.");
    }
    auto others = columns;
    others.erase(others.begin() + position);
    require_new_name(others, name);
    columns[place].name = name;
    ++file_->changes;
  }

  void index_numbers(const std::string& table, int position) override {
    if (position < 0 || static_cast<std::size_t>(position) >= table_columns(table).size()) {
      throw Failure(failure_number::no_such_field, "The table has no such column.");
    }
  }

  std::unique_ptr<Recordset> open_recordset(const std::string& table) override {
    return std::make_unique<MemoryRecordset>(file_, table);
  }

  std::int64_t change_stamp() override { return file_->changes; }
  bool follow_file() override { return true; }

  void in_transaction(const std::function<void()>& body) override {
    struct Restore {
      MemoryDatabases::File& file;
      MemoryDatabases::File before = file;
      bool wanted = true;
      ~Restore() {
        if (wanted) file.tables = std::move(before.tables);
      }
    } restore{*file_};
    body();
    restore.wanted = false;
  }

  std::unique_ptr<RowBatch> collect_rows(const std::string& table) override {
    return std::make_unique<MemoryRowBatch>(file_, table);
  }

  bool checkpoint() override { return true; }
  FileIdentity identity() const override { return {0, file_->number}; }
  FileStanding standing() override {
    const auto present = engine_.find(path_);
    if (!present) return FileStanding::Gone;
    return present == file_ ? FileStanding::Same : FileStanding::Replaced;
  }

 private:
  MemoryDatabases& engine_;
  std::string path_;
  bool just_made_;
  std::shared_ptr<MemoryDatabases::File> file_;
};

}  // namespace

std::unique_ptr<Database> MemoryDatabases::open(const std::string& path) {
  if (!exists(path)) {
    throw Failure(failure_number::database_not_found, "Couldn't find file '" + path + "'.");
  }
  return std::make_unique<MemoryDatabase>(*this, path, false);
}

std::unique_ptr<Database> MemoryDatabases::create(const std::string& path) {
  const auto [file, made] = files_.try_emplace(path, std::make_shared<File>());
  if (!made && file->second->tables.empty()) {
    return std::make_unique<MemoryDatabase>(*this, path, false);
  }
  if (!made) {
    throw Failure(failure_number::database_exists, "The file '" + path + "' exists already.");
  }
  file->second->number = ++files_made_;
  return std::make_unique<MemoryDatabase>(*this, path, true);
}

std::shared_ptr<MemoryDatabases::File> MemoryDatabases::find(const std::string& path) const {
  const auto file = files_.find(path);
  return file == files_.end() ? nullptr : file->second;
}

std::vector<MemoryDatabases::Row> MemoryDatabases::rows(const std::string& path,
                                                        std::string_view table) const {
  std::vector<Row> found;
  const auto file = files_.find(path);
  if (file == files_.end()) return found;
  const auto stored = file->second->tables.find(std::string(table));
  if (stored == file->second->tables.end()) return found;
  for (const auto& [id, row] : stored->second.rows) found.push_back(row);
  return found;
}

}  // namespace lineweir::platform
