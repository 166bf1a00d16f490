#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/table_printer.h"

namespace lineweir::platform {

// Prints plain text: the title, then the headings and each row as a line of texts parted by tabs.
class ScriptedTablePrinter final : public TablePrinter {
 public:
  std::unique_ptr<PrintedTable> begin(const std::string& title,
                                      const std::vector<PrintedColumn>& columns) override {
    auto table = std::make_unique<PlainTable>(title + "\n");
    std::vector<std::string> headings;
    for (const PrintedColumn& column : columns) headings.push_back(column.heading);
    table->add_row(headings);
    return table;
  }

 private:
  class PlainTable final : public PrintedTable {
   public:
    explicit PlainTable(std::string text) : text_(std::move(text)) {}
    void add_row(const std::vector<std::string>& texts) override {
      for (std::size_t i = 0; i < texts.size(); ++i) text_ += (i > 0 ? "\t" : "") + texts[i];
      text_ += "\n";
    }
    void finish() override {}
    std::string take() override { return std::exchange(text_, {}); }

   private:
    std::string text_;
  };
};

}  // namespace lineweir::platform
