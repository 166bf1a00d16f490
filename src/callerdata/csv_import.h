#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "callerdata/csv.h"
#include "letters/letters.h"
#include "platform/database.h"

namespace lineweir {

// How a CSV text becomes rows of a call log. Texts are UTF-8.

// The text as UTF-8: one that isn't is taken for one in the console's letters. A Failure of number
// 5 for a text of two bytes a character, and for an empty one.
std::string csv_text(std::string_view file_content, const Letters& letters);

// The column of the log for each column of the file.
struct ImportColumns {
  std::vector<std::size_t> positions;
  // What the user should know, and what makes an import impossible, as sentences.
  std::vector<std::string> remarks;
  std::vector<std::string> problems;
};

// From the names in the first record, in any order and case. A single name that the log doesn't
// have is that of the field that the user names.
ImportColumns match_columns(const std::vector<std::string>& names,
                            const std::vector<platform::DatabaseColumn>& log_columns);

// A record of the file as the values of a row, one for each of the log's columns. A record that
// isn't sound, or has another number of fields than the first, gives none.
std::optional<std::vector<std::string>> row_values(const CsvRecord& record,
                                                   const ImportColumns& columns,
                                                   std::size_t log_columns);

// What doesn't fit, as a sentence; empty for a record that fits.
std::string record_problem(const CsvRecord& record, const ImportColumns& columns);

// Cuts the values that are longer than the log's columns, as the log does, and names them in
// sentences.
std::vector<std::string> cut_values(std::vector<std::string>& values,
                                    const std::vector<platform::DatabaseColumn>& log_columns);

}  // namespace lineweir
