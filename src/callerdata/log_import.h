#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "callerdata/csv_file.h"
#include "callerdata/csv_import.h"
#include "callerdata/file_wait.h"
#include "callerdata/held_calls.h"
#include "platform/row_batch.h"

namespace lineweir {

class LogViewer;
struct ConsoleState;

// Brings the calls of a CSV file into the log that DatabaseViewer shows, a slice at each tick. The
// file is read to its end first, as fast as it comes, what doesn't fit is named line by line, and
// the calls that fit are collected beside the log; they go into it all together, or none does.
class LogImport {
 public:
  LogImport(ConsoleState& state, LogViewer& log_viewer);

 private:
  void ImportButton_Click();
  void ReadTimer_Timer();
  void HeldCheck_Click();
  void ImportOk_Click();
  void ImportCancel_Click();
  void StoreTimer_Timer();
  void Form_Unload();

  void begin(const std::string& file);
  void read_slice();
  void read_piece();
  void take_header(const CsvRecord& record);
  void take(const CsvRecord& record);
  void tell(const std::string& sentence);
  void tell_problem(std::int64_t line, const CsvProblem& problem);
  void show_work();
  void show_result();
  std::int64_t to_import() const;
  void finish(const platform::RowBatch::Progress& progress);
  void close_with(const std::string& message);

  ConsoleState& state_;
  LogViewer& log_viewer_;
  HeldCalls held_;
  std::optional<CsvFile> file_;
  FileWait wait_;
  // The file hasn't answered for some time.
  bool waits_ = false;
  std::optional<ImportColumns> columns_;
  std::vector<platform::DatabaseColumn> log_columns_;
  std::unique_ptr<platform::RowBatch> batch_;
  std::vector<std::vector<std::string>> preview_;
  std::vector<std::string> told_;
  std::int64_t calls_ = 0;
  // How many of them the log holds.
  std::int64_t held_calls_ = 0;
  std::int64_t problems_ = 0;
};

}  // namespace lineweir
