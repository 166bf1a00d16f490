#include "callerdata/call_log.h"

#include <utility>

#include "base/text.h"
#include "base/time_text.h"
#include "callerdata/entry_fit.h"
#include "callerdata/log_places.h"
#include "forms/call_log_columns.h"
#include "letters/path_text.h"
#include "state/console_state.h"

namespace lineweir {
namespace {

using LoggedColumns = std::vector<platform::LoggedColumn>;

LoggedColumns empty_columns() {
  LoggedColumns columns;
  for (const CallLogColumn& column : call_log_columns) {
    columns.push_back({std::string(column.name), {}});
  }
  return columns;
}

void set_column(const Letters& letters, LoggedColumns& columns, CallerField field,
                std::string_view text) {
  const CallerLogColumn& column = rule_of(field).log;
  // A number loses its separators before it loses a digit.
  const std::string kept =
      field == CallerField::PhoneNumber ? number_within(text, column.size) : std::string(text);
  columns[column.position].value = letters.to_utf8(left_part(kept, column.size));
}

LoggedColumns columns_of(const Letters& letters, const CallerRecord& record, MainForm& form,
                         int line) {
  LoggedColumns columns = empty_columns();
  for (const CallerFieldRule& rule : caller_fields) {
    const bool from_row = rule.log.from == LoggedFrom::Row;
    set_column(letters, columns, rule.field,
               from_row ? form.labels_of(rule.field)(line).caption.get() : record[rule.field]);
  }
  return columns;
}

// The record takes the place of an earlier one of the same call, which is one whose caller it still
// tells all of, and keeps the times that only that one knows.
void follow_up(const platform::LoggedCall& earlier, platform::LoggedCall& record) {
  const auto known = [&](CallerField field) {
    return earlier.columns[rule_of(field).log.position].value;
  };
  const auto now = [&](CallerField field) -> std::string& {
    return record.columns[rule_of(field).log.position].value;
  };
  bool is_known = false;
  for (const auto& entry : entry_fields) {
    if (known(entry.field).empty()) continue;
    if (known(entry.field) != now(entry.field)) return;
    is_known = true;
  }
  if (!is_known) return;
  record.replaced = earlier.columns;
  using enum CallerField;
  for (const CallerField time : {TimePlacedOnAir, TimeOnHold}) {
    if (!known(time).empty()) now(time) = known(time);
  }
  if (now(TimeOnAir).empty()) now(TimeOnAir) = known(TimeOnAir);
}

}  // namespace

CallLog::CallLog(ConsoleState& state) : state_(state) {}

bool CallLog::is_logged(int line) const {
  return chosen() && state_.lines.CallerData(line).holds_data();
}

std::optional<platform::LoggedCall> CallLog::to_be_logged(int line) {
  if (!is_logged(line)) return std::nullopt;
  platform::LoggedCall call = call_so_far(line);
  call.file = file_of_log();
  return call;
}

void CallLog::log(int line) {
  CallerRecord& record = state_.lines.CallerData(line);
  EndedCall ended{call_on(line), call_so_far(line)};
  if (auto logged = to_be_logged(line)) {
    ended.record = *std::move(logged);
    const std::size_t date = rule_of(CallerField::CallDate).log.position;
    record.set(CallerField::CallDate, ended.record.columns[date].value);
    follow_up_left(line, ended.record);
    put(line, ended);
  }
  left_calls_.erase({state_.program.GroupNumber, line});
  end(line, ended);
}

void CallLog::leave(int line, CallEnd how) {
  EndedCall ended{call_on(line), call_so_far(line), how};
  if (how == CallEnd::GroupLeft) ended.last_seen = last_seen_now();
  if (how == CallEnd::HungUp) {
    left_calls_.erase({state_.program.GroupNumber, line});
  } else if (auto logged = to_be_logged(line)) {
    ended.record = *std::move(logged);
    follow_up_left(line, ended.record);
    put(line, ended);
    left_calls_[{state_.program.GroupNumber, line}] = ended.record;
  }
  end(line, ended);
}

void CallLog::follow_up_left(int line, platform::LoggedCall& call) {
  const auto left = left_calls_.find({state_.program.GroupNumber, line});
  if (left != left_calls_.end() && left->second.file == call.file) follow_up(left->second, call);
}

void CallLog::log_left(int line, const EndedCall& left) {
  state_.services.journal.put(left.record);
  if (left.last_seen) left_calls_[{left.last_seen->group, line}] = left.record;
}

void CallLog::put(int line, const EndedCall& ended) {
  if (on_logging) on_logging(line, ended);
  state_.services.journal.put(ended.record);
}

void CallLog::end(int line, const EndedCall& ended) {
  calls_on_lines_.erase(line);
  if (on_call_ended) on_call_ended(ended);
}

CallNumber CallLog::call_on(int line) { return on_line(line).number; }

platform::DateTime CallLog::noticed(int line) { return on_line(line).noticed; }

const CallLog::OnLine& CallLog::on_line(int line) {
  const auto found = calls_on_lines_.find(line);
  if (found != calls_on_lines_.end()) return found->second;
  return calls_on_lines_.emplace(line, OnLine{new_call(), state_.services.clock.now()})
      .first->second;
}

std::optional<CallNumber> CallLog::known_call_on(int line) const {
  const auto found = calls_on_lines_.find(line);
  if (found == calls_on_lines_.end()) return std::nullopt;
  return found->second.number;
}

LastSeen CallLog::last_seen_now() const {
  return {state_.program.GroupNumber, state_.services.clock.now()};
}

platform::LoggedCall CallLog::call_so_far(int line) {
  platform::LoggedCall call;
  call.table = call_log_table;
  const Letters& letters = state_.services.letters;
  call.columns = columns_of(letters, state_.lines.CallerData(line), state_.Lineweir, line);
  set_column(letters, call.columns, CallerField::CallDate, date_text(state_.services.clock.now()));
  return call;
}

bool CallLog::complete(platform::LoggedCall call, const EntryTexts& texts) {
  if (!call.file.empty()) {
    call.replaced = call.columns;
  } else if (chosen()) {
    call.file = file_of_log();
  } else {
    return false;
  }
  state_.services.journal.put(with_texts(std::move(call), texts));
  return true;
}

platform::LoggedCall CallLog::with_texts(platform::LoggedCall call, const EntryTexts& texts) const {
  // Through a record, whose fixed fields cut and pad.
  CallerRecord record;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const CallerField field = entry_fields[i].field;
    record.set(field, texts[i]);
    set_column(state_.services.letters, call.columns, field, record[field]);
  }
  return call;
}

