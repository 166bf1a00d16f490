#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace lineweir {

// The command codes of the socket's frames, in both directions.

enum class ClientCommand : std::uint8_t {
  CmdPasswordLogin = 1,
  CmdConnectConsole = 2,
  CmdLeaveGroup = 3,
  CmdLineCommand = 4,
  CmdRequestStatus = 5,
  CmdCallerData = 6,
  CmdFlashMessage = 7,
  CmdSetNextCall = 8,
  CmdRequestGroupNames = 9,
  CmdRequestStudioStatus = 11,
  CmdRequestTimes = 12,
  CmdRequestLineNumbers = 13,
  CmdDialDigit = 14,
  CmdNextAction = 15,
  CmdDialSeize = 16,
  CmdRequestPhones = 17,
  CmdSetMode = 18,
  CmdSelectPhone = 20,
  CmdLoginCheck = 21,
  CmdTimeRequest = 22,
  CmdUserProfile = 23,
  CmdRequestAccessRights = 24,
  CmdRequestFirstUnblocked = 25,
  // Of a server with a caller memory alone.
  CmdAskCaller = 26,
  CmdFlagCaller = 27,
};

// What a field of a client's frame holds.
enum class FieldRule {
  // 255: the field carries nothing.
  None,
  GroupNumber,
  ConsoleNumber,
  // Its sender fills it in; until then it is byte 0.
  Sender,
};

struct ClientCommandRow {
  ClientCommand command;
  std::string_view name;
  FieldRule LineNo;
  FieldRule GroupNo;
  FieldRule AltInfo;
  FieldRule Console;
  FieldRule Bank;
};

// In the order of the codes; 10 and 19 aren't sent.
inline constexpr auto client_commands = [] {
  using enum ClientCommand;
  using enum FieldRule;
  return std::to_array<ClientCommandRow>({
      {CmdPasswordLogin, "CmdPasswordLogin", None, GroupNumber, None, ConsoleNumber, None},
      {CmdConnectConsole, "CmdConnectConsole", None, GroupNumber, ConsoleNumber, ConsoleNumber,
       None},
      {CmdLeaveGroup, "CmdLeaveGroup", None, GroupNumber, None, ConsoleNumber, None},
      {CmdLineCommand, "CmdLineCommand", Sender, GroupNumber, Sender, ConsoleNumber, Sender},
      {CmdRequestStatus, "CmdRequestStatus", None, GroupNumber, ConsoleNumber, ConsoleNumber, None},
      {CmdCallerData, "CmdCallerData", Sender, GroupNumber, None, ConsoleNumber, None},
      {CmdFlashMessage, "CmdFlashMessage", None, GroupNumber, None, ConsoleNumber, None},
      {CmdSetNextCall, "CmdSetNextCall", Sender, GroupNumber, ConsoleNumber, ConsoleNumber, None},
      {CmdRequestGroupNames, "CmdRequestGroupNames", None, None, ConsoleNumber, ConsoleNumber,
       None},
      {CmdRequestStudioStatus, "CmdRequestStudioStatus", None, GroupNumber, ConsoleNumber,
       ConsoleNumber, None},
      {CmdRequestTimes, "CmdRequestTimes", None, GroupNumber, ConsoleNumber, ConsoleNumber, None},
      // AltInfo is 255 when the user asks anew for the line names.
      {CmdRequestLineNumbers, "CmdRequestLineNumbers", None, GroupNumber, ConsoleNumber,
       ConsoleNumber, None},
      {CmdDialDigit, "CmdDialDigit", Sender, GroupNumber, ConsoleNumber, ConsoleNumber, Sender},
      {CmdNextAction, "CmdNextAction", None, GroupNumber, Sender, ConsoleNumber, Sender},
      {CmdDialSeize, "CmdDialSeize", Sender, GroupNumber, ConsoleNumber, ConsoleNumber, Sender},
      {CmdRequestPhones, "CmdRequestPhones", None, GroupNumber, None, ConsoleNumber, None},
      {CmdSetMode, "CmdSetMode", None, GroupNumber, Sender, ConsoleNumber, None},
      {CmdSelectPhone, "CmdSelectPhone", None, GroupNumber, Sender, ConsoleNumber, None},
      {CmdLoginCheck, "CmdLoginCheck", None, GroupNumber, None, ConsoleNumber, None},
      {CmdTimeRequest, "CmdTimeRequest", None, GroupNumber, None, ConsoleNumber, None},
      {CmdUserProfile, "CmdUserProfile", None, GroupNumber, None, ConsoleNumber, None},
      // GroupNo is the group asked for.
      {CmdRequestAccessRights, "CmdRequestAccessRights", None, Sender, None, None, None},
      {CmdRequestFirstUnblocked, "CmdRequestFirstUnblocked", None, GroupNumber, None, None, None},
      {CmdAskCaller, "CmdAskCaller", None, GroupNumber, None, ConsoleNumber, None},
      {CmdFlagCaller, "CmdFlagCaller", None, GroupNumber, Sender, ConsoleNumber, None},
  });
}();

