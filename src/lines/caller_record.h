#pragma once

#include <array>
#include <string>
#include <string_view>

#include "lines/caller_fields.h"

namespace lineweir {

// Everything known of one caller. A cleared fixed field holds blanks.
class CallerRecord {
 public:
  CallerRecord() { clear(); }

  const std::string& operator[](CallerField field) const {
    return texts_[static_cast<std::size_t>(field)];
  }
  void set(CallerField field, std::string_view text);

  // All fourteen fields, the eleven data fields, the three times.
  void clear();
  void clear_data_fields();
  void clear_times();

  // Whether any data field, trimmed, begins with a character of a code above 31. The times alone
  // don't count.
  bool holds_data() const;

  friend bool operator==(const CallerRecord&, const CallerRecord&) = default;

 private:
  void clear_fields(std::size_t first, std::size_t end);

  std::array<std::string, caller_fields.size()> texts_;
};

}  // namespace lineweir
