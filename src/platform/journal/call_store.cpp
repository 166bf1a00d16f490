#include "platform/journal/call_store.h"

#include <algorithm>
#include <filesystem>

#include "base/failure.h"
#include "letters/utf8.h"
#include "platform/log_columns.h"

namespace lineweir::platform {
namespace {

std::string shown_name(const std::string& path) {
  return "'" + std::filesystem::path(path).filename().string() + "'";
}

// Where the table has the columns of a call.
std::optional<std::vector<int>> places_in(const std::vector<DatabaseColumn>& present,
                                          const std::vector<LoggedColumn>& columns) {
  std::vector<std::string_view> names;
  for (const LoggedColumn& column : columns) names.push_back(column.name);
  return places_of_columns(present, names);
}

}  // namespace

void CallStore::put(std::span<const JournalRecord> records) {
  work([&] {
    const bool marked =
        std::ranges::any_of(records, [](const JournalRecord& r) { return !r.name.run.empty(); });
    if (marked) open_marks();
    std::map<std::string, std::uint64_t> marks;
    database_->in_transaction([&] {
      const std::vector<DatabaseColumn> present = database_->table_columns(table_);
      if (marked) marks_->refresh();
      for (const JournalRecord& record : records) {
        if (!record.name.run.empty()) {
          const std::string name = mark_name(record.name.run);
          std::uint64_t& mark = marks.try_emplace(name, marks_->stored(name)).first->second;
          if (record.name.sequence <= mark) continue;
          mark = record.name.sequence;
        }
        put_row(record.call, present);
      }
      for (const auto& [name, mark] : marks) marks_->store(name, mark);
    });
    for (const auto& [name, mark] : marks) last_marks_[name] = mark;
  });
}

void CallStore::index_numbers(int column) {
  work([&] { database_->index_numbers(table_, column); });
}

void CallStore::forget(const std::string& run) {
  work([&] {
    open_marks();
    database_->in_transaction([&] {
      marks_->refresh();
      marks_->forget(mark_name(run));
    });
    last_marks_.erase(mark_name(run));
  });
}

bool CallStore::checkpoint() {
  bool whole = true;
  work([&] { whole = database_->checkpoint(); });
  return whole;
}

template <class Step>
void CallStore::work(Step&& step) {
  look_for_other_file();
  try {
    if (!rows_) open();
    step();
  } catch (const Failure& failure) {
    // A lock passes; whatever else was wrong with the file, the next try begins anew.
    if (failure.number() != failure_number::database_in_use) close();
    throw;
  }
}

void CallStore::look_for_other_file() {
  if (!database_) return;
  const FileStanding standing = database_->standing();
  if (standing == FileStanding::Same) return;
  bool whole = true;
  if (standing == FileStanding::Written) {
    // Whoever else has the file open follows with this connection.
    if (!database_->follow_file()) {
      throw Failure(failure_number::database_in_use,
                    "The file " + shown_name(file_) + " is in use by another program.");
    }
  } else {
    // The last moment at which what the engine keeps beside the file can come into it.
    try {
      whole = database_->checkpoint();
    } catch (const Failure&) {
      whole = false;
    }
  }
  // The rest is found again if the file comes back to its place.
  if (whole || standing != FileStanding::Gone) close();
  if (standing == FileStanding::Gone) {
    throw Failure(failure_number::database_not_found,
                  "The call log " + shown_name(file_) + " has been moved or deleted.");
  }
}

void CallStore::open() {
  database_ = engine_.open(file_);
  rows_ = database_->open_recordset(table_);
  const FileIdentity identity = database_->identity();
  bool other = last_identity_ && *last_identity_ != identity;
  if (!last_marks_.empty()) {
    open_marks();
    for (const auto& [name, mark] : last_marks_) other |= marks_->stored(name) < mark;
  }
  last_identity_ = identity;
  if (other) last_marks_.clear();
  replaced_ |= other;
}

void CallStore::open_marks() {
  if (!marks_) marks_.emplace(*database_);
}

void CallStore::close() {
  marks_.reset();
  rows_.reset();
  database_.reset();
}

void CallStore::put_row(const LoggedCall& call, const std::vector<DatabaseColumn>& present) {
  const auto places = places_in(present, call.columns);
  if (!places) {
    throw Failure(failure_number::no_such_field, "The table \"" + call.table + "\" in the file " +
                                                     shown_name(call.file) +
                                                     " is not that of a call log.");
  }
  auto row = find(call.replaced, present);
  // A run that was killed behind this may have done it already.
  if (!row && !call.replaced.empty()) row = find(call.columns, present);
  if (row) {
    rows_->edit(*row);
  } else {
    rows_->add_new();
  }
  for (std::size_t i = 0; i < call.columns.size(); ++i) {
    const LoggedColumn& column = call.columns[i];
    const int place = (*places)[i];
    if (place == no_place) continue;
    if (column.name.empty()) {
      rows_->set_field(place, column.value);
    } else {
      rows_->set_field(column.name, column.value);
    }
  }
  rows_->update();
}

std::optional<RowId> CallStore::find(const std::vector<LoggedColumn>& columns,
                                     const std::vector<DatabaseColumn>& present) {
  const auto places = places_in(present, columns);
  if (columns.empty() || !places) return std::nullopt;
  RowScan scan{true, std::nullopt, rows_looked_through, {}};
  std::vector<std::string_view> wanted;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if ((*places)[i] == no_place) continue;
    scan.columns.push_back((*places)[i]);
    // As far as the column has room for it.
    wanted.push_back(
        cut_to_size(columns[i].value, present[static_cast<std::size_t>((*places)[i])].size));
  }
  std::optional<RowId> found;
  rows_->scan(scan, [&](RowId row, auto values) {
    if (!found && std::ranges::equal(values, wanted)) found = row;
  });
  return found;
}

}  // namespace lineweir::platform
