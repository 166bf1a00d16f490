#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "callerdata/sliced_sort.h"
#include "platform/database.h"

namespace lineweir {

// Which calls a log holds, known by all of their texts. A log of any length is looked at in slices
// of a few milliseconds.
class HeldCalls {
 public:
  // The rows must last as long as this is used.
  void begin(platform::Recordset& log);

  bool working() const { return stage_ != Stage::Done; }
  // How much of the log has been looked at.
  int percent() const;
  void work();

  // Whether the log holds a call of these texts, one a column. Each row of the log stands for one
  // call only: two calls that are alike are held by two rows.
  bool take(const std::vector<std::string>& texts);
  // No row has been taken yet.
  void put_back();

  // The rows aren't used any more.
  void forget();

 private:
  enum class Stage { Looking, Sorting, Done };

  struct Call {
    std::size_t hash = 0;
    platform::RowId row = 0;
  };

  bool same(platform::RowId row, const std::vector<std::string>& texts);

  platform::Recordset* log_ = nullptr;
  Stage stage_ = Stage::Done;
  std::int64_t rows_ = 0;
  std::optional<platform::RowId> behind_;
  std::vector<Call> calls_;
  // At the first of calls that are alike: how many of them have been taken, which stand in front.
  std::vector<std::uint32_t> taken_;
  SlicedSort<Call> sort_;
};

}  // namespace lineweir
