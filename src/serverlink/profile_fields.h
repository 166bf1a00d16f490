#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "serverlink/profile_flag_table.h"

namespace lineweir {

inline constexpr int no_group = -1;

// TextWrit_ExtractMessageGroup: the group in a received block, no_group where it isn't there.
int group_of_profile(std::string_view block);

// A profile has room for the columns 2 to 12.
inline constexpr std::size_t profile_column_count = 11;

struct ProfileColumn {
  // Its entry of List1, from 0, or column_not_listed.
  std::optional<int> place;
  std::optional<bool> shown;
  // Twips at design size.
  std::optional<int> width;

  friend bool operator==(const ProfileColumn&, const ProfileColumn&) = default;
};

// What the fields of a profile say. A field that is empty, or holds nothing of its kind, says
// nothing: the console's own value stands.
struct ProfileValues {
  // Twips; the height is that without the menu bar.
  std::optional<int> height;
  std::optional<int> width;
  std::optional<int> group;
  std::optional<int> window_state;
  std::optional<std::string> show_data_file;
  std::optional<std::string> database;
  std::optional<std::string> operator_name;
  // Seconds.
  std::optional<int> warning1;
  std::optional<int> warning2;
  std::optional<std::string> hot_list;
  // By column less 2.
  std::array<ProfileColumn, profile_column_count> columns;
  std::optional<std::string> font_name;
  // Points.
  std::optional<int> font_size;
  // Seconds.
  std::optional<int> time_offset;

  friend bool operator==(const ProfileValues&, const ProfileValues&) = default;
};

// What is done with fields once the last one of the step was read.
enum class ProfileStep { Window, ShowPlan, Log, Operator, ClocksAndColumns, FontAndOffset };

struct ProfileField {
  using Number = std::optional<int> ProfileValues::*;
  using Text = std::optional<std::string> ProfileValues::*;
  struct ColumnNumber {
    std::size_t column;
    std::optional<int> ProfileColumn::*part;
  };
  struct ColumnMark {
    std::size_t column;
  };

  ProfileStep step;
  std::variant<Number, Text, ColumnNumber, ColumnMark> value;
  // A field that isn't read repeats another.
  bool read = true;
};

inline constexpr std::size_t profile_field_count = 47;

// The fields in their order. Writing and reading both walk it.
inline constexpr auto profile_fields = [] {
  using V = ProfileValues;
  using enum ProfileStep;
  std::array<ProfileField, profile_field_count> fields = {{
      {Window, &V::height},
      {Window, &V::width},
      {Window, &V::group},
      {Window, &V::window_state},
      {ShowPlan, &V::show_data_file},
      {Log, &V::database},
      {Operator, &V::operator_name},
      {ClocksAndColumns, &V::group, false},
      {ClocksAndColumns, &V::warning1},
      {ClocksAndColumns, &V::warning2},
      {ClocksAndColumns, &V::hot_list},
  }};
  std::size_t next = 11;
  for (std::size_t column = 0; column < profile_column_count; ++column) {
    using Number = ProfileField::ColumnNumber;
    fields[next++] = {ClocksAndColumns, Number{column, &ProfileColumn::place}};
    fields[next++] = {ClocksAndColumns, ProfileField::ColumnMark{column}};
    fields[next++] = {ClocksAndColumns, Number{column, &ProfileColumn::width}};
  }
  fields[next++] = {FontAndOffset, &V::font_name};
  fields[next++] = {FontAndOffset, &V::font_size};
  fields[next++] = {FontAndOffset, &V::time_offset};
  return fields;
}();

// One text of a block as it is written: trimmed, without control characters, which would end it
// early, and ended.
std::string profile_field(std::string_view text);

// The text of all fields.
std::string write_profile_fields(const ProfileValues& values);

// Reads the fields one by one, and has each step done as soon as its last field was read. The
// reading ends at the first field that isn't ended.
void read_profile_fields(std::string_view fields,
                         const std::function<void(ProfileStep, const ProfileValues&)>& carry_out);

}  // namespace lineweir