EntryTexts CallLog::texts_of(const platform::LoggedCall& call) const {
  EntryTexts texts;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const std::string& value = call.columns[entry_fields[i].log.position].value;
    texts[i] = trimmed(state_.services.letters.from_utf8(value));
  }
  return texts;
}

void CallLog::restore_times(int line, const platform::LoggedCall& call) {
  for (const CallerField time : {CallerField::TimePlacedOnAir, CallerField::TimeOnHold}) {
    const std::string& known = call.columns[rule_of(time).log.position].value;
    if (!known.empty()) state_.lines.CallerData(line).set(time, known);
  }
}

platform::Recordset& CallLog::recordset() {
  const std::string& name = state_.Lineweir.Data1.database_name;
  if (!log_.recordset || log_.name != name || has_other_file(log_)) log_ = open(name);
  log_.database->follow_file();
  return *log_.recordset;
}

void CallLog::choose(const std::string& file) {
  log_ = open(file);
  choose_unseen(file);
}

void CallLog::choose_unseen(const std::string& file) {
  state_.Lineweir.Data1.database_name = file;
  state_.Lineweir.Data1.record_source = call_log_table;
  if (on_chosen) on_chosen();
}

bool CallLog::chosen() const { return !trimmed(state_.Lineweir.Data1.database_name.get()).empty(); }

std::string CallLog::file_of_log() const {
  return file_name(state_.services.letters, state_.Lineweir.Data1.database_name.get());
}

void CallLog::rename_user_field(const std::string& name) {
  platform::Recordset& rows = recordset();
  const int place = require_log_columns(rows.fields()).of(user_named_field);
  log_.database->rename_column(std::string(call_log_table), place,
                               state_.services.letters.to_utf8(name));
  rows.refresh();
}

bool CallLog::has_other_file(const OpenLog& log) {
  const platform::FileStanding standing = log.database->standing();
  return standing == platform::FileStanding::Replaced || standing == platform::FileStanding::Gone;
}

CallLog::OpenLog CallLog::open(const std::string& file) const {
  const std::string table(call_log_table);
  OpenLog log{file, state_.services.databases.open(file), nullptr};
  const LogPlaces places = require_log_columns(log.database->table_columns(table));
  log.recordset = log.database->open_recordset(table);
  state_.services.journal.use(file_name(state_.services.letters, file), table,
                              places.of(CallerField::PhoneNumber));
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

}  // namespace lineweir
