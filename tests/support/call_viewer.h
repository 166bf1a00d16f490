#pragma once

#include <string>
#include <vector>

#include "support/call_log_file.h"
#include "support/scripted_console.h"

namespace lineweir::test {

// A console with a call log, and its viewer.
struct CallViewer : ScriptedConsole {
  CallViewer() { choose_log(*this); }

  DatabaseViewerForm& form() { return console.DatabaseViewer; }
  DataGrid& grid() { return form().DBGrid1; }

  // A call is logged by whatever console. Columns by their positions.
  platform::RowId log_call(const std::vector<std::pair<int, std::string>>& values) {
    const auto database = platform.databases.open(log_path);
    const auto rows = database->open_recordset(std::string(call_log_table));
    rows->add_new();
    for (const auto& [position, value] : values) rows->set_field(position, value);
    return rows->update();
  }
  platform::RowId log_call(const std::string& name, const std::string& city = {},
                           const std::string& date = {}) {
    return log_call({{0, name}, {2, city}, {9, date}});
  }
  void log_calls(int count) {
    const auto database = platform.databases.open(log_path);
    const auto rows = database->open_recordset(std::string(call_log_table));
    for (int i = 0; i < count; ++i) {
      rows->add_new();
      rows->set_field(0, "caller " + std::to_string(i));
      rows->update();
    }
  }

  void open() { console.Lineweir.ShowDatabaseMenuItem.on_click(); }
  void wait(int milliseconds = 2000) {
    platform.loop.advance(platform::Milliseconds(milliseconds));
  }
  void search(const std::string& words) {
    form().SearchText.text = words;
    wait(50);
  }

  // The first column of all rows that are shown.
  std::vector<std::string> names() {
    std::vector<std::string> found;
    for (int row = 1; row <= grid().rows; ++row) found.push_back(grid().cell(row, 0));
    return found;
  }
};

}  // namespace lineweir::test
