#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/names.h"
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
    // Which one of all files that the engine ever had.
    std::uint64_t number = 0;
  };

  std::unique_ptr<Database> open(const std::string& path) override;
  std::unique_ptr<Database> create(const std::string& path) override;
  bool is_database(const std::string& path) override { return exists(path); }

  bool exists(const std::string& path) const { return files_.contains(path); }
  // The file is deleted; whoever has it open goes on seeing it.
  void remove(const std::string& path) { files_.erase(path); }
  // The file of that name; null where there is none.
  std::shared_ptr<File> find(const std::string& path) const;
  // The rows of a table in the order of storing; none where there is no such file or table.
  std::vector<Row> rows(const std::string& path, std::string_view table) const;

 private:
  std::map<std::string, std::shared_ptr<File>, std::less<>> files_;
  std::uint64_t files_made_ = 0;
};

}  // namespace lineweir::platform
