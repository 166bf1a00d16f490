#pragma once

namespace lineweir {

class Control;
class MessageDisplay;
class MessageSender;
struct ConsoleState;

// Text2 of the main form: the line in which a message is typed while the show runs. It goes out as
// one more line of the conversation that the display shows. What isn't sent stays in it.
class QuickLine {
 public:
  QuickLine(ConsoleState& state, MessageSender& sender, MessageDisplay& display);

  // Lays the line over the message display and gives it the focus.
  void open();

 private:
  void Text2_KeyPress(int& key);
  void Text2_LostFocus();

  void send_line();
  void close();
  // Gives the focus back to what had it before the line was opened.
  void give_focus_back();

  ConsoleState& state_;
  MessageSender& sender_;
  MessageDisplay& display_;
  const Control* former_ = nullptr;
};

}  // namespace lineweir
