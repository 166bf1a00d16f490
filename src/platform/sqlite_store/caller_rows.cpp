#include "platform/sqlite_store/caller_rows.h"

#include "platform/sqlite/connection.h"
#include "platform/sqlite_store/row_values.h"

namespace lineweir::platform {
namespace {

const std::string ended_before = "ended IS NOT NULL AND ended < ?1 ";

// With something to be forgotten.
const std::string of_somebody =
    "AND (caller <> '' OR number <> '' OR told_by <> '' OR caller_name <> '' OR "
    "street_address <> '' OR city <> '' OR state <> '' OR zip_code <> '' OR phone_number <> '' OR "
    "station <> '' OR gender <> '' OR comments <> '' OR user_field <> '') ";

const std::string first_ones = "ORDER BY ended, id LIMIT ?2";

}  // namespace

std::vector<FlaggedCaller> read_flagged_callers(sqlite3* connection) {
  std::vector<FlaggedCaller> callers;
  Statement row(connection,
                "SELECT caller, number, flag, reason, until, flagged_by, at FROM flagged_callers "
                "ORDER BY caller");
  while (row.step()) {
    callers.push_back({.key = text_of(row, 0),
                       .number = text_of(row, 1),
                       .flag = caller_flag_of(row.number(2)).value_or(CallerFlag::None),
                       .reason = text_of(row, 3),
                       .until = text_of(row, 4),
                       .by = text_of(row, 5),
                       .at = moment_of(row, 6)});
  }
  return callers;
}

void write_flagged_caller(sqlite3* connection, const FlaggedCaller& caller) {
  if (caller.flag == CallerFlag::None) {
    Statement(connection, "DELETE FROM flagged_callers WHERE caller = ?").bind(1, caller.key).run();
    return;
  }
  Statement row(
      connection,
      "REPLACE INTO flagged_callers (caller, number, flag, reason, until, flagged_by, at) "
      "VALUES (?, ?, ?, ?, ?, ?, ?)");
  row.bind(1, caller.key).bind(2, caller.number).bind(3, static_cast<int>(caller.flag));
  row.bind(4, caller.reason).bind(5, caller.until).bind(6, caller.by);
  bind_moment(row, 7, caller.at);
  row.run();
}

CallerHistory read_caller_history(sqlite3* connection, const std::string& key) {
  Statement row(connection,
                "SELECT count(*), count(aired), coalesce(max(aired), 0), "
                "coalesce((SELECT caller_name FROM calls WHERE caller = ?1 AND caller <> '' AND "
                "ended IS NOT NULL AND caller_name <> '' ORDER BY id DESC LIMIT 1), ''), "
                "coalesce((SELECT city FROM calls WHERE caller = ?1 AND caller <> '' AND "
                "ended IS NOT NULL AND city <> '' ORDER BY id DESC LIMIT 1), '') "
                "FROM calls WHERE caller = ?1 AND caller <> '' AND ended IS NOT NULL");
  row.bind(1, key);
  row.step();
  return {.calls = row.number(0),
          .on_air = row.number(1),
          .last_on_air = moment_of(row, 2),
          .name = text_of(row, 3),
          .city = text_of(row, 4)};
}

std::size_t forget_calls(sqlite3* connection, Moment before, Store::Forgetting what,
                         std::size_t limit) {
  const bool whole = what == Store::Forgetting::Calls;
  const std::string chosen =
      "(SELECT id FROM calls WHERE " + ended_before + (whole ? "" : of_somebody) + first_ones + ")";
  Transaction transaction(connection);
  Statement change(
      connection, (whole ? "DELETE FROM calls WHERE id IN "
                         : "UPDATE calls SET caller = '', number = '', told_by = '', caller_name = "
                           "'', street_address = '', city = '', state = '', zip_code = '', "
                           "phone_number = '', station = '', gender = '', comments = '', "
                           "user_field = '' WHERE id IN ") +
                      chosen);
  change.bind(1, static_cast<std::int64_t>(before.count())).bind(2, limit_value(limit));
  change.run();
  const auto count = static_cast<std::size_t>(query_number(connection, "SELECT changes()"));
  transaction.commit();
  return count;
}

}  // namespace lineweir::platform
