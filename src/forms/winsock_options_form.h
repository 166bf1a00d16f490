#pragma once

#include "elements/button.h"
#include "elements/form.h"
#include "elements/label.h"
#include "elements/text_box.h"

namespace lineweir {

// The address of the server, and the connecting to it.
class WinsockOptionsForm : public Form {
 public:
  WinsockOptionsForm();

  Label Label1{*this, "Label1"};
  TextBox Text1{*this, "Text1"};
  Label Label2{*this, "Label2"};
  TextBox Text2{*this, "Text2"};
  // Whatever it says, nothing follows from it.
  CheckBox QuorlinkIntCheck{*this, "QuorlinkIntCheck"};
  Button SockConnect{*this, "SockConnect", "&Connect"};
};

}  // namespace lineweir
