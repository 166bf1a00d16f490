#pragma once

#include <filesystem>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace lineweir::bench {

// A table of texts in a file of SQLite and nothing around it: the least that a row costs which has
// to outlive the loss of power. It is written as the log and the store are, with a write-ahead log
// that is brought to the disk at each commit.
class BareTable {
 public:
  // Makes the file, in which there must be none of this name yet.
  BareTable(const std::filesystem::path& file, int columns);
  ~BareTable();
  BareTable(const BareTable&) = delete;
  BareTable& operator=(const BareTable&) = delete;

  // A row, which is on the disk when this returns. As many texts as there are columns.
  void insert(const std::vector<std::string>& texts);

  // Brings what was inserted into the file itself, so that a copy of it holds all.
  void checkpoint();

 private:
  void execute(const std::string& statement);

  sqlite3* connection_ = nullptr;
  sqlite3_stmt* insertion_ = nullptr;
};

}  // namespace lineweir::bench
