#include "callerdata/call_log.h"

#include <array>

#include "callerdata/call_log_columns.h"
#include "core/console.h"
#include "core/text.h"
#include "core/time_text.h"

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
  if (trimmed(console_.Lineweir.Data1.database_name.get()).empty() || !record.holds_data()) return;

  record.set(CallerField::CallDate, date_text(console_.services.clock.now()));
  platform::Recordset& rows = recordset();
  rows.add_new();
  for (const LogStep& step : log_steps) {
    const CallLogColumn& column = call_log_columns[static_cast<std::size_t>(step.position)];
    const std::string& text =
        step.row_column < 0 ? record[step.field]
                            : console_.Lineweir.column_labels(step.row_column)(line).caption.get();
    const std::string value = to_utf8(left_part(text, column.size));
    if (column.name.empty()) {
      rows.set_field(step.position, value);
    } else {
      rows.set_field(column.name, value);
    }
  }
  rows.update();
}

void CallLog::rename_user_field(const std::string& name) {
  platform::Recordset& rows = recordset();
  database_->rename_column(std::string(call_log_table), user_field_position, to_utf8(name));
  rows.refresh();
}

platform::Recordset& CallLog::recordset() {
  const std::string& name = console_.Lineweir.Data1.database_name;
  if (!recordset_ || open_name_ != name) {
    recordset_.reset();
    database_ = console_.services.databases.open(name);
    recordset_ = database_->open_recordset(std::string(call_log_table));
    open_name_ = name;
  }
  return *recordset_;
}

}  // namespace lineweir
