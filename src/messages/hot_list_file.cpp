#include "messages/hot_list_file.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/failure.h"
#include "base/names.h"
#include "base/text.h"
#include "letters/path_text.h"
#include "state/guard.h"

namespace lineweir {
namespace {

constexpr auto hot_list_table = "Messages";
constexpr auto message_column = "Message";
// More than anybody chooses from; a list that another program has made may have any number.
constexpr int most_entries = 1000;

std::optional<int> place_of_column(const std::vector<platform::DatabaseColumn>& columns) {
  const auto found = std::ranges::find_if(
      columns, [](const auto& column) { return same_name(column.name, message_column); });
  if (found == columns.end()) return std::nullopt;
  return static_cast<int>(found - columns.begin());
}

}  // namespace

void HotListFile::create(const std::string& path) {
  databases_.create(path)->create_table(
      hot_list_table, {{message_column, static_cast<int>(longest_hot_list_entry)}});
}

void HotListFile::open(const std::string& path) {
  HotListFile opened(databases_, letters_);
  opened.path_ = path;
  opened.database_ = databases_.open(path);
  std::optional<int> column;
  attempt([&] { column = place_of_column(opened.database_->table_columns(hot_list_table)); },
          [](const Failure& failure) {
            if (failure.number() != failure_number::no_such_table) throw failure;
          });
  if (!column) {
    throw Failure(failure_number::no_such_table,
                  "The file '" + file_name(letters_, path) +
                      "' is no hot list: it has no table \"Messages\" with a column \"Message\".");
  }
  opened.column_ = *column;
  opened.recordset_ = opened.database_->open_recordset(hot_list_table);
  opened.stamp_ = opened.database_->change_stamp();
  opened.take(opened.read_rows());
  close();
  path_ = std::move(opened.path_);
  database_ = std::move(opened.database_);
  recordset_ = std::move(opened.recordset_);
  column_ = opened.column_;
  stamp_ = opened.stamp_;
  take(std::move(opened.rows_));
}

void HotListFile::close() {
  recordset_.reset();
  database_.reset();
  take({});
}

std::vector<HotListFile::Row> HotListFile::read_rows() {
  platform::RowScan all;
  all.limit = most_entries;
  all.columns = {column_};
  std::vector<Row> rows;
  recordset_->scan(all, [&](platform::RowId id, std::span<const std::string_view> values) {
    rows.push_back({id, letters_.from_utf8(values.front())});
  });
  return rows;
}

void HotListFile::take(std::vector<Row> rows) {
  rows_ = std::move(rows);
  texts_.clear();
  for (const Row& row : rows_) texts_.push_back(row.text);
}

bool HotListFile::follow() {
  switch (database_->standing()) {
    case platform::FileStanding::Gone:
      return false;
    case platform::FileStanding::Replaced:
    case platform::FileStanding::Written:
      open(path_);
      return true;
    case platform::FileStanding::Same:
      break;
  }
  const std::int64_t stamp = database_->change_stamp();
  if (stamp == stamp_) return false;
  std::vector<Row> rows = read_rows();
  stamp_ = stamp;
  const bool changed = rows != rows_;
  take(std::move(rows));
  return changed;
}

void HotListFile::change(const std::function<void(const std::vector<Row>& rows)>& body) {
  if (!database_) return;
  const platform::FileStanding standing = database_->standing();
  if (standing == platform::FileStanding::Gone) {
    throw Failure(failure_number::database_not_found,
                  "The hot list '" + file_name(letters_, path_) +
                      "' isn't there any more. Put it back, or choose one with Browse.");
  }
  if (standing != platform::FileStanding::Same) open(path_);
  database_->in_transaction([&] { body(read_rows()); });
  database_->checkpoint();
  take(read_rows());
}

void HotListFile::add(std::string_view text) {
  change([&](const std::vector<Row>& rows) {
    if (rows.size() >= static_cast<std::size_t>(most_entries)) {
      throw Failure(failure_number::invalid_argument, "The hot list is full: it shows at most " +
                                                          std::to_string(most_entries) +
                                                          " messages. Remove one first.");
    }
    recordset_->add_new();
    recordset_->set_field(column_, letters_.to_utf8(left_part(text, longest_hot_list_entry)));
    recordset_->update();
  });
}

bool HotListFile::remove(std::size_t place) {
  if (place >= rows_.size()) return false;
  const Row wanted = rows_[place];
  bool removed = false;
  change([&](const std::vector<Row>& rows) {
    auto found = std::ranges::find(rows, wanted);
    if (found == rows.end()) found = std::ranges::find(rows, wanted.text, &Row::text);
    removed = found != rows.end();
    if (removed) recordset_->remove(found->id);
  });
  return removed;
}

bool HotListFile::move(std::size_t from, std::size_t to) {
  if (from >= rows_.size() || to >= rows_.size()) return false;
  const std::vector<Row> known = rows_;
  bool moved = false;
  change([&](const std::vector<Row>& rows) {
    if (rows != known) return;
    std::vector<platform::RowId> order;
    for (std::size_t place = std::min(from, to); place <= std::max(from, to); ++place) {
      order.push_back(rows[place].id);
    }
    if (from < to) {
      std::rotate(order.begin(), order.begin() + 1, order.end());
    } else {
      std::rotate(order.begin(), order.end() - 1, order.end());
    }
    recordset_->take_places(order);
    moved = true;
  });
  return moved;
}

}  // namespace lineweir
