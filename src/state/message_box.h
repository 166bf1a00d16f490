#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "elements/button.h"
#include "elements/form.h"
#include "elements/label.h"

namespace lineweir {

class Failure;
struct ConsoleState;

// The only message box. It doesn't block.
class MessageBoxForm : public Form {
 public:
  MessageBoxForm();

  Label Label1{*this, "Label1"};
  Button OKButton{*this, "OKButton", "&Ok"};
  Button ReconnectButton{*this, "ReconnectButton", "&Reconnect"};

  // What unloading leaves for the next use.
  void reset();
};

// Every message to the user goes through here.
class Messages {
 public:
  explicit Messages(ConsoleState& state);

  void ShowMessage(std::string_view text);

  // The server is lost: the box offers to connect again.
  void offer_reconnection();
  bool offers_reconnection() const;
  // The server is there again.
  void withdraw_offer();
  // Shows what a failure says.
  void tell(const Failure& failure);

  // Closes MyMsgbox if it still shows this text: what it tells is over.
  void withdraw(std::string_view text);

  // Places MyMsgbox by the main form and shows it with the text that it has.
  void show_box();

  // Places it anew if it is shown: the main form has come to another place by itself.
  void follow_main_form();

  // Shows it in front of what has come up since, if it is shown.
  void come_to_front();

  // Told of each text shown.
  std::function<void(const std::string& text)> on_shown;

 private:
  void place_box();
  void MessageTimer_Timer();

  ConsoleState& state_;
};

}  // namespace lineweir
