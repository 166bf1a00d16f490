#include "admin/report.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

#include "admin/table.h"
#include "admin/trouble.h"
#include "admin/when.h"
#include "adminlink/admin_columns.h"

namespace lineweir::admin {
namespace {

using Json = nlohmann::json;

Moment moment_of(const Json& value) {
  const std::int64_t count = value.is_number_integer() ? value.get<std::int64_t>() : 0;
  return Moment{std::clamp<std::int64_t>(count, 0, last_moment)};
}

// Moments as machines read them, and null for one that hasn't come.
Json with_readable_moment(const Json& value) {
  const Moment moment = moment_of(value);
  return moment == Moment{0} ? Json() : Json(utc_time(moment));
}

Json readable_row(Command command, Json row) {
  for (const Column& column : columns_of(command)) {
    const auto found = row.find(column.key);
    if (column.kind == ColumnKind::Time && found != row.end()) {
      *found = with_readable_moment(*found);
    }
  }
  if (const auto steps = row.find(key::steps); steps != row.end()) {
    for (Json& step : *steps) {
      const auto at = step.find(key::at);
      if (at != step.end()) *at = with_readable_moment(*at);
    }
  }
  return row;
}

std::string groups_text(const Json& groups) {
  std::string text;
  for (const Json& group : groups) {
    text += (text.empty() ? "" : ", ") + (group == 0 ? "all" : group.dump());
  }
  return text;
}

std::string plain_text(const Json& value) {
  if (value.is_string()) return value.get<std::string>();
  if (value.is_boolean()) return value.get<bool>() ? "yes" : "";
  return value.is_null() ? "" : value.dump();
}

std::string cell(const Column& column, const Json& row) {
  const auto found = row.find(column.key);
  if (found == row.end()) return {};
  switch (column.kind) {
    case ColumnKind::Time:
      return local_time(moment_of(*found));
    case ColumnKind::Groups:
      return groups_text(*found);
    case ColumnKind::Plain:
      break;
  }
  return plain_text(*found);
}

std::string dumped(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void report_verdict(std::ostream& out, const Json& answer, bool as_json) {
  const auto entries = answer.at(key::entries).get<std::int64_t>();
  const auto first_wrong = answer.at(key::first_wrong).get<std::int64_t>();
  if (as_json) out << dumped(answer) << '\n';
  out.flush();
  if (first_wrong != 0) {
    throw Trouble("Entry " + std::to_string(first_wrong) + " of the audit is missing or changed; " +
                  std::to_string(entries) + " entries are there.");
  }
  if (as_json) return;
  out << entries << " entries, all as they were written.\n";
  if (entries == 0) return;
  out << "Hash of the last one: " << answer.at(key::last_hash).get<std::string>() << '\n';
}

void report_rights(std::ostream& out, const Json& answer) {
  std::vector<Cells> rows;
  for (const auto& [name, allowed] : answer.at(key::rights).items()) {
    rows.push_back({shown_text(name), allowed == true ? "yes" : "no"});
  }
  out << table({"Right", "Allowed"}, rows);
}

// The fields of a profile, one a line.
void report_profile(std::ostream& out, const Json& answer) {
  constexpr char field_end = '\3';
  const auto text = answer.at(key::profile).get<std::string>();
  std::size_t begin = 0;
  while (begin < text.size()) {
    const auto end = std::min(text.find(field_end, begin), text.size());
    out << shown_text(std::string_view(text).substr(begin, end - begin)) << '\n';
    begin = end + 1;
  }
}

}  // namespace

ListReport::ListReport(std::ostream& out, Command command, ReportForm form)
    : out_(out), command_(command), form_(form) {
  if (form_ == ReportForm::Json) out_ << '[';
  if (form_ != ReportForm::Csv) return;
  Cells keys;
  for (const Column& column : columns_of(command_)) keys.emplace_back(column.key);
  out_ << csv_record(keys);
}

void ListReport::add(const Json::array_t& rows) {
  for (const Json& row : rows) {
    if (row.is_object()) add_row(row);
  }
}

void ListReport::add_row(const Json& row) {
  if (form_ == ReportForm::Json) {
    out_ << (begun_ ? ",\n" : "\n") << dumped(readable_row(command_, row));
    begun_ = true;
    return;
  }
  Cells cells;
  for (const Column& column : columns_of(command_)) {
    if (form_ == ReportForm::Csv) {
      cells.push_back(cell(column, row));
    } else if (column.in_table) {
      cells.push_back(shown_text(cell(column, row)));
    }
  }
  if (form_ == ReportForm::Csv) {
    out_ << csv_record(cells);
  } else {
    cells_.push_back(std::move(cells));
  }
}

void ListReport::finish() {
  if (form_ == ReportForm::Json) out_ << (begun_ ? "\n]\n" : "]\n");
  if (form_ != ReportForm::Table) return;
  Cells headings;
  for (const Column& column : columns_of(command_)) {
    if (column.in_table) headings.emplace_back(column.heading);
  }
  out_ << table(headings, cells_);
}

void report_answer(std::ostream& out, Command command, const Json& answer, bool as_json) {
  if (command == Command::AuditVerify) return report_verdict(out, answer, as_json);
  if (as_json) {
    out << dumped(answer) << '\n';
  } else if (command == Command::UserRight) {
    report_rights(out, answer);
  } else if (command == Command::ProfileShow) {
    report_profile(out, answer);
  }
}

}  // namespace lineweir::admin
