#pragma once

namespace lineweir {

struct ConsoleState;

// Wires the menu items of which a click only turns their check mark over.
void wire_menu_toggles(ConsoleState& state);

}  // namespace lineweir
