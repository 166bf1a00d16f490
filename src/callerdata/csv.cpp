#include "callerdata/csv.h"

namespace lineweir {
namespace {

constexpr std::string_view line_end = "\r\n";
constexpr char quote = '"';
constexpr char comma = ',';

bool needs_quotes(std::string_view field) {
  return field.find_first_of(",\"\r\n") != std::string_view::npos;
}

void tell(CsvRecord& record, std::string_view problem) {
  if (record.problem.empty()) record.problem = problem;
}

}  // namespace

std::string csv_record(const std::vector<std::string>& fields) {
  std::string text;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) text += comma;
    // A record of one empty field would be an empty line.
    const bool quoted = needs_quotes(fields[i]) || (fields.size() == 1 && fields[i].empty());
    if (quoted) text += quote;
    for (const char c : fields[i]) {
      if (c == quote) text += quote;
      text += c;
    }
    if (quoted) text += quote;
  }
  text += line_end;
  return text;
}

bool CsvReader::take_line_end() {
  const std::string_view rest = text_.substr(at_);
  const std::size_t size = rest.starts_with(line_end) ? 2 : rest.starts_with('\n') ? 1 : 0;
  at_ += size;
  line_ += size > 0 ? 1 : 0;
  return size > 0;
}

void CsvReader::skip_empty_lines() {
  while (take_line_end()) {
  }
}

std::optional<CsvRecord> CsvReader::next() {
  skip_empty_lines();
  if (at_end()) return std::nullopt;
  CsvRecord record;
  record.line = line_;
  take_field(record);
  while (!at_end() && !take_line_end()) {
    // A field ends at a comma, at the line's end, or with the text.
    ++at_;
    take_field(record);
  }
  return record;
}

void CsvReader::take_field(CsvRecord& record) {
  const bool quoted = !at_end() && text_[at_] == quote;
  record.fields.push_back(quoted ? take_quoted(record) : take_plain(record));
}

std::string CsvReader::take_quoted(CsvRecord& record) {
  std::string field;
  for (++at_; !at_end(); ++at_) {
    const char c = text_[at_];
    if (c == '\n') ++line_;
    if (c != quote) {
      field += c;
    } else if (at_ + 1 < text_.size() && text_[at_ + 1] == quote) {
      field += c;
      ++at_;
    } else {
      ++at_;
      const std::string behind = take_plain(record);
      if (!behind.empty()) tell(record, "There are characters behind a closing quote.");
      return field;
    }
  }
  tell(record, "A quote is opened and not closed.");
  return field;
}

std::string CsvReader::take_plain(CsvRecord& record) {
  std::string field;
  for (; !at_end() && text_[at_] != comma; ++at_) {
    const char c = text_[at_];
    if (c == '\n' || text_.substr(at_).starts_with(line_end)) break;
    if (c == quote) tell(record, "A quote stands within a field that isn't quoted.");
    field += c;
  }
  return field;
}

}  // namespace lineweir
