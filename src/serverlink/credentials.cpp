#include "serverlink/credentials.h"

#include "state/console_state.h"
#include "state/guard.h"
#include "wire/password_scramble.h"
#include "wire/server_packet_codec.h"

namespace lineweir {

std::string TextWrit_PassEncode(ConsoleState& state, std::string_view text) {
  const auto scrambled = pass_encode(text, state.services.clock.now().second);
  if (scrambled) return *scrambled;
  report_failure(state.trace, "TextWrit_PassEncode",
                 Failure(failure_number::invalid_argument, "Invalid procedure call or argument"));
  return {};
}

std::string credentials(ConsoleState& state) {
  // Each half has a key of its own.
  return login_buffer(TextWrit_PassEncode(state, state.login.UserName.trimmed()),
                      TextWrit_PassEncode(state, state.login.UserPassword.trimmed()));
}

}  // namespace lineweir
