#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "callerdata/csv.h"
#include "platform/database.h"

namespace lineweir {

// How the records of a CSV file become rows of a call log. Texts are UTF-8.

// The column of the log for each column of the file.
struct ImportColumns {
  // As the file has them.
  std::vector<std::string> names;
  std::vector<std::size_t> positions;
  // What the user should know, as sentences, and what makes an import impossible.
  std::vector<std::string> remarks;
  std::vector<CsvProblem> problems;
};

// From the names in the first record, in any order and case. A single name that the log doesn't
// have is that of the field that the user names.
ImportColumns match_columns(const std::vector<std::string>& names,
                            const std::vector<platform::DatabaseColumn>& log_columns);

// A spreadsheet may say in a line of its own, in front of the names, what parts the fields.
bool names_separator(const CsvRecord& record);

// A line of blanks and separators holds no call.
bool is_blank(const CsvRecord& record);

// What doesn't fit; nothing for a record that fits.
std::optional<CsvProblem> record_problem(const CsvRecord& record, const ImportColumns& columns);

// "Line 3, column 2 "City": expected ...".
std::string problem_sentence(std::int64_t line, const CsvProblem& problem,
                             const ImportColumns& columns);

// A record that fits as the texts of a call, one for each of the log's columns: without the guard
// of a formula and as they could have been typed.
std::vector<std::string> row_values(const CsvRecord& record, const ImportColumns& columns,
                                    std::size_t log_columns);

// The text as it could have been typed on one line: without control characters, and with a blank
// for line ends and tabs.
std::string typed_text(std::string_view utf8);

// Cuts the values that are longer than the log's columns, as the log does, and names them in
// sentences.
std::vector<std::string> cut_values(std::vector<std::string>& values,
                                    const std::vector<platform::DatabaseColumn>& log_columns);

}  // namespace lineweir
