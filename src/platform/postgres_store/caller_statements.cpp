#include "platform/postgres_store/column_values.h"
#include "platform/postgres_store/record_statements.h"

namespace lineweir::platform {
namespace {

const std::string flagged_columns =
    "SELECT caller, number, flag, reason, until, flagged_by, at FROM flagged_callers ";

const std::string newest_of =
    " FROM calls WHERE caller = $1 AND caller <> '' AND ended IS NOT NULL AND ";

// With something to be forgotten.
const std::string of_somebody =
    "AND (caller <> '' OR number <> '' OR told_by <> '' OR caller_name <> '' OR "
    "street_address <> '' OR city <> '' OR state <> '' OR zip_code <> '' OR phone_number <> '' OR "
    "station <> '' OR gender <> '' OR comments <> '' OR user_field <> '') ";

const std::string forget_whole = "DELETE FROM calls WHERE id IN ";
const std::string forget_caller =
    "UPDATE calls SET caller = '', number = '', told_by = '', caller_name = '', "
    "street_address = '', city = '', state = '', zip_code = '', phone_number = '', station = '', "
    "gender = '', comments = '', user_field = '' WHERE id IN ";

}  // namespace

PostgresStatement flagged_callers_read() { return {flagged_columns + "ORDER BY caller"}; }

PostgresStatement flagged_caller_read(const std::string& key) {
  return {flagged_columns + "WHERE caller = $1", {PostgresValue::text(key)}};
}

std::vector<FlaggedCaller> flagged_callers_of(const PostgresRows& rows) {
  std::vector<FlaggedCaller> callers;
  for (int row = 0; row < rows.count(); ++row) {
    callers.push_back({.key = rows.text(row, 0),
                       .number = rows.text(row, 1),
                       .flag = caller_flag_of(rows.number(row, 2)).value_or(CallerFlag::None),
                       .reason = rows.text(row, 3),
                       .until = rows.text(row, 4),
                       .by = rows.text(row, 5),
                       .at = moment_of(rows, row, 6)});
  }
  return callers;
}

PostgresStatement flagged_caller_write(const FlaggedCaller& caller) {
  const auto key = PostgresValue::text(caller.key);
  if (caller.flag == CallerFlag::None) {
    return {"DELETE FROM flagged_callers WHERE caller = $1", {key}};
  }
  return {
      "INSERT INTO flagged_callers (caller, number, flag, reason, until, flagged_by, at) "
      "VALUES ($1, $2, $3, $4, $5, $6, $7) ON CONFLICT (caller) DO UPDATE SET "
      "number = excluded.number, flag = excluded.flag, reason = excluded.reason, "
      "until = excluded.until, flagged_by = excluded.flagged_by, at = excluded.at",
      {key, PostgresValue::text(caller.number),
       PostgresValue::number(static_cast<std::int64_t>(caller.flag)),
       PostgresValue::text(caller.reason), PostgresValue::text(caller.until),
       PostgresValue::text(caller.by), moment_value(caller.at)}};
}

PostgresStatement caller_history_read(const std::string& key) {
  return {"SELECT count(*), count(aired), coalesce(max(aired), 0), coalesce((SELECT caller_name" +
              newest_of +
              "caller_name <> '' ORDER BY id DESC LIMIT 1), ''), coalesce((SELECT city" +
              newest_of +
              "city <> '' ORDER BY id DESC LIMIT 1), '') FROM calls "
              "WHERE caller = $1 AND caller <> '' AND ended IS NOT NULL",
          {PostgresValue::text(key)}};
}

CallerHistory caller_history_of(const PostgresRows& rows) {
  if (rows.count() == 0) return {};
  return {.calls = rows.number(0, 0),
          .on_air = rows.number(0, 1),
          .last_on_air = moment_of(rows, 0, 2),
          .name = rows.text(0, 3),
          .city = rows.text(0, 4)};
}

PostgresStatement forget_calls(Moment before, Store::Forgetting what, std::size_t limit) {
  const bool whole = what == Store::Forgetting::Calls;
  return {(whole ? forget_whole : forget_caller) +
              "(SELECT id FROM calls WHERE ended IS NOT NULL AND ended < $1 " +
              (whole ? std::string() : of_somebody) + "ORDER BY ended, id LIMIT $2) RETURNING id",
          {PostgresValue::number(before.count()), limit_of(limit)}};
}

}  // namespace lineweir::platform
