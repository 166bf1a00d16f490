#pragma once

#include "elements/form.h"
#include "elements/label.h"

namespace lineweir {

// The splash and about window. It closes itself on a click and when it loses the focus.
class AboutForm : public Form {
 public:
  AboutForm();

  Label Label1{*this, "Label1"};
  Label Label2{*this, "Label2"};
  Label Label3{*this, "Label3"};
};

}  // namespace lineweir
