#include "wire/server_packet_commands.h"

#include <doctest/doctest.h>

#include <string>

#include "base/failure.h"
#include "support/bytes.h"
#include "support/failure_number.h"
#include "support/packet_gen.h"
#include "wire/server_packet_codec.h"

namespace lineweir::test {
namespace {

using enum ClientCommand;

constexpr int group = 3;
constexpr int console = 2;

// The header of each command as its row of the table alone makes it, before its sender fills in
// what only it knows.
struct ClientRowBytes {
  ClientCommand command;
  std::string name;
  int code, line, group, alt_info, console, bank;
};

const ClientRowBytes client_rows[] = {
    {CmdPasswordLogin, "CmdPasswordLogin", 1, 255, 3, 255, 2, 255},
    {CmdConnectConsole, "CmdConnectConsole", 2, 255, 3, 2, 2, 255},
    {CmdLeaveGroup, "CmdLeaveGroup", 3, 255, 3, 255, 2, 255},
    {CmdLineCommand, "CmdLineCommand", 4, 0, 3, 0, 2, 0},
    {CmdRequestStatus, "CmdRequestStatus", 5, 255, 3, 2, 2, 255},
    {CmdCallerData, "CmdCallerData", 6, 0, 3, 255, 2, 255},
    {CmdFlashMessage, "CmdFlashMessage", 7, 255, 3, 255, 2, 255},
    {CmdSetNextCall, "CmdSetNextCall", 8, 0, 3, 2, 2, 255},
    {CmdRequestGroupNames, "CmdRequestGroupNames", 9, 255, 255, 2, 2, 255},
    {CmdRequestStudioStatus, "CmdRequestStudioStatus", 11, 255, 3, 2, 2, 255},
    {CmdRequestTimes, "CmdRequestTimes", 12, 255, 3, 2, 2, 255},
    {CmdRequestLineNumbers, "CmdRequestLineNumbers", 13, 255, 3, 2, 2, 255},
    {CmdDialDigit, "CmdDialDigit", 14, 0, 3, 2, 2, 0},
    {CmdNextAction, "CmdNextAction", 15, 255, 3, 0, 2, 0},
    {CmdDialSeize, "CmdDialSeize", 16, 0, 3, 2, 2, 0},
    {CmdRequestPhones, "CmdRequestPhones", 17, 255, 3, 255, 2, 255},
    {CmdSetMode, "CmdSetMode", 18, 255, 3, 0, 2, 255},
    {CmdSelectPhone, "CmdSelectPhone", 20, 255, 3, 0, 2, 255},
    {CmdLoginCheck, "CmdLoginCheck", 21, 255, 3, 255, 2, 255},
    {CmdTimeRequest, "CmdTimeRequest", 22, 255, 3, 255, 2, 255},
    {CmdUserProfile, "CmdUserProfile", 23, 255, 3, 255, 2, 255},
    {CmdRequestAccessRights, "CmdRequestAccessRights", 24, 255, 0, 255, 255, 255},
    {CmdRequestFirstUnblocked, "CmdRequestFirstUnblocked", 25, 255, 3, 255, 255, 255},
};

struct ServerRowBytes {
  ServerCommand command;
  std::string name;
  int code;
};

const ServerRowBytes server_rows[] = {
    {ServerCommand::SrvPasswordResult, "SrvPasswordResult", 126},
    {ServerCommand::SrvFullStatus, "SrvFullStatus", 127},
    {ServerCommand::SrvGroupNames, "SrvGroupNames", 128},
    {ServerCommand::SrvStudioStatus, "SrvStudioStatus", 129},
    {ServerCommand::SrvTimes, "SrvTimes", 130},
    {ServerCommand::SrvPhoneType, "SrvPhoneType", 131},
    {ServerCommand::SrvLineNumbers, "SrvLineNumbers", 132},
    {ServerCommand::SrvCallerData, "SrvCallerData", 133},
    {ServerCommand::SrvLineStatus, "SrvLineStatus", 134},
    {ServerCommand::SrvFlashMessage, "SrvFlashMessage", 135},
    {ServerCommand::SrvNextCall, "SrvNextCall", 136},
    {ServerCommand::SrvPhoneNames, "SrvPhoneNames", 137},
    {ServerCommand::SrvLoginCheckResult, "SrvLoginCheckResult", 139},
    {ServerCommand::SrvMessage, "SrvMessage", 140},
    {ServerCommand::SrvShutdownNotice, "SrvShutdownNotice", 141},
    {ServerCommand::SrvTime, "SrvTime", 142},
    {ServerCommand::SrvShowTimes, "SrvShowTimes", 143},
    {ServerCommand::SrvRights, "SrvRights", 144},
    {ServerCommand::SrvFirstUnblocked, "SrvFirstUnblocked", 145},
    {ServerCommand::SrvAllowedGroups, "SrvAllowedGroups", 146},
};

TEST_SUITE("serverlink/server_packet_commands") {
  TEST_CASE("every client command as bytes") {
    REQUIRE(client_commands.size() == std::size(client_rows));
    for (std::size_t i = 0; i < client_commands.size(); ++i) {
      const ClientRowBytes& row = client_rows[i];
      CAPTURE(row.name);
      CHECK(client_commands[i].command == row.command);
      CHECK(client_commands[i].name == row.name);
      CHECK(frame_of(client_packet(row.command, group, console)) ==
            bytes({4, 4, row.code, row.line, row.group, row.alt_info, row.console, row.bank, 0, 0,
                   5, 5}));
    }
  }

  TEST_CASE("every server command is known by its byte and its name") {
    REQUIRE(server_commands.size() == std::size(server_rows));
    for (const ServerRowBytes& row : server_rows) {
      CAPTURE(row.name);
      const auto place = server_command_place(static_cast<std::uint8_t>(row.code));
      REQUIRE(place);
      CHECK(server_commands[*place].command == row.command);
      CHECK(server_commands[*place].name == row.name);
    }
  }

  TEST_CASE("no other code is a server command") {
    int known = 0;
    for (int code = 0; code < 256; ++code) {
      known += server_command_place(static_cast<std::uint8_t>(code)) ? 1 : 0;
    }
    CHECK(known == static_cast<int>(server_commands.size()));
    CHECK_FALSE(server_command_place(125));
    CHECK_FALSE(server_command_place(138));
    CHECK_FALSE(server_command_place(147));
  }

  TEST_CASE("a group or console beyond a byte can't be sent") {
    CHECK(failure_number_of([] { client_packet(CmdLeaveGroup, 256, 0); }) ==
          failure_number::invalid_argument);
    CHECK(failure_number_of([] { client_packet(CmdLeaveGroup, 1, -1); }) ==
          failure_number::invalid_argument);
  }
}

}  // namespace
}  // namespace lineweir::test
