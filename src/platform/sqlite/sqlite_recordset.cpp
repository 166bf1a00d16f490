#include "platform/sqlite/sqlite_recordset.h"

#include <algorithm>

#include "base/failure.h"
#include "base/names.h"
#include "base/text.h"
#include "letters/utf8.h"
#include "platform/sqlite/sqlite_failure.h"

namespace lineweir::platform {

SqliteRecordset::SqliteRecordset(sqlite3* connection, RowVisits& visits, const std::string& table)
    : connection_(connection),
      visits_(visits),
      table_(table),
      version_query_(std::make_unique<Statement>(connection, "PRAGMA schema_version")) {
  refresh();
}

void SqliteRecordset::read_schema() {
  schema_ = platform::read_schema(connection_, table_);
  schema_version_ = schema_version(connection_);
  std::string places;
  std::string names;
  for (const DatabaseColumn& column : schema_.columns) {
    names += (names.empty() ? "" : ", ") + sql_name(column.name);
    places += places.empty() ? "?" : ", ?";
  }
  const std::string from = " FROM " + sql_name(schema_.name);
  insert_ =
      std::make_unique<Statement>(connection_, "INSERT INTO " + sql_name(schema_.name) + " (" +
                                                   names + ") VALUES (" + places + ")");
  select_ = std::make_unique<Statement>(
      connection_, "SELECT " + names + from + " WHERE " + schema_.row_id + " = ?1");
}

void SqliteRecordset::follow_schema() {
  const bool known = version_query_->step() && version_query_->number(0) == schema_version_;
  version_query_->reset();
  if (!known) read_schema();
}

void SqliteRecordset::refresh() {
  begun_.reset();
  read_schema();
  fields_ = schema_.columns;
}

void SqliteRecordset::require_same_file() const {
  int moved = 0;
  if (sqlite3_file_control(connection_, "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK &&
      moved != 0) {
    throw Failure(failure_number::database_not_found,
                  "The file " + shown_name(connection_) + " has been moved or deleted.");
  }
}

void SqliteRecordset::add_new() {
  begun_ = BegunRow{std::nullopt, std::vector<std::string>(fields_.size()),
                    std::vector<bool>(fields_.size())};
}

void SqliteRecordset::edit(RowId row) {
  auto values = this->row(row);
  if (!values) throw Failure(failure_number::no_such_row, "The row has been removed.");
  values->resize(fields_.size());
  begun_ = BegunRow{row, std::move(*values), std::vector<bool>(fields_.size())};
}

SqliteRecordset::BegunRow& SqliteRecordset::begun() {
  if (!begun_) throw Failure(failure_number::no_row_begun, "No row was begun.");
  return *begun_;
}

std::size_t SqliteRecordset::place_of(int position) const {
  if (position < 0 || static_cast<std::size_t>(position) >= fields_.size()) {
    throw Failure(failure_number::no_such_field,
                  "The table has no column " + std::to_string(position) + ".");
  }
  return static_cast<std::size_t>(position);
}

std::string SqliteRecordset::field(int position) const {
  if (!begun_) throw Failure(failure_number::no_row_begun, "No row was begun.");
  return begun_->values[place_of(position)];
}

void SqliteRecordset::set_field(std::string_view name, std::string_view value) {
  const auto column = std::ranges::find_if(
      fields_, [&](const DatabaseColumn& field) { return same_name(field.name, name); });
  if (column == fields_.end()) {
    throw Failure(failure_number::no_such_field,
                  "The table has no column \"" + std::string(name) + "\".");
  }
  set_field(static_cast<int>(column - fields_.begin()), value);
}

void SqliteRecordset::set_field(int position, std::string_view value) {
  BegunRow& row = begun();
  const std::size_t place = place_of(position);
  row.values[place] = cut_to_size(value, fields_[place].size);
  row.set[place] = true;
}

RowId SqliteRecordset::update() {
  BegunRow& row = begun();
  require_same_file();
  follow_schema();
  row.values.resize(schema_.columns.size());
  row.set.resize(schema_.columns.size());
  const RowId id = row.id ? store(row) : insert(row);
  begun_.reset();
  return id;
}

RowId SqliteRecordset::insert(const BegunRow& row) {
  for (std::size_t i = 0; i < row.values.size(); ++i) {
    insert_->bind(static_cast<int>(i) + 1, row.values[i]);
  }
  insert_->run();
  return sqlite3_last_insert_rowid(connection_);
}

RowId SqliteRecordset::store(const BegunRow& row) {
  std::string sets;
  for (std::size_t i = 0; i < row.values.size(); ++i) {
    if (!row.set[i]) continue;
    sets += (sets.empty() ? "" : ", ") + sql_name(schema_.columns[i].name) + " = ?" +
            std::to_string(i + 2);
  }
  if (sets.empty()) return *row.id;
  Statement store(connection_, "UPDATE " + sql_name(schema_.name) + " SET " + sets + " WHERE " +
                                   schema_.row_id + " = ?1");
  store.bind(1, *row.id);
  for (std::size_t i = 0; i < row.values.size(); ++i) {
    if (row.set[i]) store.bind(static_cast<int>(i) + 2, row.values[i]);
  }
  store.run();
  if (sqlite3_changes(connection_) == 0) {
    throw Failure(failure_number::no_such_row, "The row has been removed.");
  }
  return *row.id;
}

void SqliteRecordset::remove(RowId row) {
  require_same_file();
  Statement statement(
      connection_, "DELETE FROM " + sql_name(schema_.name) + " WHERE " + schema_.row_id + " = ?1");
  statement.bind(1, row).run();
  if (sqlite3_changes(connection_) == 0) {
    throw Failure(failure_number::no_such_row, "The row has been removed.");
  }
}

void SqliteRecordset::take_places(const std::vector<RowId>& order) {
  require_same_file();
  follow_schema();
  Statement renumber(connection_, "UPDATE " + sql_name(schema_.name) + " SET " + schema_.row_id +
                                      " = ?2 WHERE " + schema_.row_id + " = ?1");
  const auto go = [&](RowId from, RowId to) {
    renumber.bind(1, from);
    renumber.bind(2, to);
    renumber.run();
  };
  std::vector<RowId> places = order;
  std::ranges::sort(places);
  // By way of places behind all rows, so that no two rows are in one place.
  const RowId behind = 1 + query_number(connection_, "SELECT max(" + schema_.row_id + ") FROM " +
                                                         sql_name(schema_.name));
  for (std::size_t i = 0; i < order.size(); ++i) go(order[i], behind + static_cast<RowId>(i));
  for (std::size_t i = 0; i < order.size(); ++i) go(behind + static_cast<RowId>(i), places[i]);
}

std::int64_t SqliteRecordset::count() {
  return query_number(connection_, "SELECT count(*) FROM " + sql_name(schema_.name));
}

std::optional<std::vector<std::string>> SqliteRecordset::row(RowId row) {
  follow_schema();
  std::optional<std::vector<std::string>> values;
  select_->bind(1, row);
  if (select_->step()) {
    values.emplace();
    for (std::size_t i = 0; i < schema_.columns.size(); ++i) {
      values->emplace_back(select_->text(static_cast<int>(i)));
    }
  }
  select_->reset();
  return values;
}

int SqliteRecordset::scan(const RowScan& rows, const RowVisitor& visit) {
  follow_schema();
  const std::string& id = schema_.row_id;
  const std::string visits = "lineweir_visit(" + id + schema_.listed(rows.columns) + ")";
  const std::string behind =
      rows.behind ? id + (rows.newest_first ? " < ?1 AND " : " > ?1 AND ") : "";
  // By the row numbers and by no index, since the visits must come in their order.
  return visits_.run({"SELECT 1 FROM " + sql_name(schema_.name) + " NOT INDEXED WHERE " + behind +
                          visits + " ORDER BY " + id + (rows.newest_first ? " DESC" : ""),
                      rows.behind, std::nullopt, rows.limit},
                     visit);
}

int SqliteRecordset::find_number(int column, std::string_view number, int limit,
                                 const std::vector<int>& columns, const RowVisitor& visit) {
  follow_schema();
  if (!has_index(connection_, number_index(schema_, column))) return 0;
  const std::string& id = schema_.row_id;
  return visits_.run({"SELECT 1 FROM " + sql_name(schema_.name) + " WHERE " +
                          digits_expression(schema_.column(column)) + " = ?2 AND lineweir_visit(" +
                          id + schema_.listed(columns) + ") ORDER BY " + id + " DESC",
                      std::nullopt, digits_of(number), limit},
                     visit);
}

}  // namespace lineweir::platform
