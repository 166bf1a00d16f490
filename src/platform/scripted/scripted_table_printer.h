#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/table_printer.h"

namespace lineweir::platform {

// Keeps what is printed, by the path of the document.
class ScriptedTablePrinter final : public TablePrinter {
 public:
  struct Document {
    std::string title;
    std::vector<PrintedColumn> columns;
    std::vector<std::vector<std::string>> rows;
  };

  std::map<std::string, Document> documents;

  std::unique_ptr<PrintedTable> begin(const std::string& path, const std::string& title,
                                      const std::vector<PrintedColumn>& columns) override {
    return std::make_unique<InMaking>(*this, path, Document{title, columns, {}});
  }

 private:
  class InMaking final : public PrintedTable {
   public:
    InMaking(ScriptedTablePrinter& printer, std::string path, Document document)
        : printer_(printer), path_(std::move(path)), document_(std::move(document)) {}
    void add_row(const std::vector<std::string>& texts) override {
      document_.rows.push_back(texts);
    }
    void finish() override { printer_.documents[path_] = std::move(document_); }

   private:
    ScriptedTablePrinter& printer_;
    std::string path_;
    Document document_;
  };
};

}  // namespace lineweir::platform
