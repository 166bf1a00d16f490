#pragma once

#include <array>
#include <span>
#include <string_view>

#include "adminlink/admin_commands.h"

// What the objects of an answer hold.
namespace lineweir::admin {

// Keys of an answer itself.
namespace key {
inline constexpr std::string_view command = "command";
inline constexpr std::string_view ok = "ok";
inline constexpr std::string_view error = "error";
inline constexpr std::string_view rows = "rows";
inline constexpr std::string_view more = "more";
// Of an audit that was verified.
inline constexpr std::string_view entries = "entries";
inline constexpr std::string_view first_wrong = "first_wrong";
inline constexpr std::string_view last_hash = "last_hash";
// Of a user's rights: an object of each right's name and whether the user has it.
inline constexpr std::string_view rights = "rights";
inline constexpr std::string_view profile = "profile";
// Further keys of a call: its steps, objects with a moment "at", a "user" and an "action".
inline constexpr std::string_view steps = "steps";
inline constexpr std::string_view at = "at";
inline constexpr std::string_view user = "user";
inline constexpr std::string_view action = "action";
}  // namespace key

// Number, text, yes or no; a moment; the numbers of groups, of which 0 is every one that isn't
// named.
enum class ColumnKind { Plain, Time, Groups };

struct Column {
  std::string_view key;
  std::string_view heading;
  ColumnKind kind = ColumnKind::Plain;
  // In a table for people, which has less room than a file.
  bool in_table = true;
};

inline constexpr auto user_columns = std::to_array<Column>({
    {"name", "User"},
    {"groups", "Groups", ColumnKind::Groups},
    {"locked", "Locked"},
    // By wrong passwords.
    {"locked_until", "Locked until", ColumnKind::Time},
    {"last_seen", "Last seen", ColumnKind::Time},
    {"seats", "Seats"},
});

inline constexpr auto seat_columns = std::to_array<Column>({
    {"user", "User"},
    {"group", "Group"},
    {"console", "Console"},
    {"mode", "Mode"},
    {"address", "Address"},
    {"since", "Since", ColumnKind::Time},
});

inline constexpr auto line_columns = std::to_array<Column>({
    {"number", "Line"},
    {"name", "Name"},
    {"letter", "Letter"},
    {"since", "Since", ColumnKind::Time},
    // Who works it.
    {"user", "User"},
    // The caller's name.
    {"caller", "Caller"},
    {"caller_number", "Number"},
});

inline constexpr auto caller_columns = std::to_array<Column>({
    {"number", "Number"},
    {"flag", "Flag"},
    {"reason", "Reason"},
    // The last day on which it holds.
    {"until", "Until"},
    {"by", "By"},
    {"at", "Since", ColumnKind::Time},
});

inline constexpr auto known_caller_columns = std::to_array<Column>({
    {"number", "Number"},
    {"calls", "Calls"},
    {"on_air", "On air"},
    {"last_on_air", "Last on air", ColumnKind::Time},
    {"name", "Name"},
    {"city", "City"},
    {"flag", "Flag"},
    {"reason", "Reason"},
    {"until", "Until"},
    {"by", "By"},
    {"at", "Since", ColumnKind::Time, false},
});

inline constexpr auto call_columns = std::to_array<Column>({
    {"id", "Id", ColumnKind::Plain, false},
    {"group", "Group"},
    {"line", "Line"},
    {"number", "Number"},
    {"began", "Began", ColumnKind::Time},
    {"answered", "Answered", ColumnKind::Time, false},
    {"aired", "On air", ColumnKind::Time},
    {"ended", "Ended", ColumnKind::Time},
    {"told_by", "Told by"},
    {"name", "Name"},
    {"address", "Address", ColumnKind::Plain, false},
    {"city", "City"},
    {"state", "State", ColumnKind::Plain, false},
    {"zip", "Zip", ColumnKind::Plain, false},
    {"phone", "Phone", ColumnKind::Plain, false},
    {"station", "Station", ColumnKind::Plain, false},
    {"gender", "Gender", ColumnKind::Plain, false},
    {"comments", "Comments"},
    {"user_field", "User field", ColumnKind::Plain, false},
});
// The fields of the caller's data, in the order that they have on the wire.
inline constexpr std::size_t first_told_column = 9;

inline constexpr auto audit_columns = std::to_array<Column>({
    {"number", "Number"},
    {"at", "At", ColumnKind::Time},
    {"user", "User"},
    {"action", "Action"},
    {"detail", "Detail"},
    {"hash", "Hash", ColumnKind::Plain, false},
});

// Of a list; none for every other command.
constexpr std::span<const Column> columns_of(Command command) {
  switch (command) {
    case Command::UserList:
      return user_columns;
    case Command::Seats:
      return seat_columns;
    case Command::Lines:
      return line_columns;
    case Command::CallerList:
      return caller_columns;
    case Command::CallerShow:
      return known_caller_columns;
    case Command::Calls:
      return call_columns;
    case Command::AuditList:
      return audit_columns;
    default:
      return {};
  }
}

}  // namespace lineweir::admin
