#pragma once

#include <string>
#include <vector>

#include "callerdata/call_log.h"
#include "platform/database.h"

namespace lineweir::test {

// A database engine that stores nothing and writes down each step of opening files and of adding
// rows. Each file holds an empty call log.
class RecordingDatabases final : public platform::DatabaseEngine {
 public:
  std::vector<std::string> steps;

  std::unique_ptr<platform::Database> open(const std::string& path) override {
    steps.push_back("open " + path);
    return std::make_unique<OpenFile>(steps);
  }
  std::unique_ptr<platform::Database> create(const std::string&) override { return nullptr; }
  bool is_database(const std::string&) override { return true; }

 private:
  class Rows final : public platform::Recordset {
   public:
    explicit Rows(std::vector<std::string>& steps) : steps_(steps) {}
    void add_new() override { steps_.push_back("add"); }
    void set_field(std::string_view name, std::string_view value) override {
      steps_.push_back(std::string(name) + "=" + std::string(value));
    }
    void set_field(int position, std::string_view value) override {
      steps_.push_back(std::to_string(position) + "=" + std::string(value));
    }
    platform::RowId update() override {
      steps_.push_back("update");
      return 0;
    }

    const std::vector<platform::DatabaseColumn>& fields() const override { return fields_; }
    void refresh() override {}
    void edit(platform::RowId) override {}
    std::string field(int) const override { return {}; }
    void remove(platform::RowId) override {}
    void take_places(const std::vector<platform::RowId>&) override {}
    std::int64_t count() override { return 0; }
    std::optional<std::vector<std::string>> row(platform::RowId) override { return std::nullopt; }
    int scan(const platform::RowScan&, const platform::RowVisitor&) override { return 0; }
    int find_number(int, std::string_view, int, const std::vector<int>&,
                    const platform::RowVisitor&) override {
      return 0;
    }

   private:
    std::vector<std::string>& steps_;
    std::vector<platform::DatabaseColumn> fields_;
  };

  class OpenFile final : public platform::Database {
   public:
    explicit OpenFile(std::vector<std::string>& steps) : steps_(steps) {}
    std::unique_ptr<platform::Recordset> open_recordset(const std::string& table) override {
      steps_.push_back("table " + table);
      return std::make_unique<Rows>(steps_);
    }

    void create_table(const std::string&, const std::vector<platform::DatabaseColumn>&) override {}
    std::vector<platform::DatabaseColumn> table_columns(const std::string&) override {
      return new_log_columns("User");
    }
    void rename_column(const std::string&, int, const std::string&) override {}
    void index_numbers(const std::string&, int) override {}
    std::int64_t change_stamp() override { return 0; }
    bool follow_file() override { return true; }
    void in_transaction(const std::function<void()>& body) override { body(); }
    std::unique_ptr<platform::RowBatch> collect_rows(const std::string&) override {
      return nullptr;
    }
    bool checkpoint() override { return true; }
    platform::FileIdentity identity() const override { return {}; }
    platform::FileStanding standing() override { return platform::FileStanding::Same; }

   private:
    std::vector<std::string>& steps_;
  };
};

}  // namespace lineweir::test
