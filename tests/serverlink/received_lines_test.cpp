#include "serverlink/received_lines.h"

#include <doctest/doctest.h>

#include "base/text.h"
#include "support/call_log_file.h"
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

// A console whose server says several things at once.
struct HearingDesk : test::ScriptedConsole {
  HearingDesk() {
    console.Lineweir.Timer1.enabled = false;
    platform.winsock1.stand_connected();
  }
  void hear(const std::string& frames) {
    platform.winsock1.arrive(frames);
    platform.loop.advance(Milliseconds{200});
  }
  static std::string letter_of_line(int line, char letter) {
    return of_line(line, server_packet(ServerCommand::SrvLineStatus, {letter}));
  }
  static std::string no_caller_on_line(int line) {
    return of_line(line, server_packet(ServerCommand::SrvCallerData));
  }
  static std::string next_call(int line) {
    return of_line(line, server_packet(ServerCommand::SrvNextCall));
  }

 private:
  static std::string of_line(int line, ServerPacket packet) {
    packet.LineNo = line == no_line ? no_value : field_byte(line);
    return frame_of(packet);
  }
};

TEST_CASE("a letter that comes with the choice behind it doesn't end the choice") {
  HearingDesk desk;
  desk.hear(HearingDesk::letter_of_line(2, 'S'));
  desk.hear(HearingDesk::letter_of_line(2, 'R') + HearingDesk::next_call(2));
  CHECK(desk.console.lines.StatusLetter(2) == 'R');
  CHECK(desk.console.lines.TheNextCall == 2);
  desk.hear(HearingDesk::next_call(2) + HearingDesk::letter_of_line(2, 'N'));
  CHECK(desk.console.lines.TheNextCall == no_line);
}

TEST_CASE("a caller whose end comes with that nobody is known any more is logged by his name") {
  HearingDesk desk;
  test::choose_log(desk);
  desk.hear(HearingDesk::letter_of_line(2, 'N'));
  desk.console.lines.CallerData(2).set(CallerField::CallerName, "Ann");
  desk.console.lines.CallerData(2).set(CallerField::PhoneNumber, "555 0100");
  desk.console.Lineweir.LineName(2).caption = "Ann";
  desk.hear(HearingDesk::letter_of_line(2, 'F') + HearingDesk::no_caller_on_line(2));
  REQUIRE(test::logged_rows(desk).size() == 1);
  CHECK(trimmed(test::logged_rows(desk).front()[0]) == "Ann");
  CHECK(desk.console.Lineweir.LineName(2).caption == "");
}

TEST_CASE("when the next call goes on air and the choice is over in one breath another is chosen") {
  HearingDesk desk;
  desk.hear(HearingDesk::letter_of_line(1, 'S'));
  desk.hear(HearingDesk::letter_of_line(2, 'S') + HearingDesk::next_call(1));
  CHECK(desk.console.lines.TheNextCall == 1);
  desk.hear(HearingDesk::letter_of_line(1, 'N') + HearingDesk::next_call(no_line));
  CHECK_FALSE(desk.console.lines.NextCallSet);
  desk.console.Lineweir.LineTime(2).caption = "00:00:05";
  desk.console.clocks.after_tick();
  CHECK(desk.console.lines.TheNextCall == 2);
}

}  // namespace
}  // namespace lineweir
