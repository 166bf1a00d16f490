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
}

}  // namespace lineweir
