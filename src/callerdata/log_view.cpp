#include "callerdata/log_view.h"

#include <algorithm>

#include "callerdata/log_places.h"
#include "callerdata/log_slices.h"
#include "letters/folding.h"

namespace lineweir {
namespace {

// What fits into a slice of a few milliseconds.
constexpr int row_numbers_a_slice = 20000;
constexpr int followed_a_slice = 200;

std::uint64_t head_of(std::string_view key) {
  std::uint64_t head = 0;
  for (std::size_t i = 0; i < sizeof head; ++i) {
    head = head << 8 | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
  }
  return head;
}

}  // namespace

void LogView::begin(platform::Recordset& rows, std::string_view search_utf8, LogOrder order) {
  rows_ = &rows;
  search_ = LogSearch(search_utf8);
  order_ = order;
  stage_ = Stage::Looking;
  columns_.clear();
  if (!search_.empty()) {
    for (int i = 0; i < static_cast<int>(rows.fields().size()); ++i) columns_.push_back(i);
  }
  if (sorted_by_column()) columns_.push_back(order.column);
  const auto places = LogPlaces::in(rows.fields());
  kind_ = places ? places->column_at(order.column).kind : SortKind::Text;
  found_.clear();
  newest_.reset();
  behind_.reset();
  looked_at_ = 0;
  keys_.clear();
  to_sort_.clear();
}

int LogView::percent() const {
  if (stage_ != Stage::Looking || !newest_ || !behind_ || *newest_ <= 0) return 0;
  const platform::RowId passed = from_newest() ? *newest_ - *behind_ : *behind_;
  return static_cast<int>(std::clamp<platform::RowId>(passed * 100 / *newest_, 0, 100));
}

platform::RowId LogView::row(int place) const {
  const auto at = static_cast<std::size_t>(place);
  return found_.at(shown_from_behind() ? found_.size() - 1 - at : at);
}

void LogView::work(const Told& told) {
  if (stage_ == Stage::Looking) {
    look(told);
  } else if (stage_ == Stage::Sorting) {
    sort(told);
  }
}

bool LogView::matches(std::span<const std::string_view> values) {
  if (search_.empty()) return true;
  texts_.clear();
  for (const auto value : values) {
    append_folded(texts_, value);
    texts_ += '\n';
  }
  return search_.finds(texts_);
}

void LogView::look(const Told& told) {
  const bool newest_first = from_newest();
  const int limit = columns_.empty() ? row_numbers_a_slice : log_rows_a_slice;
  const std::size_t before = found_.size();
  const int visited =
      rows_->scan({newest_first, behind_, limit, columns_}, [&](platform::RowId row, auto values) {
        newest_ = std::max(newest_.value_or(row), row);
        behind_ = row;
        if (!matches(values)) return;
        if (newest_first) {
          found_.push_front(row);
        } else {
          found_.push_back(row);
        }
        if (sorted_by_column()) add_key(row, values.back());
      });
  looked_at_ += visited;
  const int added = static_cast<int>(found_.size() - before);
  if (added > 0) told({false, static_cast<int>(before), added});
  if (visited == limit) return;
  if (!sorted_by_column()) {
    stage_ = Stage::Done;
  } else {
    stage_ = Stage::Sorting;
    sort_.start(std::move(to_sort_));
  }
}

void LogView::add_key(platform::RowId row, std::string_view value) {
  const std::size_t offset = keys_.size();
  append_sort_key(keys_, kind_, value);
  const std::string_view key = std::string_view(keys_).substr(offset);
  to_sort_.push_back({head_of(key), offset, key.size(), row});
}

bool LogView::less(const Key& a, const Key& b) const {
  if (a.head != b.head) return a.head < b.head;
  const std::string_view keys = keys_;
  const int compared = keys.substr(a.offset, a.size).compare(keys.substr(b.offset, b.size));
  return compared != 0 ? compared < 0 : a.row < b.row;
}

void LogView::sort(const Told& told) {
  if (!sort_.work(log_rows_sorted_a_slice,
                  [this](const Key& a, const Key& b) { return less(a, b); })) {
    return;
  }
  found_.clear();
  for (const Key& key : sort_.items()) found_.push_back(key.row);
  sort_.start({});
  keys_.clear();
  keys_.shrink_to_fit();
  stage_ = Stage::Done;
  told({.all = true, .count = size()});
}

bool LogView::follow(const Told& told) {
  struct NewCall {
    platform::RowId row;
    std::string value;
  };
  std::vector<NewCall> new_calls;
  const int visited = rows_->scan(
      {false, newest_, followed_a_slice, columns_}, [&](platform::RowId row, auto values) {
        newest_ = row;
        if (!matches(values)) return;
        new_calls.push_back({row, std::string(sorted_by_column() ? values.back() : "")});
      });
  looked_at_ += visited;
  if (sorted_by_column()) {
    for (const NewCall& call : new_calls) put_in_order(call.row, call.value, told);
  } else if (!new_calls.empty()) {
    const int before = size();
    for (const NewCall& call : new_calls) found_.push_back(call.row);
    told({false, order_.down ? 0 : before, size() - before});
  }
  return visited == followed_a_slice;
}

std::string LogView::key_of(platform::RowId row) const {
  std::string key;
  if (const auto values = rows_->row(row)) {
    append_sort_key(key, kind_, values->at(static_cast<std::size_t>(order_.column)));
  }
  return key;
}

void LogView::put_in_order(platform::RowId row, std::string_view value, const Told& told) {
  std::string key;
  append_sort_key(key, kind_, value);
  // The keys of the others aren't kept; the few that are needed are read again.
  const auto place =
      std::upper_bound(found_.begin(), found_.end(), row,
                       [&](platform::RowId, platform::RowId other) { return key < key_of(other); });
  const auto at = static_cast<int>(place - found_.begin());
  found_.insert(place, row);
  told({false, order_.down ? size() - 1 - at : at, 1});
}

}  // namespace lineweir
