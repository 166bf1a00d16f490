#include "callerdata/call_log.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "base/time_text.h"
#include "callerdata/entry_fit.h"
#include "callerdata/left_call.h"
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

std::string& value_of(platform::LoggedCall& call, CallerField field) {
  return call.columns[rule_of(field).log.position].value;
}

const std::string& value_of(const platform::LoggedCall& call, CallerField field) {
  return call.columns[rule_of(field).log.position].value;
}

std::string_view text_of(const platform::LoggedCall& call, CallerField field) {
  return trimmed(value_of(call, field));
}

// Whether the record still tells all that the earlier one knows of its caller.
bool tells_of_same_caller(const platform::LoggedCall& earlier, const platform::LoggedCall& record) {
  bool is_known = false;
  for (const CallerFieldRule& entry : entry_fields) {
    const std::string_view known = text_of(earlier, entry.field);
    if (known.empty()) continue;
    if (known != text_of(record, entry.field)) return false;
    is_known = true;
  }
  return is_known;
}

// Whether the record says something else of its caller than the earlier one.
bool contradicts(const platform::LoggedCall& earlier, const platform::LoggedCall& record) {
  return std::ranges::any_of(entry_fields, [&](const CallerFieldRule& entry) {
    const std::string_view known = text_of(earlier, entry.field);
    const std::string_view now = text_of(record, entry.field);
    return !known.empty() && !now.empty() && known != now;
  });
}

// The record takes the place of an earlier one of the same call, and keeps what only that one
// knows, and when the call was first seen, on hold and on air.
void follow_up(const platform::LoggedCall& earlier, platform::LoggedCall& record) {
  using enum CallerField;
  record.replaced = earlier.columns;
  for (const CallerFieldRule& rule : caller_fields) {
    const bool is_first =
        rule.field == CallDate || rule.field == TimePlacedOnAir || rule.field == TimeOnHold;
    const bool is_known = !text_of(earlier, rule.field).empty();
    if (text_of(record, rule.field).empty() || (is_first && is_known)) {
      value_of(record, rule.field) = value_of(earlier, rule.field);
    }
  }
}

}  // namespace

bool is_row_of(const platform::LoggedCall& earlier, const platform::LoggedCall& record) {
  return !record.replaced.empty() && earlier.file == record.file &&
         earlier.columns == record.replaced;
}

CallLog::CallLog(ConsoleState& state) : state_(state) {}

std::optional<platform::LoggedCall> CallLog::to_be_logged(int line) {
  if (!chosen() || !state_.lines.CallerData(line).holds_data()) return std::nullopt;
  platform::LoggedCall call = call_so_far(line);
  call.file = file_of_log();
  const auto found = logged_.find({state_.program.GroupNumber, line});
  if (found == logged_.end()) return call;
  const Logged& logged = found->second;
  const bool is_record = is_record_of(logged, line, call);
  // It has its row, in the log that was chosen at its end.
  const bool is_done = logged.rest == Rest::OtherCallBegun || logged.call.file != call.file;
  if (is_record && is_done) return std::nullopt;
  if (is_record || may_go_on_as(logged, line, call)) follow_up(logged.call, call);
  return call;
}

// The date is filled in when a call is logged, and goes with the record.
bool CallLog::is_record_of(const Logged& logged, int line, const platform::LoggedCall& call) const {
  const bool stays = !state_.lines.CallerData(line)[CallerField::CallDate].empty();
  return logged.rest != Rest::GoesOn && stays && !contradicts(logged.call, call);
}

bool CallLog::may_go_on_as(const Logged& logged, int line, const platform::LoggedCall& call) {
  if (logged.rest != Rest::GoesOn || !tells_of_same_caller(logged.call, call)) return false;
  return !logged.last_seen ||
         !is_other_call(*logged.last_seen, {state_.lines.ClockBase(line), noticed(line)},
                        state_.services.clock.now());
}

void CallLog::log(int line) {
  EndedCall ended{call_on(line), call_so_far(line)};
  const bool fresh = state_.lines.FreshConnect;
  // A session that begins may tell a line free on which the call goes on.
  if (fresh) ended.last_seen = last_seen();
  const auto logged = to_be_logged(line);
  const GroupLine place{state_.program.GroupNumber, line};
  if (logged) {
    ended.record = *logged;
    state_.lines.CallerData(line).set(CallerField::CallDate,
                                      value_of(ended.record, CallerField::CallDate));
    put(line, ended);
  }
  if (!fresh) {
    logged_.erase(place);
  } else if (logged) {
    logged_[place] = {*logged, Rest::RecordStays, std::nullopt};
  }
  end(line, ended);
}

void CallLog::leave(int line, CallEnd how) {
  EndedCall ended{call_on(line), call_so_far(line), how};
  const GroupLine place{state_.program.GroupNumber, line};
  if (how == CallEnd::HungUp) {
    const auto logged = logged_.find(place);
    if (logged != logged_.end()) logged->second.rest = Rest::OtherCallBegun;
    return end(line, ended);
  }
  ended.last_seen = last_seen();
  if (const auto logged = to_be_logged(line)) {
    ended.record = *logged;
    put(line, ended);
    logged_[place] = {*logged, Rest::GoesOn, ended.last_seen};
  }
  end(line, ended);
}

void CallLog::record_saved(int line) {
  const auto logged = logged_.find({state_.program.GroupNumber, line});
  if (logged != logged_.end() && logged->second.rest == Rest::OtherCallBegun) logged_.erase(logged);
}

void CallLog::log_left(int line, const EndedCall& left) {
  put(line, left);
  if (!left.last_seen) return;
  const int group = left.last_seen->group;
  const bool may_go_on = group != state_.program.GroupNumber || state_.lines.has_caller(line);
  if (may_go_on) logged_[{group, line}] = {left.record, Rest::GoesOn, left.last_seen};
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

std::optional<LastSeen> CallLog::last_seen() const {
  const bool is_here = last_seen_ && last_seen_->group == state_.program.GroupNumber;
  return is_here ? last_seen_ : std::nullopt;
}

void CallLog::lines_told() {
  last_seen_ = LastSeen{state_.program.GroupNumber, state_.services.clock.now(),
                        std::string(trimmed(state_.login.ServerHost))};
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
  call = with_texts(std::move(call), texts);
  for (auto& [place, logged] : logged_) {
    if (is_row_of(logged.call, call)) bring_up_to_date(place, logged, call);
  }
  state_.services.journal.put(std::move(call));
  return true;
}

void CallLog::bring_up_to_date(const GroupLine& place, Logged& logged,
                               const platform::LoggedCall& call) {
  const bool stands_here = place.group == state_.program.GroupNumber &&
                           is_record_of(logged, place.line, call_so_far(place.line));
  if (stands_here) {
    CallerRecord& record = state_.lines.CallerData(place.line);
    for (const CallerFieldRule& entry : entry_fields) {
      const std::string text = state_.services.letters.from_utf8(text_of(call, entry.field));
      record.set(entry.field, text);
      state_.Lineweir.labels_of(entry.field)(place.line).caption = text;
    }
  }
  logged.call.columns = call.columns;
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
