#pragma once

#include "letters/letters.h"
#include "platform/table_printer.h"

namespace lineweir {

// Prints tables into PDF files, on the paper that is usual where the program runs, held sideways.
class PdfTables final : public platform::TablePrinter {
 public:
  // Paths are texts in the letters, which must outlive this object.
  explicit PdfTables(const Letters& letters = utf8_letters()) : letters_(letters) {}

  std::unique_ptr<platform::PrintedTable> begin(
      const std::string& path, const std::string& title,
      const std::vector<platform::PrintedColumn>& columns) override;

 private:
  const Letters& letters_;
};

}  // namespace lineweir
