#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lineweir::platform {

// A column of a table: its name and the largest number of characters that it holds.
struct DatabaseColumn {
  std::string name;
  int size = 0;
};

// The rows of one table. A new row is begun with add_new, filled field by field and stored with
// update; when update returns the row is safe on the disk.
class Recordset {
 public:
  virtual ~Recordset() = default;

  virtual void add_new() = 0;
  // A name or position that the table doesn't have is a Failure.
  virtual void set_field(std::string_view name, std::string_view value) = 0;
  virtual void set_field(int position, std::string_view value) = 0;
  virtual void update() = 0;
};

class Database {
 public:
  virtual ~Database() = default;

  virtual void create_table(const std::string& name, const std::vector<DatabaseColumn>& columns) = 0;
  virtual std::vector<DatabaseColumn> table_columns(const std::string& name) = 0;
  virtual std::unique_ptr<Recordset> open_recordset(const std::string& table) = 0;
};

class DatabaseEngine {
 public:
  virtual ~DatabaseEngine() = default;

  // A file that doesn't exist is a Failure of number 3024.
  virtual std::unique_ptr<Database> open(const std::string& path) = 0;
  virtual std::unique_ptr<Database> create(const std::string& path) = 0;
};

}  // namespace lineweir::platform
