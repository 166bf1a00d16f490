#include "callerdata/csv_import.h"

#include <algorithm>

#include "base/names.h"
#include "base/text.h"
#include "callerdata/log_places.h"
#include "callerdata/log_text.h"
#include "letters/utf8.h"

namespace lineweir {
namespace {

constexpr std::string_view separator_name = "sep=";

bool begins_character(char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }

// The bytes of so many characters from the beginning; all of a shorter text.
std::size_t bytes_of_characters(std::string_view utf8, std::size_t characters) {
  std::size_t begun = 0;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    if (begins_character(utf8[i]) && begun++ == characters) return i;
  }
  return utf8.size();
}

std::string quoted(std::string_view name) { return "\"" + std::string(name) + "\""; }

std::string fields_text(std::size_t fields) {
  return std::to_string(fields) + (fields == 1 ? " field" : " fields");
}

// Tabs, line feeds and the line ends of Unicode.
bool parts_words(char32_t point) {
  return (point >= '\t' && point <= '\r') || point == 0x85 || point == 0x2028 || point == 0x2029;
}

// A control character of Unicode that isn't ASCII begins with C2 or E2.
bool may_begin_control(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < ' ' || byte == 0x7F || byte == 0xC2 || byte == 0xE2;
}

bool is_control(char32_t point) { return point < ' ' || (point >= 0x7F && point < 0xA0); }

}  // namespace

ImportColumns match_columns(const std::vector<std::string>& names,
                            const std::vector<platform::DatabaseColumn>& log_columns) {
  constexpr std::size_t none = static_cast<std::size_t>(-1);
  ImportColumns columns;
  columns.names = names;
  std::vector<bool> taken(log_columns.size());
  std::vector<std::size_t> unknown;
  for (const std::string& name : names) {
    const std::string bare = unguarded_cell(name);
    const auto found = std::ranges::find_if(log_columns, [&](const auto& column) {
      return same_name(trimmed(column.name), trimmed(bare));
    });
    const auto position = static_cast<std::size_t>(found - log_columns.begin());
    if (found == log_columns.end()) {
      unknown.push_back(columns.positions.size());
      columns.positions.push_back(none);
      continue;
    }
    columns.positions.push_back(position);
    if (taken[position]) {
      columns.problems.push_back({columns.positions.size(), "each column once"});
    }
    taken[position] = true;
  }
  const auto places = LogPlaces::in(log_columns);
  const auto user_field = places ? static_cast<std::size_t>(places->of(user_named_field)) : none;
  if (places && unknown.size() == 1 && names.size() > 1 && !taken[user_field]) {
    columns.positions[unknown.front()] = user_field;
    taken[user_field] = true;
    columns.remarks.push_back("The column " + quoted(names[unknown.front()]) + " goes into " +
                              quoted(log_columns[user_field].name) + ".");
  } else {
    for (const std::size_t column : unknown) {
      columns.problems.push_back({column + 1, "the name of one of the log's columns"});
    }
  }
  std::string missing;
  for (std::size_t i = 0; i < taken.size(); ++i) {
    if (!taken[i]) missing += (missing.empty() ? "" : ", ") + quoted(log_columns[i].name);
  }
  if (!missing.empty() && columns.problems.empty()) {
    columns.remarks.push_back("What the file doesn't have stays empty: " + missing + ".");
  }
  return columns;
}

bool names_separator(const CsvRecord& record) {
  return !record.problem && !record.fields.empty() && record.fields.size() <= 2 &&
         same_name(left_part(record.fields.front(), separator_name.size()), separator_name);
}

bool is_blank(const CsvRecord& record) {
  return !record.problem && std::ranges::all_of(record.fields, [](std::string_view field) {
    return field.find_first_not_of(" \t") == std::string_view::npos;
  });
}

std::optional<CsvProblem> record_problem(const CsvRecord& record, const ImportColumns& columns) {
  if (record.problem) return record.problem;
  const std::size_t fields = record.fields.size();
  const std::size_t wanted = columns.positions.size();
  if (fields == wanted) return std::nullopt;
  return CsvProblem{
      std::min(fields, wanted) + 1,
      fields_text(wanted) + " as in the first line, and not " + std::to_string(fields)};
}

std::string problem_sentence(std::int64_t line, const CsvProblem& problem,
                             const ImportColumns& columns) {
  std::string sentence =
      "Line " + grouped_number(line) + ", column " + std::to_string(problem.field);
  if (problem.field >= 1 && problem.field <= columns.names.size()) {
    sentence += " " + quoted(typed_text(columns.names[problem.field - 1]));
  }
  return sentence + ": expected " + problem.expected + ".";
}

std::vector<std::string> row_values(const CsvRecord& record, const ImportColumns& columns,
                                    std::size_t log_columns) {
  std::vector<std::string> values(log_columns);
  for (std::size_t i = 0; i < std::min(record.fields.size(), columns.positions.size()); ++i) {
    const std::size_t position = columns.positions[i];
    if (position < log_columns) values[position] = typed_text(unguarded_cell(record.fields[i]));
  }
  return values;
}

std::string typed_text(std::string_view utf8) {
  if (std::ranges::none_of(utf8, may_begin_control)) return std::string(utf8);
  std::string typed;
  typed.reserve(utf8.size());
  bool parted = false;
  while (!utf8.empty()) {
    const auto next = leading_point(utf8);
    const std::size_t size = next ? next->size : 1;
    const bool parts = next && parts_words(next->point);
    if (parts && !parted) typed += ' ';
    if (!parts && !(next && is_control(next->point))) typed += utf8.substr(0, size);
    parted = parts;
    utf8.remove_prefix(size);
  }
  return typed;
}

std::vector<std::string> cut_values(std::vector<std::string>& values,
                                    const std::vector<platform::DatabaseColumn>& log_columns) {
  std::vector<std::string> sentences;
  for (std::size_t i = 0; i < std::min(values.size(), log_columns.size()); ++i) {
    const auto size = static_cast<std::size_t>(std::max(0, log_columns[i].size));
    if (size == 0 || values[i].size() <= size) continue;
    const std::size_t kept = bytes_of_characters(values[i], size);
    if (kept == values[i].size()) continue;
    values[i].resize(kept);
    sentences.push_back(quoted(log_columns[i].name) + " is longer than " + std::to_string(size) +
                        " characters and will be cut.");
  }
  return sentences;
}

}  // namespace lineweir
