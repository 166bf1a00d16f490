// Any bytes as a CSV file that is to be imported: every record is read to the file's end, what fits
// has a value for each column of the log, and what is written of it is read again.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "callerdata/call_log.h"
#include "callerdata/csv_import.h"
#include "elements/failure.h"
#include "letters/code_page_letters.h"

namespace {

using namespace lineweir;

void require(bool holds) {
  if (!holds) std::abort();
}

void require_written_as_read(const std::vector<std::string>& fields) {
  const std::string text = csv_record(fields);
  CsvReader reader(text);
  const auto read = reader.next();
  require(read && read->problem.empty() && read->fields == fields);
  require(!reader.next());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto log_columns = new_log_columns("User");
  static const CodePageLetters letters;
  std::string text;
  try {
    text = csv_text({reinterpret_cast<const char*>(data), size}, letters);
  } catch (const Failure&) {
    return 0;
  }
  CsvReader reader(text);
  const auto header = reader.next();
  if (!header) return 0;
  const ImportColumns columns = match_columns(header->fields, log_columns);
  require(columns.positions.size() == header->fields.size());
  std::int64_t line = 0;
  while (const auto record = reader.next()) {
    require(record->line > line);
    line = record->line;
    auto values = row_values(*record, columns, log_columns.size());
    if (columns.problems.empty()) {
      require(values.has_value() == record_problem(*record, columns).empty());
    }
    if (!values) continue;
    require(values->size() == log_columns.size());
    cut_values(*values, log_columns);
    require_written_as_read(*values);
  }
  require(reader.position() == text.size());
  return 0;
}
