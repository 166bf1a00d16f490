#include "serverlink/server_alive.h"

#include <utility>

#include "state/console_state.h"

namespace lineweir {

void hear_server(ConsoleState& state) {
  state.Lineweir.Shape1.fill_color = color_green;
  state.login.ServerAlive = true;
}

void hear_running_server(ConsoleState& state) {
  state.Lineweir.SyncTimeTimer.enabled = true;
  hear_server(state);
}

void lose_server(ConsoleState& state) {
  state.Lineweir.Shape1.fill_color = color_red;
  if (std::exchange(state.login.ServerAlive, false)) state.messages.offer_reconnection();
}

}  // namespace lineweir
