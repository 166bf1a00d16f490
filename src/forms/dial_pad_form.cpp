#include "forms/dial_pad_form.h"

#include <string>

#include "forms/picture_names.h"

namespace lineweir {

DialPadForm::DialPadForm() : Form("DialForm") {
  caption = "Dial";
  width = 3960;
  height = 6075;
  SSCommand1.picture = pictures::GreyPic;
  for (int key = 0; key < dial_key_count; ++key) {
    Button& button = key == 0 ? DialButton(0) : DialButton.load(key);
    button.caption = std::string(1, dial_keys[static_cast<std::size_t>(key)].character);
    button.visible = true;
  }
  for (Picture* holder : {&GreyPic, &RedPic, &GreenPic}) {
    holder->picture = holder->name();
    holder->visible = false;
  }
}

}  // namespace lineweir
