#pragma once

#include <optional>
#include <string>

#include "server/server_room.h"
#include "wire/caller_known.h"

// A caller whom a server knows again, and what consoles do for it and are told of it.
namespace lineweir::server {

inline constexpr const char* known_number = "+1 (312) 555-0100";

// A call on the line that is put on air and ends.
inline void whole_call(ServerRoom& room, FrameConsole& console, int line,
                       const std::string& of = known_number) {
  using namespace std::chrono_literals;
  room.exchange().arrive(line, of);
  room.wait(2s);
  console.word('P', line, 0);
  room.wait(2s);
  console.word('N', line);
  room.wait(2s);
  room.exchange().leave(line);
  room.wait(2s);
}

inline std::optional<CallerKnown> last_known(FrameConsole& console) {
  const ServerPacket told = console.take_last(ServerCommand::SrvCallerKnown);
  return decode_caller_known(told.AltInfo, told.Buffer);
}

inline void send_flag(FrameConsole& console, const CallerFlagging& flagging) {
  ServerPacket packet =
      console.packet(ClientCommand::CmdFlagCaller, no_value, encode_caller_flagging(flagging));
  packet.AltInfo = static_cast<std::uint8_t>(flagging.flag);
  console.send(packet);
}

inline const CallerFlagging barred{
    .flag = CallerFlag::Barred, .number = "312-555-0100", .reason = "abuse", .until = "2099-12-31"};

}  // namespace lineweir::server
