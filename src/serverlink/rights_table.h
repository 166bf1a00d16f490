#pragma once

namespace lineweir {

class Modes;
struct ConsoleState;

// Enables what the rights' set bits allow and disables the rest, in the order of the table. Rights
// that are shorter than the table are a Failure of number 5 at the place where they end.
void apply_rights(ConsoleState& state, Modes& modes);

}  // namespace lineweir
