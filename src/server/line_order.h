#pragma once

#include <optional>
#include <string>

#include "wire/server_packet_codec.h"

namespace lineweir::server {

// What a seat's frame asks of the exchange.
struct LineOrder {
  enum class Kind {
    // A command word as it stands, such as "N05".
    Word,
    // The line goes to the seat's own numbered position.
    ToOwnPosition,
    // Whoever is on a hybrid, or at the position of a screener's seat, is dropped or held: the
    // word is one letter.
    DropPlace,
    HoldPlace,
  };

  Kind kind = Kind::Word;
  std::string word = {};
  // The line that the order is about; -1 for none.
  int line = -1;
  // Of DropPlace and HoldPlace: 0 for hybrid 1, 1 for hybrid 2.
  int bank = 0;

  bool operator==(const LineOrder&) const = default;
};

// The order of a CmdLineCommand from a seat of equipment of that kind. Nothing where its letter or
// its number is none.
std::optional<LineOrder> line_order(const ServerPacket& packet, int kind);

// The tone of a CmdDialDigit, as a word of the equipment. Nothing for what is no digit.
std::optional<LineOrder> digit_order(const ServerPacket& packet);

// The seizing of a line for dialling, as a CmdDialSeize asks for it. Nothing where no word takes
// the line there.
std::optional<LineOrder> seize_order(const ServerPacket& packet, int kind);

// The order takes the line to a hybrid or to a handset.
bool takes_line(const LineOrder& order);

}  // namespace lineweir::server
