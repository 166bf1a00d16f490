#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "link/seat_message.h"
#include "messages/message_history.h"

namespace lineweir {

struct ConsoleState;

// What has become of a message of this console's own that is shown already.
enum class OwnMessage { Sent, ShownHereOnly, NotSent };

// Text1 of the main form: the latest message, in the colours of its sender, until the next one
// replaces it. It takes no typing.
class MessageDisplay {
 public:
  explicit MessageDisplay(ConsoleState& state);

  // A message from the server, for whatever group: this console's own come back too.
  void ReturnMessageData(const std::string& MessageString, int MessageGroupValue, int TheBackColor,
                         int TheForeColor);

  // Shows a message of this console's own before the server does, as "SENDER> TEXT"; what becomes
  // of it is told afterwards.
  void show_own(const SeatMessage& message);
  void own_went(OwnMessage outcome);

  // The user's rights are others: the display tells without a message what he may do.
  void show_hint();

  // A message of this console's own went out that only the server's sending it back shows.
  void will_come_back(const SeatMessage& message) { own_message_ = with_sender(message); }

  // The messages of the show so far.
  const MessageHistory& history() const { return history_; }
  std::function<void()> on_history;

  // Told of each message that another seat wrote.
  std::function<void(const HeardMessage& message)> on_message;

 private:
  void Text1_KeyPress(int& key);

  void show(std::string_view text, int back_color, int fore_color);
  void remember(HeardMessage message);

  ConsoleState& state_;
  MessageHistory history_;
  // The last one that show_own has shown.
  HeardMessage own_;
  // This console's last one that the server hasn't sent back, with its sender; empty for none.
  std::string own_message_;
};

}  // namespace lineweir
