#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "callerdata/log_text.h"
#include "callerdata/sliced_sort.h"
#include "platform/database.h"

namespace lineweir {

// In which order the calls of a log are shown.
struct LogOrder {
  static constexpr int as_logged = -1;

  // A column of the table, or the order in which the calls were logged.
  int column = as_logged;
  bool down = true;

  friend bool operator==(const LogOrder&, const LogOrder&) = default;
};

// Which calls of a log are shown, and in which order. It holds the numbers of their rows and no
// texts, and finds them in slices, each of a few milliseconds in a log of any length. Places count
// from 0.
class LogView {
 public:
  // What has happened to the calls that are shown.
  struct Change {
    // All others than before, or in another order; otherwise so many were put in at a place.
    bool all = false;
    int at = 0;
    int count = 0;
  };
  using Told = std::function<void(const Change&)>;

  // Begins to look for calls; none is shown yet. The rows must last as long as the view is used.
  void begin(platform::Recordset& rows, std::string_view search_utf8, LogOrder order);

  bool working() const { return stage_ != Stage::Done; }
  // The calls are known and are being put in order.
  bool sorting() const { return stage_ == Stage::Sorting; }
  // How much of the log has been looked at.
  int percent() const;

  // Does a slice of the work.
  void work(const Told& told);

  // Takes in what has been logged since; to be called while no work is left. True when there may
  // be more.
  bool follow(const Told& told);

  int size() const { return static_cast<int>(found_.size()); }
  // The calls of the log, whether they are shown or not, as far as they were looked at.
  std::int64_t calls() const { return looked_at_; }
  platform::RowId row(int place) const;
  const LogSearch& search() const { return search_; }
  // The last one that was looked at.
  std::optional<platform::RowId> newest() const { return newest_; }

 private:
  enum class Stage { Looking, Sorting, Done };

  // The row's key is a piece of keys_; its first eight bytes are here again, since they mostly
  // decide.
  struct Key {
    std::uint64_t head = 0;
    std::size_t offset = 0;
    std::size_t size = 0;
    platform::RowId row = 0;
  };

  bool sorted_by_column() const { return order_.column != LogOrder::as_logged; }
  bool from_newest() const { return order_.down || sorted_by_column(); }
  // Calls that are still to be put in order are shown as they are found, the newest first.
  bool shown_from_behind() const { return working() ? from_newest() : order_.down; }
  bool matches(std::span<const std::string_view> values);
  void look(const Told& told);
  void sort(const Told& told);
  bool less(const Key& a, const Key& b) const;
  void add_key(platform::RowId row, std::string_view value);
  void put_in_order(platform::RowId row, std::string_view value, const Told& told);
  std::string key_of(platform::RowId row) const;

  platform::Recordset* rows_ = nullptr;
  LogSearch search_;
  LogOrder order_;
  SortKind kind_ = SortKind::Text;
  Stage stage_ = Stage::Done;
  // The columns that are looked at; the one that is sorted by is the last.
  std::vector<int> columns_;
  // From the first to the last of the order.
  std::deque<platform::RowId> found_;
  std::optional<platform::RowId> newest_;
  std::optional<platform::RowId> behind_;
  std::int64_t looked_at_ = 0;
  std::string texts_;
  std::string keys_;
  std::vector<Key> to_sort_;
  SlicedSort<Key> sort_;
};

}  // namespace lineweir
