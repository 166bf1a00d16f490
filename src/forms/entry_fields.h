#pragma once

#include <array>
#include <string>
#include <string_view>

#include "forms/call_log_columns.h"
#include "lines/caller_record.h"

namespace lineweir {

using LogFieldFlags = std::array<bool, log_field_count>;

// A field of a caller's details: where it is kept, and which column of the rows shows it.
struct EntryField {
  CallerField field;
  int column;
  // Its column of the call log.
  int log_position;
  // Its box on LogDataForm.
  std::string_view box;
};

// In their order on the form and on the wire. Form4 counts them from 1.
inline constexpr std::array<EntryField, log_field_count> entry_fields = {{
    {CallerField::CallerName, 3, 0, "CallerNameCheck"},
    {CallerField::StreetAddress, 4, 1, "StreetAddressCheck"},
    {CallerField::City, 5, 2, "CityCheck"},
    {CallerField::State, 6, 3, "StateCheck"},
    {CallerField::ZipCode, 7, 4, "ZipCodeCheck"},
    {CallerField::PhoneNumber, 8, phone_number_position, "PhoneNumberCheck"},
    {CallerField::Station, 9, 7, "StationCheck"},
    {CallerField::Gender, 10, 8, "BandCheck"},
    {CallerField::Comments, 11, 6, "CommentsCheck"},
    {CallerField::UserField, 12, user_field_position, "UserCheck"},
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

// The most characters that a field takes: as many as its column of the log holds.
constexpr std::size_t entry_room(int entry) {
  return call_log_columns[static_cast<std::size_t>(entry_field(entry).log_position)].size;
}

// The texts of the ten fields.
using EntryTexts = std::array<std::string, log_field_count>;

}  // namespace lineweir
