#include "serverlink/server_link.h"

#include <utility>

#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"
#include "wire/frame_trace.h"

namespace lineweir {
namespace {

constexpr std::string_view frames_handler = "Lineweir_WinsTimer_Timer";

}  // namespace

ServerLink::ServerLink(ConsoleState& state) : state_(state) {
  wire(state.services.winsock1.on_data_arrival, state_.trace, "Lineweir_Winsock1_DataArrival",
       [this] { Winsock1_DataArrival(); });
  wire(state.Lineweir.WinsTimer.on_timer, state_.trace, std::string(frames_handler),
       [this] { WinsTimer_Timer(); });
}

void ServerLink::handle(ServerCommand command, Handler handler) {
  if (const auto place = server_command_place(static_cast<std::uint8_t>(command))) {
    handlers_[*place] = std::move(handler);
  }
}

ServerPacket ServerLink::packet(ClientCommand command) const {
  return client_packet(command, state_.program.GroupNumber, state_.program.ConsoleNumber);
}

void ServerLink::send(ServerPacket packet) {
  pad(packet.Buffer);
  const std::string frame = framed(body_of(packet));
  TextWrit_CheckWinsPort();
  state_.services.winsock1.send_data(frame);
  if (state_.program.DebugMode) state_.trace.WriteLines(frame_trace(frame, packet));
}

void ServerLink::Winsock1_DataArrival() { gather(); }

void ServerLink::TextWrit_CheckWinsPort() {
  guard(state_.trace, "TextWrit_CheckWinsPort", [&] {
    if (state_.services.winsock1.bytes_received() > 0) gather();
  });
}

void ServerLink::WinsTimer_Timer() {
  state_.Lineweir.WinsTimer.enabled = false;
  if (std::exchange(handling_, true)) return;
  handle_frames();
  handling_ = false;
}

void ServerLink::handle_frames() {
  while (const auto body = RecString.first_body()) {
    const ServerPacket received = packet_of(*body);
    if (state_.program.DebugMode) {
      state_.trace.WriteLines(received_frame_trace(*body, received));
    }
    const bool handled = dispatch(received);
    if (!handled && !std::exchange(first_has_failed_, true)) return;
    first_has_failed_ = false;
    RecString.drop_first();
  }
}

void ServerLink::gather() {
  RecString.append(state_.services.winsock1.get_data());
  state_.Lineweir.WinsTimer.enabled = true;
}

bool ServerLink::dispatch(const ServerPacket& packet) {
  const auto place = server_command_place(packet.CMD);
  if (!place || !handlers_[*place]) return true;
  return guard(state_.trace, frames_handler, [&] { handlers_[*place](packet); });
}

}  // namespace lineweir
