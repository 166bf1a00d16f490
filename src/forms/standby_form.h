#pragma once

#include "elements/form.h"
#include "elements/label.h"

namespace lineweir {

// Shown while the main form is being rebuilt.
class StandbyForm : public Form {
 public:
  StandbyForm() : Form("Standby") {
    caption = "Lineweir";
    width = 4800;
    height = 1200;
    Label1.caption = "Please wait while Lineweir reconfigures!";
    Label1.alignment = align_center;
    Label1.move(150, 450, 4500, 300);
  }

  Label Label1{*this, "Label1"};
};

}  // namespace lineweir
