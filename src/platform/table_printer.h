#pragma once

#include <memory>
#include <string>
#include <vector>

namespace lineweir::platform {

// A table that is being printed. Texts are UTF-8. Destroyed before it is finished, it leaves
// nothing behind.
class PrintedTable {
 public:
  virtual ~PrintedTable() = default;

  // One text a column; long ones take several lines.
  virtual void add_row(const std::vector<std::string>& texts) = 0;

  // The document stands when this returns. Fails as TablePrinter::begin does.
  virtual void finish() = 0;
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

  // A PDF file of that name takes the place of the present one once it is finished. Where it can't
  // be written a Failure of number 75 names the path and the reason.
  virtual std::unique_ptr<PrintedTable> begin(const std::string& path, const std::string& title,
                                              const std::vector<PrintedColumn>& columns) = 0;
};

}  // namespace lineweir::platform
