#include "platform/postgres_store/column_values.h"
#include "platform/postgres_store/record_statements.h"

namespace lineweir::platform {

PostgresStatement groups_read() {
  return {
      "SELECT group_number, coalesce(next_call, 0), message, show_last, show_next, show_text "
      "FROM group_memory ORDER BY group_number"};
}

std::vector<GroupMemory> groups_of(const PostgresRows& rows) {
  std::vector<GroupMemory> groups;
  for (int row = 0; row < rows.count(); ++row) {
    groups.push_back({.group = number_of(rows, row, 0),
                      .next_call = number_of(rows, row, 1) - 1,
                      .message = rows.bytes(row, 2),
                      .show_times = {rows.text(row, 3), rows.text(row, 4), rows.text(row, 5)}});
  }
  return groups;
}

PostgresStatement group_write(const GroupMemory& group) {
  return {
      "INSERT INTO group_memory (group_number, next_call, message, show_last, show_next, "
      "show_text) VALUES ($1, $2, $3, $4, $5, $6) ON CONFLICT (group_number) DO UPDATE SET "
      "next_call = excluded.next_call, message = excluded.message, "
      "show_last = excluded.show_last, show_next = excluded.show_next, "
      "show_text = excluded.show_text",
      {PostgresValue::number(group.group),
       group.next_call < 0 ? PostgresValue::no_number()
                           : PostgresValue::number(std::int64_t{group.next_call} + 1),
       PostgresValue::bytes(group.message), PostgresValue::text(group.show_times[0]),
       PostgresValue::text(group.show_times[1]), PostgresValue::text(group.show_times[2])}};
}

}  // namespace lineweir::platform
