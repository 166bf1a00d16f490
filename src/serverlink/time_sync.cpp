#include "serverlink/time_sync.h"

#include <cstdlib>
#include <string>

#include "base/time_text.h"
#include "link/links.h"
#include "serverlink/server_alive.h"
#include "serverlink/server_link.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"
#include "wire/studio_texts.h"

namespace lineweir {
namespace {

constexpr int lost_at_missed_polls = 2;
constexpr long long longest_difference_let_be = 1;

}  // namespace

TimeSync::TimeSync(ConsoleState& state, const Links& links, ServerLink& server)
    : state_(state), links_(links), server_(server) {
  wire(state.Lineweir.SyncTimeTimer.on_timer, state.trace, "Lineweir_SyncTimeTimer_Timer",
       [this] { SyncTimeTimer_Timer(); });
  server.handle(ServerCommand::SrvTime, [this](const ServerPacket& packet) { SrvTime(packet); });
}

void TimeSync::SyncTimeTimer_Timer() {
  MainForm& form = state_.Lineweir;
  if (!links_.in_use().polls_server()) return;
  if (state_.services.winsock1.state() != platform::socket_connected) return lose_server(state_);

  int& missed = state_.login.MissedPolls;
  if (missed >= lost_at_missed_polls) {
    form.SyncTimeTimer.enabled = false;
    lose_server(state_);
  } else if (missed == 1) {
    form.Shape1.fill_color = color_yellow;
  }
  server_.send(server_.packet(ClientCommand::CmdTimeRequest));
  ++missed;
  state_.services.loop.yield();
}

void TimeSync::SrvTime(const ServerPacket& packet) {
  state_.login.MissedPolls = 0;
  if (state_.login.TimeAskedAtLogin) return;
  hear_server(state_);
  if (!state_.Lineweir.SyncTimeMenu.checked) return;
  const ServerTimeText texts = split_server_time(packet.Buffer);
  const auto date = date_of(texts.date);
  const auto time = time_of_day(texts.time);
  if (!date || !time) return;
  platform::SystemClock& clock = state_.services.clock;
  const platform::DateTime server_now = at_time_of_day(*date, *time);
  const bool set = std::llabs(seconds_between(clock.now(), server_now)) > longest_difference_let_be;
  // Silently where this program may not set it.
  if (set) attempt([&] { clock.set(server_now); }, [](const Failure&) {});
  const std::string what = set ? "Reset " : "Did not Reset ";
  state_.trace.WriteTrace(what + "Time To - " + std::string(texts.time));
  state_.trace.WriteTrace(what + "Date To - " + std::string(texts.date));
}

}  // namespace lineweir
