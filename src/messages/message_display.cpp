#include "messages/message_display.h"

#include <utility>

#include "base/time_text.h"
#include "messages/conversation.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

bool is_urgent(int back_color) { return back_color == color_red; }

// Who wrote it, and when.
std::string tool_tip_of(const HeardMessage& message) {
  const std::string time = hms_text(seconds_of_day(message.at));
  return message.sender.empty() ? time : message.sender + ", " + time;
}

}  // namespace

MessageDisplay::MessageDisplay(ConsoleState& state) : state_(state) {
  wire(state.Lineweir.Text1.on_key_press, state_.trace, "Lineweir_Text1_KeyPress",
       [this](int& key) { Text1_KeyPress(key); });
  show_hint();
}

void MessageDisplay::show_hint() {
  state_.Lineweir.Text1.hint = state_.program.MessagesAllowed
                                   ? "No message. F6 writes a line, F2 opens the messages."
                                   : "No message.";
}

void MessageDisplay::Text1_KeyPress(int& key) { key = 0; }

void MessageDisplay::show(std::string_view text, int back_color, int fore_color) {
  TextBox& box = state_.Lineweir.Text1;
  box.text = last_lines(text);
  box.caret_to_end();
  box.back_color = back_color;
  box.fore_color = fore_color;
}

void MessageDisplay::remember(HeardMessage message) {
  history_.add(std::move(message));
  if (on_history) on_history();
}

void MessageDisplay::ReturnMessageData(const std::string& MessageString, int MessageGroupValue,
                                       int TheBackColor, int TheForeColor) {
  if (MessageGroupValue != state_.program.GroupNumber) return;
  show(shown_message(MessageString), TheBackColor, TheForeColor);
  SeatMessage words = words_of(MessageString);
  const HeardMessage heard{.at = state_.services.clock.now(),
                           .group = MessageGroupValue,
                           .sender = std::move(words.sender),
                           .text = std::move(words.text),
                           .urgent = is_urgent(TheBackColor)};
  state_.Lineweir.Text1.tool_tip = tool_tip_of(heard);
  remember(heard);
  const bool is_own = !own_message_.empty() && MessageString == own_message_;
  if (is_own) own_message_.clear();
  if (is_own) return;
  if (heard.urgent && state_.Lineweir.UrgentSound.checked) state_.services.attention_sound.play();
  if (on_message) on_message(heard);
}

void MessageDisplay::show_own(const SeatMessage& message) {
  own_ = {.at = state_.services.clock.now(),
          .group = state_.program.GroupNumber,
          .sender = message.sender,
          .text = words_of(with_sender(message)).text,
          .urgent = is_urgent(message.back_color)};
  own_message_ = with_sender(message);
  show(message.text, message.back_color, message.fore_color);
  state_.Lineweir.Text1.tool_tip = tool_tip_of(own_);
}

void MessageDisplay::own_went(OwnMessage outcome) {
  if (outcome == OwnMessage::Sent) return;
  own_message_.clear();
  TextBox& box = state_.Lineweir.Text1;
  if (outcome == OwnMessage::NotSent) {
    box.tool_tip = tool_tip_of(own_) + ", not sent";
  } else {
    box.tool_tip = tool_tip_of(own_) + ", on this console only";
    remember(own_);
  }
}

}  // namespace lineweir
