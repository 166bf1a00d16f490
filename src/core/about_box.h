#pragma once

namespace lineweir {

struct ConsoleState;

// What opens and closes AboutBox.
void wire_about_box(ConsoleState& state);

}  // namespace lineweir
