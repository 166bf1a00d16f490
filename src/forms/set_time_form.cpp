#include "forms/set_time_form.h"

namespace lineweir {

SetTimeForm::SetTimeForm() : Form("Form3") {
  caption = "Set Time";
  modal = true;
  Label1.caption = "Enter Time - hh:mm:ss";
  Label2.caption = "Example - 09:20:08";
  Label3.caption = "Time";
}

}  // namespace lineweir
