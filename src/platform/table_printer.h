#pragma once

#include <memory>
#include <string>
#include <vector>

namespace lineweir::platform {

// A table that is being printed. Texts are UTF-8.
class PrintedTable {
 public:
  virtual ~PrintedTable() = default;

  // One text a column; long ones take several lines.
  virtual void add_row(const std::vector<std::string>& texts) = 0;

  // No row comes any more.
  virtual void finish() = 0;

  // What has been made of the document since the last call; all of it together is the document.
  virtual std::string take() = 0;
};

struct PrintedColumn {
  std::string heading;
  // The column's share of the page's width, in any unit.
  int width = 1;
};

// Makes documents of tables, with the headings on each page.
class TablePrinter {
 public:
  virtual ~TablePrinter() = default;

  // A PDF document. Where it can't be made a Failure of number 75 tells the reason.
  virtual std::unique_ptr<PrintedTable> begin(const std::string& title,
                                              const std::vector<PrintedColumn>& columns) = 0;
};

}  // namespace lineweir::platform
