#include "serverlink/server_link.h"

#include <utility>

#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"
#include "wire/frame_trace.h"

namespace lineweir {
namespace {

constexpr platform::Milliseconds longest_run{10};
// Some handlers wait for the user, which is no flood.
constexpr int few_frames = 50;
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
  const auto began = state_.services.loop.now();
  int frames = 0;
  while (const auto body = RecString.first_body()) {
    const ServerPacket received = packet_of(*body);
    if (state_.program.DebugMode) {
      state_.trace.WriteLines(received_frame_trace(*body, received));
    }
    const bool handled = dispatch(received);
    if (!handled && !std::exchange(first_has_failed_, true)) return;
    first_has_failed_ = false;
    if (!state_.Lineweir.loaded()) return;
    ++frames_;
    if (on_frame) on_frame(received);
    RecString.drop_first();
    if (++frames >= few_frames && state_.services.loop.now() - began > longest_run) {
      // A flood of frames leaves time for the user between them.
      state_.Lineweir.WinsTimer.enabled = true;
      return;
    }
  }
}

void ServerLink::gather() {
  const std::string bytes = state_.services.winsock1.get_data();
  if (std::exchange(new_stream_, false) && bytes.starts_with(start_marker[0])) {
    RecString.drop_unfinished();
  }
  RecString.append(bytes);
  state_.Lineweir.WinsTimer.enabled = true;
}

bool ServerLink::dispatch(const ServerPacket& packet) {
  const auto place = server_command_place(packet.CMD);
  if (!place || !handlers_[*place]) return true;
  // What the server has sent before it heard that the console has left its group.
  if (state_.login.BetweenGroups && server_commands[*place].of_group) return true;
  return guard(state_.trace, frames_handler, [&] { handlers_[*place](packet); });
}

}  // namespace lineweir
