#pragma once

#include <string>
#include <vector>

#include "forms/call_log_columns.h"
#include "support/scripted_console.h"

namespace lineweir::test {

inline constexpr const char* log_path = "calls.lwl";

inline void create_log(platform::ScriptedPlatform& platform) {
  std::vector<platform::DatabaseColumn> columns;
  for (const CallLogColumn& column : call_log_columns) {
    columns.push_back({column.name.empty() ? "Sponsor" : std::string(column.name),
                       static_cast<int>(column.size)});
  }
  platform.databases.create(log_path)->create_table(std::string(call_log_table), columns);
}

// The console logs its calls from now on.
inline void choose_log(ScriptedConsole& test) {
  create_log(test.platform);
  test.console.Lineweir.Data1.database_name = log_path;
}

inline std::vector<std::vector<std::string>> logged_rows(const ScriptedConsole& test) {
  return test.platform.databases.rows(log_path, call_log_table);
}

}  // namespace lineweir::test
