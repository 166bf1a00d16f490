#pragma once

#include "platform/table_printer.h"

namespace lineweir {

// Prints tables into PDF files, on the paper that is usual where the program runs, held sideways.
class PdfTables final : public platform::TablePrinter {
 public:
  std::unique_ptr<platform::PrintedTable> begin(
      const std::string& title, const std::vector<platform::PrintedColumn>& columns) override;
};

}  // namespace lineweir
