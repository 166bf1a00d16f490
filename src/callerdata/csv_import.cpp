#include "callerdata/csv_import.h"

#include <algorithm>

#include "callerdata/call_log_columns.h"
#include "core/text.h"
#include "elements/failure.h"
#include "elements/names.h"
#include "letters/utf8.h"

namespace lineweir {
namespace {

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";

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

}  // namespace

std::string csv_text(std::string_view file_content, const Letters& letters) {
  if (file_content.starts_with("\xFF\xFE") || file_content.starts_with("\xFE\xFF")) {
    throw Failure(failure_number::invalid_argument,
                  "The file is UTF-16 text. Save it as CSV in UTF-8.");
  }
  if (file_content.starts_with(utf8_mark)) file_content.remove_prefix(utf8_mark.size());
  if (file_content.empty()) {
    throw Failure(failure_number::invalid_argument, "The file is empty.");
  }
  return is_utf8(file_content) ? std::string(file_content) : letters.to_utf8(file_content);
}

ImportColumns match_columns(const std::vector<std::string>& names,
                            const std::vector<platform::DatabaseColumn>& log_columns) {
  constexpr std::size_t none = static_cast<std::size_t>(-1);
  constexpr auto user_field = static_cast<std::size_t>(user_field_position);
  ImportColumns columns;
  std::vector<bool> taken(log_columns.size());
  std::vector<std::size_t> unknown;
  for (const std::string& name : names) {
    const auto found = std::ranges::find_if(log_columns, [&](const auto& column) {
      return same_name(trimmed(column.name), trimmed(name));
    });
    const auto position = static_cast<std::size_t>(found - log_columns.begin());
    if (found == log_columns.end()) {
      unknown.push_back(columns.positions.size());
      columns.positions.push_back(none);
      continue;
    }
    if (taken[position]) {
      columns.problems.push_back("There are two columns " + quoted(name) + ".");
    }
    taken[position] = true;
    columns.positions.push_back(position);
  }
  const bool is_user_field = unknown.size() == 1 && names.size() > 1 &&
                             log_columns.size() > user_field && !taken[user_field];
  if (is_user_field) {
    columns.positions[unknown.front()] = user_field;
    taken[user_field] = true;
    columns.remarks.push_back("The column " + quoted(names[unknown.front()]) + " goes into " +
                              quoted(log_columns[user_field].name) + ".");
  } else {
    for (const std::size_t column : unknown) {
      columns.problems.push_back("The log has no column " + quoted(names[column]) + ".");
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

std::string record_problem(const CsvRecord& record, const ImportColumns& columns) {
  if (!record.problem.empty()) return record.problem;
  const std::size_t fields = record.fields.size();
  const std::size_t wanted = columns.positions.size();
  if (fields == wanted) return {};
  return "It has " + std::to_string(fields) + (fields == 1 ? " field" : " fields") + " and not " +
         std::to_string(wanted) + ".";
}

std::optional<std::vector<std::string>> row_values(const CsvRecord& record,
                                                   const ImportColumns& columns,
                                                   std::size_t log_columns) {
  if (!record_problem(record, columns).empty()) return std::nullopt;
  std::vector<std::string> values(log_columns);
  for (std::size_t i = 0; i < record.fields.size(); ++i) {
    const std::size_t position = columns.positions[i];
    if (position >= log_columns) return std::nullopt;
    values[position] = record.fields[i];
  }
  return values;
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
