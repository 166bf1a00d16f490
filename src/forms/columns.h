#pragma once

#include <array>
#include <string_view>

namespace lineweir {

inline constexpr int column_count = 13;

// The line's number and its status are always shown, the others as the user chooses.
inline constexpr int first_optional_column = 2;

// Columns by their fixed number.
enum Column {
  number_column = 0,
  status_column = 1,
  time_column = 2,
  name_column = 3,
  city_column = 5,
  comments_column = 11,
  user_column = 12,
};

struct ColumnRule {
  // The array of the rows' labels.
  std::string_view element;
  std::string_view heading;
  // Twips.
  int width;
  bool shown_at_first;
};

inline constexpr std::array<ColumnRule, column_count> column_rules = {{
    {"LineNumb", "#", 350, true},
    {"LineStatus", "Status", 800, true},
    {"LineTime", "Time", 835, true},
    {"LineName", "Caller Name", 1700, true},
    {"LineStreetAdd", "Street Address", 1700, false},
    {"LineCity", "City", 1200, true},
    {"LineState", "State", 600, false},
    {"LineZipCode", "ZipCode", 800, false},
    {"LinePhoneNumber", "PhoneNumber", 1300, false},
    {"LineStation", "Station", 900, false},
    {"LineBand", "Gender", 700, false},
    {"LineComments", "Comments", 2500, true},
    {"LineUser", "User", 1200, false},
}};

}  // namespace lineweir
