#include "platform/sqlite_store/call_rows.h"

#include "platform/sqlite_store/row_values.h"

namespace lineweir::platform {
namespace {

const std::string call_columns =
    "id, group_number, line, number, began, answered, aired, ended, told_by, caller_name, "
    "street_address, city, state, zip_code, phone_number, station, gender, comments, user_field";
constexpr int first_told_column = 9;

void read_steps(Statement& statement, CallRecord& call) {
  statement.bind(1, call.id);
  while (statement.step()) {
    call.steps.push_back({.at = moment_of(statement, 0),
                          .user = text_of(statement, 1),
                          .action = text_of(statement, 2)});
  }
  statement.reset();
}

CallRecord call_of(const Statement& row) {
  CallRecord call{.id = row.number(0),
                  .group = number_of(row, 1),
                  .line = number_of(row, 2) - 1,
                  .number = text_of(row, 3),
                  .began = moment_of(row, 4),
                  .answered = moment_of(row, 5),
                  .aired = moment_of(row, 6),
                  .ended = moment_of(row, 7),
                  .told_by = text_of(row, 8),
                  .told = {},
                  .steps = {}};
  int column = first_told_column;
  for (std::string& field : call.told) field = text_of(row, column++);
  return call;
}

std::vector<CallRecord> read_calls(sqlite3* connection, Statement& rows) {
  std::vector<CallRecord> calls;
  Statement steps(connection,
                  "SELECT at, user, action FROM call_steps WHERE call = ? ORDER BY place");
  while (rows.step()) {
    calls.push_back(call_of(rows));
    read_steps(steps, calls.back());
  }
  return calls;
}

void write_steps(sqlite3* connection, const CallRecord& call) {
  Statement(connection, "DELETE FROM call_steps WHERE call = ?").bind(1, call.id).run();
  Statement step(connection,
                 "INSERT INTO call_steps (call, place, at, user, action) VALUES (?, ?, ?, ?, ?)");
  std::int64_t place = 0;
  for (const CallStep& made : call.steps) {
    step.bind(1, call.id).bind(2, ++place).bind(4, made.user).bind(5, made.action);
    bind_moment(step, 3, made.at);
    step.run();
  }
}

}  // namespace

std::vector<CallRecord> read_open_calls(sqlite3* connection) {
  Statement rows(connection,
                 "SELECT " + call_columns + " FROM calls WHERE ended IS NULL ORDER BY id");
  return read_calls(connection, rows);
}

std::vector<CallRecord> read_ended_calls(sqlite3* connection, const CallFilter& filter) {
  Statement rows(connection, "SELECT " + call_columns +
                                 " FROM calls WHERE ended IS NOT NULL AND ended >= ?1 "
                                 "AND (ended, id) > (?2, ?3) AND (?4 = 0 OR group_number = ?4) "
                                 "ORDER BY ended, id LIMIT ?5");
  rows.bind(1, static_cast<std::int64_t>(filter.since.count()));
  rows.bind(2, static_cast<std::int64_t>(filter.after.ended.count())).bind(3, filter.after.id);
  rows.bind(4, filter.group).bind(5, limit_value(filter.limit));
  return read_calls(connection, rows);
}

std::vector<CallRecord> read_calls_behind(sqlite3* connection, std::int64_t id, std::size_t limit) {
  Statement rows(connection,
                 "SELECT " + call_columns + " FROM calls WHERE id > ? ORDER BY id LIMIT ?");
  rows.bind(1, id).bind(2, limit_value(limit));
  return read_calls(connection, rows);
}

void write_call(sqlite3* connection, const CallRecord& call) {
  Statement row(connection, "REPLACE INTO calls (" + call_columns +
                                ", caller) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
                                "?, ?, ?, ?)");
  row.bind(1, call.id).bind(2, call.group).bind(3, call.line + 1).bind(4, call.number);
  int parameter = 5;
  for (const Moment moment : {call.began, call.answered, call.aired, call.ended}) {
    bind_moment(row, parameter++, moment);
  }
  row.bind(parameter++, call.told_by);
  for (const std::string& field : call.told) row.bind(parameter++, field);
  const std::string caller = caller_key(call);
  row.bind(parameter, caller);
  row.run();
  write_steps(connection, call);
}

}  // namespace lineweir::platform
