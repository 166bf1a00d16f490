#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lineweir {

// Comma-separated values as RFC 4180 has them, and with other separators as spreadsheets have them.

// The fields as one record, with its line end. Fields are quoted where any separator, a quote or a
// line end stands in them.
std::string csv_record(const std::vector<std::string>& fields);

// A spreadsheet runs a cell that begins with one of some signs. With an apostrophe in front it is a
// text; one that has apostrophes in front of such a sign gets another one, so that each text comes
// back from its guarded form.
std::string guarded_cell(std::string_view text);
std::string unguarded_cell(std::string_view cell);

// The separator that stands most often in the text's first line: comma, semicolon or tab.
char csv_separator(std::string_view beginning);

// What isn't as the rules have it: in which field, from 1, and what was expected there.
struct CsvProblem {
  std::size_t field = 0;
  std::string expected;

  friend bool operator==(const CsvProblem&, const CsvProblem&) = default;
};

struct CsvRecord {
  std::vector<std::string> fields;
  // The line of the text, from 1, on which the record begins.
  std::int64_t line = 0;
  // The first one. The fields of a record that has one are not to be used.
  std::optional<CsvProblem> problem;
};

// Reads a text record by record, in pieces of any size. Lines end with LF or CR LF; the last one
// needs no end; lines without any character are passed over. Any bytes are read to their end: what
// is malformed is told record by record.
class CsvReader {
 public:
  // A longer record is a quote that was never closed.
  static constexpr std::size_t longest_record = 1 << 20;

  explicit CsvReader(char separator = ',') : separator_(separator) {}
  // The whole of a text.
  explicit CsvReader(std::string_view text, char separator = ',');

  // Nothing more is taken behind the end, nor behind a record that has none.
  void add(std::string_view piece);
  // The last piece was added.
  void end() { ended_ = true; }

  // Nothing where the record isn't whole yet, and behind the last one.
  std::optional<CsvRecord> next();

 private:
  bool at_end();
  // The size of the line end that stands here, 0 for none.
  std::size_t line_end_size();
  bool take_line_end();
  void skip_empty_lines();
  void take_field(CsvRecord& record);
  std::string take_quoted(CsvRecord& record);
  std::string take_plain(CsvRecord& record);
  std::optional<CsvRecord> give_up();

  char separator_;
  std::string text_;
  std::size_t at_ = 0;
  std::int64_t line_ = 1;
  bool ended_ = false;
  // More of the text is needed to tell what stands here.
  bool starved_ = false;
};

}  // namespace lineweir
