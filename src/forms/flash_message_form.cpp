#include "forms/flash_message_form.h"

namespace lineweir {

FlashMessageForm::FlashMessageForm() : Form("FlashMessA") {
  caption = "Flash Message";
  width = 7500;
  height = 5400;
  Text1.multi_line = true;
  Text1.move(150, 150, 5700, 1500);
  Text2.move(150, 1800, 5700, 315);
  DBList1.move(150, 2250, 5700, 2100);
  Label1.move(150, 4500, 5700, 300);
  int next_top = 150;
  for (Button* button : {&FlashSend, &SendUrgent, &FlashMessACancel, &FlashMessClear, &UpdateButton,
                         &AddCurrent, &RemoveCurrent, &BrowseButton}) {
    button->move(6000, next_top, 1350, 375);
    next_top += 480;
  }
  for (Button* list_button : {&AddCurrent, &RemoveCurrent, &UpdateButton}) {
    list_button->enabled = false;
  }
}

}  // namespace lineweir
