#include "serverlink/received_lines.h"

#include <doctest/doctest.h>

#include "support/scripted_console.h"
#include "support/server_packet.h"
#include "wire/server_packet_codec.h"

namespace lineweir {
namespace {

using platform::Milliseconds;
using test::frame_of;
using test::server_packet;

ServerPacket report(char letter, int alt_info, int console, int bank) {
  ServerPacket packet;
  packet.AltInfo = field_byte(alt_info);
  packet.Console = field_byte(console);
  packet.Bank = field_byte(bank);
  packet.set_buffer({letter});
  return packet;
}

TEST_CASE("a letter other than N and P is reported as it stands") {
  for (const char letter : {'F', 'R', 'S', 'H', 'C', 'L', 'K', 'Y', 'B', 'E', 'O'}) {
    CHECK(reported_letter_of(report(letter, 1, 1, 1), true) == letter);
  }
}

TEST_CASE("either field puts N on the conference hybrid") {
  CHECK(reported_letter_of(report('N', 0, 1, 0), false) == 'N');
  CHECK(reported_letter_of(report('N', 1, 1, 0), false) == 'C');
  CHECK(reported_letter_of(report('N', 0, 1, 1), false) == 'C');
  CHECK(reported_letter_of(report('N', 255, 1, 255), false) == 'N');
}

TEST_CASE("P carries the position that picked up, with a deciding server the console") {
  CHECK(reported_letter_of(report('P', 0, 9, 0), false) == '\x80');
  CHECK(reported_letter_of(report('P', 127, 9, 0), false) == '\xFF');
  CHECK(reported_letter_of(report('P', 128, 9, 0), false) == 'P');
  CHECK(reported_letter_of(report('P', 3, 9, 0), true) == '\x89');
  CHECK(reported_letter_of(report('P', 3, 128, 0), true) == '\x83');
  CHECK(reported_letter_of(report('P', 255, 255, 0), true) == 'P');
}

TEST_CASE("a letter that comes with the choice behind it doesn't end the choice") {
  test::ScriptedConsole desk;
  desk.console.Lineweir.Timer1.enabled = false;
  desk.platform.winsock1.stand_connected();
  const auto hear = [&desk](const std::string& frames) {
    desk.platform.winsock1.arrive(frames);
    desk.platform.loop.advance(Milliseconds{200});
  };
  const auto letter_of_line_2 = [](char letter) {
    ServerPacket packet = server_packet(ServerCommand::SrvLineStatus, std::string(1, letter));
    packet.LineNo = 2;
    return frame_of(packet);
  };
  ServerPacket choice = server_packet(ServerCommand::SrvNextCall);
  choice.LineNo = 2;
  hear(letter_of_line_2('S'));
  hear(letter_of_line_2('R') + frame_of(choice));
  CHECK(desk.console.lines.StatusLetter(2) == 'R');
  CHECK(desk.console.lines.TheNextCall == 2);
  hear(frame_of(choice) + letter_of_line_2('N'));
  CHECK(desk.console.lines.TheNextCall == no_line);
}

}  // namespace
}  // namespace lineweir
