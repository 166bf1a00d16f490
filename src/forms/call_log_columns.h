#pragma once

#include <array>
#include <string_view>

namespace lineweir {

inline constexpr std::string_view call_log_table = "Caller Records";

struct CallLogColumn {
  // Empty for the column that the user names.
  std::string_view name;
  // In characters; a longer value is cut.
  std::size_t size;
};

// The table's columns in their order.
inline constexpr std::array call_log_columns = {
    CallLogColumn{"Caller Name", 30},  CallLogColumn{"Street Address", 40},
    CallLogColumn{"City", 25},         CallLogColumn{"State", 15},
    CallLogColumn{"ZipCode", 12},      CallLogColumn{"PhoneNumber", 15},
    CallLogColumn{"Comments", 100},    CallLogColumn{"Station", 10},
    CallLogColumn{"Gender", 6},        CallLogColumn{"Date", 10},
    CallLogColumn{"Time_On_Hold", 10}, CallLogColumn{"Time_Placed_On_Air", 12},
    CallLogColumn{"Time_On_Air", 10},  CallLogColumn{"", 100},
};

inline constexpr int phone_number_position = 5;
inline constexpr int date_position = 9;
inline constexpr int user_field_position = 13;

}  // namespace lineweir
