#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "callerdata/file_wait.h"
#include "platform/database.h"
#include "platform/dialogs.h"
#include "platform/table_printer.h"
#include "platform/user_files.h"

namespace lineweir {

class LogViewer;
class ShowPlanStore;
struct ConsoleState;

// Gives out the calls that DatabaseViewer shows, in their order, as a CSV file or as a printed
// document: a slice at each tick, so that the console goes on meanwhile.
class LogOutput {
 public:
  LogOutput(ConsoleState& state, const ShowPlanStore& show_plan, LogViewer& log_viewer);

  bool running() const { return job_ != nullptr; }
  // Ends what is under way; nothing of it stays.
  void stop();

 private:
  struct Job {
    // "Exporting" and "Exported", or the same of printing.
    std::string doing;
    std::string done;
    std::string file;
    std::unique_ptr<platform::FileTarget> target;
    std::vector<platform::RowId> rows;
    // The bytes of a row, and those behind the last one.
    std::function<std::string(const std::vector<std::string>& texts)> row;
    std::function<std::string()> rest;
    std::size_t next = 0;
    bool all_given = false;
    FileWait wait{};
  };

  void ExportButton_Click();
  void PrintButton_Click();
  void CancelWork_Click();

  // The file to write, if the user names one.
  std::string ask_file(platform::FileQuestion question, const std::string& extension);
  // Begins to write it, unless it is one of those that are not to be overwritten.
  std::unique_ptr<platform::FileTarget> open_target(const std::string& file) const;
  void start(Job job);
  void slice();
  void give_rows(Job& job);
  // Texts are UTF-8, as all that the viewer shows.
  std::string shown_file_name(const std::string& path) const;
  void show(const std::string& text);

  ConsoleState& state_;
  const ShowPlanStore& show_plan_;
  LogViewer& log_viewer_;
  std::unique_ptr<Job> job_;
};

}  // namespace lineweir
