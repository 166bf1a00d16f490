#include "callerdata/csv.h"

#include <algorithm>
#include <array>

namespace lineweir {
namespace {

constexpr std::string_view line_end = "\r\n";
constexpr char quote = '"';
constexpr char guard_sign = '\'';
constexpr std::string_view field_separators = ",;\t";
// Spreadsheets take what begins so for a formula.
constexpr std::string_view formula_signs = "=+-@\t\r";

bool needs_quotes(std::string_view field) {
  return field.find_first_of(field_separators) != std::string_view::npos ||
         field.find_first_of("\"\r\n") != std::string_view::npos;
}

bool begins_as_formula(std::string_view text) {
  const auto first = text.find_first_not_of(guard_sign);
  return first != std::string_view::npos &&
         formula_signs.find(text[first]) != std::string_view::npos;
}

void tell(CsvRecord& record, std::string_view expected) {
  if (!record.problem) record.problem = CsvProblem{record.fields.size() + 1, std::string(expected)};
}

}  // namespace

std::string csv_record(const std::vector<std::string>& fields) {
  std::string text;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) text += field_separators.front();
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

std::string guarded_cell(std::string_view text) {
  return (begins_as_formula(text) ? std::string(1, guard_sign) : std::string()) + std::string(text);
}

std::string unguarded_cell(std::string_view cell) {
  if (cell.starts_with(guard_sign) && begins_as_formula(cell)) cell.remove_prefix(1);
  return std::string(cell);
}

char csv_separator(std::string_view beginning) {
  beginning.remove_prefix(std::min(beginning.find_first_not_of("\r\n"), beginning.size()));
  std::array<int, field_separators.size()> counts{};
  bool in_quotes = false;
  for (const char c : beginning) {
    if (c == quote) in_quotes = !in_quotes;
    if (in_quotes) continue;
    if (c == '\n') break;
    const auto at = field_separators.find(c);
    if (at != std::string_view::npos) ++counts[at];
  }
  const auto most = std::ranges::max_element(counts);
  return field_separators[static_cast<std::size_t>(most - counts.begin())];
}

CsvReader::CsvReader(std::string_view text, char separator) : separator_(separator) {
  add(text);
  end();
}

void CsvReader::add(std::string_view piece) {
  if (ended_) return;
  text_.erase(0, at_);
  at_ = 0;
  text_ += piece;
}

bool CsvReader::at_end() {
  if (at_ < text_.size()) return false;
  if (!ended_) starved_ = true;
  return true;
}

std::size_t CsvReader::line_end_size() {
  if (at_end()) return 0;
  if (text_[at_] == '\n') return 1;
  if (text_[at_] != '\r') return 0;
  if (at_ + 1 == text_.size() && !ended_) starved_ = true;
  return std::string_view(text_).substr(at_).starts_with(line_end) ? 2 : 0;
}

bool CsvReader::take_line_end() {
  const std::size_t size = line_end_size();
  at_ += size;
  line_ += size > 0 ? 1 : 0;
  return size > 0;
}

void CsvReader::skip_empty_lines() {
  while (take_line_end()) {
  }
}

std::optional<CsvRecord> CsvReader::next() {
  starved_ = false;
  skip_empty_lines();
  if (at_end() || starved_) return std::nullopt;
  const std::size_t begin = at_;
  const std::int64_t first_line = line_;
  CsvRecord record;
  record.line = first_line;
  take_field(record);
  while (!at_end() && !take_line_end() && !starved_) {
    // A field ends at a separator, at the line's end, or with the text.
    ++at_;
    take_field(record);
  }
  if (!starved_) return record;
  at_ = begin;
  line_ = first_line;
  return text_.size() - begin > longest_record ? give_up() : std::nullopt;
}

std::optional<CsvRecord> CsvReader::give_up() {
  CsvRecord record;
  record.line = line_;
  tell(record, "the record's end within a million characters; a quote may not be closed");
  text_.clear();
  at_ = 0;
  ended_ = true;
  return record;
}

void CsvReader::take_field(CsvRecord& record) {
  const bool quoted = !at_end() && text_[at_] == quote;
  // The problems of a field are told before it is there.
  std::string field = quoted ? take_quoted(record) : take_plain(record);
  record.fields.push_back(std::move(field));
}

std::string CsvReader::take_quoted(CsvRecord& record) {
  std::string field;
  for (++at_; !at_end(); ++at_) {
    const char c = text_[at_];
    if (c == '\n') ++line_;
    if (c != quote) {
      field += c;
      continue;
    }
    ++at_;
    if (at_end() || text_[at_] != quote) {
      const std::string behind = take_plain(record);
      if (!behind.empty()) tell(record, "a separator or the line's end behind the closing quote");
      return field;
    }
    field += c;
  }
  if (!starved_) tell(record, "a closing quote before the end of the file");
  return field;
}

std::string CsvReader::take_plain(CsvRecord& record) {
  std::string field;
  for (; !at_end() && text_[at_] != separator_ && line_end_size() == 0; ++at_) {
    if (text_[at_] == quote) {
      tell(record, "quotes around the whole field, as there is one within it");
    }
    field += text_[at_];
  }
  return field;
}

}  // namespace lineweir
