#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "platform/sqlite/open_file.h"
#include "platform/sqlite/statement.h"

namespace lineweir::platform {

// The table to which rows are to be added. The guard must outlive all who use it.
struct BatchTarget {
  std::filesystem::path file;
  std::string table;
  GuardedFiles& guard;
};

// Rows in a temporary table of a connection of their own, from which they go into a table of the
// file in one step.
class StagedRows {
 public:
  // The wait is that of each step which finds the file locked.
  StagedRows(const BatchTarget& target, LockWait lock_wait);
  StagedRows(const StagedRows&) = delete;
  StagedRows& operator=(const StagedRows&) = delete;

  void add(const std::vector<std::string>& values, bool apart);

  // A Failure of number 3260 while another program is writing, and of 3024 where the file isn't
  // there any more under its name. `go_on` is told how many rows were
  // looked at, every few thousand; where it says no, nothing is stored and false is returned.
  bool store(bool apart_too, const std::function<bool(std::int64_t done)>& go_on);

 private:
  LockWait lock_wait_;
  OpenFile open_;
  std::size_t columns_ = 0;
  // Moves the rows between two row numbers.
  std::string move_sql_;
  std::unique_ptr<Statement> insert_;
  std::int64_t rows_ = 0;
};

}  // namespace lineweir::platform
