#include "callerdata/call_log.h"

#include <array>

#include "callerdata/call_log_columns.h"
#include "core/console.h"
#include "core/text.h"
#include "core/time_text.h"
#include "elements/names.h"

namespace lineweir {
namespace {

struct LogStep {
  int position;
  CallerField field;
  // The row's column whose caption is written in place of the record's field; -1 for the field.
  int row_column;
};

// In the order in which the columns are set. The first three are what the row shows.
constexpr std::array log_steps = {
    LogStep{0, CallerField::CallerName, name_column},
    LogStep{2, CallerField::City, city_column},
    LogStep{6, CallerField::Comments, comments_column},
    LogStep{7, CallerField::Station, -1},
    LogStep{8, CallerField::Gender, -1},
    LogStep{1, CallerField::StreetAddress, -1},
    LogStep{3, CallerField::State, -1},
    LogStep{4, CallerField::ZipCode, -1},
    LogStep{5, CallerField::PhoneNumber, -1},
    LogStep{user_field_position, CallerField::UserField, -1},
    LogStep{9, CallerField::CallDate, -1},
    LogStep{10, CallerField::TimeOnHold, -1},
    LogStep{11, CallerField::TimePlacedOnAir, -1},
    LogStep{12, CallerField::TimeOnAir, -1},
};

}  // namespace

CallLog::CallLog(Console& console) : console_(console) {}

void CallLog::log(int line) {
  CallerRecord& record = console_.lines.CallerData(line);
  if (chosen() && record.holds_data()) write(line, record);
  ++calls_ended_[line];
}

void CallLog::write(int line, CallerRecord& record) {
  record.set(CallerField::CallDate, date_text(console_.services.clock.now()));
  platform::Recordset& rows = recordset();
  rows.add_new();
  for (const LogStep& step : log_steps) {
    const CallLogColumn& column = call_log_columns[static_cast<std::size_t>(step.position)];
    const std::string& text =
        step.row_column < 0 ? record[step.field]
                            : console_.Lineweir.column_labels(step.row_column)(line).caption.get();
    const std::string value = console_.services.letters.to_utf8(left_part(text, column.size));
    if (column.name.empty()) {
      rows.set_field(step.position, value);
    } else {
      rows.set_field(column.name, value);
    }
  }
  rows.update();
}

platform::Recordset& CallLog::recordset() {
  const std::string& name = console_.Lineweir.Data1.database_name;
  if (!log_.recordset || log_.name != name) log_ = open(name);
  return *log_.recordset;
}

void CallLog::choose(const std::string& file) {
  log_ = open(file);
  console_.Lineweir.Data1.database_name = file;
  console_.Lineweir.Data1.record_source = call_log_table;
}

bool CallLog::chosen() const {
  return !trimmed(console_.Lineweir.Data1.database_name.get()).empty();
}

void CallLog::rename_user_field(const std::string& name) {
  platform::Recordset& rows = recordset();
  log_.database->rename_column(std::string(call_log_table), user_field_position,
                               console_.services.letters.to_utf8(name));
  rows.refresh();
}

int CallLog::calls_ended(int line) const {
  const auto found = calls_ended_.find(line);
  return found == calls_ended_.end() ? 0 : found->second;
}

CallLog::OpenLog CallLog::open(const std::string& file) const {
  const std::string table(call_log_table);
  OpenLog log{file, console_.services.databases.open(file), nullptr};
  require_log_columns(log.database->table_columns(table));
  log.recordset = log.database->open_recordset(table);
  log.database->index_numbers(table, phone_number_position);
  return log;
}

std::vector<platform::DatabaseColumn> new_log_columns(std::string_view user_field_name_utf8) {
  std::vector<platform::DatabaseColumn> columns;
  for (const CallLogColumn& column : call_log_columns) {
    const std::string_view name = column.name.empty() ? user_field_name_utf8 : column.name;
    columns.push_back({std::string(name), static_cast<int>(column.size)});
  }
  return columns;
}

void require_log_columns(const std::vector<platform::DatabaseColumn>& columns) {
  for (std::size_t i = 0; i < call_log_columns.size(); ++i) {
    const std::string_view name = call_log_columns[i].name;
    if (i < columns.size() && (name.empty() || same_name(columns[i].name, name))) continue;
    throw Failure(failure_number::no_such_field,
                  "The file's table \"" + std::string(call_log_table) +
                      "\" is not that of a call log: its column " + std::to_string(i + 1) +
                      " should be " +
                      (name.empty() ? "the user's field." : "\"" + std::string(name) + "\"."));
  }
}

}  // namespace lineweir
