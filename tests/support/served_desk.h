#pragma once

#include <doctest/doctest.h>
#include <cstdint>

#include <string>
#include <vector>

#include "support/entry_form.h"

namespace lineweir::test {

// What is known of Anna Lee, who is barred.
inline constexpr auto anna_number =
    "555-0100\0037\0033\0032026-11-12 20:15\3Anna Lee\3Troy\3abuse\0032026-12-31\3bob";

// A console whose server has a memory.
struct ServedDesk : EntryForm {
  ServedDesk() {
    connect_socket();
    tell_of_memory();
  }

  void tell_of_memory(std::uint8_t bank = has_caller_memory) {
    ServerPacket packet = server_packet(ServerCommand::SrvPhoneType, "1");
    packet.GroupNo = 1;
    packet.Bank = bank;
    platform.winsock1.arrive(frame_of(packet));
    wait(60);
  }

  void tell(std::uint8_t line, std::uint8_t flag, const std::string& buffer,
            std::uint8_t group = 1) {
    ServerPacket packet = server_packet(ServerCommand::SrvCallerKnown, buffer);
    packet.LineNo = line;
    packet.AltInfo = flag;
    packet.GroupNo = group;
    platform.winsock1.arrive(frame_of(packet));
    wait(60);
  }

  // What a session tells behind all that it tells of the lines.
  void tell_next_call() {
    ServerPacket packet = server_packet(ServerCommand::SrvNextCall, "");
    packet.GroupNo = 1;
    packet.LineNo = no_value;
    platform.winsock1.arrive(frame_of(packet));
    wait(60);
  }

  void report(std::uint8_t line, const char* letter) {
    ServerPacket packet = server_packet(ServerCommand::SrvLineStatus, letter);
    packet.LineNo = line;
    platform.winsock1.arrive(frame_of(packet));
    wait(60);
  }

  void wait(int milliseconds) { platform.loop.advance(platform::Milliseconds(milliseconds)); }

  // What went out of these commands, as "26 555 0100".
  std::vector<std::string> sent() {
    std::vector<std::string> told;
    for (const std::string& frame : platform.winsock1.take_writes()) {
      const ServerPacket packet = packet_of(frame.substr(2, frame.size() - 4));
      if (packet.CMD != 26 && packet.CMD != 27) continue;
      CHECK(packet.LineNo == no_value);
      CHECK(packet.Bank == no_value);
      CHECK(packet.GroupNo == 1);
      std::string text = std::to_string(packet.CMD) + " ";
      if (packet.CMD == 27) text += std::to_string(packet.AltInfo) + " ";
      told.push_back(text + packet.Buffer);
    }
    return told;
  }

  CallerFlagForm& flag_form() { return console.FlagForm; }
  bool flag_shown() { return form().FlagLabel.visible; }

  void choose(OptionButton& chosen) {
    for (OptionButton* choice : flag_form().choices()) choice->value = choice == &chosen;
  }
};

}  // namespace lineweir::test
