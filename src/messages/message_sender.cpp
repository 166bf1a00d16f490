#include "messages/message_sender.h"

#include <string>

#include "link/links.h"
#include "link/seat_message.h"
#include "messages/conversation.h"
#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {

bool MessageSender::has_carrier() const { return links_.in_use().carries_messages(); }

bool MessageSender::may_send(const SeatMessage& message) const {
  if (sending_) return false;
  if (!state_.program.MessagesAllowed) {
    state_.messages.ShowMessage(
        "The message was not sent: this user has no right to send messages. Press F7 to log in as "
        "another one.");
    return false;
  }
  if (message.text.size() > longest_message) {
    state_.messages.ShowMessage("The message was not sent: it has " +
                                std::to_string(message.text.size()) +
                                " characters with the sender's name, and at most " +
                                std::to_string(longest_message) + " can be sent. Shorten it.");
    return false;
  }
  const StudioLink& link = links_.in_use();
  if (link.carries_messages() && link.locks_keys()) {
    // The offer to connect again says it too.
    if (!state_.messages.offers_reconnection()) state_.messages.ShowMessage(link.trouble());
    return false;
  }
  return true;
}

bool MessageSender::send(std::string_view handler, const SeatMessage& message) {
  sending_ = true;
  bool sent = false;
  // Whatever becomes of this one, the next may be sent.
  attempt([&] { sent = links_.in_use().message(handler, message); },
          [&](const Failure& failure) { report_failure(state_.trace, handler, failure); });
  sending_ = false;
  if (!sent && !state_.MyMsgbox.visible) {
    state_.messages.ShowMessage(
        "The message was not sent: the server didn't take it. Try again in a moment.");
  }
  return sent;
}

}  // namespace lineweir
