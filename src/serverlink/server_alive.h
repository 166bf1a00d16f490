#pragma once

namespace lineweir {

struct ConsoleState;

// The server is heard from: the lamp is green, and its loss will be told.
void hear_server(ConsoleState& state);

// The same, and it is asked for its time from now on.
void hear_running_server(ConsoleState& state);

// The server isn't heard from any more: the lamp is red, and the user is told and offered another
// connection, once for each time that it was there.
void lose_server(ConsoleState& state);

}  // namespace lineweir
