#include "callerdata/log_reading.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "callerdata/log_places.h"

namespace lineweir {
namespace {

struct ReadField {
  CallerField field;
  // Empty for the field that the user names.
  std::string_view heading;
};

constexpr std::array read_fields = {
    ReadField{CallerField::CallDate, "Date"},
    ReadField{CallerField::TimePlacedOnAir, "Placed on air"},
    ReadField{CallerField::CallerName, "Caller name"},
    ReadField{CallerField::Comments, "Comments"},
    ReadField{CallerField::City, "City"},
    ReadField{CallerField::PhoneNumber, "Phone number"},
    ReadField{CallerField::TimeOnHold, "Time on hold"},
    ReadField{CallerField::TimeOnAir, "Time on air"},
    ReadField{CallerField::UserField, ""},
    ReadField{CallerField::Station, "Station"},
    ReadField{CallerField::Gender, "Gender"},
    ReadField{CallerField::ZipCode, "Zip code"},
    ReadField{CallerField::StreetAddress, "Street address"},
    ReadField{CallerField::State, "State"},
};

constexpr bool every_field_is_read() {
  return std::ranges::all_of(caller_fields, [](const CallerFieldRule& rule) {
    return std::ranges::count(read_fields, rule.field, &ReadField::field) == 1;
  });
}
static_assert(every_field_is_read());

}  // namespace

std::vector<DataGridColumn> columns_as_read(const std::vector<platform::DatabaseColumn>& columns) {
  std::vector<DataGridColumn> read;
  std::vector<bool> known(columns.size());
  if (const auto places = LogPlaces::in(columns)) {
    for (const ReadField& field : read_fields) {
      const int place = places->of(field.field);
      const auto at = static_cast<std::size_t>(place);
      known[at] = true;
      read.push_back(
          {place, field.heading.empty() ? columns[at].name : std::string(field.heading)});
    }
  }
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!known[i]) read.push_back({static_cast<int>(i), columns[i].name});
  }
  return read;
}

}  // namespace lineweir
