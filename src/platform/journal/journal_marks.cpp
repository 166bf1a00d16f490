#include "platform/journal/journal_marks.h"

#include <algorithm>
#include <charconv>

#include "base/failure.h"

namespace lineweir::platform {
namespace {

constexpr const char* marks_table = "Lineweir Journals";
constexpr int most_marks = 10000;

std::unique_ptr<Recordset> open_table(Database& database) {
  try {
    return database.open_recordset(marks_table);
  } catch (const Failure& failure) {
    if (failure.number() != failure_number::no_such_table) throw;
  }
  database.create_table(marks_table, {{"Journal", 0}, {"Stored", 20}});
  return database.open_recordset(marks_table);
}

std::uint64_t number_in(std::string_view text) {
  std::uint64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace

JournalMarks::JournalMarks(Database& database) : rows_(open_table(database)) { refresh(); }

void JournalMarks::refresh() {
  marks_.clear();
  rows_->scan({true, std::nullopt, most_marks, {0, 1}}, [&](RowId row, auto values) {
    // Of two rows of a journal the one that has come further is right.
    Mark& mark = marks_[std::string(values[0])];
    mark = {row, std::max(mark.last, number_in(values[1]))};
  });
}

std::uint64_t JournalMarks::stored(const std::string& journal) const {
  const auto mark = marks_.find(journal);
  return mark == marks_.end() ? 0 : mark->second.last;
}

void JournalMarks::store(const std::string& journal, std::uint64_t last) {
  const auto mark = marks_.find(journal);
  if (mark == marks_.end()) {
    rows_->add_new();
    rows_->set_field(0, journal);
  } else {
    rows_->edit(mark->second.row);
  }
  rows_->set_field(1, std::to_string(last));
  const RowId row = rows_->update();
  marks_[journal] = {row, last};
}

void JournalMarks::forget(const std::string& journal) {
  const auto mark = marks_.find(journal);
  if (mark == marks_.end()) return;
  rows_->remove(mark->second.row);
  marks_.erase(mark);
}

}  // namespace lineweir::platform
