#include "serverlink/group_session.h"

#include "serverlink/login_exchange.h"
#include "serverlink/server_connection.h"
#include "serverlink/session_start.h"
#include "state/console_state.h"
#include "state/hourglass.h"

namespace lineweir {

bool GroupSession::enter() {
  const ServerConnection::Turn turn(connection_);
  const Hourglass hourglass(state_.Lineweir);
  switch (exchange_.TextWrit_PasswordA(false)) {
    case LoginResult::Accepted:
      TextWrit_SockConnecter(state_, server_, SessionReason::GroupChange);
      return true;
    case LoginResult::Rejected:
    case LoginResult::NoAnswer:
    case LoginResult::NoServer:
      state_.LoginForm.show();
      return false;
    case LoginResult::Superseded:
      return false;
  }
  return false;
}

}  // namespace lineweir
