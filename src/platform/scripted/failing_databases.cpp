#include "platform/scripted/failing_databases.h"

#include <utility>

namespace lineweir::platform {
namespace {

std::string sentence(int number, const std::string& path) {
  switch (number) {
    case failure_number::database_in_use:
      return "The file '" + path + "' is in use by another program.";
    case failure_number::disk_full:
      return "There is no room left on the disk for '" + path + "'.";
    default:
      return "The database '" + path + "' could not be used.";
  }
}

// Rows that aren't stored where the script says so, and wait while it says that the file is in use.
class FailingRowBatch final : public RowBatch {
 public:
  FailingRowBatch(const FailingDatabases& engine, std::string path, std::unique_ptr<RowBatch> rows)
      : engine_(engine), path_(std::move(path)), rows_(std::move(rows)) {}

  void add(std::vector<std::string> values, bool apart) override {
    rows_->add(std::move(values), apart);
  }
  std::size_t waiting() const override { return rows_->waiting(); }
  void store(bool apart_too) override {
    to_store_ = apart_too;
    try_to_store();
  }
  void cancel() override {
    to_store_.reset();
    refusal_.reset();
    rows_->cancel();
  }
  Progress progress() const override {
    try_to_store();
    if (!refusal_) return rows_->progress();
    if (to_store_) return {Stage::Waiting, 0, std::nullopt};
    return {Stage::Failed, 0, refusal_};
  }

 private:
  void try_to_store() const {
    if (!to_store_) return;
    refusal_ = engine_.refusal(path_);
    if (refusal_ && refusal_->number() == failure_number::database_in_use) return;
    refusal_ ? rows_->cancel() : rows_->store(*to_store_);
    to_store_.reset();
  }

  const FailingDatabases& engine_;
  std::string path_;
  std::unique_ptr<RowBatch> rows_;
  // While they wait: whether those told apart are wanted too.
  mutable std::optional<bool> to_store_;
  mutable std::optional<Failure> refusal_;
};

class FailingDatabase final : public Database {
 public:
  FailingDatabase(const FailingDatabases& engine, std::string path, std::unique_ptr<Database> file)
      : engine_(engine), path_(std::move(path)), file_(std::move(file)) {}

  void create_table(const std::string& name, const std::vector<DatabaseColumn>& columns) override {
    engine_.require_service(path_);
    file_->create_table(name, columns);
  }
  std::vector<DatabaseColumn> table_columns(const std::string& table) override {
    return file_->table_columns(table);
  }
  void rename_column(const std::string& table, int position, const std::string& name) override {
    engine_.require_service(path_);
    file_->rename_column(table, position, name);
  }
  void index_numbers(const std::string& table, int position) override {
    engine_.require_service(path_);
    file_->index_numbers(table, position);
  }
  std::unique_ptr<Recordset> open_recordset(const std::string& table) override {
    return file_->open_recordset(table);
  }
  std::int64_t change_stamp() override { return file_->change_stamp(); }
  bool follow_file() override { return file_->follow_file(); }
  void in_transaction(const std::function<void()>& body) override {
    engine_.require_service(path_);
    file_->in_transaction(body);
  }
  std::unique_ptr<RowBatch> collect_rows(const std::string& table) override {
    return std::make_unique<FailingRowBatch>(engine_, path_, file_->collect_rows(table));
  }
  bool checkpoint() override { return file_->checkpoint(); }
  FileIdentity identity() const override { return file_->identity(); }
  FileStanding standing() override { return file_->standing(); }

 private:
  const FailingDatabases& engine_;
  std::string path_;
  std::unique_ptr<Database> file_;
};

}  // namespace

std::unique_ptr<Database> FailingDatabases::open(const std::string& path) {
  require_service(path);
  return std::make_unique<FailingDatabase>(*this, path, engine_->open(path));
}

std::unique_ptr<Database> FailingDatabases::create(const std::string& path) {
  require_service(path);
  return std::make_unique<FailingDatabase>(*this, path, engine_->create(path));
}

std::optional<Failure> FailingDatabases::refusal(const std::string& path) const {
  if (failure_ == 0) return std::nullopt;
  return Failure(failure_, sentence(failure_, path));
}

void FailingDatabases::require_service(const std::string& path) const {
  if (const auto refused = refusal(path)) throw *refused;
}

}  // namespace lineweir::platform
