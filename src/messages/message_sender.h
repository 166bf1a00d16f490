#pragma once

#include <string_view>

namespace lineweir {

class Links;
struct ConsoleState;
struct SeatMessage;

// Sends messages to the other seats on the way that is in use.
class MessageSender {
 public:
  MessageSender(ConsoleState& state, const Links& links) : state_(state), links_(links) {}

  // Whether there is a server that carries messages.
  bool has_carrier() const;

  // False, with a sentence for the user, where the message is not to be sent: he has no right to,
  // it is too long, or nobody would know where it comes to. While another one is on its way it is
  // false in silence.
  bool may_send(const SeatMessage& message) const;

  // Returns whether it went out. Where it didn't the user knows why.
  bool send(std::string_view handler, const SeatMessage& message);

 private:
  ConsoleState& state_;
  const Links& links_;
  // One is on its way, and may let events run.
  bool sending_ = false;
};

}  // namespace lineweir
