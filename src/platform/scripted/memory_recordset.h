#pragma once

#include <optional>

#include "platform/scripted/memory_databases.h"

namespace lineweir::platform {

// The rows of a table in memory.
class MemoryRecordset final : public Recordset {
 public:
  MemoryRecordset(std::shared_ptr<MemoryDatabases::File> file, std::string table);

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
    MemoryDatabases::Row values;
    // The columns that were set, which are all that is stored of a present row.
    std::vector<bool> set;
  };

  MemoryDatabases::Table& table() const;
  const BegunRow& begun() const;
  std::size_t place_of(int position) const;

  std::shared_ptr<MemoryDatabases::File> file_;
  std::string table_;
  std::vector<DatabaseColumn> fields_;
  std::optional<BegunRow> begun_;
};

// The table of that name; a Failure of number 3078 where there is none.
MemoryDatabases::Table& table_of(MemoryDatabases::File& file, const std::string& name);

}  // namespace lineweir::platform
