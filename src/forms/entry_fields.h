#pragma once

#include <array>
#include <string>

#include "lines/caller_fields.h"

namespace lineweir {

// Of each field that people enter whether it is in use, and its text.
using LogFieldFlags = std::array<bool, entry_field_count>;
using EntryTexts = std::array<std::string, entry_field_count>;

// The elements of Form4's arrays count from 1.
constexpr int entry_of(CallerField field) { return static_cast<int>(field) + 1; }

inline constexpr int name_entry = entry_of(CallerField::CallerName);
inline constexpr int phone_number_entry = entry_of(CallerField::PhoneNumber);
inline constexpr int gender_entry = entry_of(CallerField::Gender);
inline constexpr int user_entry = entry_of(user_named_field);

constexpr const CallerFieldRule& entry_field(int entry) {
  return entry_fields[static_cast<std::size_t>(entry - 1)];
}

// The most characters that a field takes: as many as its column of the log holds.
constexpr std::size_t entry_room(int entry) { return entry_field(entry).log.size; }

}  // namespace lineweir
