#pragma once

#include "base/failure.h"
#include "elements/menu_item.h"
#include "state/guard.h"

namespace lineweir {

struct ConsoleState;

// The start is a row of steps, and one that fails doesn't keep the next from being done: the user
// is told where it was a port or the server, and the trace in any case.
void react_to_start_failure(ConsoleState& state, const Failure& failure);

template <class Step>
void start_step(ConsoleState& state, Step&& step) {
  attempt(step, [&](const Failure& failure) { react_to_start_failure(state, failure); });
}

// Runs an element's click as the program does, whatever the element's state is.
inline void click(MenuItem& item) { item.on_click(); }

inline void click_if(bool wanted, MenuItem& item) {
  if (wanted) click(item);
}

// The window's caption by the mode that its menu shows.
void renew_start_caption(ConsoleState& state);

}  // namespace lineweir
