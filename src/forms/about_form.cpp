#include "forms/about_form.h"

namespace lineweir {

AboutForm::AboutForm() : Form("AboutBox") {
  caption = "About Lineweir";
  width = 5400;
  height = 2700;
  Label1.caption = "Lineweir";
  Label2.caption = "Version " LINEWEIR_VERSION;
  Label3.caption = "The operator's console of a talk show's telephones";
  Label1.move(300, 600, 4800, 600);
  Label2.move(300, 1250, 4800, 300);
  Label3.move(300, 1700, 4800, 300);
  for (Label* label : {&Label1, &Label2, &Label3}) label->alignment = align_center;
}

}  // namespace lineweir