constexpr const ClientCommandRow& row_of(ClientCommand command) {
  for (const auto& row : client_commands) {
    if (row.command == command) return row;
  }
  return client_commands.front();
}

enum class ServerCommand : std::uint8_t {
  SrvPasswordResult = 126,
  SrvFullStatus = 127,
  SrvGroupNames = 128,
  SrvStudioStatus = 129,
  SrvTimes = 130,
  SrvPhoneType = 131,
  SrvLineNumbers = 132,
  SrvCallerData = 133,
  SrvLineStatus = 134,
  SrvFlashMessage = 135,
  SrvNextCall = 136,
  SrvPhoneNames = 137,
  SrvLoginCheckResult = 139,
  SrvMessage = 140,
  SrvShutdownNotice = 141,
  SrvTime = 142,
  SrvShowTimes = 143,
  SrvRights = 144,
  SrvFirstUnblocked = 145,
  SrvAllowedGroups = 146,
  SrvCallerKnown = 147,
  SrvGroupElsewhere = 148,
};

struct ServerCommandRow {
  ServerCommand command;
  std::string_view name;
  // Tells of the studio group that the session is in.
  bool of_group;
};

inline constexpr auto server_commands = [] {
  using enum ServerCommand;
  return std::to_array<ServerCommandRow>({
      {SrvPasswordResult, "SrvPasswordResult", false},
      {SrvFullStatus, "SrvFullStatus", true},
      {SrvGroupNames, "SrvGroupNames", false},
      {SrvStudioStatus, "SrvStudioStatus", true},
      {SrvTimes, "SrvTimes", true},
      {SrvPhoneType, "SrvPhoneType", true},
      {SrvLineNumbers, "SrvLineNumbers", true},
      {SrvCallerData, "SrvCallerData", true},
      {SrvLineStatus, "SrvLineStatus", true},
      {SrvFlashMessage, "SrvFlashMessage", true},
      {SrvNextCall, "SrvNextCall", true},
      {SrvPhoneNames, "SrvPhoneNames", true},
      {SrvLoginCheckResult, "SrvLoginCheckResult", false},
      {SrvMessage, "SrvMessage", false},
      {SrvShutdownNotice, "SrvShutdownNotice", false},
      {SrvTime, "SrvTime", false},
      {SrvShowTimes, "SrvShowTimes", true},
      {SrvRights, "SrvRights", false},
      {SrvFirstUnblocked, "SrvFirstUnblocked", false},
      {SrvAllowedGroups, "SrvAllowedGroups", false},
      {SrvCallerKnown, "SrvCallerKnown", true},
      {SrvGroupElsewhere, "SrvGroupElsewhere", false},
  });
}();

// The place in server_commands of a received code; nothing for a code that isn't there.
constexpr std::optional<std::size_t> server_command_place(std::uint8_t code) {
  for (std::size_t place = 0; place < server_commands.size(); ++place) {
    if (static_cast<std::uint8_t>(server_commands[place].command) == code) return place;
  }
  return std::nullopt;
}

}  // namespace lineweir
