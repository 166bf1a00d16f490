#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "platform/database.h"

namespace lineweir::test {

// The databases of an engine, whose rows can't be read while a test says so, which store rows as
// slowly as it says, and which tell what is held of them.
class ObstinateDatabases final : public platform::DatabaseEngine {
 public:
  // The engine must outlive this object.
  explicit ObstinateDatabases(platform::DatabaseEngine& engine) : engine_(engine) {}

  // Each reading of rows is a Failure of this number; 0 for none.
  int reading_fails = 0;
  // Rows that are to be stored are being stored still, and so many have been looked at.
  std::optional<std::int64_t> stored_so_far;
  // How many files and collections of rows are held.
  int open_files() const { return held_->files; }
  int batches() const { return held_->batches; }

  std::unique_ptr<platform::Database> open(const std::string& path) override {
    return std::make_unique<OpenFile>(*this, engine_.open(path));
  }
  std::unique_ptr<platform::Database> create(const std::string& path) override {
    return engine_.create(path);
  }
  bool is_database(const std::string& path) override { return engine_.is_database(path); }

 private:
  // A console that ends behind this object lets go what it holds then.
  struct Held {
    int files = 0;
    int batches = 0;
  };

  class Rows final : public platform::Recordset {
   public:
    Rows(const ObstinateDatabases& engine, std::unique_ptr<Recordset> rows)
        : engine_(engine), rows_(std::move(rows)) {}
    std::int64_t count() override { return rows_->count(); }
    std::optional<std::vector<std::string>> row(platform::RowId row) override {
      require_reading();
      return rows_->row(row);
    }
    int scan(const platform::RowScan& scan, const platform::RowVisitor& visit) override {
      require_reading();
      return rows_->scan(scan, visit);
    }
    int find_number(int column, std::string_view number, int limit, const std::vector<int>& columns,
                    const platform::RowVisitor& visit) override {
      require_reading();
      return rows_->find_number(column, number, limit, columns, visit);
    }

    const std::vector<platform::DatabaseColumn>& fields() const override { return rows_->fields(); }
    void refresh() override { rows_->refresh(); }
    void add_new() override { rows_->add_new(); }
    void edit(platform::RowId row) override { rows_->edit(row); }
    std::string field(int position) const override { return rows_->field(position); }
    void set_field(std::string_view name, std::string_view value) override {
      rows_->set_field(name, value);
    }
    void set_field(int position, std::string_view value) override {
      rows_->set_field(position, value);
    }
    platform::RowId update() override { return rows_->update(); }
    void remove(platform::RowId row) override { rows_->remove(row); }
    void take_places(const std::vector<platform::RowId>& order) override {
      rows_->take_places(order);
    }

   private:
    void require_reading() const {
      if (engine_.reading_fails != 0) throw Failure(engine_.reading_fails, "It can't be read.");
    }

    const ObstinateDatabases& engine_;
    std::unique_ptr<Recordset> rows_;
  };

  class Batch final : public platform::RowBatch {
   public:
    Batch(ObstinateDatabases& engine, std::unique_ptr<RowBatch> rows)
        : engine_(engine), held_(engine.held_), rows_(std::move(rows)) {
      ++held_->batches;
    }
    ~Batch() override { --held_->batches; }
    Progress progress() const override {
      if (!engine_.stored_so_far) return rows_->progress();
      return {Stage::Storing, *engine_.stored_so_far, std::nullopt};
    }

    void add(std::vector<std::string> values, bool apart) override {
      rows_->add(std::move(values), apart);
    }
    std::size_t waiting() const override { return rows_->waiting(); }
    void store(bool apart_too) override { rows_->store(apart_too); }
    void cancel() override { rows_->cancel(); }

   private:
    ObstinateDatabases& engine_;
    std::shared_ptr<Held> held_;
    std::unique_ptr<RowBatch> rows_;
  };

  class OpenFile final : public platform::Database {
   public:
    OpenFile(ObstinateDatabases& engine, std::unique_ptr<Database> file)
        : engine_(engine), held_(engine.held_), file_(std::move(file)) {
      ++held_->files;
    }
    ~OpenFile() override { --held_->files; }
    std::unique_ptr<platform::Recordset> open_recordset(const std::string& table) override {
      return std::make_unique<Rows>(engine_, file_->open_recordset(table));
    }
    std::unique_ptr<platform::RowBatch> collect_rows(const std::string& table) override {
      return std::make_unique<Batch>(engine_, file_->collect_rows(table));
    }

    void create_table(const std::string& name,
                      const std::vector<platform::DatabaseColumn>& columns) override {
      file_->create_table(name, columns);
    }
    std::vector<platform::DatabaseColumn> table_columns(const std::string& table) override {
      return file_->table_columns(table);
    }
    void rename_column(const std::string& table, int position, const std::string& name) override {
      file_->rename_column(table, position, name);
    }
    void index_numbers(const std::string& table, int position) override {
      file_->index_numbers(table, position);
    }
    std::int64_t change_stamp() override { return file_->change_stamp(); }
    bool follow_file() override { return file_->follow_file(); }
    void in_transaction(const std::function<void()>& body) override { file_->in_transaction(body); }
    bool checkpoint() override { return file_->checkpoint(); }
    platform::FileIdentity identity() const override { return file_->identity(); }
    platform::FileStanding standing() override { return file_->standing(); }

   private:
    ObstinateDatabases& engine_;
    std::shared_ptr<Held> held_;
    std::unique_ptr<Database> file_;
  };

  platform::DatabaseEngine& engine_;
  std::shared_ptr<Held> held_ = std::make_shared<Held>();
};

}  // namespace lineweir::test
