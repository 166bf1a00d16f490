#pragma once

namespace lineweir {

struct ConsoleState;

// Where this console stands: its role, and the handset position or the phone at which it works.
// Its buttons mean what these say.
struct Seat {
  bool talent;
  int equipment_kind;
  bool handset_1;
  bool handset_2;

  bool has_handset() const { return handset_1 || handset_2; }
};

Seat seat_of(const ConsoleState& state);

}  // namespace lineweir
