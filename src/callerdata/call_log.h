#pragma once

#include <memory>
#include <string>

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

  // Gives the column that the user names another name in the chosen log. Fails as the database
  // does.
  void rename_user_field(const std::string& name);

 private:
  Console& console_;
  std::string open_name_;
  std::unique_ptr<platform::Database> database_;
  std::unique_ptr<platform::Recordset> recordset_;
};

}  // namespace lineweir
