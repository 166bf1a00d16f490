#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/caller_record.h"
#include "platform/database.h"

namespace lineweir {

struct Console;

// Writes the record of a call that has ended to the call log.
class CallLog {
 public:
  explicit CallLog(Console& console);

  // Writes the line's record if a log is chosen and the record holds data; the date of the call is
  // filled in. Fails as the database does.
  void log(int line);

  // The rows of the chosen log, opened at first use and anew after another was chosen.
  platform::Recordset& recordset();

  // Opens a file as the log and chooses it. Where it fails the log that is in use stays.
  void choose(const std::string& file);

  // Whether a log is chosen. The file may still be out of reach.
  bool chosen() const;

  // Gives the column that the user names another name in the chosen log. Fails as the database
  // does.
  void rename_user_field(const std::string& name);

  // How many calls have ended on the line, logged or not.
  int calls_ended(int line) const;

 private:
  struct OpenLog {
    std::string name;
    std::unique_ptr<platform::Database> database;
    std::unique_ptr<platform::Recordset> recordset;
  };

  void write(int line, CallerRecord& record);
  OpenLog open(const std::string& file) const;

  Console& console_;
  OpenLog log_;
  std::map<int, int> calls_ended_;
};

// The columns of a new log, whose last one has the user's name for it. A database's texts are
// UTF-8.
std::vector<platform::DatabaseColumn> new_log_columns(std::string_view user_field_name_utf8);

// A Failure of number 3265 unless the table has all columns of a call log in their places.
void require_log_columns(const std::vector<platform::DatabaseColumn>& columns);

}  // namespace lineweir
