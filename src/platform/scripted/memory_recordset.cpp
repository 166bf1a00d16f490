#include "platform/scripted/memory_recordset.h"

#include <algorithm>

#include "base/failure.h"
#include "base/text.h"
#include "letters/utf8.h"

namespace lineweir::platform {
namespace {

void show_row(RowId id, const MemoryDatabases::Row& values, const std::vector<int>& columns,
              const RowVisitor& visit) {
  std::vector<std::string_view> wanted;
  for (const int column : columns) wanted.push_back(values.at(static_cast<std::size_t>(column)));
  visit(id, wanted);
}

}  // namespace

MemoryDatabases::Table& table_of(MemoryDatabases::File& file, const std::string& name) {
  const auto found = file.tables.find(name);
  if (found == file.tables.end()) {
    throw Failure(failure_number::no_such_table, "The file holds no table \"" + name + "\".");
  }
  return found->second;
}

MemoryRecordset::MemoryRecordset(std::shared_ptr<MemoryDatabases::File> file, std::string table)
    : file_(std::move(file)), table_(std::move(table)) {
  refresh();
}

MemoryDatabases::Table& MemoryRecordset::table() const { return table_of(*file_, table_); }

void MemoryRecordset::refresh() {
  fields_ = table().columns;
  begun_.reset();
}

void MemoryRecordset::add_new() {
  begun_ = BegunRow{std::nullopt, MemoryDatabases::Row(fields_.size()),
                    std::vector<bool>(fields_.size())};
}

void MemoryRecordset::edit(RowId row) {
  const auto found = table().rows.find(row);
  if (found == table().rows.end()) {
    throw Failure(failure_number::no_such_row, "The row has been removed.");
  }
  begun_ = BegunRow{row, found->second, std::vector<bool>(fields_.size())};
}

const MemoryRecordset::BegunRow& MemoryRecordset::begun() const {
  if (!begun_) throw Failure(failure_number::no_row_begun, "No row was begun.");
  return *begun_;
}

std::size_t MemoryRecordset::place_of(int position) const {
  const auto place = static_cast<std::size_t>(position);
  if (position < 0 || place >= fields_.size()) {
    throw Failure(failure_number::no_such_field, "The table has no such column.");
  }
  return place;
}

std::string MemoryRecordset::field(int position) const {
  return begun().values[place_of(position)];
}

void MemoryRecordset::set_field(std::string_view name, std::string_view value) {
  const auto column = std::ranges::find_if(
      fields_, [&](const DatabaseColumn& field) { return same_name(field.name, name); });
  set_field(static_cast<int>(column - fields_.begin()), value);
}

void MemoryRecordset::set_field(int position, std::string_view value) {
  begun();
  const std::size_t place = place_of(position);
  begun_->values[place] = cut_to_size(value, fields_[place].size);
  begun_->set[place] = true;
}

RowId MemoryRecordset::update() {
  const BegunRow& row = begun();
  auto& rows = table().rows;
  const RowId id = row.id ? *row.id : rows.empty() ? 1 : rows.rbegin()->first + 1;
  if (row.id && !rows.contains(id)) {
    throw Failure(failure_number::no_such_row, "The row has been removed.");
  }
  MemoryDatabases::Row& stored = rows[id];
  stored.resize(row.values.size());
  for (std::size_t i = 0; i < row.values.size(); ++i) {
    if (row.set[i]) stored[i] = row.values[i];
  }
  begun_.reset();
  ++file_->changes;
  return id;
}

void MemoryRecordset::remove(RowId row) {
  if (table().rows.erase(row) == 0) {
    throw Failure(failure_number::no_such_row, "The row has been removed.");
  }
  ++file_->changes;
}

void MemoryRecordset::take_places(const std::vector<RowId>& order) {
  std::vector<RowId> places = order;
  std::ranges::sort(places);
  auto& rows = table().rows;
  std::vector<MemoryDatabases::Row> moved;
  for (const RowId row : order) moved.push_back(rows.at(row));
  for (std::size_t i = 0; i < places.size(); ++i) rows.at(places[i]) = moved[i];
  ++file_->changes;
}

std::int64_t MemoryRecordset::count() { return static_cast<std::int64_t>(table().rows.size()); }

std::optional<std::vector<std::string>> MemoryRecordset::row(RowId row) {
  const auto found = table().rows.find(row);
  if (found == table().rows.end()) return std::nullopt;
  return found->second;
}

int MemoryRecordset::scan(const RowScan& scan, const RowVisitor& visit) {
  for (const int column : scan.columns) place_of(column);
  const auto& rows = table().rows;
  int visited = 0;
  const auto visit_from = [&](auto row, auto end) {
    for (; row != end && visited < scan.limit; ++row, ++visited) {
      show_row(row->first, row->second, scan.columns, visit);
    }
  };
  if (scan.newest_first) {
    const auto first = scan.behind ? rows.lower_bound(*scan.behind) : rows.end();
    visit_from(std::make_reverse_iterator(first), rows.rend());
  } else {
    visit_from(scan.behind ? rows.upper_bound(*scan.behind) : rows.begin(), rows.end());
  }
  return visited;
}

int MemoryRecordset::find_number(int column, std::string_view number, int limit,
                                 const std::vector<int>& columns, const RowVisitor& visit) {
  const std::size_t place = place_of(column);
  for (const int wanted : columns) place_of(wanted);
  const std::string bare = digits_of(number);
  const auto& rows = table().rows;
  int visited = 0;
  for (auto row = rows.rbegin(); row != rows.rend() && visited < limit; ++row) {
    if (digits_of(row->second[place]) != bare) continue;
    show_row(row->first, row->second, columns, visit);
    ++visited;
  }
  return visited;
}

}  // namespace lineweir::platform
