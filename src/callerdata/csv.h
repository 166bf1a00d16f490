#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lineweir {

// Comma-separated values as RFC 4180 has them.

// The fields as one record, with its line end: those that hold a comma, a quote or a line end are
// quoted.
std::string csv_record(const std::vector<std::string>& fields);

struct CsvRecord {
  std::vector<std::string> fields;
  // The line of the text, from 1, on which the record begins.
  std::int64_t line = 0;
  // What isn't as the rules have it, as a sentence; empty for a sound record. The fields of another
  // one are not to be used.
  std::string problem;
};

// Reads a text record by record. Lines end with LF or CR LF; the last one needs no end; lines
// without any character are passed over. Any bytes are read to their end: what is malformed is told
// record by record.
class CsvReader {
 public:
  // The text must last as long as the reader.
  explicit CsvReader(std::string_view text) : text_(text) {}

  // Nothing behind the last record.
  std::optional<CsvRecord> next();

  // How many bytes were read.
  std::size_t position() const { return at_; }

 private:
  bool at_end() const { return at_ >= text_.size(); }
  // Whether a line ends here; takes its end.
  bool take_line_end();
  void skip_empty_lines();
  void take_field(CsvRecord& record);
  std::string take_quoted(CsvRecord& record);
  std::string take_plain(CsvRecord& record);

  std::string_view text_;
  std::size_t at_ = 0;
  std::int64_t line_ = 1;
};

}  // namespace lineweir
