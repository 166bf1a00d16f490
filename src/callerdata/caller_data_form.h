#pragma once

#include "elements/button.h"
#include "elements/control_array.h"
#include "elements/form.h"
#include "elements/label.h"
#include "elements/text_box.h"
#include "elements/timer.h"

namespace lineweir {

inline constexpr int caller_text_count = 10;

// Form4, in which the screener types who is calling. The fields are elements 1 to 10 of both
// arrays; element 0 is their model and never shown.
class CallerDataForm : public Form {
 public:
  CallerDataForm();

  ControlArray<TextBox> TheText{*this, "TheText"};
  ControlArray<lineweir::Label> Label{*this, "Label"};
  Button Command3D1{*this, "Command3D1", "&Save"};
  Timer UnloadTimer{*this, "UnloadTimer", false, 100};
};

}  // namespace lineweir
