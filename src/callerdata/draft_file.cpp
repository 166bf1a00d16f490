#include "callerdata/draft_file.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "base/text.h"
#include "base/time_text.h"
#include "callerdata/csv.h"
#include "forms/call_log_columns.h"

namespace lineweir {
namespace {

constexpr std::string_view line_heading = "Line";
constexpr std::string_view log_heading = "Call log";
// These are empty where the end of the call was seen.
constexpr std::string_view servers_heading = "Servers";
constexpr std::string_view group_heading = "Studio group";
constexpr std::string_view last_seen_heading = "Last seen";
// Whether the call's record is in its log.
constexpr std::string_view logged_heading = "Logged";
constexpr std::string_view not_logged = "no";
// Behind a field's name: what the line had when it was typed into.
constexpr std::string_view had_mark = " before";

constexpr std::string_view column_mark = "Call: ";
// Of the row that the record takes the place of, all empty where there is none.
constexpr std::string_view row_mark = "Row: ";

std::vector<std::string> headings() {
  std::vector<std::string> names = {std::string(line_heading),      std::string(log_heading),
                                    std::string(servers_heading),   std::string(group_heading),
                                    std::string(last_seen_heading), std::string(logged_heading)};
  for (const std::string_view mark : {column_mark, row_mark}) {
    for (const CallLogColumn& column : call_log_columns)
      names.push_back(std::string(mark) + std::string(column.name));
  }
  for (const std::string_view mark : {std::string_view(), had_mark}) {
    for (const CallerFieldRule& rule : entry_fields) {
      names.push_back(std::string(rule.name) + std::string(mark));
    }
  }
  return names;
}

std::string record_of(const Letters& letters, const EntryDraft& draft) {
  std::vector<std::string> fields = {std::to_string(draft.line + 1)};
  fields.push_back(draft.ended->record.file);
  const std::optional<LastSeen>& seen = draft.ended->last_seen;
  fields.push_back(seen ? letters.to_utf8(seen->servers) : std::string());
  fields.push_back(seen ? std::to_string(seen->group) : std::string());
  fields.push_back(seen ? date_time_text(seen->at) : std::string());
  fields.emplace_back(draft.unlogged ? not_logged : "");
  const platform::LoggedCall& call = draft.ended->record;
  for (const platform::LoggedColumn& column : call.columns) fields.push_back(column.value);
  const bool has_row = !call.replaced.empty();
  for (std::size_t i = 0; i < call_log_columns.size(); ++i)
    fields.push_back(has_row ? call.replaced[i].value : std::string());
  for (const EntryTexts* texts : {&draft.work.typed, &draft.work.had}) {
    for (const std::string& text : *texts) fields.push_back(letters.to_utf8(text));
  }
  return csv_record(fields);
}

// One that is counted from 1.
std::optional<int> ordinal_of(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool whole = error == std::errc() && end == text.data() + text.size();
  if (!whole || number < 1) return std::nullopt;
  return number;
}

std::optional<LastSeen> last_seen_of(std::string servers, std::string_view group,
                                     std::string_view moment) {
  const auto number = ordinal_of(group);
  const auto date = date_of(moment);
  const auto seconds = time_of_day(moment);
  if (!number || !date || !seconds) return std::nullopt;
  return LastSeen{*number, at_time_of_day(*date, *seconds), std::move(servers)};
}

// A file of another release may lack a field, or have more of them.
std::optional<EntryDraft> draft_of(const Letters& letters, const std::vector<std::string>& names,
                                   const CsvRecord& record) {
  if (record.problem || record.fields.size() != names.size()) return std::nullopt;
  const bool knows_fields = std::ranges::any_of(entry_fields, [&](const CallerFieldRule& rule) {
    return std::ranges::find(names, rule.name) != names.end();
  });
  if (!knows_fields) return std::nullopt;
  const auto field = [&](std::string_view name, std::string_view mark = {}) -> std::string {
    const auto found = std::ranges::find(names, std::string(name) + std::string(mark));
    return found == names.end() ? std::string()
                                : record.fields[static_cast<std::size_t>(found - names.begin())];
  };
  const auto line = ordinal_of(field(line_heading));
  if (!line) return std::nullopt;
  EntryDraft draft;
  draft.line = *line - 1;
  platform::LoggedCall call{field(log_heading), std::string(call_log_table), {}, {}};
  const auto columns = [&](std::string_view mark) {
    std::vector<platform::LoggedColumn> values;
    for (const CallLogColumn& column : call_log_columns)
      values.push_back({std::string(column.name), field(mark, column.name)});
    return values;
  };
  call.columns = columns(column_mark);
  draft.unlogged = field(logged_heading) == not_logged && !call.file.empty();
  if (draft.unlogged) call.replaced = columns(row_mark);
  const bool no_row =
      std::ranges::all_of(call.replaced, [](const auto& c) { return c.value.empty(); });
  if (no_row) call.replaced.clear();
  draft.ended = EndedCall{0, std::move(call)};
  draft.ended->last_seen = last_seen_of(letters.from_utf8(field(servers_heading)),
                                        field(group_heading), field(last_seen_heading));
  for (std::size_t i = 0; i < entry_field_count; ++i) {
    draft.work.typed[i] = letters.from_utf8(field(entry_fields[i].name));
    draft.work.had[i] = letters.from_utf8(field(entry_fields[i].name, had_mark));
  }
  return draft;
}

}  // namespace

std::string draft_file_text(const Letters& letters, const std::vector<EntryDraft>& drafts) {
  if (drafts.empty()) return {};
  std::string text = csv_record(headings());
  for (const EntryDraft& draft : drafts) {
    text += record_of(letters, draft);
  }
  return text;
}

std::vector<EntryDraft> drafts_of_files(const Letters& letters,
                                        const std::vector<std::string>& texts) {
  std::vector<EntryDraft> drafts;
  for (const std::string& text : texts) {
    // One file may well hold the same draft twice, of two calls.
    std::vector<EntryDraft> of_others = drafts;
    CsvReader reader(text);
    const auto head = reader.next();
    if (!head) continue;
    while (const auto record = reader.next()) {
      auto draft = draft_of(letters, head->fields, *record);
      if (!draft) continue;
      const auto same = std::ranges::find(of_others, *draft);
      if (same == of_others.end()) {
        drafts.push_back(*std::move(draft));
      } else {
        of_others.erase(same);
      }
    }
  }
  return drafts;
}

}  // namespace lineweir
