#pragma once

namespace lineweir {

class LineEvents;
struct ConsoleState;

// Takes all that is the present studio group's off the screen, so that nothing of it is taken for
// the next one's: its lines, its messages and its server's show.
void clear_studio_group(ConsoleState& state, LineEvents& line_events);

// Only what the group's seats have said to one another.
void clear_conversation(ConsoleState& state);

}  // namespace lineweir
