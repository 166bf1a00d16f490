// Any bytes as a CSV file that is to be imported, in any encoding and read in pieces: every record
// is read to the file's end, in whatever pieces it comes, what fits has a value for each column of
// the log, and what is written of it is read again.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "callerdata/call_log.h"
#include "callerdata/csv_file.h"
#include "callerdata/csv_import.h"
#include "letters/code_page_letters.h"
#include "letters/utf8.h"
#include "platform/scripted/memory_databases.h"
#include "platform/scripted/memory_files.h"
#include "platform/scripted/scripted_user_files.h"

namespace {

using namespace lineweir;

void require(bool holds) {
  if (!holds) std::abort();
}

void require_written_as_read(const std::vector<std::string>& texts) {
  std::vector<std::string> cells;
  for (const std::string& text : texts) cells.push_back(guarded_cell(text));
  const std::string written = csv_record(cells);
  CsvReader reader(written);
  const auto read = reader.next();
  require(read && !read->problem && read->fields == cells);
  require(!reader.next());
  for (std::size_t i = 0; i < texts.size(); ++i) {
    require(unguarded_cell(read->fields[i]) == texts[i]);
  }
}

std::vector<CsvRecord> all_records(CsvReader& reader) {
  std::vector<CsvRecord> records;
  while (auto record = reader.next()) records.push_back(std::move(*record));
  return records;
}

// The pieces in which a text comes make no difference.
void require_same_in_pieces(std::string_view text, std::size_t size) {
  CsvReader whole(text);
  const auto expected = all_records(whole);
  CsvReader reader;
  std::vector<CsvRecord> found;
  for (std::size_t i = 0; i < text.size(); i += size) {
    reader.add(text.substr(i, size));
    for (auto& record : all_records(reader)) found.push_back(std::move(record));
  }
  reader.end();
  for (auto& record : all_records(reader)) found.push_back(std::move(record));
  require(found.size() == expected.size());
  for (std::size_t i = 0; i < found.size(); ++i) {
    require(found[i].line == expected[i].line && found[i].fields == expected[i].fields &&
            found[i].problem == expected[i].problem);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto log_columns = new_log_columns("User");
  static const CodePageLetters letters;
  const std::string content(reinterpret_cast<const char*>(data), size);
  require_same_in_pieces(content, size % 7 + 1);

  platform::MemoryFiles files;
  files.replace("calls.csv", content);
  platform::MemoryDatabases databases;
  platform::ScriptedUserFiles user_files(files, databases);
  CsvFile file(user_files, "calls.csv", letters);
  std::optional<ImportColumns> columns;
  std::int64_t line = 0;
  while (!file.at_end()) {
    file.work();
    while (const auto record = file.next()) {
      require(record->line > line);
      line = record->line;
      if (!columns) {
        columns = match_columns(record->fields, log_columns);
        require(columns->positions.size() == record->fields.size());
      }
      if (const auto problem = record_problem(*record, *columns)) {
        require(!problem_sentence(record->line, *problem, *columns).empty());
        continue;
      }
      auto values = row_values(*record, *columns, log_columns.size());
      require(values.size() == log_columns.size());
      cut_values(values, log_columns);
      for (const std::string& value : values) {
        require(is_utf8(value));
        require(std::ranges::none_of(value, [](char c) { return c >= 0 && c < ' '; }));
      }
      require_written_as_read(values);
    }
  }
  return 0;
}
