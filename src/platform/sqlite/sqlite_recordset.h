#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/database.h"
#include "platform/sqlite/row_visits.h"
#include "platform/sqlite/statement.h"
#include "platform/sqlite/table_schema.h"

namespace lineweir::platform {

// The rows of a table of an SQLite file. It must not outlive its connection.
class SqliteRecordset final : public Recordset {
 public:
  SqliteRecordset(sqlite3* connection, RowVisits& visits, const std::string& table);

  const std::vector<DatabaseColumn>& fields() const override { return fields_; }
  void refresh() override;
  void add_new() override;
  void edit(RowId row) override;
  std::string field(int position) const override;
  void set_field(std::string_view name, std::string_view value) override;
  void set_field(int position, std::string_view value) override;
  RowId update() override;
  void remove(RowId row) override;
  void take_places(const std::vector<RowId>& order) override;
  std::int64_t count() override;
  std::optional<std::vector<std::string>> row(RowId row) override;
  int scan(const RowScan& rows, const RowVisitor& visit) override;
  int find_number(int column, std::string_view number, int limit, const std::vector<int>& columns,
                  const RowVisitor& visit) override;

 private:
  struct BegunRow {
    // Nothing while the row is new.
    std::optional<RowId> id;
    std::vector<std::string> values;
    // The columns that were set, which are all that is stored of a present row.
    std::vector<bool> set;
  };

  void read_schema();
  // Another program may have added or renamed a column since.
  void follow_schema();
  void require_same_file() const;
  BegunRow& begun();
  std::size_t place_of(int position) const;
  RowId insert(const BegunRow& row);
  RowId store(const BegunRow& row);

  sqlite3* connection_;
  RowVisits& visits_;
  std::string table_;
  // The columns as they were at the last refresh, which the caller knows; and as they are.
  std::vector<DatabaseColumn> fields_;
  TableSchema schema_;
  std::int64_t schema_version_ = 0;
  std::unique_ptr<Statement> version_query_;
  std::unique_ptr<Statement> insert_;
  std::unique_ptr<Statement> select_;
  std::optional<BegunRow> begun_;
};

}  // namespace lineweir::platform
