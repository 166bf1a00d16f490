#include "forms/flash_message_form.h"

namespace lineweir {

FlashMessageForm::FlashMessageForm() : Form("FlashMessA") {
  caption = "Flash Message";
  width = 7500;
  height = 5400;
  Text1.multi_line = true;
  for (Button* list_button : {&AddCurrent, &RemoveCurrent, &UpdateButton}) {
    list_button->enabled = false;
  }
  CarrierLabel.caption = "No server carries messages: they show on this console only.";
  Today.multi_line = true;
  Today.hint = "No message yet.";
}

std::array<Control*, 10> FlashMessageForm::controls_beside_text() {
  return {&DBList1,       &Text2,        &FlashMessACancel, &SendUrgent,   &FlashSend,
          &RemoveCurrent, &UpdateButton, &AddCurrent,       &BrowseButton, &FlashMessClear};
}

}  // namespace lineweir
