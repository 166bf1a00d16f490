#include "serverlink/server_notices.h"

#include <string>
#include <vector>

#include "messages/message_display.h"
#include "serverlink/server_connection.h"
#include "serverlink/server_link.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr int longest_notice_seconds = 61;
constexpr int seconds_ahead = 5;

}  // namespace

int shutdown_interval(int seconds) {
  if (seconds >= longest_notice_seconds) return 60'000;
  if (seconds <= seconds_ahead) return 5'000;
  return (seconds - seconds_ahead) * 1'000;
}

ServerNotices::ServerNotices(ConsoleState& state, ServerLink& server, ServerConnection& connection,
                             MessageDisplay& display)
    : state_(state), connection_(connection), display_(display) {
  using enum ServerCommand;
  server.handle(SrvFlashMessage,
                [this](const ServerPacket& packet) { this->SrvFlashMessage(packet); });
  server.handle(SrvMessage, [this](const ServerPacket& packet) { this->SrvMessage(packet); });
  server.handle(SrvShutdownNotice,
                [this](const ServerPacket& packet) { this->SrvShutdownNotice(packet); });
  server.handle(SrvShowTimes, [this](const ServerPacket& packet) { this->SrvShowTimes(packet); });
  wire(state.Lineweir.ShutDownTimer.on_timer, state.trace, "Lineweir_ShutDownTimer_Timer",
       [this] { ShutDownTimer_Timer(); });
}

void ServerNotices::SrvFlashMessage(const ServerPacket& packet) {
  const auto message = decode_text_message(packet.Buffer);
  if (!message) throw Failure(failure_number::type_mismatch, "Type mismatch");
  display_.ReturnMessageData(message->text, packet.GroupNo, message->back_color,
                             message->fore_color);
}

void ServerNotices::SrvMessage(const ServerPacket& packet) {
  state_.messages.ShowMessage(packet.Buffer);
}

void ServerNotices::SrvShutdownNotice(const ServerPacket& packet) {
  Timer& timer = state_.Lineweir.ShutDownTimer;
  timer.interval = shutdown_interval(packet.AltInfo);
  timer.enabled = true;
  state_.messages.ShowMessage(packet.Buffer);
}

void ServerNotices::SrvShowTimes(const ServerPacket& packet) {
  const std::vector<std::string> texts = decode_list(packet.Buffer);
  const auto text = [&](std::size_t place) {
    return place < texts.size() ? texts[place] : std::string();
  };
  ClockState& clocks = state_.clock_state;
  clocks.ServerLastEventTime = text(0);
  clocks.ServerEventTime = text(1);
  clocks.ServerEventText = text(2);
}

void ServerNotices::ShutDownTimer_Timer() {
  MainForm& form = state_.Lineweir;
  form.ShutDownTimer.enabled = false;
  connection_.leave();
  // The end was told: nobody is to take it for a loss.
  state_.login.ServerAlive = false;
  form.SyncTimeTimer.enabled = false;
  form.Shape1.fill_color = color_red;
  state_.services.loop.yield();
  state_.messages.ShowMessage(
      "Lineweir has disconnected from the server because the server is shutting down.");
}

}  // namespace lineweir
