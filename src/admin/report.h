#pragma once

#include <iosfwd>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "adminlink/admin_commands.h"

namespace lineweir::admin {

enum class ReportForm { Table, Json, Csv };

// The rows of a list, page by page, as they come from the server.
class ListReport {
 public:
  ListReport(std::ostream& out, Command command, ReportForm form);

  void add(const nlohmann::json::array_t& rows);
  void finish();

 private:
  void add_row(const nlohmann::json& row);

  std::ostream& out_;
  Command command_;
  ReportForm form_;
  // A table's columns are as wide as the widest of all.
  std::vector<std::vector<std::string>> cells_;
  bool begun_ = false;
};

// An answer that is no list.
void report_answer(std::ostream& out, Command command, const nlohmann::json& answer, bool as_json);

}  // namespace lineweir::admin
