#pragma once

#include <string>
#include <string_view>

namespace lineweir {

class HotList;
class MessageDisplay;
class MessageSender;
struct ConsoleState;

// FlashMessA: writes a message to the other seats, or sends one of the hot list. What isn't sent
// stays in it, and it stays open.
class FlashMessage {
 public:
  FlashMessage(ConsoleState& state, MessageSender& sender, MessageDisplay& display,
               HotList& hot_list);

  // Places the dialog by the main form.
  void FlashMessA_RedefineFlashMess();

 private:
  // Both open the dialog for those who may send.
  void Text1_DblClick();
  void Form_Load();

  void FlashSend_Click();
  void SendUrgent_Click();
  void FlashMessClear_Click();
  void Text1_GotFocus();
  void Text1_LostFocus();
  void Form_KeyDown(int& key_code, int shift);
  void FollowTimer_Timer();

  // Sends the words in the dialog's colours; false where they weren't sent.
  bool send(const std::string& words);
  void send_entry(int place);
  void hide();
  void set_tab_stops(bool on);
  void keep_sender_name();
  void show_on_white();
  void show_carrier();
  void show_history();

  ConsoleState& state_;
  MessageSender& sender_;
  MessageDisplay& display_;
  HotList& hot_list_;
  // The name that the dialog was given, which the user may have replaced.
  std::string name_given_;
};

}  // namespace lineweir
