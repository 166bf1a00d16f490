#include "platform/sqlite/staged_rows.h"

#include <algorithm>

#include "platform/sqlite/table_schema.h"

namespace lineweir::platform {
namespace {

constexpr std::int64_t rows_a_step = 5000;

std::string listed(std::size_t columns, const std::function<std::string(std::size_t)>& text) {
  std::string list;
  for (std::size_t i = 0; i < columns; ++i) list += (i > 0 ? ", " : "") + text(i);
  return list;
}

std::string staged_name(std::size_t column) { return "c" + std::to_string(column); }

}  // namespace

StagedRows::StagedRows(const BatchTarget& target, LockWait lock_wait)
    : lock_wait_(lock_wait), open_(target.file, lock_wait_, target.guard) {
  prepare_for_writing(open_.get());
  open_.note_beside();
  const TableSchema schema = read_schema(open_.get(), target.table);
  columns_ = schema.columns.size();
  // Rows that aren't stored are only dropped, so nothing needs to be taken back in there.
  execute(open_.get(), "PRAGMA temp.journal_mode = OFF");
  execute(open_.get(), "CREATE TEMP TABLE staged (" + listed(columns_, staged_name) + ", apart)");
  move_sql_ = "INSERT INTO main." + sql_name(schema.name) + " (" +
              listed(columns_, [&](std::size_t i) { return sql_name(schema.columns[i].name); }) +
              ") SELECT " + listed(columns_, staged_name) +
              " FROM temp.staged WHERE rowid > ?1 AND rowid <= ?2 AND (?3 OR NOT apart)"
              " ORDER BY rowid";
  insert_ = std::make_unique<Statement>(
      open_.get(), "INSERT INTO temp.staged VALUES (" + listed(columns_ + 1, [](std::size_t i) {
                     return "?" + std::to_string(i + 1);
                   }) + ")");
}

void StagedRows::add(const std::vector<std::string>& values, bool apart) {
  // One step for all: it concerns the temporary file only.
  if (sqlite3_get_autocommit(open_.get()) != 0) execute(open_.get(), "BEGIN");
  for (std::size_t i = 0; i < columns_; ++i) {
    insert_->bind(static_cast<int>(i + 1), i < values.size() ? values[i] : std::string_view());
  }
  insert_->bind(static_cast<int>(columns_ + 1), std::int64_t{apart ? 1 : 0});
  insert_->run();
  ++rows_;
}

bool StagedRows::store(bool apart_too, const std::function<bool(std::int64_t done)>& go_on) {
  if (sqlite3_get_autocommit(open_.get()) == 0) execute(open_.get(), "COMMIT");
  open_.require_in_place();
  Transaction transaction(open_.get());
  Statement move(open_.get(), move_sql_);
  for (std::int64_t done = 0; done < rows_;) {
    if (!go_on(done)) return false;
    const std::int64_t end = std::min(done + rows_a_step, rows_);
    move.bind(1, done).bind(2, end).bind(3, std::int64_t{apart_too ? 1 : 0});
    move.run();
    done = end;
  }
  if (!go_on(rows_)) return false;
  open_.require_in_place();
  transaction.commit();
  return true;
}

}  // namespace lineweir::platform
