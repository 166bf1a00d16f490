#pragma once

namespace lineweir::platform {

// A moment of the local calendar. Months and days count from 1, hours run from 0 to 23.
struct DateTime {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;

  friend bool operator==(const DateTime&, const DateTime&) = default;
  friend auto operator<=>(const DateTime&, const DateTime&) = default;
};

}  // namespace lineweir::platform
