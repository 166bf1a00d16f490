#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date_time.h"
#include "platform/database.h"

namespace lineweir {

// The calls of a day, taken together.
struct LogDay {
  std::int64_t calls = 0;
  std::int64_t on_air = 0;
  // Seconds; nothing where no call was on hold.
  std::optional<int> longest_wait;
};

// What the days of a log come to. It reads the log once, in slices of a few milliseconds, and then
// only what has been logged since.
class LogDays {
 public:
  // Nothing is known yet. The rows must be those of a call log, and last as long as this is used.
  void begin(platform::Recordset& rows);

  // Reads a slice. True when there may be more.
  bool read_on();

  // The day of a date as the log has it; nothing before the log has been read once, for a day
  // without calls and for a text that is blank.
  std::optional<LogDay> day(std::string_view date_utf8) const;

 private:
  void add(std::string_view date, std::string_view wait, std::string_view placed_on_air);

  platform::Recordset* rows_ = nullptr;
  std::vector<int> columns_;
  std::optional<platform::RowId> newest_;
  bool read_once_ = false;
  // By the date's sort key, so that one day has one entry however its date is written.
  std::map<std::string, LogDay, std::less<>> days_;
};

// "Today: 34 calls, 12 on air, longest wait 00:14:10"; another day is named by its date.
std::string day_text(const LogDay& day, std::string_view date_utf8,
                     const platform::DateTime& today);

}  // namespace lineweir
