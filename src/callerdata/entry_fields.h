#pragma once

#include <array>
#include <string_view>

#include "core/caller_record.h"
#include "core/settings_record.h"

namespace lineweir {

// A field of a caller's details: where it is kept, and which column of the rows shows it.
struct EntryField {
  CallerField field;
  int column;
  // Whether the form shows what the row shows; otherwise what the record holds.
  bool from_row;
  // Its box on LogDataForm.
  std::string_view box;
};

// In their order on the form and on the wire. Form4 counts them from 1.
inline constexpr std::array<EntryField, log_field_count> entry_fields = {{
    {CallerField::CallerName, 3, true, "CallerNameCheck"},
    {CallerField::StreetAddress, 4, true, "StreetAddressCheck"},
    {CallerField::City, 5, true, "CityCheck"},
    {CallerField::State, 6, true, "StateCheck"},
    {CallerField::ZipCode, 7, true, "ZipCodeCheck"},
    {CallerField::PhoneNumber, 8, true, "PhoneNumberCheck"},
    {CallerField::Station, 9, false, "StationCheck"},
    {CallerField::Gender, 10, false, "BandCheck"},
    {CallerField::Comments, 11, false, "CommentsCheck"},
    {CallerField::UserField, 12, false, "UserCheck"},
}};

// Elements of Form4's arrays.
inline constexpr int name_entry = 1;
inline constexpr int city_entry = 3;
inline constexpr int phone_number_entry = 6;
inline constexpr int gender_entry = 8;
inline constexpr int user_entry = 10;

constexpr const EntryField& entry_field(int entry) {
  return entry_fields[static_cast<std::size_t>(entry - 1)];
}

// The texts of the ten fields.
using EntryTexts = std::array<std::string, log_field_count>;

}  // namespace lineweir
