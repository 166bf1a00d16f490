#pragma once

#include "elements/button.h"
#include "elements/control_array.h"
#include "elements/form.h"
#include "elements/list_box.h"
#include "elements/picture.h"
#include "elements/text_box.h"
#include "elements/timer.h"
#include "forms/dial_keys.h"

namespace lineweir {

// DialForm, the telephone on which a line is seized and dialled on.
class DialPadForm : public Form {
 public:
  DialPadForm();

  // The lines, and the hybrids on which the host dials.
  ComboBox Combo1{*this, "Combo1"};
  ComboBox Combo2{*this, "Combo2"};
  // The digits keyed so far.
  TextBox Text1{*this, "Text1"};
  // Seizes the line; its picture is the lamp.
  Button SSCommand1{*this, "SSCommand1", "&Seize"};
  // By the place of the key in dial_keys.
  ControlArray<Button> DialButton{*this, "DialButton"};
  Button SSCommand2{*this, "SSCommand2", "&Dial"};
  Button TheDrop{*this, "TheDrop", "D&rop"};

  // Holders of the lamp's pictures, never shown.
  Picture GreyPic{*this, "GreyPic"};
  Picture RedPic{*this, "RedPic"};
  Picture GreenPic{*this, "GreenPic"};

  Timer Timer1{*this, "Timer1", false, 0};
  Timer Timer2{*this, "Timer2", false, 0};
  Timer Timer5{*this, "Timer5", false, 200};
};

}  // namespace lineweir
