#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/database.h"

namespace lineweir::platform {

// A database engine whose files are in memory and last as long as the engine.
class MemoryDatabases final : public DatabaseEngine {
 public:
  using Row = std::vector<std::string>;

  struct Table {
    std::vector<DatabaseColumn> columns;
    // As they were stored, one text a column.
    std::vector<Row> rows;
  };

  // What a file holds: its tables by their names.
  using File = std::map<std::string, std::shared_ptr<Table>, std::less<>>;

  std::unique_ptr<Database> open(const std::string& path) override;
  // A file that exists is a Failure of number 3204.
  std::unique_ptr<Database> create(const std::string& path) override;

  bool exists(const std::string& path) const { return files_.contains(path); }
  // The rows of a table; none where there is no such file or table.
  std::vector<Row> rows(std::string_view path, std::string_view table) const;

 private:
  std::map<std::string, std::shared_ptr<File>, std::less<>> files_;
};

}  // namespace lineweir::platform
