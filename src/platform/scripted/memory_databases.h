#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "elements/names.h"
#include "platform/database.h"

namespace lineweir::platform {

// A database engine whose files are in memory and last as long as the engine.
class MemoryDatabases final : public DatabaseEngine {
 public:
  // One text a column.
  using Row = std::vector<std::string>;

  struct Table {
    std::vector<DatabaseColumn> columns;
    std::map<RowId, Row> rows;
  };

  struct NameOrder {
    bool operator()(const std::string& a, const std::string& b) const {
      return folded_name(a) < folded_name(b);
    }
  };

  struct File {
    std::map<std::string, Table, NameOrder> tables;
    std::int64_t changes = 0;
  };

  std::unique_ptr<Database> open(const std::string& path) override;
  std::unique_ptr<Database> create(const std::string& path) override;

  bool exists(const std::string& path) const { return files_.contains(path); }
  // The rows of a table in the order of storing; none where there is no such file or table.
  std::vector<Row> rows(const std::string& path, std::string_view table) const;

 private:
  std::map<std::string, std::shared_ptr<File>, std::less<>> files_;
};

}  // namespace lineweir::platform
