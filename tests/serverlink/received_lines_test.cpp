#include "serverlink/received_lines.h"

#include <doctest/doctest.h>

#include "wire/server_packet_codec.h"

namespace lineweir {
namespace {

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

}  // namespace
}  // namespace lineweir
