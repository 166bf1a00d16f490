#include "link/links.h"

#include "state/console_state.h"
#include "state/settings_record.h"

namespace lineweir {

Links::Links(ConsoleState& state, StudioLink& serial, StudioLink& socket, StudioLink& remote)
    : state_(state), serial_(serial), socket_(socket), remote_(remote) {}

StudioLink& Links::in_use() const {
  if (state_.Lineweir.NetworkConnectionOption.checked) return remote_;
  if (state_.Lineweir.WinsockMenu.checked) return socket_;
  return serial_;
}

int Links::settings_code(int wanted) const {
  const StudioLink* used = &in_use();
  if (used == &remote_) return connection_remote_objects;
  if (used == &socket_) return connection_socket;
  const bool missed_way = wanted >= connection_remote_objects;
  return state_.Lineweir.chosen_com() != 0 || missed_way ? wanted : connection_none;
}

void Links::give_way_to_serial() const {
  remote_.give_way();
  socket_.give_way();
}

}  // namespace lineweir
