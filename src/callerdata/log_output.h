#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/database.h"
#include "platform/files.h"
#include "platform/table_printer.h"

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
    std::vector<platform::RowId> rows;
    std::size_t next = 0;
    std::function<void(const std::vector<std::string>& texts)> add_row;
    std::function<void()> finish;
  };

  void ExportButton_Click();
  void PrintButton_Click();
  void CancelWork_Click();

  // The file to write, if the user names one and it may be written.
  std::string ask_file(const std::string& title, const std::string& filter,
                       const std::string& extension);
  // Why the file isn't to be written, as the end of a sentence about it; empty where it may be.
  std::string why_not(const std::string& file);
  bool is_own_file(const std::string& file) const;
  bool is_draft_file(const std::string& file) const;
  // Whether the file is one of the log that is shown, or of the one in use.
  bool is_log_file(const std::string& file, std::span<const std::string_view> endings);
  void start(Job job);
  void slice();
  // Texts are UTF-8, as all that the viewer shows.
  std::string shown_file_name(const std::string& path) const;
  void show(const std::string& text);

  ConsoleState& state_;
  const ShowPlanStore& show_plan_;
  LogViewer& log_viewer_;
  std::unique_ptr<Job> job_;
};

}  // namespace lineweir
