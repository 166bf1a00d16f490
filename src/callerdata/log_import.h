#pragma once

#include <optional>
#include <string>
#include <vector>

#include "callerdata/csv_import.h"

namespace lineweir {

struct Console;

// Brings the calls of a CSV file into the log that DatabaseViewer shows. The file is read to its
// end first, a slice at each tick, and what doesn't fit is named line by line; all of its calls are
// stored then in one step, or none.
class LogImport {
 public:
  // In a larger file the step would keep the other consoles from logging for too long.
  static constexpr std::size_t most_calls = 100000;

  explicit LogImport(Console& console);

 private:
  void ImportButton_Click();
  void ReadTimer_Timer();
  void ImportOk_Click();
  void ImportCancel_Click();
  void StoreTimer_Timer();
  void Form_Unload();

  void begin(const std::string& file);
  void read_header();
  void read_slice();
  void take(const CsvRecord& record);
  void tell(std::int64_t line, const std::string& sentence);
  void show_result();
  void store();

  Console& console_;
  std::string text_;
  std::optional<CsvReader> reader_;
  ImportColumns columns_;
  std::vector<platform::DatabaseColumn> log_columns_;
  std::vector<std::vector<std::string>> preview_;
  std::vector<std::string> told_;
  std::size_t calls_ = 0;
  std::size_t problems_ = 0;
};

}  // namespace lineweir
