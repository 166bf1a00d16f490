#include "boxlink/serial_link.h"

#include "state/console_state.h"

namespace lineweir {

void SerialLink::command(std::string_view handler, std::string_view word, int /*bank*/) {
  socket_trap(state_, handler, [&] {
    if (state_.services.comm1.is_open()) state_.services.comm1.output(word);
  });
}

std::string_view SerialLink::trouble() const {
  const bool open = state_.services.comm1.is_open();
  if (!open && state_.Lineweir.chosen_com() == 0) return StudioLink::trouble();
  if (!open) return "There is no link: the port is off, switch it on in the menu Port.";
  if (box_heard_) return {};
  // It may hear all the same.
  return "There is no link: the interface box hasn't answered. What you press is sent, and nobody "
         "knows what comes of it; check cables and settings and choose its port again.";
}

}  // namespace lineweir
