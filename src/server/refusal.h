#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace lineweir::server {

// Why something that came from a seat was not done.
enum class Refusal {
  NoFrame,
  UnknownCode,
  NotLetIn,
  NotRegistered,
  WrongPassword,
  UserLocked,
  AddressLocked,
  NoRightsInGroup,
  OtherGroup,
  OtherLine,
  OtherConsole,
  OtherUser,
  MissingRight,
  Passive,
  Malformed,
  LineTaken,
  LateChoice,
  ServerDecides,
  TooManySeats,
  TooMany,
};

struct RefusalName {
  Refusal refusal;
  std::string_view name;
};

// As the figures name them.
inline constexpr auto refusal_names = [] {
  using enum Refusal;
  return std::to_array<RefusalName>({
      {NoFrame, "no_frame"},
      {UnknownCode, "unknown_code"},
      {NotLetIn, "not_let_in"},
      {NotRegistered, "not_registered"},
      {WrongPassword, "wrong_password"},
      {UserLocked, "user_locked"},
      {AddressLocked, "address_locked"},
      {NoRightsInGroup, "no_rights_in_group"},
      {OtherGroup, "other_group"},
      {OtherLine, "other_line"},
      {OtherConsole, "other_console"},
      {OtherUser, "other_user"},
      {MissingRight, "missing_right"},
      {Passive, "passive"},
      {Malformed, "malformed"},
      {LineTaken, "line_taken"},
      {LateChoice, "late_choice"},
      {ServerDecides, "server_decides"},
      {TooManySeats, "too_many_seats"},
      {TooMany, "too_many"},
  });
}();

constexpr std::string_view name_of(Refusal refusal) {
  return refusal_names[static_cast<std::size_t>(refusal)].name;
}

}  // namespace lineweir::server
