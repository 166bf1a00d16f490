#include "serverlink/remote_watch.h"

#include <string>

#include "base/time_text.h"
#include "link/link_watch.h"
#include "serverlink/remote_objects_link.h"
#include "serverlink/remote_session.h"
#include "serverlink/server_alive.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr auto remote_watch_handler = "RemoteWatch";

}  // namespace

RemoteWatch::RemoteWatch(ConsoleState& state, RemoteObjectsLink& remote_link,
                         RemoteSession& session, LinkWatch& link)
    : state_(state), remote_link_(remote_link), session_(session), link_(link) {
  wire(state.services.remote_objects.on_presence, state_.trace, remote_watch_handler,
       [this](bool answers) { presence_changed(answers); });
  remote_link.on_reconnect = [this] { reconnect(); };
}

RemoteWatch::~RemoteWatch() {
  if (next_try_) state_.services.loop.cancel(*next_try_);
  state_.services.remote_objects.on_presence.forget_handler();
}

void RemoteWatch::presence_changed(bool answers) {
  answers_ = answers;
  if (!answers) {
    lose();
  } else if (remote_link_.is_silent()) {
    come_back();
  }
}

void RemoteWatch::lose() {
  const bool in_session = state_.Lineweir.NetworkConnectionOption.checked && session_.stands();
  if (!in_session || remote_link_.is_silent()) return;
  remote_link_.set_silence("No word from the server since " +
                           hms_text(seconds_of_day(state_.services.clock.now())));
  link_.review();
  lose_server(state_);
}

void RemoteWatch::come_back() {
  if (!session_.resume()) return try_soon();
  remote_link_.set_silence({});
  state_.messages.withdraw_offer();
  link_.review();
}

void RemoteWatch::try_soon() {
  if (next_try_) return;
  next_try_ = state_.services.loop.schedule(between_tries, [this] {
    next_try_.reset();
    guard(state_.trace, remote_watch_handler, [this] {
      if (answers_ && remote_link_.is_silent()) come_back();
    });
  });
}

void RemoteWatch::reconnect() {
  come_back();
  // The box goes on offering what has just failed.
  if (remote_link_.is_silent()) state_.services.dialogs.message("Cannot find server");
}

}  // namespace lineweir
