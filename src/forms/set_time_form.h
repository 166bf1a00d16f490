#pragma once

#include "elements/button.h"
#include "elements/form.h"
#include "elements/label.h"
#include "elements/text_box.h"

namespace lineweir {

// Form3, in which the user sets the computer's clock.
class SetTimeForm : public Form {
 public:
  SetTimeForm();

  Label Label1{*this, "Label1"};
  TextBox Text1{*this, "Text1"};
  Label Label2{*this, "Label2"};
  Label Label3{*this, "Label3"};
  OptionButton AM{*this, "AM", "AM"};
  OptionButton PM{*this, "PM", "PM"};
  Button Command3D1{*this, "Command3D1", "&Start"};
  Button Cancel5{*this, "Cancel5", "&Cancel"};
};

}  // namespace lineweir
