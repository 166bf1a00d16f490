#pragma once

#include <array>
#include <string>
#include <string_view>

namespace lineweir {

enum class CallerField {
  CallerName,
  StreetAddress,
  City,
  State,
  ZipCode,
  PhoneNumber,
  Station,
  Gender,
  Comments,
  UserField,
  CallDate,
  TimeOnHold,
  TimePlacedOnAir,
  TimeOnAir,
};

struct CallerFieldRule {
  CallerField field;
  std::string_view name;
  // Characters of a fixed text, which is cut and padded with blanks; 0 for one of any length.
  std::size_t width;
};

// In the order in which a record holds them.
inline constexpr std::array caller_fields = {
    CallerFieldRule{CallerField::CallerName, "CallerName", 0},
    CallerFieldRule{CallerField::StreetAddress, "StreetAddress", 0},
    CallerFieldRule{CallerField::City, "City", 0},
    CallerFieldRule{CallerField::State, "State", 0},
    CallerFieldRule{CallerField::ZipCode, "ZipCode", 0},
    CallerFieldRule{CallerField::PhoneNumber, "PhoneNumber", 0},
    CallerFieldRule{CallerField::Station, "Station", 10},
    CallerFieldRule{CallerField::Gender, "Gender", 6},
    CallerFieldRule{CallerField::Comments, "Comments", 0},
    CallerFieldRule{CallerField::UserField, "UserField", 100},
    CallerFieldRule{CallerField::CallDate, "CallDate", 0},
    CallerFieldRule{CallerField::TimeOnHold, "TimeOnHold", 0},
    CallerFieldRule{CallerField::TimePlacedOnAir, "TimePlacedOnAir", 0},
    CallerFieldRule{CallerField::TimeOnAir, "TimeOnAir", 0},
};

// The first ten fields are those that people enter.
inline constexpr int log_field_count = 10;

// The first eleven fields are data, the last three the times of the call.
inline constexpr std::size_t data_field_count = 11;

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
