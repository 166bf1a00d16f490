#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

// What an administrator's tool may ask of a server, as both have it. Over the socket each request
// is a line of JSON, an object, and each answer too:
//
//   {"command": "user lock", "name": "anna"}
//   {"ok": true}
//   {"ok": false, "error": "There is no user \"anna\"."}
//
// An answer that is a list has "rows", an array of objects, and "more", whether there are further
// ones: the command "more" on the same connection asks for these. Moments are milliseconds since
// the beginning of 1970, UTC; 0 for one that hasn't come.
namespace lineweir::admin {

// A request that is longer, or nested deeper, is refused.
inline constexpr std::size_t longest_request = 64 * 1024;
inline constexpr int deepest_request = 4;
// An answer is shorter, so that a connection takes it in one piece.
inline constexpr std::size_t longest_answer = 48 * 1024;

enum class Command {
  UserAdd,
  UserList,
  UserPassword,
  UserLock,
  UserUnlock,
  UserRemove,
  UserRight,
  ProfileShow,
  ProfileReset,
  Seats,
  Lines,
  Call,
  HangUp,
  Event,
  Calls,
  CallerList,
  CallerShow,
  CallerFlag,
  CallerClear,
  AuditList,
  AuditVerify,
  Message,
  Shutdown,
  Backup,
  Restore,
  More,
};

enum class Field {
  Name,
  Template,
  Password,
  Group,
  Groups,
  Changes,
  Line,
  Number,
  Last,
  Next,
  Text,
  Since,
  Seconds,
  File,
  Flag,
  Until,
};

// What a field holds; in the order of AdminValue's alternatives, see adminlink/admin_request.h.
enum class FieldKind { Text, Number, Texts, Numbers };

struct FieldRow {
  Field field;
  std::string_view key;
  FieldKind kind;
  // Of numbers.
  std::int64_t least = 0;
  std::int64_t most = 0;
};

inline constexpr std::int64_t last_moment = 253'402'300'799'999;

inline constexpr auto fields = std::to_array<FieldRow>({
    {Field::Name, "name", FieldKind::Text},
    {Field::Template, "template", FieldKind::Text},
    {Field::Password, "password", FieldKind::Text},
    {Field::Group, "group", FieldKind::Number, 1, 250},
    {Field::Groups, "groups", FieldKind::Numbers, 1, 250},
    // Names of rights, each behind a "+" or "-".
    {Field::Changes, "changes", FieldKind::Texts},
    // Counted from 1.
    {Field::Line, "line", FieldKind::Number, 1, 20},
    {Field::Number, "number", FieldKind::Text},
    {Field::Last, "last", FieldKind::Text},
    {Field::Next, "next", FieldKind::Text},
    {Field::Text, "text", FieldKind::Text},
    {Field::Since, "since", FieldKind::Number, 0, last_moment},
    {Field::Seconds, "seconds", FieldKind::Number, 0, 24 * 60 * 60},
    // Of the server's machine, from its root.
    {Field::File, "file", FieldKind::Text},
    {Field::Flag, "flag", FieldKind::Text},
    // A date, 2026-12-31.
    {Field::Until, "until", FieldKind::Text},
});

// The fields that a command has, the needed ones first.
struct CommandRow {
  Command command;
  // As it is typed, and in a request under the key "command".
  std::string_view name;
  std::size_t needed = 0;
  std::size_t count = 0;
  std::array<Field, 4> fields{};
  // It may take minutes.
  bool is_long = false;
};

inline constexpr auto commands = [] {
  using enum Command;
  using enum Field;
  return std::to_array<CommandRow>({
      {UserAdd, "user add", 3, 4, {Name, Template, Password, Groups}},
      {UserList, "user list"},
      {UserPassword, "user password", 2, 2, {Name, Password}},
      {UserLock, "user lock", 1, 1, {Name}},
      {UserUnlock, "user unlock", 1, 1, {Name}},
      {UserRemove, "user remove", 1, 1, {Name}},
      {UserRight, "user right", 2, 3, {Name, Group, Changes}},
      {ProfileShow, "profile show", 1, 1, {Name}},
      {ProfileReset, "profile reset", 1, 1, {Name}},
      {Seats, "seats"},
      {Lines, "lines", 1, 1, {Group}},
      {Call, "call", 2, 3, {Group, Line, Number}},
      {HangUp, "hangup", 2, 2, {Group, Line}},
      {Event, "event", 1, 4, {Group, Last, Next, Text}},
      {Calls, "calls", 0, 2, {Since, Group}},
      {CallerList, "caller list"},
      {CallerShow, "caller show", 1, 1, {Number}},
      {CallerFlag, "caller flag", 2, 4, {Number, Flag, Text, Until}},
      {CallerClear, "caller clear", 1, 1, {Number}},
      {AuditList, "audit list"},
      {AuditVerify, "audit verify", 0, 0, {}, true},
      {Message, "message", 1, 2, {Text, Group}},
      {Shutdown, "shutdown", 0, 2, {Seconds, Text}},
      {Backup, "backup", 1, 1, {File}, true},
      {Restore, "restore", 1, 1, {File}, true},
      {More, "more"},
  });
}();

constexpr const CommandRow& row_of(Command command) {
  return commands[static_cast<std::size_t>(command)];
}
constexpr const FieldRow& row_of(Field field) { return fields[static_cast<std::size_t>(field)]; }
constexpr std::span<const Field> fields_of(const CommandRow& row) {
  return std::span(row.fields).first(row.count);
}

}  // namespace lineweir::admin
