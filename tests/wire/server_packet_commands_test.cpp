#include "wire/server_packet_commands.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <string>

#include "base/failure.h"
#include "support/bytes.h"
#include "support/failure_number.h"
#include "support/packet_gen.h"
#include "support/server_packet.h"
#include "wire/server_packet_codec.h"

namespace lineweir::test {
namespace {

using enum ClientCommand;

constexpr int group = 3;
constexpr int console = 2;

// A byte and a name a row, as both ends of the wire know them: "1 CmdPasswordLogin 2 …".
template <class Rows>
std::string numbered_names(const Rows& rows) {
  std::string text;
  for (const auto& row : rows) {
    text += std::to_string(static_cast<int>(row.command)) + ' ' + std::string(row.name) + ' ';
  }
  return text;
}

// The codes of the commands whose packet, before its sender fills in what only it knows, has that
// value in the field.
std::vector<int> codes_with(std::uint8_t ServerPacket::*field, int value) {
  std::vector<int> codes;
  for (const ClientCommandRow& row : client_commands) {
    const ServerPacket packet = client_packet(row.command, group, console);
    if (packet.*field == value) codes.push_back(static_cast<int>(row.command));
  }
  return codes;
}

using Codes = std::vector<int>;

TEST_SUITE("wire/server_packet_commands") {
  TEST_CASE("the client's commands have these codes") {
    CHECK(numbered_names(client_commands) ==
          "1 CmdPasswordLogin 2 CmdConnectConsole 3 CmdLeaveGroup 4 CmdLineCommand "
          "5 CmdRequestStatus 6 CmdCallerData 7 CmdFlashMessage 8 CmdSetNextCall "
          "9 CmdRequestGroupNames 11 CmdRequestStudioStatus 12 CmdRequestTimes "
          "13 CmdRequestLineNumbers 14 CmdDialDigit 15 CmdNextAction 16 CmdDialSeize "
          "17 CmdRequestPhones 18 CmdSetMode 20 CmdSelectPhone 21 CmdLoginCheck 22 CmdTimeRequest "
          "23 CmdUserProfile 24 CmdRequestAccessRights 25 CmdRequestFirstUnblocked "
          "26 CmdAskCaller 27 CmdFlagCaller ");
  }

  TEST_CASE("the server's commands have these codes") {
    CHECK(numbered_names(server_commands) ==
          "126 SrvPasswordResult 127 SrvFullStatus 128 SrvGroupNames 129 SrvStudioStatus "
          "130 SrvTimes 131 SrvPhoneType 132 SrvLineNumbers 133 SrvCallerData 134 SrvLineStatus "
          "135 SrvFlashMessage 136 SrvNextCall 137 SrvPhoneNames 139 SrvLoginCheckResult "
          "140 SrvMessage 141 SrvShutdownNotice 142 SrvTime 143 SrvShowTimes 144 SrvRights "
          "145 SrvFirstUnblocked 146 SrvAllowedGroups 147 SrvCallerKnown 148 SrvGroupElsewhere ");
  }

  TEST_CASE("a packet says its command") {
    for (const ClientCommandRow& row : client_commands) {
      CAPTURE(row.name);
      CHECK(row_of(row.command).command == row.command);
      CHECK(client_packet(row.command, group, console).CMD == static_cast<int>(row.command));
    }
  }

  TEST_CASE("nearly every packet says its group and its console") {
    const int commands = static_cast<int>(client_commands.size());
    CHECK(codes_with(&ServerPacket::GroupNo, no_value) == Codes{9});
    CHECK(codes_with(&ServerPacket::GroupNo, 0) == Codes{24});
    CHECK(codes_with(&ServerPacket::GroupNo, group).size() == commands - 2);
    CHECK(codes_with(&ServerPacket::Console, no_value) == Codes{24, 25});
    CHECK(codes_with(&ServerPacket::Console, console).size() == commands - 2);
  }

  TEST_CASE(
      "the other fields wait for their sender or carry nothing; some tell the console again") {
    const int commands = static_cast<int>(client_commands.size());
    CHECK(codes_with(&ServerPacket::LineNo, 0) == Codes{4, 6, 8, 14, 16});
    CHECK(codes_with(&ServerPacket::LineNo, no_value).size() == commands - 5);
    CHECK(codes_with(&ServerPacket::AltInfo, 0) == Codes{4, 15, 18, 20, 27});
    CHECK(codes_with(&ServerPacket::AltInfo, console) == Codes{2, 5, 8, 9, 11, 12, 13, 14, 16});
    CHECK(codes_with(&ServerPacket::AltInfo, no_value).size() == commands - 14);
    CHECK(codes_with(&ServerPacket::Bank, 0) == Codes{4, 14, 15, 16});
    CHECK(codes_with(&ServerPacket::Bank, no_value).size() == commands - 4);
  }

  TEST_CASE("a packet as bytes") {
    CHECK(frame_of(client_packet(CmdDialSeize, group, console)) ==
          bytes({4, 4, 16, 0, 3, 2, 2, 0, 0, 0, 5, 5}));
    CHECK(frame_of(client_packet(CmdRequestAccessRights, group, console)) ==
          bytes({4, 4, 24, 255, 0, 255, 255, 255, 0, 0, 5, 5}));
  }

  TEST_CASE("each code of the server's is known, and no other") {
    int known = 0;
    for (int code = 0; code < 256; ++code) {
      const auto place = server_command_place(static_cast<std::uint8_t>(code));
      if (!place) continue;
      ++known;
      CHECK(static_cast<int>(server_commands[*place].command) == code);
    }
    CHECK(known == static_cast<int>(server_commands.size()));
    CHECK_FALSE(server_command_place(138));
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
