#include "platform/scripted/memory_databases.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "elements/failure.h"

namespace lineweir::platform {
namespace {

constexpr int no_row_begun = 3020;
constexpr int no_such_table = 3078;
constexpr int value_too_long = 3163;
constexpr int file_exists = 3204;
constexpr int no_such_field = 3265;

using Table = MemoryDatabases::Table;

class MemoryRecordset final : public Recordset {
 public:
  explicit MemoryRecordset(std::shared_ptr<Table> table) : table_(std::move(table)) {}

  void add_new() override { row_.emplace(table_->columns.size()); }

  void set_field(std::string_view name, std::string_view value) override {
    const auto& columns = table_->columns;
    const auto column = std::ranges::find(columns, name, &DatabaseColumn::name);
    set_field(static_cast<int>(column - columns.begin()), value);
  }

  void set_field(int position, std::string_view value) override {
    if (!row_) throw Failure(no_row_begun, "No row was begun");
    const auto place = static_cast<std::size_t>(position);
    if (position < 0 || place >= row_->size()) {
      throw Failure(no_such_field, "Item not found in this collection");
    }
    if (value.size() > static_cast<std::size_t>(table_->columns[place].size)) {
      throw Failure(value_too_long, "The field " + table_->columns[place].name + " is too small");
    }
    (*row_)[place] = value;
  }

  void update() override {
    if (!row_) throw Failure(no_row_begun, "No row was begun");
    table_->rows.push_back(*std::exchange(row_, std::nullopt));
  }

 private:
  std::shared_ptr<Table> table_;
  std::optional<MemoryDatabases::Row> row_;
};

class MemoryDatabase final : public Database {
 public:
  explicit MemoryDatabase(std::shared_ptr<MemoryDatabases::File> file) : file_(std::move(file)) {}

  void create_table(const std::string& name, const std::vector<DatabaseColumn>& columns) override {
    (*file_)[name] = std::make_shared<Table>(Table{columns, {}});
  }

  std::vector<DatabaseColumn> table_columns(const std::string& name) override {
    return table(name)->columns;
  }

  std::unique_ptr<Recordset> open_recordset(const std::string& name) override {
    return std::make_unique<MemoryRecordset>(table(name));
  }

 private:
  std::shared_ptr<Table> table(const std::string& name) const {
    const auto found = file_->find(name);
    if (found == file_->end()) throw Failure(no_such_table, "There is no table " + name);
    return found->second;
  }

  std::shared_ptr<MemoryDatabases::File> file_;
};

}  // namespace

std::unique_ptr<Database> MemoryDatabases::open(const std::string& path) {
  const auto file = files_.find(path);
  if (file == files_.end()) {
    throw Failure(failure_number::database_not_found, "Couldn't find file '" + path + "'");
  }
  return std::make_unique<MemoryDatabase>(file->second);
}

std::unique_ptr<Database> MemoryDatabases::create(const std::string& path) {
  const auto [file, made] = files_.try_emplace(path, std::make_shared<File>());
  if (!made) throw Failure(file_exists, "The file '" + path + "' already exists");
  return std::make_unique<MemoryDatabase>(file->second);
}

std::vector<MemoryDatabases::Row> MemoryDatabases::rows(std::string_view path,
                                                        std::string_view table) const {
  const auto file = files_.find(path);
  if (file == files_.end()) return {};
  const auto found = file->second->find(table);
  return found == file->second->end() ? std::vector<Row>{} : found->second->rows;
}

}  // namespace lineweir::platform
