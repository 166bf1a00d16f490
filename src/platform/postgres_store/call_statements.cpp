#include <unordered_map>

#include "platform/postgres_store/column_values.h"
#include "platform/postgres_store/record_statements.h"

namespace lineweir::platform {
namespace {

constexpr int first_told_column = 9;

CallRecord call_of(const PostgresRows& rows, int row) {
  CallRecord call{.id = rows.number(row, 0),
                  .group = number_of(rows, row, 1),
                  .line = number_of(rows, row, 2) - 1,
                  .number = rows.text(row, 3),
                  .began = moment_of(rows, row, 4),
                  .answered = moment_of(rows, row, 5),
                  .aired = moment_of(rows, row, 6),
                  .ended = moment_of(rows, row, 7),
                  .told_by = rows.text(row, 8),
                  .told = {},
                  .steps = {}};
  int column = first_told_column;
  for (std::string& field : call.told) field = rows.text(row, column++);
  return call;
}

}  // namespace

CallChoice open_calls() { return {.which = "WHERE ended IS NULL ORDER BY id", .values = {}}; }

CallChoice ended_calls(const CallFilter& filter) {
  return {.which =
              "WHERE ended IS NOT NULL AND ended >= $1 AND (ended, id) > ($2, $3) "
              "AND ($4 = 0 OR group_number = $4) ORDER BY ended, id LIMIT $5",
          .values = {PostgresValue::number(filter.since.count()),
                     PostgresValue::number(filter.after.ended.count()),
                     PostgresValue::number(filter.after.id), PostgresValue::number(filter.group),
                     limit_of(filter.limit)}};
}

CallChoice calls_behind(std::int64_t id, std::size_t limit) {
  return {.which = "WHERE id > $1 ORDER BY id LIMIT $2",
          .values = {PostgresValue::number(id), limit_of(limit)}};
}

void append_calls_read(PostgresStatements& statements, const CallChoice& choice) {
  statements.push_back(
      {"SELECT id, group_number, line, number, began, answered, aired, ended, "
       "told_by, caller_name, street_address, city, state, zip_code, "
       "phone_number, station, gender, comments, user_field FROM calls " +
           choice.which,
       choice.values});
  statements.push_back({"SELECT call, at, who, action FROM call_steps JOIN (SELECT id FROM calls " +
                            choice.which + ") AS chosen ON call = id ORDER BY call, place",
                        choice.values});
}

std::vector<CallRecord> calls_of(const PostgresRows& calls, const PostgresRows& steps) {
  std::vector<CallRecord> found;
  std::unordered_map<std::int64_t, std::size_t> places;
  for (int row = 0; row < calls.count(); ++row) {
    found.push_back(call_of(calls, row));
    places[found.back().id] = found.size() - 1;
  }
  for (int row = 0; row < steps.count(); ++row) {
    const auto place = places.find(steps.number(row, 0));
    if (place == places.end()) continue;
    found[place->second].steps.push_back(
        {.at = moment_of(steps, row, 1), .user = steps.text(row, 2), .action = steps.text(row, 3)});
  }
  return found;
}

void append_call(PostgresStatements& statements, const CallRecord& call) {
  const auto id = PostgresValue::number(call.id);
  std::vector<PostgresValue> values = {id, PostgresValue::number(call.group),
                                       PostgresValue::number(std::int64_t{call.line} + 1),
                                       PostgresValue::text(call.number)};
  for (const Moment moment : {call.began, call.answered, call.aired, call.ended}) {
    values.push_back(moment_value(moment));
  }
  values.push_back(PostgresValue::text(call.told_by));
  for (const std::string& field : call.told) values.push_back(PostgresValue::text(field));
  values.push_back(PostgresValue::text(caller_key(call)));
  statements.push_back(
      {"INSERT INTO calls (id, group_number, line, number, began, answered, aired, ended, "
       "told_by, caller_name, street_address, city, state, zip_code, phone_number, station, "
       "gender, comments, user_field, caller) VALUES ($1, $2, $3, $4, $5, $6, $7, $8, $9, $10, "
       "$11, "
       "$12, $13, $14, $15, $16, $17, $18, $19, $20) ON CONFLICT (id) DO UPDATE SET "
       "group_number = excluded.group_number, line = excluded.line, number = excluded.number, "
       "began = excluded.began, answered = excluded.answered, aired = excluded.aired, "
       "ended = excluded.ended, told_by = excluded.told_by, caller_name = excluded.caller_name, "
       "street_address = excluded.street_address, city = excluded.city, state = excluded.state, "
       "zip_code = excluded.zip_code, phone_number = excluded.phone_number, "
       "station = excluded.station, gender = excluded.gender, comments = excluded.comments, "
       "user_field = excluded.user_field, caller = excluded.caller",
       std::move(values)});
  statements.push_back({"DELETE FROM call_steps WHERE call = $1", {id}});
  std::int64_t place = 0;
  for (const CallStep& step : call.steps) {
    statements.push_back(
        {"INSERT INTO call_steps (call, place, at, who, action) VALUES ($1, $2, $3, $4, $5)",
         {id, PostgresValue::number(++place), moment_value(step.at), PostgresValue::text(step.user),
          PostgresValue::text(step.action)}});
  }
}

}  // namespace lineweir::platform
