#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
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

// By what the values of a column of the log are put in order.
enum class SortKind { Text, Date, Time };

// What a field has in the rows of the main form.
struct CallerRowColumn {
  // The array of the rows' labels; empty for a field that the rows don't show.
  std::string_view element;
  // Twips.
  int width = 0;
  bool shown_at_first = false;
  // What a screen reader says of a label; %1 is the line's number.
  std::string_view spoken;
};

// Whether a call is logged with what the record holds or with what the row shows. What the row
// shows is also what goes when the line has no data any more.
enum class LoggedFrom { Record, Row };

// What a field has in the call log.
struct CallerLogColumn {
  // Counted from 0.
  std::size_t position = 0;
  // In characters; a longer value is cut.
  std::size_t size = 0;
  LoggedFrom from = LoggedFrom::Record;
  SortKind kind = SortKind::Text;
  // In the viewer's grid, in twips, and as a share of a printed page.
  int grid_width = 0;
  int page_share = 0;
};

struct CallerFieldRule {
  CallerField field;
  // In the record.
  std::string_view name;
  // Over the rows, on Form4 and in the log.
  std::string_view title;
  // Characters of a fixed text, which is cut and padded with blanks; 0 for one of any length.
  std::size_t width = 0;
  CallerRowColumn row = {};
  // The field's box on LogDataForm; empty for a field that nobody enters.
  std::string_view box = {};
  // What the button calls it that fills in what the log knows; empty for a field left alone.
  std::string_view filled_in_as = {};
  CallerLogColumn log = {};
};

// In the order in which a record holds them. First the fields that people enter, which stand in
// this order in the rows, on Form4 and on the wire too.
inline constexpr std::array caller_fields = {
    CallerFieldRule{.field = CallerField::CallerName,
                    .name = "CallerName",
                    .title = "Caller Name",
                    .row = {"LineName", 1700, true, "Line %1 caller name"},
                    .box = "CallerNameCheck",
                    .filled_in_as = "name",
                    .log = {0, 30, LoggedFrom::Row, SortKind::Text, 1800, 13}},
    CallerFieldRule{.field = CallerField::StreetAddress,
                    .name = "StreetAddress",
                    .title = "Street Address",
                    .row = {"LineStreetAdd", 1700, false, "Line %1 street address"},
                    .box = "StreetAddressCheck",
                    .log = {1, 40, LoggedFrom::Record, SortKind::Text, 1900, 14}},
    CallerFieldRule{.field = CallerField::City,
                    .name = "City",
                    .title = "City",
                    .row = {"LineCity", 1200, true, "Line %1 city"},
                    .box = "CityCheck",
                    .filled_in_as = "city",
                    .log = {2, 25, LoggedFrom::Row, SortKind::Text, 1300, 9}},
    CallerFieldRule{.field = CallerField::State,
                    .name = "State",
                    .title = "State",
                    .row = {"LineState", 600, false, "Line %1 home state"},
                    .box = "StateCheck",
                    .log = {3, 15, LoggedFrom::Record, SortKind::Text, 700, 5}},
    CallerFieldRule{.field = CallerField::ZipCode,
                    .name = "ZipCode",
                    .title = "ZipCode",
                    .row = {"LineZipCode", 800, false, "Line %1 zip code"},
                    .box = "ZipCodeCheck",
                    .log = {4, 12, LoggedFrom::Record, SortKind::Text, 900, 6}},
    CallerFieldRule{.field = CallerField::PhoneNumber,
                    .name = "PhoneNumber",
                    .title = "PhoneNumber",
                    .row = {"LinePhoneNumber", 1300, false, "Line %1 phone number"},
                    .box = "PhoneNumberCheck",
                    .log = {5, 15, LoggedFrom::Record, SortKind::Text, 1500, 10}},
    CallerFieldRule{.field = CallerField::Station,
                    .name = "Station",
                    .title = "Station",
                    .width = 10,
                    .row = {"LineStation", 900, false, "Line %1 station"},
                    .box = "StationCheck",
                    .log = {7, 10, LoggedFrom::Record, SortKind::Text, 900, 7}},
    CallerFieldRule{.field = CallerField::Gender,
                    .name = "Gender",
                    .title = "Gender",
                    .width = 6,
                    .row = {"LineBand", 700, false, "Line %1 gender"},
                    .box = "BandCheck",
                    .log = {8, 6, LoggedFrom::Record, SortKind::Text, 800, 6}},
    CallerFieldRule{.field = CallerField::Comments,
                    .name = "Comments",
                    .title = "Comments",
                    .row = {"LineComments", 2500, true, "Line %1 comments"},
                    .box = "CommentsCheck",
                    .log = {6, 100, LoggedFrom::Row, SortKind::Text, 3000, 20}},
    CallerFieldRule{.field = CallerField::UserField,
                    .name = "UserField",
                    .title = "User",
                    .width = 100,
                    .row = {"LineUser", 1200, false, "Line %1 user field"},
                    .box = "UserCheck",
                    .log = {13, 100, LoggedFrom::Record, SortKind::Text, 1500, 11}},
    CallerFieldRule{.field = CallerField::CallDate,
                    .name = "CallDate",
                    .title = "Date",
                    .log = {9, 10, LoggedFrom::Record, SortKind::Date, 1250, 8}},
    CallerFieldRule{.field = CallerField::TimeOnHold,
                    .name = "TimeOnHold",
                    .title = "Time_On_Hold",
                    .log = {10, 10, LoggedFrom::Record, SortKind::Time, 1300, 8}},
    CallerFieldRule{.field = CallerField::TimePlacedOnAir,
                    .name = "TimePlacedOnAir",
                    .title = "Time_Placed_On_Air",
                    .log = {11, 12, LoggedFrom::Record, SortKind::Time, 1700, 9}},
    CallerFieldRule{.field = CallerField::TimeOnAir,
                    .name = "TimeOnAir",
                    .title = "Time_On_Air",
                    .log = {12, 10, LoggedFrom::Record, SortKind::Time, 1100, 8}},
};

constexpr const CallerFieldRule& rule_of(CallerField field) {
  return caller_fields[static_cast<std::size_t>(field)];
}

constexpr bool is_entered(const CallerFieldRule& rule) { return !rule.row.element.empty(); }

// How many fields people enter: those of the form, of the wire and of the rows.
inline constexpr int entry_field_count =
    static_cast<int>(std::ranges::count_if(caller_fields, is_entered));

inline constexpr std::span entry_fields = std::span(caller_fields).first<entry_field_count>();

// The data of a caller are what people enter and the date of the call; behind them stand its times.
inline constexpr std::size_t data_field_count = entry_field_count + 1;

// The field of which the user says what it is called. Its title is that of a first start.
inline constexpr CallerField user_named_field = CallerField::UserField;

constexpr bool caller_fields_are_sound() {
  for (std::size_t i = 0; i < caller_fields.size(); ++i) {
    const CallerFieldRule& rule = caller_fields[i];
    const bool entered = i < entry_fields.size();
    const auto stands_there = [i](const auto& other) { return other.log.position == i; };
    if (static_cast<std::size_t>(rule.field) != i) return false;
    if (is_entered(rule) != entered || rule.box.empty() == entered) return false;
    if (std::ranges::count_if(caller_fields, stands_there) != 1) return false;
  }
  return true;
}
static_assert(caller_fields_are_sound());

}  // namespace lineweir
